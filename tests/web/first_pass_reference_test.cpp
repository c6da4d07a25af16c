// The first pass's indexed excerpt and function-block cutters against the
// plain byte-by-byte reading of the same rules, on random texts built from
// the bytes those rules look at.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "APICheckEngine/SourceScan.h"

namespace {

using FlashEngine_1_00::sourcescan::Block;
using FlashEngine_1_00::sourcescan::Excerpt;
using FlashEngine_1_00::sourcescan::FunctionBlockCutter;
using FlashEngine_1_00::sourcescan::findExcerpts;

std::vector<Excerpt> plainExcerpts(const std::string& t) {
  std::vector<Excerpt> out;
  const size_t n = t.size();
  for (size_t k = 0; k + 8 < n; ++k) {
    bool hit = t[k] == '$' && (t[k + 1] == '_' || t[k + 1] == '(' ||
                               (t[k + 1] == ' ' && (t[k + 2] == '_' || t[k + 2] == '(')));
    std::string word = t.substr(k, 8);
    for (char& c : word) c = static_cast<char>(toupper(static_cast<unsigned char>(c)));
    if (!hit && word != "DOCUMENT") continue;
    size_t first = k;
    while (first > 0 && t[first] != ' ') --first;
    size_t width = std::min(n - k - 1, size_t(430));
    while (t[first + width] != ' ' && first + width < n - 1) ++width;
    out.push_back({first, width});
  }
  return out;
}

// The last byte at which the `{` and `}` counted from `from` are positive and
// equal, looking no further than `limit`.
bool plainBalance(const std::string& t, size_t from, size_t limit, size_t* at) {
  long open = 0, close = 0;
  for (size_t i = from; i <= limit && i < t.size(); ++i) {
    open += t[i] == '{';
    close += t[i] == '}';
    if (open > 0 && open == close) {
      *at = i;
      return true;
    }
  }
  return false;
}

std::vector<Block> plainBlocks(const std::string& t) {
  std::vector<Block> out;
  for (size_t p = t.find("function"); p != std::string::npos; p = t.find("function", p + 1)) {
    size_t open = t.find('(', p + 1), close = t.find(')', p + 1), end = 0;
    if (open == std::string::npos || close == std::string::npos) continue;
    if (plainBalance(t, std::max(open, close) + 1, t.size() - 1, &end)) out.push_back({p > 100 ? p - 100 : 0, end});
  }
  return out;
}

std::string randomText(std::mt19937& random, size_t length) {
  static const char* const kPieces[] = {"function", "function f(a)", "(", ")", "{", "}", "{", "}", " ", " ", "\n",
                                        "ab", "$(", "$_", "$ (", "$ x", "document", "DoCuMeNt", "x"};
  std::string text;
  while (text.size() < length) text += kPieces[random() % (sizeof(kPieces) / sizeof(kPieces[0]))];
  return text;
}

TEST(FirstPassIndexes, GiveThePlainReadingsAnswers) {
  std::mt19937 random(20261123);
  for (int round = 0; round < 300; ++round) {
    // Lengths around the 430-byte excerpt width and many 128-byte chunks.
    const std::string text = randomText(random, 1 + random() % (round < 200 ? 900 : 6000));
    SCOPED_TRACE(text);
    ASSERT_EQ(findExcerpts(text), plainExcerpts(text));

    FunctionBlockCutter cutter(text.c_str(), text.size());
    std::vector<Block> blocks;
    cutter.forEachBlock([&](const Block& b) {
      blocks.push_back(b);
      return true;
    });
    ASSERT_EQ(blocks, plainBlocks(text));

    for (int query = 0; query < 40; ++query) {
      const size_t from = random() % (text.size() + 1);
      const size_t limit = from + random() % (text.size() + 1 - from);
      size_t fast = 0, plain = 0;
      const bool found = cutter.bodyEnd(from, limit, &fast);
      ASSERT_EQ(found, plainBalance(text, from, limit, &plain)) << from << " " << limit;
      if (found) {
        ASSERT_EQ(fast, plain) << from << " " << limit;
      }
    }
  }
}

}  // namespace
