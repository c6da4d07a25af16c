// Plug-in object discovery: class identifiers, object elements, element ids,
// aliases through function parameters, embeds indexes.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/PluginClassIds.h"
#include "support/EngineHost.h"

namespace {

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::kPluginClassIdCount;
using FlashEngine_1_00::pluginClassIdTable;

TEST(PluginClassIds, FollowTheDatabaseGroupsInOrder) {
  // The project's database has one group per class identifier, in table order.
  std::string db = ReadFile(std::string(TARVO_SOURCE_DIR) + "/data/APIAnalEngineDB.xml");
  std::vector<std::string> groups;
  for (size_t at = db.find("\n  <MORVANE-"); at != std::string::npos; at = db.find("\n  <MORVANE-", at + 1)) {
    size_t begin = at + 4;
    groups.push_back(db.substr(begin, db.find('>', begin) - begin));
  }
  ASSERT_EQ(groups.size(), kPluginClassIdCount);
  for (size_t i = 0; i < kPluginClassIdCount; ++i) EXPECT_EQ(groups[i], pluginClassIdTable[i]) << i;
}

TEST(EmbedsIndex, ReadsTheNumberBetweenFirstOpenAndLastClose) {
  APIAnalysis engine;
  const std::vector<std::pair<std::string, int>> cases = {
      {"document.embeds[1]", 1},
      {"x = document . embeds [ 12 ] .Play(", 12},
      {"a[1][2]", 1},       // "1][2" read up to its first non-digit
      {"]x[2]", 2},         // a `]` before the first `[` does not count
      {"7abc", 7},          // no `[`: the first byte alone
      {"abc", 0},
      {"e[]", 0},
      {"x[3", 0},           // no `]` after the `[`
      {"x]3[", 0},
      {"e[99999999999]", INT_MAX},
      {"", 0},
  };
  for (const auto& c : cases) {
    std::string text = c.first;
    EXPECT_EQ(engine.parseEmbedsTagIndex(&text), c.second) << c.first;
  }
}

}  // namespace
