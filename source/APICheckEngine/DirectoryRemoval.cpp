#include "APICheckEngine/DirectoryRemoval.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "APICheckEngine/DirectoryWalk.h"

namespace {

// Empties the open directory `fd`: every entry is unlinked, and a directory
// (opened from `fd` without following links) is emptied and then removed.
void removeContents(int fd, int depth) {
  for (const std::string& name : ListDirectory(fd)) {
    if (unlinkat(fd, name.c_str(), 0) == 0) continue;
    if (depth >= kMaxDirectoryDepth) continue;
    int sub = OpenSubdirectory(fd, name.c_str());
    if (sub < 0) continue;
    removeContents(sub, depth + 1);
    close(sub);
    unlinkat(fd, name.c_str(), AT_REMOVEDIR);
  }
}

}  // namespace

void RemoveDirectoryTree(const std::string& path) {
  if (path.empty()) return;
  int fd = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (fd < 0) {
    // Not a directory: a file, or a link, which is removed itself.
    remove(path.c_str());
    return;
  }
  removeContents(fd, 0);
  close(fd);
  rmdir(path.c_str());
}
