// Where a search may start, how far a match may read, and the guards that
// keep hostile patterns from running off the subject or the stack.
#include <gtest/gtest.h>
#include <pthread.h>

#include <cstring>
#include <string>
#include <vector>

#include "TrexTestSupport.h"

namespace {

TEST(Search, SubjectStartsAndEnds) {
  const char* text = "abcdef";
  const char *begin = nullptr, *end = nullptr;
  EXPECT_TRUE(trex_searchrange(Compiled("c$").exp, text, text + 3, &begin, nullptr) && begin == text + 2);
  // The byte at the end may be consumed but is never a start.
  EXPECT_TRUE(trex_searchrange(Compiled("cd").exp, text, text + 3, nullptr, &end) && end == text + 4);
  EXPECT_FALSE(trex_searchrange(Compiled("d").exp, text, text + 3, nullptr, nullptr));
  EXPECT_TRUE(trex_searchrange(Compiled("^b").exp, text + 1, text + 3, nullptr, nullptr));
  trex_search(Compiled("q").exp, text, nullptr, nullptr);
  EXPECT_EQ(g_limitAddress, text + 6);
  EXPECT_EQ(Compiled("[").exp, nullptr);  // no error slot to fill
  EXPECT_TRUE(trex_match(Compiled("a*b").exp, "aab"));
  EXPECT_FALSE(trex_match(Compiled("a[^b]").exp, "a"));  // ends past the terminator
  const std::string as(70000, 'a');  // an unbounded repeat runs at most 65536 rounds
  for (const char* pattern : {"a*", "a{65535}", "a{3,}"})
    EXPECT_TRUE(trex_search(Compiled(pattern).exp, as.c_str(), nullptr, &end) && end == as.c_str() + 65536) << pattern;
}

// Subjects in buffers of exactly their size: any read past the terminator is
// an AddressSanitizer error, and no match may end beyond it.
TEST(Bounds, NothingPastTheTerminatorIsReadOrReported) {
  for (const char* pattern : {"a..", ".\\b", "a\\b.", "[^x][^x][^x]", "\\S\\S\\S", "..*", "[^a]*.", "(.)(.)",
                              "\\B..", "(a|.)+.", "(.[^x]*)*\\b", "[^x]{5,}", ".?.?.?", "\\W*\\W"}) {
    Compiled c(pattern);
    for (const char* source : {"a", "ab ", " ", "aaaa"}) {
      const std::vector<char> text(source, source + std::strlen(source) + 1);
      const char* end = nullptr;
      EXPECT_TRUE(!trex_search(c.exp, text.data(), nullptr, &end) || end <= text.data() + text.size()) << pattern;
    }
  }
}

// Patterns of 64 KiB built to recurse as deeply as possible, on a thread with
// a 1 MiB stack: several times what the recursion guards allow, far less than
// unguarded recursion would take.
void* pathologicalPatterns(void*) {
  EXPECT_EQ(Compiled(std::string(32768, '(') + std::string(32768, ')')).exp, nullptr);  // nested too deep
  std::string alternatives, repeats;
  while (alternatives.size() < 65535) alternatives += "a|";
  EXPECT_TRUE(trex_search(Compiled(alternatives + "b").exp, "xb", nullptr, nullptr));
  while (repeats.size() < 65536) repeats += "a+";
  const std::string text(65536, 'a');
  EXPECT_FALSE(trex_search(Compiled(repeats).exp, text.c_str(), nullptr, nullptr));  // too deep: no match
  const char* end = nullptr;  // shallow enough: each a+ but the last takes one round
  EXPECT_TRUE(trex_search(Compiled(repeats.substr(0, 600)).exp, text.c_str() + 65000, nullptr, &end) &&
              end == text.c_str() + 65536);
  return nullptr;
}

TEST(Bounds, PathologicalPatternsStayOnTheStack) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 1 << 20);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, pathologicalPatterns, nullptr), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

}  // namespace
