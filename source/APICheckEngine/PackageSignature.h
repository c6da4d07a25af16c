// Recognising a zip package by its first bytes, whatever its name.
#pragma once

#include <cstddef>

// True when `bytes` start with "PK" followed by one of the pairs 3 4, 5 6,
// 7 8, "LI", "Sp" or "nZ".
inline bool IsPackageSignature(const unsigned char* bytes, size_t size) {
  if (size < 4 || bytes[0] != 'P' || bytes[1] != 'K') return false;
  static const unsigned char kPairs[][2] = {{3, 4}, {5, 6}, {7, 8}, {'L', 'I'}, {'S', 'p'}, {'n', 'Z'}};
  for (const auto& pair : kPairs) {
    if (bytes[2] == pair[0] && bytes[3] == pair[1]) return true;
  }
  return false;
}
