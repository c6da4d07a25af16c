// Listing lines in the disassembler's format, as the SWF reader tests expect
// them and the replay tests feed them to the machine.
#pragma once

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

namespace listing {

const std::string kDoStart = " ------------ ActionScript ASM Code From TAG_DOACTION Start ------------- \r";
const std::string kDoEnd = " ------------ ActionScript ASM Code From TAG_DOACTION End   ------------- \r";
const std::string kClipStart = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP Start ------------- \r";
const std::string kClipEnd = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP End   ------------- \r";

// The field line of one pushed value of the given type.
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
