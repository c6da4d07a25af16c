// Arbitrary bytes as a SWF file, through the disassembler and the decompiler.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "APICheckEngine/TimeBudget.h"
#include "decompiler/DeCompiler.h"
#include "swf/DeAssembler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static DeAssembler* lister = new DeAssembler();
  static DeCompiler* machine = new DeCompiler();
  static const std::string path = "/tmp/fuzz_swf_pipeline_" + std::to_string(getpid()) + ".swf";

  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) return 0;
  fwrite(data, 1, size, file);
  fclose(file);

  firstTimeVal = TimeBudget::nowMicros();
  std::vector<std::string> lines;
  std::vector<std::string> statements;
  lister->SWFDeAssemblerMain(path, lines);
  machine->SWFDeCompilerMain(lines, statements);
  remove(path.c_str());
  return 0;
}
