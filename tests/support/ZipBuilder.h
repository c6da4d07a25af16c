// Builds zip packages for tests with minizip's zip writer.
#pragma once

#include <string>
#include <utility>
#include <vector>

class ZipBuilder {
 public:
  // Adds an entry; a name ending in "/" is a directory entry.
  ZipBuilder& add(const std::string& name, const std::string& content = std::string());
  // Writes the package to `path`; false when minizip reports an error.
  bool write(const std::string& path) const;
  // The package's bytes.
  std::string bytes() const;

 private:
  std::vector<std::pair<std::string, std::string>> entries_;
};
