// Zip packages written byte by byte, for entries that a zip writer refuses to
// make: names with NUL bytes, lying sizes, Unix link attributes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct RawZipEntry {
  std::string name;  // written as is, NUL bytes included
  std::string content;
  bool deflate = false;        // raw deflate, else stored
  int64_t declaredSize = -1;   // uncompressed size put in both headers; -1: the true size
  uint32_t externalAttributes = 0;  // high 16 bits: Unix mode
};

std::string RawZip(const std::vector<RawZipEntry>& entries);

// `data` compressed as a raw deflate stream.
std::string RawDeflate(const std::string& data);

// A package whose one entry, once inflated, is the package itself, byte for
// byte (CRC included): expanding it yields it again, without end.
std::string ZipQuine();
