#include "batch/PackageList.h"

#include <dirent.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "APICheckEngine/PackageSignature.h"

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

void walk(const std::string& dir, std::vector<std::string>& packages) {
  DIR* handle = opendir(dir.c_str());
  if (handle == nullptr) return;
  std::vector<std::string> names;
  while (struct dirent* entry = readdir(handle)) {
    if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0) names.push_back(entry->d_name);
  }
  closedir(handle);
  for (const std::string& name : names) {
    std::string path = dir + "/" + name;
    struct stat st;
    if (lstat(path.c_str(), &st) != 0) continue;
    if (S_ISDIR(st.st_mode)) {
      walk(path, packages);
    } else if (S_ISREG(st.st_mode) && isPackage(path)) {
      packages.push_back(path);
    }
  }
}

}  // namespace

bool AddPackages(const std::string& path, std::vector<std::string>& packages) {
  std::string full = absolute(path);
  struct stat st;
  if (stat(full.c_str(), &st) != 0) return false;
  if (S_ISDIR(st.st_mode)) {
    if (access(full.c_str(), R_OK | X_OK) != 0) return false;
    walk(full, packages);
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
