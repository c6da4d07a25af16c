// Comment and blank-line removal, through the exported C functions. Output
// buffers are exactly as long as the input, so AddressSanitizer catches any
// write past the room the contract promises.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"

namespace {

using Stripper = int (*)(const char*, int, char*);

std::string run(Stripper strip, const std::string& input) {
  std::vector<char> out(input.size());
  int written = strip(input.data(), static_cast<int>(input.size()), out.data());
  EXPECT_LE(written, static_cast<int>(input.size()));
  return std::string(out.data(), static_cast<size_t>(written));
}

struct Case {
  std::string input;
  std::string expected;
};

TEST(DeleteComment, RemovesCommentsWithTheirQuirks) {
  const std::string zero(1, '\0');
  const std::vector<Case> cases = {
      {"a/* x */b", "ab"},
      {"a/* x *//* y */b", "a/* y */b"},  // the byte after a closer is copied unexamined
      {"a/*/b*/c", "ac"},                 // `/*/` does not close
      {"x // note\ny", "x \ny"},          // the line feed survives
      {"var s = \"a//b\"; var o = 1;\nz", "var s = \"a\nz"},  // no string literals
      {"a*/b", "a*/b"},
      {"a/", "a/"},
      {"//1\n//2\n", "\n\n"},
      {"a// to the end", "a" + zero},   // one zero byte past the end
      {"a/* never closed", "a" + zero},
      {"a/**/", "a" + zero},           // closer at the very end
      {"a/* x */\nb", "a\nb"},
  };
  for (const Case& c : cases) EXPECT_EQ(run(delete_comment, c.input), c.expected) << c.input;
  EXPECT_EQ(delete_comment("abc", 0, nullptr), 0);
}

TEST(DeleteBlankline, DropsWhitespaceOnlyLines) {
  const std::string longLine(3000, 'x');
  const std::vector<Case> cases = {
      {"a\n\n  \t\nb\n", "a\n\nb\n"},  // a run of dropped lines becomes one line feed
      {" \n\na\n", "\na\n"},
      {"a\nb\n", "a\nb\n"},
      {"a\n \n", "a\n"},               // trailing dropped lines leave nothing
      {"\n\nb", "b"},                  // a last line without feed is written as it stands
      {"a\n \t", "a\n \t"},
      {"a\r\n\r\nb\n", "a\r\n\r\nb\n"},  // a carriage return is not blank
      {longLine + "\n\n" + longLine, longLine + "\n" + longLine},
  };
  for (const Case& c : cases) EXPECT_EQ(run(delete_blankline, c.input), c.expected) << c.input.substr(0, 20);
}

}  // namespace
