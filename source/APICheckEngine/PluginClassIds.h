// The platform's plug-in class identifiers, in the order in which an object
// element's text is tested against them.
#pragma once

#include <cstddef>

namespace FlashEngine_1_00 {

constexpr size_t kPluginClassIdCount = 41;
extern const char* const pluginClassIdTable[kPluginClassIdCount];

}  // namespace FlashEngine_1_00
