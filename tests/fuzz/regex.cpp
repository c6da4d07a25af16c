// Compiles an arbitrary pattern and searches an arbitrary text with it.
// Input: the pattern, a NUL byte, then the text (which may hold more NULs;
// searches over the whole range see them, C-string searches stop at the
// first). The text sits in a buffer of exactly its size plus the terminator,
// so a read past the terminator is an AddressSanitizer error.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "regex/TrexInternal.h"
#include "tarvo/trex.h"

namespace {

const char* const kMessages[] = {"letter expected", "overflow in numeric constant", "expected paren", "empty class",
                                 "unfinished range", "invalid range", "cannot use character classes in ranges",
                                 "number expected", ", or } expected", "unexpected character"};

void require(bool condition) {
  if (!condition) __builtin_trap();
}

// A match starts inside its subject and ends at most one byte past it; every
// group recorded so far lies inside the buffer (text plus terminator).
void checkMatch(TrexExpression* exp, const char* subject, const char* end, const char* begin, const char* stop,
                const char* buffer, const char* bufferEnd) {
  require(begin >= subject && begin < end && stop >= begin && stop <= end + 1);
  for (int n = 0; n < trex_getsubexpcount(exp); ++n) {
    TrexSubMatch sub;
    require(trex_getsubexp(exp, n, &sub) == 1);
    if (sub.begin != nullptr) require(sub.begin >= buffer && sub.len >= 0 && sub.begin + sub.len <= bufferEnd + 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const uint8_t* nul = static_cast<const uint8_t*>(std::memchr(data, 0, size));
  const size_t patternLength = nul ? static_cast<size_t>(nul - data) : size;
  const std::string pattern(reinterpret_cast<const char*>(data), patternLength);
  const size_t textLength = nul ? size - patternLength - 1 : 0;

  const char* error = nullptr;
  TrexExpression* exp = trex_compile(pattern.c_str(), &error);
  if (exp == nullptr) {
    require(g_exp == nullptr && error != nullptr);
    bool known = false;
    for (const char* message : kMessages) known = known || std::strcmp(error, message) == 0;
    require(known);
    return 0;
  }
  require(g_exp == exp && trex_getsubexpcount(exp) >= 1);

  // Arbitrary patterns can take very long (nested repeats); bound each call.
  trex::setMatchStepLimit(1u << 14);
  char* text = static_cast<char*>(std::malloc(textLength + 1));
  if (textLength > 0) std::memcpy(text, nul + 1, textLength);
  text[textLength] = '\0';

  const char* begin = nullptr;
  const char* stop = nullptr;
  const int found = trex_searchrange(exp, text, text + textLength, &begin, &stop);
  if (found) checkMatch(exp, text, text + textLength, begin, stop, text, text + textLength);

  // Reusing the end of a run measured from an earlier start must not change
  // any answer: the same search without it agrees, groups included.
  if (!trex::lastCallAborted()) {
    std::vector<TrexSubMatch> groups(static_cast<size_t>(trex_getsubexpcount(exp)));
    for (size_t n = 0; n < groups.size(); ++n) trex_getsubexp(exp, static_cast<int>(n), &groups[n]);
    trex::setRunReuse(false);
    const char* plainBegin = nullptr;
    const char* plainStop = nullptr;
    const int plainFound = trex_searchrange(exp, text, text + textLength, &plainBegin, &plainStop);
    const bool plainAborted = trex::lastCallAborted();
    trex::setRunReuse(true);
    if (!plainAborted) {
      require(plainFound == found);
      if (found) {
        require(plainBegin == begin && plainStop == stop);
        for (size_t n = 0; n < groups.size(); ++n) {
          TrexSubMatch sub;
          trex_getsubexp(exp, static_cast<int>(n), &sub);
          require(sub.begin == groups[n].begin && sub.len == groups[n].len);
        }
      }
    }
  }

  // The last bytes on their own, so that a capped search still reaches the
  // end of a long text.
  const char* tail = textLength > 32 ? text + textLength - 32 : text;
  if (trex_searchrange(exp, tail, text + textLength, &begin, &stop)) {
    checkMatch(exp, tail, text + textLength, begin, stop, text, text + textLength);
  }

  // Successive matches over the C string, as the scanners walk a text.
  const char* limit = text + std::strlen(text);
  const char* cursor = text;
  for (int round = 0; round < 8 && cursor < limit; ++round) {
    if (!trex_search(exp, cursor, &begin, &stop)) break;
    require(g_limitAddress == limit);
    checkMatch(exp, cursor, limit, begin, stop, text, text + textLength);
    cursor = stop > cursor ? stop : cursor + 1;
  }
  trex_match(exp, text);

  std::free(text);
  trex_free(exp);
  require(g_exp == nullptr);
  return 0;
}
