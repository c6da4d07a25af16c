#include "JobFixture.h"

#include <ftw.h>

#include <algorithm>
#include <cstring>

namespace {
std::set<std::string>* collected = nullptr;
size_t prefixLength = 0;

int collect(const char* path, const struct stat* st, int type, struct FTW*) {
  std::string relative(path + std::min(prefixLength, strlen(path)));
  if (!relative.empty()) collected->insert(type == FTW_D ? relative + "/" : relative);
  return 0;
}
}  // namespace

std::set<std::string> JobFixture::tree(const std::string& dir) {
  std::set<std::string> paths;
  collected = &paths;
  prefixLength = dir.size() + 1;
  nftw(dir.c_str(), collect, 16, FTW_PHYS);
  return paths;
}
