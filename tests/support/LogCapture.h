// Records every line the engine logs through Print_Log.
#pragma once

#include <string>
#include <vector>

struct LogLine {
  std::string function;  // first argument of Print_Log
  std::string format;    // the format text as passed
  std::string text;      // the formatted line
};

namespace LogCapture {
// Lines logged since the last clear(), in order.
const std::vector<LogLine>& lines();
void clear();
// The formats of the lines, in order.
std::vector<std::string> formats();
// True when some line's formatted text equals `text`.
bool contains(const std::string& text);
}  // namespace LogCapture
