// Helpers shared by the regex tests: an expression freed at scope end, the
// first match marked in its text, and the group spans left by a match.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tarvo/trex.h"

struct Compiled {
  explicit Compiled(const std::string& pattern, const char** error = nullptr)
      : exp(trex_compile(pattern.c_str(), error)) {}
  ~Compiled() { trex_free(exp); }
  TrexExpression* exp;
};

// The text with its first match between « and » ("<NUL>" stands for a
// consumed terminator); the bare text when nothing matches; "error: <message>"
// when the pattern does not compile.
inline std::string markFirstMatch(const std::string& pattern, const std::string& text) {
  const char* error = "untouched";
  Compiled c(pattern, &error);
  EXPECT_EQ(g_exp, c.exp) << pattern;  // null after a failed compilation
  if (c.exp == nullptr) return std::string("error: ") + error;
  const char *begin = nullptr, *end = nullptr;
  if (!trex_search(c.exp, text.c_str(), &begin, &end)) return text;
  const size_t from = static_cast<size_t>(begin - text.c_str()), to = static_cast<size_t>(end - text.c_str());
  const std::string inside = to > text.size() ? text.substr(from) + "<NUL>" : text.substr(from, to - from);
  return text.substr(0, from) + "«" + inside + "»" + (to < text.size() ? text.substr(to) : "");
}

struct MarkCase {
  std::string pattern, text, expected;
};
inline void expectMarks(std::initializer_list<MarkCase> cases) {
  for (const MarkCase& c : cases) EXPECT_EQ(markFirstMatch(c.pattern, c.text), c.expected) << c.pattern;
}

// (begin relative to `base`, or -1 when null; length) of every group after the
// last match, read until trex_getsubexp refuses the number.
using Spans = std::vector<std::pair<long, int>>;
inline Spans groupSpans(TrexExpression* exp, const char* base) {
  Spans spans;
  TrexSubMatch sub;
  for (int n = 0; trex_getsubexp(exp, n, &sub); ++n) spans.emplace_back(sub.begin ? sub.begin - base : -1, sub.len);
  EXPECT_EQ(static_cast<int>(spans.size()), trex_getsubexpcount(exp));
  EXPECT_FALSE(trex_getsubexp(exp, -1, &sub));
  return spans;
}
// The group spans of the first match of `pattern` in `text`; none without one.
inline Spans spansOf(const std::string& pattern, const std::string& text) {
  Compiled c(pattern);
  return trex_search(c.exp, text.c_str(), nullptr, nullptr) ? groupSpans(c.exp, text.c_str()) : Spans{};
}
