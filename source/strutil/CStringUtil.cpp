#include "strutil/CStringUtil.h"

#include <cstring>

std::string CStringUtil::customReplace(std::string& text, std::string from, std::string to) {
  if (from.empty()) return text;
  std::string out;
  out.reserve(text.size());
  size_t pos = 0;
  for (;;) {
    size_t hit = text.find(from, pos);
    if (hit == std::string::npos) break;
    out.append(text, pos, hit - pos);
    out.append(to);
    pos = hit + from.size();
  }
  out.append(text, pos, std::string::npos);
  return out;
}

std::string CStringUtil::findFileExtention(std::string path) {
  size_t dot = path.rfind('.');
  if (dot == std::string::npos) return std::string();
  return path.substr(dot + 1);
}

std::string CStringUtil::findMidString(std::string text, int start, int length) {
  if (start < 0 || length < 0 || static_cast<size_t>(start) >= text.size()) return std::string();
  return text.substr(static_cast<size_t>(start), static_cast<size_t>(length));
}

void CStringUtil::stringTokenizer(const char* delimiter, std::string text, std::vector<std::string>& tokens) {
  tokens.clear();
  size_t delimLength = delimiter ? std::strlen(delimiter) : 0;
  if (delimLength == 0) {
    if (!text.empty()) tokens.push_back(text);
    return;
  }
  size_t pos = 0;
  for (;;) {
    size_t hit = text.find(delimiter, pos, delimLength);
    size_t end = (hit == std::string::npos) ? text.size() : hit;
    if (end > pos) tokens.emplace_back(text, pos, end - pos);
    if (hit == std::string::npos) break;
    pos = hit + delimLength;
  }
}
