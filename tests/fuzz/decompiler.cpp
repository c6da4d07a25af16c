// Arbitrary listing lines (the input cut at line feeds) replayed on the
// decompiler.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "APICheckEngine/TimeBudget.h"
#include "decompiler/DeCompiler.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static DeCompiler* machine = new DeCompiler();
  std::vector<std::string> lines;
  std::string line;
  for (size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') {
      lines.push_back(line);
      line.clear();
    } else {
      line.push_back(static_cast<char>(data[i]));
    }
  }
  lines.push_back(line);

  firstTimeVal = TimeBudget::nowMicros();
  std::vector<std::string> statements;
  machine->SWFDeCompilerMain(lines, statements);
  // The guards hold and their byte count matches what the machine holds.
  size_t held = 0;
  for (const std::string& entry : machine->operandStack) held += entry.size() + DeCompiler::kEntryOverhead;
  for (const std::string& statement : statements) {
    if (statement.size() > DeCompiler::kMaxTextBytes) __builtin_trap();
    held += statement.size() + DeCompiler::kEntryOverhead;
  }
  if (held != machine->machineBytes || held > DeCompiler::kMaxMachineBytes) __builtin_trap();
  return 0;
}
