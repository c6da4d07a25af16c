#include "FileWalk.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>

void CollectFiles(const std::string& dir, std::vector<std::string>& out) {
  DIR* handle = opendir(dir.c_str());
  if (handle == nullptr) return;
  std::vector<std::string> names;
  while (struct dirent* entry = readdir(handle)) {
    if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0) names.push_back(entry->d_name);
  }
  closedir(handle);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    std::string path = dir + "/" + name;
    struct stat st;
    if (lstat(path.c_str(), &st) != 0) continue;
    if (S_ISDIR(st.st_mode)) {
      CollectFiles(path, out);
    } else if (S_ISREG(st.st_mode)) {
      out.push_back(path);
    }
  }
}
