// Finding the text kept for a file worth scanning by the file's path.
#pragma once

#include <string>
#include <vector>

namespace FlashEngine_1_00 {

// The entry of `texts` at the position of the first path of `paths` equal to
// `path`; null when the path is not there or has no text.
inline std::string* TextForPath(const std::vector<std::string*>& paths, const std::vector<std::string*>& texts,
                                const std::string& path) {
  for (size_t i = 0; i < paths.size(); ++i) {
    if (*paths[i] == path) return i < texts.size() ? texts[i] : nullptr;
  }
  return nullptr;
}

}  // namespace FlashEngine_1_00
