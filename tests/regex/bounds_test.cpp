// Where a search may start, how far a match may read, and the guards that
// keep hostile patterns from running off the subject or the stack.
#include <gtest/gtest.h>
#include <pthread.h>

#include <cstring>
#include <memory>
#include <string>

#include "regex/trex.h"

namespace {

struct Compiled {
  explicit Compiled(const std::string& pattern) : exp(trex_compile(pattern.c_str(), nullptr)) {}
  ~Compiled() { trex_free(exp); }
  TrexExpression* exp;
};

TEST(SearchRange, SubjectIsTheRangeAndTheByteAtItsEndMayBeConsumed) {
  const char* text = "abcdef";
  const char* begin = nullptr;
  const char* end = nullptr;
  EXPECT_TRUE(trex_searchrange(Compiled("c$").exp, text, text + 3, &begin, &end));
  EXPECT_EQ(begin - text, 2);
  EXPECT_TRUE(trex_searchrange(Compiled("cd").exp, text, text + 3, &begin, &end));
  EXPECT_EQ(end - text, 4);
  EXPECT_FALSE(trex_searchrange(Compiled("d").exp, text, text + 3, nullptr, nullptr));  // end is no start
  EXPECT_FALSE(trex_searchrange(Compiled("^b").exp, text, text + 3, nullptr, nullptr));
  EXPECT_TRUE(trex_searchrange(Compiled("^b").exp, text + 1, text + 3, nullptr, nullptr));
  EXPECT_FALSE(trex_searchrange(Compiled("[^x]").exp, text, text, nullptr, nullptr));
}

TEST(Search, RecordsTheEndOfItsSubject) {
  const char* text = "var x;";
  trex_search(Compiled("q").exp, text, nullptr, nullptr);
  EXPECT_EQ(g_limitAddress, text + 6);
}

TEST(WholeMatch, MustEndExactlyAtTheTerminator) {
  EXPECT_TRUE(trex_match(Compiled("a*b").exp, "aab"));
  EXPECT_FALSE(trex_match(Compiled("a*").exp, "aab"));
  EXPECT_FALSE(trex_match(Compiled("a[^b]").exp, "a"));  // ends past the terminator
  EXPECT_FALSE(trex_match(Compiled("b").exp, "ab"));
}

TEST(Repeat, UnboundedRunsAtMost65536Rounds) {
  const std::string text(70000, 'a');
  for (const char* pattern : {"a*", "a+", "a{65535}", "a{3,}"}) {
    const char* end = nullptr;
    ASSERT_TRUE(trex_search(Compiled(pattern).exp, text.c_str(), nullptr, &end)) << pattern;
    EXPECT_EQ(end - text.c_str(), 65536) << pattern;
  }
}

// Subjects in buffers of exactly their size: any read past the terminator is
// an AddressSanitizer error, and no match may end beyond it.
TEST(Bounds, NothingPastTheTerminatorIsReadOrReported) {
  const char* patterns[] = {"a..",        ".\\b",   "a\\b.",  "[^x][^x][^x]", "\\S\\S\\S", "..*",
                            "[^a]*.",     "(.)(.)", "a.$",    "\\B..",        "(a|.)+.",  "(.[^x]*)*\\b",
                            "[^x]{5,}",   ".?.?.?", "\\W*\\W"};
  const char* texts[] = {"a", "ab ", " ", "aaaa"};
  for (const char* pattern : patterns) {
    Compiled c(pattern);
    ASSERT_NE(c.exp, nullptr) << pattern;
    for (const char* source : texts) {
      const size_t length = std::strlen(source);
      std::unique_ptr<char[]> text(new char[length + 1]);
      std::memcpy(text.get(), source, length + 1);
      const char* begin = nullptr;
      const char* end = nullptr;
      if (trex_search(c.exp, text.get(), &begin, &end)) {
        EXPECT_LE(end, text.get() + length + 1) << pattern << " on '" << source << "'";
        for (int n = 0; n < trex_getsubexpcount(c.exp); ++n) {
          TrexSubMatch sub;
          trex_getsubexp(c.exp, n, &sub);
          if (sub.begin) {
            EXPECT_LE(sub.begin + sub.len, text.get() + length + 1) << pattern;
          }
        }
      }
      trex_match(c.exp, text.get());
    }
  }
}

// Runs fn on a thread with a 1 MiB stack: several times what the recursion
// guards allow, far less than unguarded recursion over 64 KiB would take.
template <typename Fn>
void onSmallStack(Fn fn) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 1 << 20);
  pthread_t thread;
  auto body = [](void* f) -> void* {
    (*static_cast<Fn*>(f))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, body, &fn), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

// Patterns of 64 KiB built to recurse as deeply as possible.
TEST(Bounds, PathologicalPatternsStayOnTheStack) { onSmallStack([] {
  const size_t size = 64 * 1024;
  std::string deepGroups(size / 2, '(');
  deepGroups += std::string(size / 2, ')');
  EXPECT_EQ(Compiled(deepGroups).exp, nullptr);

  std::string alternatives;
  while (alternatives.size() < size - 1) alternatives += "a|";
  alternatives += "b";
  EXPECT_TRUE(trex_search(Compiled(alternatives).exp, "xb", nullptr, nullptr));

  std::string repeats;
  while (repeats.size() < size) repeats += "a+";
  const std::string text(size, 'a');
  EXPECT_FALSE(trex_search(Compiled(repeats).exp, text.c_str(), nullptr, nullptr));  // too deep: no match

  std::string fewRepeats;  // shallow enough: each a+ but the last takes one round
  for (int i = 0; i < 300; ++i) fewRepeats += "a+";
  const std::string shortText(1000, 'a');
  const char* end = nullptr;
  EXPECT_TRUE(trex_search(Compiled(fewRepeats).exp, shortText.c_str(), nullptr, &end));
  EXPECT_EQ(end - shortText.c_str(), 1000);

  std::string groupRepeats;
  while (groupRepeats.size() < size) groupRepeats += "(a)+";
  EXPECT_FALSE(trex_search(Compiled(groupRepeats).exp, text.c_str(), nullptr, nullptr));
}); }

}  // namespace
