// What compiles and how the dialect matches: non-backtracking repeats,
// committing alternation, anchors and the terminator, boundaries, classes and
// captures.
#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "TrexTestSupport.h"

namespace {

TEST(Dialect, CompileErrors) { expectMarks({
    {"a|", "", "error: letter expected"},
    {"a\xe9", "", "error: letter expected"},  // judged as an unsigned byte
    {"[a-\t]", "", "error: letter expected"},
    {"[a", "", "error: letter expected"},  // a class that reaches the terminator
    {"[^", "", "error: letter expected"},
    {"[\\d", "", "error: letter expected"},
    {"a{1234567890}", "", "error: overflow in numeric constant"},
    {"a{123456789}", "", ""},  // compiles
    {"(?x)", "", "error: expected paren"},
    {"()", "", "error: expected paren"},  // the ')' is a literal, the group stays open
    {"a{1,2", "", "error: expected paren"},
    {"[]", "", "error: empty class"},
    {"[a-]", "", "error: unfinished range"},
    {"[a-", "", "error: invalid range"},  // the terminator is below the item's node index
    {std::string(55, 'a') + "[0-9]", "", ""},  // item node 57, end byte '9' (57)
    {std::string(56, 'a') + "[0-9]", "", "error: invalid range"},
    {"[\\d-z]", "", "error: cannot use character classes in ranges"},
    {"a{,2}", "", "error: number expected"},
    {"a{1x}", "", "error: , or } expected"},
    {"a**", "", "error: unexpected character"},  // one quantifier per element, no stray bytes
    {"", "", "error: unexpected character"},
    {"a\\", "", "error: unexpected character"},
    {"[a-\\", "", "error: unexpected character"},
}); }

TEST(Dialect, FirstMatch) { expectMarks({
    // repeats stop early and never give back
    {"a*a", "aaa", "«aa»a"},               // stops as soon as the next element matches
    {"a+ab", "aaab", "a«aab»"},            // never gives a round back
    {"\\w+\\s*", "ab  c", "«ab  »c"},      // a following min-0 repeat is not consulted
    {"a{3,2}", "aaaa", "aaaa"},
    {"a{65537,65539}", "aaaa", "«aaa»a"},  // bounds keep their low 16 bits
    {"ba{65536}", "baa", "«b»aa"},         // {n} is min and max
    {"a*?", "aa?", "«aa?»"},               // one quantifier, then a literal '?'
    // alternation commits
    {"(a|ab)c", "abc", "abc"},
    {"(a*)a", "aaa", "«aa»a"},             // a group hands its continuation on
    {"(a*)a|x", "aaa", "aaa"},             // an alternative's nodes have none
    {"a||b", "x|b", "x«|b»"},              // '|' or ')' where an element starts is a literal
    {")", "a)", "a«)»"},
    // anchors and the terminator
    {"^a", "ba", "ba"},
    {"a$", "aba", "ab«a»"},
    {"$", "ab", "ab"},                     // the end itself is never a start
    {"[^a]", "", ""},                      // an empty text is not searched
    {"a.", "a", "«a<NUL>»"},               // the terminator can be consumed...
    {"a[^b]", "a", "«a<NUL>»"},
    {"a.*", "ab", "«ab»"},                 // a repeat stops once it reaches the end
    {"a..", "a", "a"},                     // ...but nothing after it
    // boundaries
    {"a\\bx", "ax y", "«ax» y"},           // judged by the byte and the one after it
    {"\\bx", "x", "«x»"},
    {"\\b x", " x", "« x»"},
    {"x\\b", "x", "«x»"},
    {"x \\B", "x ", "«x »"},
    // classes and escapes
    {"[\\w\\_]+", "ab_c d", "«ab_c» d"},
    {"[-a]+", "x-a-", "x«-a-»"},
    {"[z-a]", "az", "az"},                 // reversed range: accepted, matches nothing
    {"[a-c-e]+", "d-eab", "d«-eab»"},
    {"[\\b]", "ab", "a«b»"},
    {"[a-\\\xff]+", "`\xe9\xff", "`«\xe9\xff»"},  // bytes compare unsigned
    {"a\\tb\\n", "a\tb\n", "«a\tb\n»"},
    {"\\L\\U\\y\\.", "LUy.", "«LUy.»"},     // letters without a class are literals
}); }

// Every class letter, bare, in brackets and negated, on all 256 byte values,
// against the C library's classification of the byte as unsigned.
int isWord(int c) { return std::isalnum(c) || c == '_'; }
bool matchesByte(const std::string& pattern, int byte) {
  const char subject[2] = {static_cast<char>(byte), '\0'};
  const char* end = nullptr;
  return trex_searchrange(Compiled(pattern).exp, subject, subject + 1, nullptr, &end) && end == subject + 1;
}

TEST(Dialect, ClassLettersAgreeWithTheCClassificationOnEveryByte) {
  // The letter of the class, then (when there is one) the letter of its complement.
  const std::pair<const char*, int (*)(int)> classes[] = {{"aA", isalpha}, {"cC", iscntrl}, {"dD", isdigit},
      {"l", islower}, {"pP", ispunct}, {"sS", isspace}, {"u", isupper}, {"wW", isWord}, {"xX", isxdigit}};
  for (const auto& [letters, test] : classes) {
    for (int negative = 0; letters[negative] != '\0'; ++negative) {
      const std::string escape = std::string("\\") + letters[negative];
      for (int byte = 0; byte < 256; ++byte) {
        const bool in = (test(byte) != 0) != (negative == 1);
        ASSERT_EQ(matchesByte(escape, byte), in) << escape << " on byte " << byte;
        ASSERT_EQ(matchesByte("[" + escape + "]", byte), in) << escape << " in brackets, byte " << byte;
        ASSERT_EQ(matchesByte("[^" + escape + "]", byte), !in) << escape << " negated, byte " << byte;
      }
    }
  }
}

TEST(Dialect, CapturesRecordedOnFirstEntryAndClearedOnFailure) {
  EXPECT_EQ(spansOf("(a)|(b)", "b"), (Spans{{0, 1}, {-1, 0}, {0, 1}}));
  EXPECT_EQ(spansOf("x(a)|(b)", "b"), (Spans{{0, 1}, {-1, 0}, {-1, 0}}));  // counter never reached 2
  EXPECT_EQ(spansOf("(ab)*", "ababx"), (Spans{{0, 4}, {0, 2}}));            // first round only
  EXPECT_EQ(spansOf("a*(b)", "ab"), (Spans{{0, 2}, {1, 1}}));               // recorded while a* looked ahead
  EXPECT_EQ(spansOf("a*(b)", "aab"), (Spans{{0, 3}, {-1, 0}}));             // a failed look-ahead used it up
  EXPECT_EQ(spansOf("(?:a)(b)", "ab"), (Spans{{0, 2}, {1, 1}}));
  // A group outside the next match keeps what the earlier one wrote.
  Compiled c("x(a)|b");
  const char* first = "xa";
  ASSERT_TRUE(trex_search(c.exp, first, nullptr, nullptr) && trex_search(c.exp, "b", nullptr, nullptr));
  EXPECT_EQ(groupSpans(c.exp, first)[1], std::make_pair(1L, 1));
}

}  // namespace
