// The test programs' own Print_Log: it records every line.
#include "support/LogCapture.h"

#include <cstdarg>
#include <cstdio>

namespace {
std::vector<LogLine>& store() {
  static std::vector<LogLine> lines;
  return lines;
}
}  // namespace

void Print_Log(const char* function, unsigned line, char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  int size = vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string text(size > 0 ? static_cast<size_t>(size) : 0, '\0');
  if (size > 0) vsnprintf(&text[0], text.size() + 1, format, args);
  va_end(args);
  store().push_back(LogLine{function ? function : "", format ? format : "", text});
}

namespace LogCapture {
const std::vector<LogLine>& lines() { return store(); }
void clear() { store().clear(); }
std::vector<std::string> formats() {
  std::vector<std::string> out;
  for (const LogLine& line : store()) out.push_back(line.format);
  return out;
}
bool contains(const std::string& text) {
  for (const LogLine& line : store()) {
    if (line.text == text) return true;
  }
  return false;
}
}  // namespace LogCapture
