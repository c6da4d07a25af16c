#include <gtest/gtest.h>

#include "strutil/CStringUtil.h"

namespace {

struct ReplaceCase {
  const char* text;
  const char* from;
  const char* to;
  const char* expected;
};

TEST(CustomReplace, ReplacesEveryOccurrenceWithoutRescanning) {
  const ReplaceCase cases[] = {
      {"a b  c", " ", "", "abc"},
      {"aaa", "a", "aa", "aaaaaa"},        // inserted text is not scanned again
      {"abab", "ab", "b", "bb"},
      {"xyz", "", "q", "xyz"},             // empty search text changes nothing
      {"line\nline\n", "\n", "", "lineline"},
      {"Execute(\"Play\")", "\"", "", "Execute(Play)"},
      {"", "a", "b", ""},
      {"aXbXc", "X", "--", "a--b--c"},
  };
  CStringUtil util;
  for (const ReplaceCase& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(util.customReplace(text, c.from, c.to), c.expected) << c.text << " / " << c.from;
  }
}

TEST(FindFileExtention, TakesTextAfterLastDotWithCaseKept) {
  const std::pair<const char*, const char*> cases[] = {
      {"a.min.js", "js"}, {"/tmp/0/app/INDEX.HTML", "HTML"}, {"movie.Swf", "Swf"},
      {"noextension", ""}, {"dir.d/file", "d/file"}, {"trailing.", ""},
  };
  CStringUtil util;
  for (const auto& c : cases) EXPECT_EQ(util.findFileExtention(c.first), c.second) << c.first;
}

TEST(FindMidString, TakesLengthNotEndIndex) {
  CStringUtil util;
  EXPECT_EQ(util.findMidString("abc(de)", 4, 2), "de");
  EXPECT_EQ(util.findMidString("abc(de)", 0, 3), "abc");
  EXPECT_EQ(util.findMidString("abc", 1, 100), "bc");
  EXPECT_EQ(util.findMidString("abc", 3, 1), "");
  EXPECT_EQ(util.findMidString("abc", 7, 1), "");
  EXPECT_EQ(util.findMidString("abc", 1, -1), "");
  EXPECT_EQ(util.findMidString("abc", -1, 2), "");
}

struct TokenCase {
  const char* delimiter;
  const char* text;
  std::vector<std::string> pieces;
};

TEST(StringTokenizer, SplitsAtWholeDelimiterAndDropsEmptyPieces) {
  const TokenCase cases[] = {
      {"#@x441#", "ActionPush#@x441#type#@x442#0", {"ActionPush", "type#@x442#0"}},
      {"/", "/tmp/0/app/www/index.html", {"tmp", "0", "app", "www", "index.html"}},
      {"#", "MORVANE-NAVERTIX-KOB#tv", {"MORVANE-NAVERTIX-KOB", "tv"}},
      {"#", "##a###b#", {"a", "b"}},
      {"#", "", {}},
      {"#", "#", {}},
      {"#@x442#", "value#@x442#", {"value"}},     // a trailing empty value is dropped
      {"ab", "xaby", {"x", "y"}},                 // the delimiter is not a set of characters
      {"ab", "xbay", {"xbay"}},
  };
  CStringUtil util;
  for (const TokenCase& c : cases) {
    std::vector<std::string> tokens = {"stale"};
    util.stringTokenizer(c.delimiter, c.text, tokens);
    EXPECT_EQ(tokens, c.pieces) << c.text;
  }
}

}  // namespace
