#include "support/ZipBuilder.h"

#include <unistd.h>
#include <zip.h>

#include <cstdio>
#include <cstdlib>

#include "support/EngineHost.h"

ZipBuilder& ZipBuilder::add(const std::string& name, const std::string& content) {
  entries_.emplace_back(name, content);
  return *this;
}

bool ZipBuilder::write(const std::string& path) const {
  zipFile zip = zipOpen(path.c_str(), APPEND_STATUS_CREATE);
  if (zip == nullptr) return false;
  bool ok = true;
  for (const auto& entry : entries_) {
    zip_fileinfo info = {};
    info.tmz_date.tm_year = 2020;
    info.tmz_date.tm_mon = 5;
    info.tmz_date.tm_mday = 15;
    info.tmz_date.tm_hour = 12;
    ok = ok && zipOpenNewFileInZip(zip, entry.first.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                   Z_DEFAULT_COMPRESSION) == ZIP_OK;
    if (ok && !entry.second.empty()) {
      ok = zipWriteInFileInZip(zip, entry.second.data(), static_cast<unsigned>(entry.second.size())) == ZIP_OK;
    }
    ok = ok && zipCloseFileInZip(zip) == ZIP_OK;
  }
  return zipClose(zip, nullptr) == ZIP_OK && ok;
}

std::string ZipBuilder::bytes() const {
  char pattern[] = "/tmp/tarvo-zip-XXXXXX";
  int fd = mkstemp(pattern);
  if (fd < 0) return std::string();
  close(fd);
  remove(pattern);
  std::string data = write(pattern) ? ReadFile(pattern) : std::string();
  remove(pattern);
  return data;
}
