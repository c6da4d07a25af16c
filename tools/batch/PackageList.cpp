#include "batch/PackageList.h"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "APICheckEngine/PackageSignature.h"
#include "FileWalk.h"

namespace {

std::string absolute(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  char cwd[PATH_MAX];
  return getcwd(cwd, sizeof cwd) != nullptr ? std::string(cwd) + "/" + path : path;
}

// A zip package by its first bytes, as the engine recognises one.
bool isPackage(const std::string& path) {
  unsigned char head[8] = {};
  FILE* file = fopen(path.c_str(), "rb");
  if (file == nullptr) return false;
  size_t got = fread(head, 1, sizeof head, file);
  fclose(file);
  return IsPackageSignature(head, got);
}

}  // namespace

bool AddPackages(const std::string& path, std::vector<std::string>& packages) {
  std::string full = absolute(path);
  struct stat st;
  if (stat(full.c_str(), &st) != 0) return false;
  if (S_ISDIR(st.st_mode)) {
    if (access(full.c_str(), R_OK | X_OK) != 0) return false;
    std::vector<std::string> files;
    CollectFiles(full, files);
    for (const std::string& file : files) {
      if (isPackage(file)) packages.push_back(file);
    }
  } else {
    if (access(full.c_str(), R_OK) != 0) return false;
    packages.push_back(full);  // given by name: analysed whatever it holds
  }
  return true;
}

bool ReadPathList(const std::string& file, std::vector<std::string>& paths) {
  std::ifstream in(file);
  if (!in) return false;
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line[0] != '#') paths.push_back(line);
  }
  return true;
}

std::vector<std::string> ShardOf(std::vector<std::string> packages, unsigned index, unsigned count) {
  std::sort(packages.begin(), packages.end());
  packages.erase(std::unique(packages.begin(), packages.end()), packages.end());
  std::vector<std::string> share;
  for (size_t i = 0; i < packages.size(); ++i) {
    if (count == 0 || i % count == index) share.push_back(packages[i]);
  }
  return share;
}
