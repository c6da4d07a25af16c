// Fuzz target: the SWF disassembler on arbitrary file contents, plain,
// compressed or neither. The bytes go through a scratch file so that the
// whole path from fopen to the listing is exercised.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "APICheckEngine/TimeBudget.h"
#include "swf/DeAssembler.h"

namespace {

std::string g_scratch;

void removeScratch() { unlink(g_scratch.c_str()); }

const std::string& scratchPath() {
  if (g_scratch.empty()) {
    char pattern[] = "/tmp/fuzz-swf-listing-XXXXXX";
    int fd = mkstemp(pattern);
    if (fd < 0) abort();
    close(fd);
    g_scratch = pattern;
    atexit(removeScratch);
  }
  return g_scratch;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string& path = scratchPath();
  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) abort();
  if (size > 0 && fwrite(data, 1, size, file) != size) abort();
  fclose(file);

  // One disassembler for every run: its per-file state must be reset by each call.
  static DeAssembler deAssembler;
  firstTimeVal = TimeBudget::nowMicros();
  std::vector<std::string> lines;
  deAssembler.SWFDeAssemblerMain(path, lines);
  return 0;
}
