#include "APICheckEngine/DirectoryWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstring>

std::vector<std::string> ListDirectory(int fd) {
  std::vector<std::string> names;
  int copy = fcntl(fd, F_DUPFD_CLOEXEC, 0);
  if (copy < 0) return names;
  DIR* dir = fdopendir(copy);
  if (dir == nullptr) {
    close(copy);
    return names;
  }
  rewinddir(dir);
  while (const struct dirent* entry = readdir(dir)) {
    if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0) continue;
    names.emplace_back(entry->d_name);
  }
  closedir(dir);
  return names;
}

int OpenSubdirectory(int parentFd, const char* name) {
  return openat(parentFd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}
