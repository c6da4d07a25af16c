// Plug-in object discovery: class identifiers, object elements, element ids,
// aliases through function parameters, embeds indexes.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "web/RecordTexts.h"
#include "APICheckEngine/PluginClassIds.h"
#include "support/EngineHost.h"
#include "support/LogCapture.h"

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

const char kPage[] =
    "<html><body>\n"
    "<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>\n"
    "<OBJECT id='tuner' classid=\"clsid:MORVANE-NAVERTIX-TUNERINFO\">\n"
    "  <param name=\"a\" value=\"b\">\n"
    "</OBJECT>\n"
    "<object id=\"other\" classid=\"clsid:VENDOR-PLAYER\"></object>\n"
    "< object id=\"spaced\" classid=\"clsid:MORVANE-NAVERTIX-EPG\"></object>\n"
    "<object classid=\"clsid:MORVANE-NAVERTIX-EPG\" width=\"0\"></object>\n"
    "<object id=\"open\" classid=\"clsid:MORVANE-NAVERTIX-CLOCK\"><param name=\"x\">\n"
    "</body></html>\n";

TEST(ObjectTags, RecordsElementsThatNameAKnownPlugin) {
  APIAnalysis engine;
  std::string page = kPage;
  std::string path = "/tmp/0/www/index.html";
  EXPECT_TRUE(engine.FindObjectTags(&page, &path));
  const std::vector<std::string> tags = {
      "MORVANE-NAVERTIX-KOB#<objectid=\"tv\"classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>",
      // TUNERINFO is reported as TUNER, the earlier row; text between tags is not kept.
      "MORVANE-NAVERTIX-TUNER#<OBJECTid='tuner'classid=\"clsid:MORVANE-NAVERTIX-TUNERINFO\">"
      "<paramname=\"a\"value=\"b\"></OBJECT>",
      "MORVANE-NAVERTIX-EPG#<objectclassid=\"clsid:MORVANE-NAVERTIX-EPG\"width=\"0\"></object>",
  };
  ASSERT_EQ(expressionsOf(engine.objectTagList), tags);
  const std::vector<std::string> classes = {"MORVANE-NAVERTIX-KOB", "MORVANE-NAVERTIX-TUNER", "MORVANE-NAVERTIX-EPG"};
  ASSERT_EQ(expressionsOf(engine.objectClassList), classes);
  EXPECT_EQ(engine.objectTagList[0]->scope, "Global");
  EXPECT_EQ(engine.objectClassList[2]->filePath, path);

  // An element with an unknown class counts as seen; a page without any does not.
  std::string vendorOnly = "<object classid=\"clsid:VENDOR\"></object>";
  std::string noObject = "<div id=\"tv\"></div>";
  EXPECT_TRUE(engine.FindObjectTags(&vendorOnly, &path));
  EXPECT_FALSE(engine.FindObjectTags(&noObject, &path));
  EXPECT_EQ(engine.objectTagList.size(), 3u);

  // A tag ends at most 65537 bytes after its `<`.
  for (size_t length : {65538u, 65539u}) {
    std::string element = "<object id=\"far\" classid=\"MORVANE-NAVERTIX-EPG\"";
    element += std::string(length - element.size() - 1, ' ') + "></object>";
    FlashEngine_1_00::APIAnalysis fresh;
    fresh.FindObjectTags(&element, &path);
    EXPECT_EQ(fresh.objectTagList.size(), length == 65538u ? 1u : 0u) << length;
  }
}

TEST(ObjectTags, ElementIdNeedsExactlyOneQuotedIdAttribute) {
  APIAnalysis engine;
  const std::string none = "_NO_CLASSID_FOUND_";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"KOB#<objectid=\"tv\"classid=\"clsid:MORVANE-NAVERTIX-KOB\">", "tv"},
      {"<object id = ' my tv ' >", " my tv "},  // inner blanks kept
      {"<object pid='a'>", "a"},
      {"<object id=\"a\" name=\"b\" pid=\"c\">", none},  // two id-like attributes
      {"<object id=\"a\" pid='c'>", none},              // one of each quote kind
      {"<object id=\"a-b\">", none},
      {"<object classid=\"clsid:X\">", none},
      {"", none},
  };
  for (const auto& c : cases) EXPECT_EQ(engine.parseObjectID(c.first), c.second) << c.first;
}

TEST(ObjectIds, FollowIdsIntoFunctionParameters) {
  TempDir dir;
  WriteFile(dir.file("index.html"), kPage);
  WriteFile(dir.file("second.htm"), "<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>");
  WriteFile(dir.file("app.js"),
            "function init(obj) { obj.Play(); }\n"
            "function tune(a, device) { device.SetChannel(a); }\n"
            "var helpers = { getElementById : function (node) { return node; } };\n"
            "init('tv');\n"
            "init( \"tv\" );\n"
            "tune(1, 'tuner');\n"
            "var k = document.getElementById('tv');\n");
  APIAnalysis engine;
  std::vector<std::string> files = {dir.file("index.html"), dir.file("second.htm"), dir.file("app.js")};
  engine.FirstScanSource(&files);
  LogCapture::clear();
  EXPECT_EQ(engine.FindObjectTagToken(), RUN_SUCCESS);
  EXPECT_EQ(engine.FindObjectID(), RUN_SUCCESS);

  const std::vector<std::string> ids = {
      "MORVANE-NAVERTIX-KOB#tv",  "MORVANE-NAVERTIX-KOB#obj", "MORVANE-NAVERTIX-TUNER#tuner",
      "MORVANE-NAVERTIX-TUNER#device", "MORVANE-NAVERTIX-EPG#_NO_CLASSID_FOUND_",
  };
  ASSERT_EQ(expressionsOf(engine.objectIdList), ids);
  EXPECT_EQ(engine.objectIdList[0]->filePath, dir.file("index.html"));  // first path kept
  EXPECT_EQ(engine.objectIdList[0]->scope, "Global");
  EXPECT_EQ(engine.objectIdList[1]->scope, "");  // aliases carry no scope
  EXPECT_EQ(engine.objectIdList[1]->filePath, dir.file("app.js"));

  std::vector<std::string> variations;
  for (const LogLine& line : LogCapture::lines()) {
    if (line.format == "[%s] VariationSymbol [%s]\t") variations.push_back(line.function + ":" + line.text);
  }
  const std::vector<std::string> expected = {"FindObjectID:[FindObjectID] VariationSymbol [obj]\t",
                                             "FindObjectID:[FindObjectID] VariationSymbol [device]\t"};
  EXPECT_EQ(variations, expected);
}

}  // namespace
