// Lines of first occurrences found for many needles in one pass must equal
// what a plain search for each needle gives.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "APICheckEngine/FirstOccurrences.h"

namespace {

using FlashEngine_1_00::FirstOccurrenceLines;

// The rule written out plainly: first occurrence anywhere in the text, then
// one plus the line feeds at positions 1..p, stopping at a zero byte.
int ReferenceLine(const std::string& text, const std::string& needle) {
  size_t p = text.find(needle);
  if (p == std::string::npos) return 0;
  int line = 1;
  for (size_t i = 1; i <= p && text[i] != '\0'; ++i) line += text[i] == '\n';
  return text[0] == '\0' ? 1 : line;
}

TEST(FirstOccurrenceLines, AgreesWithOneSearchPerNeedle) {
  std::mt19937 random(7);
  const char alphabet[] = {'a', 'b', 'a', 'b', '\n', ' ', '(', '\0'};
  auto randomText = [&](size_t length) {
    std::string text;
    for (size_t i = 0; i < length; ++i) text += alphabet[random() % sizeof alphabet];
    return text;
  };
  for (int round = 0; round < 3000; ++round) {
    std::string text = randomText(random() % 120);
    std::vector<std::string> needles;
    for (int k = 0; k < 12; ++k) {
      if (random() % 2 && !text.empty()) {
        size_t from = random() % text.size();
        needles.push_back(text.substr(from, 1 + random() % 6));  // occurs, maybe again earlier
      } else {
        needles.push_back(randomText(random() % 5));  // maybe empty, maybe absent
      }
    }
    FirstOccurrenceLines batch;
    std::vector<size_t> ids;
    for (const std::string& needle : needles) ids.push_back(batch.add(needle));
    std::vector<int> lines = batch.linesIn(text);
    for (size_t k = 0; k < needles.size(); ++k) {
      ASSERT_EQ(lines[ids[k]], ReferenceLine(text, needles[k]))
          << "round " << round << " needle " << k << " of length " << needles[k].size();
    }
  }
}

TEST(FirstOccurrenceLines, NestedAndRepeatedNeedles) {
  const std::string text = "var tv;\ninit();\n tv.A();\n mytv.A();\n tv.A();\n x.tv.A(1)\n";
  FirstOccurrenceLines batch;
  size_t whole = batch.add("tv.A()");
  size_t inner = batch.add("A()");
  size_t again = batch.add("tv.A()");
  size_t longer = batch.add("x.tv.A(1)");
  size_t absent = batch.add("tv.B()");
  EXPECT_EQ(whole, again);
  std::vector<int> lines = batch.linesIn(text);
  EXPECT_EQ(lines[whole], 3);
  EXPECT_EQ(lines[inner], 3);
  EXPECT_EQ(lines[longer], 6);
  EXPECT_EQ(lines[absent], 0);
}

TEST(SymbolNeedle, SkipsLeadingSeparatorsUnlessNothingIsLeft) {
  EXPECT_EQ(FlashEngine_1_00::SymbolNeedle(" (\"tv"), "tv");
  EXPECT_EQ(FlashEngine_1_00::SymbolNeedle(";tv.A()"), ";tv.A()");  // ';' lies inside '0'..'z'
  EXPECT_EQ(FlashEngine_1_00::SymbolNeedle("{|~tv"), "tv");         // '{', '|', '~' lie above 'z'
  EXPECT_EQ(FlashEngine_1_00::SymbolNeedle(" \t("), " \t(");
  EXPECT_EQ(FlashEngine_1_00::SymbolNeedle(std::string("\xc3\xa9tv")), "tv");  // bytes above 0x7f, as unsigned
}

}  // namespace
