#include <gtest/gtest.h>

#include <string>

#include "unzip/EntryPath.h"

namespace {

struct Case {
  std::string name;
  bool withoutPath;
  EntryPath::Kind kind;
  std::string path;  // joined components when not unsafe
};

class EntryPathTest : public ::testing::TestWithParam<Case> {};

TEST_P(EntryPathTest, Parses) {
  const Case& c = GetParam();
  EntryPath parsed = ParseEntryPath(c.name.c_str(), c.withoutPath);
  EXPECT_EQ(parsed.kind, c.kind) << c.name;
  if (c.kind != EntryPath::kUnsafe) {
    EXPECT_EQ(parsed.joined(), c.path) << c.name;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Names, EntryPathTest,
    ::testing::Values(
        // Ordinary names; backslashes separate like slashes; "." and empty
        // components vanish.
        Case{"app/www/index.html", false, EntryPath::kFile, "app/www/index.html"},
        Case{"app/www/", false, EntryPath::kDirectory, "app/www"},
        Case{"app\\www\\main.js", false, EntryPath::kFile, "app/www/main.js"},
        Case{"app\\", false, EntryPath::kDirectory, "app"},
        Case{"./a//b/./c.txt", false, EntryPath::kFile, "a/b/c.txt"},
        Case{"..a/b..", false, EntryPath::kFile, "..a/b.."},
        // Without stored directories.
        Case{"app/www/index.html", true, EntryPath::kFile, "index.html"},
        Case{"app/www/", true, EntryPath::kNothing, ""},
        // Escapes and names that leave nothing.
        Case{"../x", false, EntryPath::kUnsafe, ""},
        Case{"a/../../x", false, EntryPath::kUnsafe, ""},
        Case{"a/../b", true, EntryPath::kUnsafe, ""},
        Case{"..\\x", false, EntryPath::kUnsafe, ""},
        Case{"/etc/x", false, EntryPath::kUnsafe, ""},
        Case{"\\etc\\x", false, EntryPath::kUnsafe, ""},
        Case{"", false, EntryPath::kUnsafe, ""},
        Case{".", false, EntryPath::kUnsafe, ""}));

}  // namespace
