// Pattern pieces and filters shared by the script and SWF call scanners.
#pragma once

#include <string>

namespace FlashEngine_1_00 {

// An element look-up `("id")` (or `(name)` in a rebuilt SWF statement):
// kLookUpOpen + id + kLookUpMember ends right after the dot of the member
// access that follows it.
inline constexpr char kLookUpOpen[] = R"re([\(][\s"']*)re";
inline constexpr char kLookUpMember[] = R"re([\s"']*[\)]\s*\.)re";

// The extension framework, whose methods are named by Execute("Name").
inline constexpr char kExtensionFrameworkClassId[] = "MORVANE-NAVERTIX-KOB";

// True when `text` holds a name of SystemFunctionPool followed by "(": a
// built-in call, not a plug-in call.
bool CallsSystemFunction(const std::string& text);

}  // namespace FlashEngine_1_00
