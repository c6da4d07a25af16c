// Listing lines in the disassembler's format, for replay tests.
#pragma once

#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "APICheckEngine/TimeBudget.h"
#include "decompiler/DeCompiler.h"

using Lines = std::vector<std::string>;

namespace listing {

inline std::string pushField(const std::string& type, const std::string& value) {
  return "ActionPush#@x441#type#@x442#" + type + "#@x441#value#@x442#" + value;
}
inline std::string str(const std::string& s) { return pushField("0", s); }
inline std::string num(const std::string& n) { return pushField("7", n); }
inline std::string reg(const std::string& n) { return "ActionPush#@x441#type#@x442#4#@x441#reg$#@x442#" + n; }

// "[ActionPush]" with one field line per value, then the given lines.
inline Lines push(Lines fields, const Lines& then = {}) {
  fields.insert(fields.begin(), "[ActionPush]");
  fields.insert(fields.end(), then.begin(), then.end());
  return fields;
}

}  // namespace listing

// Replays a listing on a fresh budget; the machine's state stays for inspection.
struct Replay {
  DeCompiler machine;
  Lines statements;

  explicit Replay(Lines lines) {
    firstTimeVal = TimeBudget::nowMicros();
    machine.SWFDeCompilerMain(lines, statements);
  }
  Lines stack() const { return {machine.operandStack.begin(), machine.operandStack.end()}; }
};
