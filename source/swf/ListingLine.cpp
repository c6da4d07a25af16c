#include <cstdarg>
#include <cstdio>

#include "swf/ActionOperands.h"

namespace {
constexpr size_t kLineBufferBytes = 1256;
}

void appendLine(std::vector<std::string>& lines, const char* format, ...) {
  char buffer[kLineBufferBytes];
  va_list args;
  va_start(args, format);
  int written = vsnprintf(buffer, sizeof(buffer), format, args);
  va_end(args);
  if (written < 0) written = 0;
  size_t kept = static_cast<size_t>(written) < sizeof(buffer) ? static_cast<size_t>(written) : sizeof(buffer) - 1;
  lines.emplace_back(buffer, kept);
}
