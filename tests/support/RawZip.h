// Zip packages written byte by byte, for what a zip writer refuses to make:
// names with NUL bytes, Unix link attributes, a package that holds itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct RawZipEntry {
  std::string name;  // written as is, NUL bytes included
  std::string content;
  bool deflate = false;             // raw deflate, else stored
  uint32_t externalAttributes = 0;  // high 16 bits: Unix mode
};

// No entries: the end record alone ("PK", 5, 6).
std::string RawZip(const std::vector<RawZipEntry>& entries);

// A package whose one entry, once inflated, is the package itself, byte for
// byte (CRC included): expanding it yields it again, without end.
std::string ZipQuine();
