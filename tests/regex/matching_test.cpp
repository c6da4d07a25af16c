// How the dialect matches: non-backtracking repeats, committing alternation,
// anchors, boundaries, bracket classes and captures.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MarkedMatch.h"

namespace {

struct MatchCase {
  const char* pattern;
  std::string text;
  std::string expected;  // text with the first match between « and »
};

class Matching : public testing::TestWithParam<MatchCase> {};

TEST_P(Matching, FirstMatch) {
  EXPECT_EQ(markFirstMatch(GetParam().pattern, GetParam().text), GetParam().expected) << GetParam().pattern;
}

INSTANTIATE_TEST_SUITE_P(Repeats, Matching, testing::Values(
    MatchCase{"a*a", "aaa", "«aa»a"},              // stops as soon as the next element matches
    MatchCase{"\\w+\\d", "ab12", "«ab1»2"},
    MatchCase{"a+ab", "aaab", "a«aab»"},           // never gives a round back
    MatchCase{"\\w+\\s*", "ab  c", "«ab  »c"},     // a following min-0 repeat is not consulted
    MatchCase{"\\s*\\(", "  (", "«  (»"},
    MatchCase{"a{2}", "aaa", "«aa»a"},
    MatchCase{"a{3,2}", "aaaa", "aaaa"},
    MatchCase{"a{65537,65539}", "aaaa", "«aaa»a"}, // bounds keep their low 16 bits
    MatchCase{"a{1,65536}", "aaa", "aaa"},
    MatchCase{"ba{65536}", "baa", "«b»aa"},
    MatchCase{"a*?", "aa?", "«aa?»"},             // one quantifier, then a literal '?'
    MatchCase{"a*?", "b?", "b«?»"},
    MatchCase{"x(?:ab)+", "xababy", "«xabab»y"}));

INSTANTIATE_TEST_SUITE_P(Alternation, Matching, testing::Values(
    MatchCase{"(a|ab)c", "abc", "abc"},            // commits to the first alternative
    MatchCase{"(a*)a", "aaa", "«aa»a"},
    MatchCase{"(a*)a|x", "aaa", "aaa"},            // an alternative's nodes have no continuation
    MatchCase{"ab|cd|ef", "xef", "x«ef»"},
    MatchCase{"a||b", "x|b", "x«|b»"},             // '|' where an element starts is a literal
    MatchCase{")", "a)", "a«)»"},
    MatchCase{"*a", "x*a", "x«*a»"}));

INSTANTIATE_TEST_SUITE_P(AnchorsAndEnd, Matching, testing::Values(
    MatchCase{"^a", "ba", "ba"},
    MatchCase{"a^b", "xa^b", "x«a^b»"},
    MatchCase{"a$", "aba", "ab«a»"},
    MatchCase{"b*$", "ab", "a«b»"},
    MatchCase{"$", "ab", "ab"},                    // the end itself is never a start
    MatchCase{"", "", "error: unexpected character"},
    MatchCase{"[^a]", "", ""},                     // an empty text is not searched
    MatchCase{"a.", "a", "«a<NUL>»"},              // the terminator can be consumed...
    MatchCase{"a[^b]", "a", "«a<NUL>»"},
    MatchCase{"a[^x]*", "a", "«a<NUL>»"},
    MatchCase{"a\\c", "a", "«a<NUL>»"},
    MatchCase{"a\\C", "a", "a"},
    MatchCase{"a.*", "ab", "«ab»"},                // a repeat stops once it reaches the end
    MatchCase{"\\S*", "ab", "«ab»"},
    MatchCase{"a..", "a", "a"},                    // ...but nothing after it
    MatchCase{"a.$", "a", "a"},
    MatchCase{"<.*>", "<a\n>", "«<a\n>»"}));

INSTANTIATE_TEST_SUITE_P(Boundaries, Matching, testing::Values(
    MatchCase{"a\\bx", "ax y", "«ax» y"},          // judged by the byte and the one after it
    MatchCase{"a\\Bx", "axy", "«ax»y"},
    MatchCase{"\\bx", "x", "«x»"},
    MatchCase{"\\bx", " x", " x"},
    MatchCase{"\\b x", " x", "« x»"},
    MatchCase{"x\\b", "x", "«x»"},
    MatchCase{"x \\b", "x ", "x "},
    MatchCase{"x \\B", "x ", "«x »"}));

INSTANTIATE_TEST_SUITE_P(ClassesAndEscapes, Matching, testing::Values(
    MatchCase{"[\\w\\_]+", "ab_c d", "«ab_c» d"},
    MatchCase{"[\\w]+", "ab_c d", "«ab_c» d"},
    MatchCase{"[-a]+", "x-a-", "x«-a-»"},
    MatchCase{"[z-a]", "az", "az"},                // reversed range: accepted, matches nothing
    MatchCase{"[z-ax]", "azx", "az«x»"},
    MatchCase{"[a-c-e]+", "d-eab", "d«-eab»"},
    MatchCase{"[\\b]", "ab", "a«b»"},
    MatchCase{"[a-\\\xff]+", "`\xe9\xff", "`«\xe9\xff»"},  // bytes compare unsigned
    MatchCase{"\\\xe9", "a\xe9", "a«\xe9»"},
    MatchCase{"a\\tb\\n", "a\tb\n", "«a\tb\n»"},
    MatchCase{"\\L\\U\\y\\.", "LUy.", "«LUy.»"}));

struct Span {
  long begin;  // -1: the group took no part
  int len;
};

struct CaptureCase {
  const char* pattern;
  const char* text;
  std::vector<Span> groups;
};

class Captures : public testing::TestWithParam<CaptureCase> {};

TEST_P(Captures, RecordedOnFirstEntryAndClearedOnFailure) {
  const CaptureCase& c = GetParam();
  TrexExpression* exp = trex_compile(c.pattern, nullptr);
  ASSERT_NE(exp, nullptr);
  ASSERT_TRUE(trex_search(exp, c.text, nullptr, nullptr));
  ASSERT_EQ(trex_getsubexpcount(exp), static_cast<int>(c.groups.size()));
  for (size_t n = 0; n < c.groups.size(); ++n) {
    TrexSubMatch sub;
    ASSERT_TRUE(trex_getsubexp(exp, static_cast<int>(n), &sub));
    EXPECT_EQ(sub.begin ? sub.begin - c.text : -1, c.groups[n].begin) << c.pattern << " group " << n;
    EXPECT_EQ(sub.len, c.groups[n].len) << c.pattern << " group " << n;
  }
  TrexSubMatch sub;
  EXPECT_FALSE(trex_getsubexp(exp, -1, &sub));
  EXPECT_FALSE(trex_getsubexp(exp, static_cast<int>(c.groups.size()), &sub));
  trex_free(exp);
}

INSTANTIATE_TEST_SUITE_P(Groups, Captures, testing::Values(
    CaptureCase{"(a)|(b)", "b", {{0, 1}, {-1, 0}, {0, 1}}},
    CaptureCase{"x(a)|(b)", "b", {{0, 1}, {-1, 0}, {-1, 0}}},  // counter never reached 2
    CaptureCase{"(ab)*", "ababx", {{0, 4}, {0, 2}}},           // first round only
    CaptureCase{"a*(b)", "ab", {{0, 2}, {1, 1}}},              // recorded while a* looked ahead
    CaptureCase{"a*(b)", "aab", {{0, 3}, {-1, 0}}},            // a failed look-ahead used it up
    CaptureCase{"(?:a)(b)", "ab", {{0, 2}, {1, 1}}}));

TEST(Captures, GroupOutsideTheMatchKeepsWhatAnEarlierMatchWrote) {
  TrexExpression* exp = trex_compile("x(a)|b", nullptr);
  const char* first = "xa";
  ASSERT_TRUE(trex_search(exp, first, nullptr, nullptr));
  ASSERT_TRUE(trex_search(exp, "b", nullptr, nullptr));
  TrexSubMatch sub;
  ASSERT_TRUE(trex_getsubexp(exp, 1, &sub));
  EXPECT_EQ(sub.begin, first + 1);
  EXPECT_EQ(sub.len, 1);
  trex_free(exp);
}

}  // namespace
