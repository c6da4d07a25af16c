// The four string operations that every part of the engine uses.
#pragma once

#include <string>
#include <vector>

class CStringUtil {
 public:
  // Returns text with every occurrence of `from` replaced by `to`, scanning
  // left to right without re-scanning inserted text. An empty `from` leaves
  // the text unchanged. `text` itself is not modified.
  std::string customReplace(std::string& text, std::string from, std::string to);

  // The part after the last '.' of the path, case kept; "" without a dot.
  std::string findFileExtention(std::string path);

  // `length` bytes starting at `start`; "" when start is outside the text or
  // the length is negative; cut at the end of the text.
  std::string findMidString(std::string text, int start, int length);

  // Clears `tokens`, then stores the non-empty pieces of `text` cut at every
  // occurrence of the whole `delimiter` string, in order.
  void stringTokenizer(const char* delimiter, std::string text, std::vector<std::string>& tokens);
};
