// The one way the engine uses a regular expression: compile it from a fresh
// zero-terminated copy of its text right before use, search, free right after.
#pragma once

#include <cstring>
#include <string>

#include "tarvo/trex.h"

class Pattern {
 public:
  // Compiles `text`. A pattern that does not compile matches nothing.
  explicit Pattern(std::string text) : text_(std::move(text)), expression_(trex_compile(text_.c_str(), nullptr)) {}
  ~Pattern() { trex_free(expression_); }
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;

  bool compiled() const { return expression_ != nullptr; }

  // First match in the zero-terminated `text`; bounds may be null.
  bool search(const char* text, const char** begin = nullptr, const char** end = nullptr) {
    return expression_ != nullptr && trex_search(expression_, text, begin, end) != 0;
  }
  bool search(const std::string& text, const char** begin = nullptr, const char** end = nullptr) {
    return search(text.c_str(), begin, end);
  }

  // First match in [begin, limit), where `limit` is the end of the
  // zero-terminated text that `begin` lies in: the same answer as search(begin)
  // without measuring the text again.
  bool searchRange(const char* begin, const char* limit, const char** matchBegin, const char** matchEnd) {
    if (expression_ == nullptr) return false;
    g_limitAddress = limit;  // what trex_search would record for this text
    return trex_searchrange(expression_, begin, limit, matchBegin, matchEnd) != 0;
  }

  // Group 0 of the first match, as a string; false when there is none.
  bool firstMatch(const char* text, std::string* whole) {
    const char* begin = nullptr;
    const char* end = nullptr;
    if (!search(text, &begin, &end)) return false;
    TrexSubMatch sub;
    if (!group(0, &sub) || sub.begin == nullptr) return false;
    whole->assign(sub.begin, static_cast<size_t>(sub.len));
    return true;
  }

  bool group(int n, TrexSubMatch* sub) { return expression_ != nullptr && trex_getsubexp(expression_, n, sub) != 0; }

  // Calls fn(begin, end) for each successive match in the zero-terminated
  // `text`, each search starting where the previous match ended, until fn
  // returns false or nothing more matches. A match that does not advance
  // moves the next search one byte on, so the walk always ends.
  template <typename Fn>
  void forEachMatch(const char* text, Fn fn) {
    if (expression_ == nullptr) return;
    const char* limit = text + std::strlen(text);
    const char* cursor = text;
    while (cursor < limit) {
      const char* begin = nullptr;
      const char* end = nullptr;
      if (!searchRange(cursor, limit, &begin, &end)) break;
      if (!fn(begin, end)) break;
      cursor = (end > cursor) ? end : cursor + 1;
    }
  }

  TrexExpression* get() { return expression_; }

 private:
  std::string text_;
  TrexExpression* expression_;
};
