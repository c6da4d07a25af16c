#include <gtest/gtest.h>

#include "strutil/CStringUtil.h"

namespace {

TEST(CustomReplace, ReplacesEveryOccurrenceWithoutRescanning) {
  const struct {
    const char *text, *from, *to, *expected;
  } cases[] = {
      {"a b  c", " ", "", "abc"},
      {"aaa", "a", "aa", "aaaaaa"},  // inserted text is not scanned again
      {"abab", "ab", "b", "bb"},
      {"xyz", "", "q", "xyz"},  // an empty search text changes nothing
  };
  CStringUtil util;
  for (const auto& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(util.customReplace(text, c.from, c.to), c.expected) << c.text << " / " << c.from;
  }
}

TEST(FindFileExtentionAndMidString, TakeTheExtensionAndALengthNotAnEnd) {
  CStringUtil util;
  EXPECT_EQ(util.findFileExtention("a.min.js"), "js");
  EXPECT_EQ(util.findFileExtention("/tmp/0/INDEX.HTML"), "HTML");
  EXPECT_EQ(util.findFileExtention("noextension"), "");
  EXPECT_EQ(util.findMidString("abc(de)", 4, 2), "de");
  EXPECT_EQ(util.findMidString("abc", 1, 100), "bc");
  EXPECT_EQ(util.findMidString("abc", 3, 1), "");
  EXPECT_EQ(util.findMidString("abc", 1, -1), "");
}

TEST(StringTokenizer, SplitsAtTheWholeDelimiterAndDropsEmptyPieces) {
  const struct {
    const char *delimiter, *text;
    std::vector<std::string> pieces;
  } cases[] = {
      {"#@x441#", "ActionPush#@x441#type#@x442#0", {"ActionPush", "type#@x442#0"}},
      {"/", "/tmp/0/app/www/index.html", {"tmp", "0", "app", "www", "index.html"}},
      {"#", "##a###b#", {"a", "b"}},
      {"#", "", {}},
      {"ab", "xaby", {"x", "y"}},  // the delimiter is not a set of characters
      {"ab", "xbay", {"xbay"}},
  };
  CStringUtil util;
  for (const auto& c : cases) {
    std::vector<std::string> tokens = {"stale"};
    util.stringTokenizer(c.delimiter, c.text, tokens);
    EXPECT_EQ(tokens, c.pieces) << c.text;
  }
}

}  // namespace
