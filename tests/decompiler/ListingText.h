// Listing lines in the disassembler's format, for replay tests.
#pragma once

#include <string>
#include <vector>

#include "APICheckEngine/HostInterface.h"
#include "APICheckEngine/TimeBudget.h"
#include "decompiler/DeCompiler.h"

namespace listing {

inline std::string header(const std::string& name) { return "[Action" + name + "]"; }
inline std::string pushField(const std::string& type, const std::string& value) {
  return "ActionPush#@x441#type#@x442#" + type + "#@x441#value#@x442#" + value;
}
inline std::string str(const std::string& s) { return pushField("0", s); }
inline std::string num(int n) { return pushField("7", std::to_string(n)); }
inline std::string reg(int n) { return "ActionPush#@x441#type#@x442#4#@x441#reg$#@x442#" + std::to_string(n); }

// "[ActionPush]" followed by one field line per value.
inline std::vector<std::string> push(std::vector<std::string> fields) {
  fields.insert(fields.begin(), header("Push"));
  return fields;
}

inline std::vector<std::string> join(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace listing

// Replays a listing on a fresh budget; the machine's state stays for inspection.
struct Replay {
  DeCompiler machine;
  std::vector<std::string> statements;
  unsigned code = 0;

  explicit Replay(std::vector<std::string> lines) {
    firstTimeVal = TimeBudget::nowMicros();
    code = machine.SWFDeCompilerMain(lines, statements);
  }
  std::vector<std::string> stack() const { return {machine.operandStack.begin(), machine.operandStack.end()}; }
};
