// A host library that defines Print_Log; loaded with RTLD_GLOBAL before the
// engine, it must receive the engine's log lines.
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

namespace {
std::vector<std::string>& received() {
  static std::vector<std::string> lines;
  return lines;
}
}  // namespace

__attribute__((visibility("default"))) void Print_Log(const char* function, unsigned line, char* format, ...) {
  char text[1024];
  va_list args;
  va_start(args, format);
  vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  received().push_back(std::string(function) + "|" + text);
}

extern "C" __attribute__((visibility("default"))) size_t sinkLineCount() { return received().size(); }
extern "C" __attribute__((visibility("default"))) const char* sinkLine(size_t i) { return received()[i].c_str(); }
