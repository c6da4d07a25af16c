#include "JobFixture.h"

#include <dirent.h>

#include <cstring>

std::set<std::string> JobFixture::tree(const std::string& dir) {
  std::set<std::string> paths;
  std::vector<std::string> pending{""};
  while (!pending.empty()) {
    std::string relative = pending.back();
    pending.pop_back();
    DIR* handle = opendir((dir + "/" + relative).c_str());
    if (handle == nullptr) continue;
    while (const struct dirent* entry = readdir(handle)) {
      if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0) continue;
      std::string path = relative + entry->d_name;
      struct stat st;
      if (lstat((dir + "/" + path).c_str(), &st) == 0 && S_ISDIR(st.st_mode)) {
        paths.insert(path + "/");
        pending.push_back(path + "/");
      } else {
        paths.insert(path);
      }
    }
    closedir(handle);
  }
  return paths;
}
