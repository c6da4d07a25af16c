// Finding the text kept for a file worth scanning by the file's path.
#pragma once

#include <string>
#include <unordered_map>
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

// The same look-up for many paths: the position of each path's first entry,
// found once, instead of a walk over every path per look-up.
class PathIndex {
 public:
  explicit PathIndex(const std::vector<std::string*>& paths) {
    for (size_t i = paths.size(); i-- > 0;) first_[*paths[i]] = i;
  }
  std::string* text(const std::vector<std::string*>& texts, const std::string& path) const {
    auto found = first_.find(path);
    return found != first_.end() && found->second < texts.size() ? texts[found->second] : nullptr;
  }

 private:
  std::unordered_map<std::string, size_t> first_;
};

}  // namespace FlashEngine_1_00
