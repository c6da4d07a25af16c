#include "APICheckEngine/DirectoryRemoval.h"

#include <ftw.h>
#include <unistd.h>

#include <cstdio>

namespace {

int removeEntry(const char* path, const struct stat*, int, struct FTW*) {
  remove(path);
  return 0;  // keep going past failures
}

}  // namespace

void RemoveDirectoryTree(const std::string& path) {
  if (path.empty()) return;
  // Depth first so that directories are empty when they are removed; FTW_PHYS
  // removes a link itself instead of what it points to.
  nftw(path.c_str(), removeEntry, 16, FTW_DEPTH | FTW_PHYS);
}
