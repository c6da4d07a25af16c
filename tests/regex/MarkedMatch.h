// Renders the first match of a pattern as the subject with the match between
// « and », so that expectations read like the text they are about.
#pragma once

#include <string>

#include "regex/trex.h"

// "«...»" around the first match; "<NUL>" stands for a terminator the match
// consumed; the bare text when nothing matches; "error: <message>" when the
// pattern does not compile.
inline std::string markFirstMatch(const std::string& pattern, const std::string& text) {
  const char* error = nullptr;
  TrexExpression* exp = trex_compile(pattern.c_str(), &error);
  if (exp == nullptr) return std::string("error: ") + (error ? error : "(none)");
  const char* begin = nullptr;
  const char* end = nullptr;
  std::string out = text;
  if (trex_search(exp, text.c_str(), &begin, &end)) {
    size_t from = static_cast<size_t>(begin - text.c_str());
    size_t to = static_cast<size_t>(end - text.c_str());
    std::string inside = to > text.size() ? text.substr(from) + "<NUL>" : text.substr(from, to - from);
    out = text.substr(0, from) + "«" + inside + "»" + (to < text.size() ? text.substr(to) : "");
  }
  trex_free(exp);
  return out;
}
