// Pattern pieces and filters shared by the script and SWF call scanners.
#pragma once

#include <string>

namespace FlashEngine_1_00 {

// The extension framework, whose methods are named by Execute("Name").
inline constexpr char kExtensionFrameworkClassId[] = "MORVANE-NAVERTIX-KOB";

// True when `text` holds a name of SystemFunctionPool followed by "(": a
// built-in call, not a plug-in call.
bool CallsSystemFunction(const std::string& text);

}  // namespace FlashEngine_1_00
