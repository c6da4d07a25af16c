// Comment and blank-line removal over raw source bytes.
#pragma once

#include <cstddef>

namespace FlashEngine_1_00 {

// Copies `length` bytes of `source` into `output` (room for `length` bytes)
// without `//` and `/* */` comments; returns the count written. This is
// delete_comment without the int range limit, for the loader.
size_t stripComments(const char* source, size_t length, char* output);

}  // namespace FlashEngine_1_00
