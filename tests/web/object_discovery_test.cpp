// Plug-in object discovery: object elements, element ids, argument lists and
// the aliases they give through function parameters, embeds indexes.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <tuple>
#include <vector>

#include "APICheckEngine/PluginClassIds.h"
#include "support/EngineHost.h"
#include "web/ScannerFixture.h"

namespace {

using FlashEngine_1_00::APIAnalysis;

// The project's database has one group per plug-in class, in table order: a
// class misspelt in either place shows here.
TEST(PluginClassIds, MatchTheDatabaseGroupsInOrder) {
  using FlashEngine_1_00::pluginClassIdTable;
  std::string db = ReadFile(std::string(TARVO_SOURCE_DIR) + "/data/APIAnalEngineDB.xml");
  Texts groups, table(pluginClassIdTable, pluginClassIdTable + FlashEngine_1_00::kPluginClassIdCount);
  for (size_t at = db.find("\n  <MORVANE-"); at != std::string::npos; at = db.find("\n  <MORVANE-", at + 1))
    groups.push_back(db.substr(at + 4, db.find('>', at) - at - 4));
  EXPECT_EQ(groups, table);
}

TEST(EmbedsIndex, ReadsTheNumberBetweenFirstOpenAndLastClose) {
  APIAnalysis engine;
  const std::vector<std::pair<std::string, int>> cases = {
      {"document.embeds[1]", 1}, {"x = document . embeds [ 12 ] .Play(", 12}, {"e[]", 0}, {"", 0},
      {"a[1][2]", 1}, {"]x[2]", 2},  // "1][2" read up to its first non-digit; a `]` before the `[` does not count
      {"7abc", 7}, {"abc", 0},       // no `[`: the first byte alone
      {"x[3", 0}, {"x]3[", 0}, {"e[99999999999]", INT_MAX},  // no `]` after the `[`; saturated
  };
  for (auto c : cases) EXPECT_EQ(engine.parseEmbedsTagIndex(&c.first), c.second) << c.first;
}

const char kPage[] =
    "<html><body>\n<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>\n"
    "<OBJECT id='tuner' classid=\"clsid:MORVANE-NAVERTIX-TUNERINFO\">\n"
    "  <param name=\"a\" value=\"b\">\n</OBJECT>\n"
    "<object id=\"other\" classid=\"clsid:VENDOR-PLAYER\"></object>\n"
    "< object id=\"spaced\" classid=\"clsid:MORVANE-NAVERTIX-EPG\"></object>\n"
    "<object classid=\"clsid:MORVANE-NAVERTIX-EPG\" width=\"0\"></object>\n"
    "<object id=\"open\" classid=\"clsid:MORVANE-NAVERTIX-CLOCK\"><param name=\"x\">\n</body></html>\n";

TEST(ObjectTags, RecordsElementsThatNameAKnownPlugin) {
  APIAnalysis engine;
  std::string page = kPage;
  std::string path = "/tmp/0/www/index.html";
  EXPECT_TRUE(engine.FindObjectTags(&page, &path));
  EXPECT_EQ(expressionsOf(engine.objectTagList),
            (Texts{"MORVANE-NAVERTIX-KOB#<objectid=\"tv\"classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>",
                   // TUNERINFO is reported as TUNER, the earlier row; text between tags is not kept.
                   "MORVANE-NAVERTIX-TUNER#<OBJECTid='tuner'classid=\"clsid:MORVANE-NAVERTIX-TUNERINFO\">"
                   "<paramname=\"a\"value=\"b\"></OBJECT>",
                   "MORVANE-NAVERTIX-EPG#<objectclassid=\"clsid:MORVANE-NAVERTIX-EPG\"width=\"0\"></object>"}));

  // A tag ends at most 65537 bytes after its `<`.
  for (size_t length : {65538u, 65539u}) {
    std::string element = "<object id=\"far\" classid=\"MORVANE-NAVERTIX-EPG\"";
    element += std::string(length - element.size() - 1, ' ') + "></object>";
    APIAnalysis fresh;
    fresh.FindObjectTags(&element, &path);
    EXPECT_EQ(fresh.objectTagList.size(), length == 65538u ? 1u : 0u) << length;
  }
}

TEST(ObjectTags, ElementIdNeedsExactlyOneQuotedIdAttribute) {
  APIAnalysis engine;
  const std::string none = "_NO_CLASSID_FOUND_";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"KOB#<objectid=\"tv\"classid=\"clsid:MORVANE-NAVERTIX-KOB\">", "tv"},
      {"<object id = ' my tv ' >", " my tv "}, {"<object pid='a'>", "a"},  // inner blanks kept; any *id
      {"<object id=\"a\" name=\"b\" pid=\"c\">", none},  // two id-like attributes
      {"<object id=\"a\" pid='c'>", none},              // one of each quote kind
      {"<object id=\"a-b\">", none}, {"", none},
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
            "init('tv');\ninit( \"tv\" );\ntune(1, 'tuner');\nvar k = document.getElementById('tv');\n");
  APIAnalysis engine;
  Texts files = {dir.file("index.html"), dir.file("second.htm"), dir.file("app.js")};
  engine.FirstScanSource(&files);
  LogCapture::clear();
  engine.FindObjectTagToken();
  engine.FindObjectID();

  // One record per symbol (the first path kept); the alias records carry no scope.
  EXPECT_EQ(expressionsOf(engine.objectIdList),
            (Texts{"MORVANE-NAVERTIX-KOB#tv", "MORVANE-NAVERTIX-KOB#obj", "MORVANE-NAVERTIX-TUNER#tuner",
                   "MORVANE-NAVERTIX-TUNER#device", "MORVANE-NAVERTIX-EPG#_NO_CLASSID_FOUND_"}));
  EXPECT_EQ(engine.objectIdList[0]->filePath + engine.objectIdList[0]->scope, dir.file("index.html") + "Global");
  EXPECT_EQ(engine.objectIdList[1]->filePath + engine.objectIdList[1]->scope, dir.file("app.js"));
  Texts variations;
  for (const LogLine& line : LogCapture::lines())
    if (line.format == "[%s] VariationSymbol [%s]\t") variations.push_back(line.function + ":" + line.text);
  EXPECT_EQ(variations, (Texts{"FindObjectID:[FindObjectID] VariationSymbol [obj]\t",
                               "FindObjectID:[FindObjectID] VariationSymbol [device]\t"}));
}

// Every argument, read back position by position; the count comes from the
// position that a symbol matching nothing gets (count + 1).
Texts argumentsOf(APIAnalysis& engine, const std::string& text) {
  std::string name;
  int count = engine.funcParameterParsing(text, "\x01", name) - 1;
  Texts out;
  for (int i = 1; i <= count; ++i) out.push_back(engine.getParamterByPosition(text, i));
  for (int outside : {count + 1, 0, -1}) EXPECT_EQ(engine.getParamterByPosition(text, outside), "") << text;
  return out;
}

TEST(CallParameters, SplitsArgumentsWithTheExactBookkeeping) {
  APIAnalysis engine;
  const std::vector<std::pair<std::string, Texts>> cases = {
      {"f(a, b)", {"a", " b"}}, {"f()", {""}}, {"f", {}}, {"f(g(x), y)", {"g(x)", " y"}},
      {"f(g(x))", {"g(x"}},          // the second `)` follows the first and is not counted
      {"f(g(), y)", {"g(), y"}},     // nor is a `)` right after a `(`: no top-level comma then
      {"f(a, (b)+(c))", {"a"}},      // two closes after the comma drop the last argument
      {"f((a),b)", {"(a)", "b"}},    // a `(` right after the call's own is counted
      {"f(a,b", {"a"}},              // no close: no last argument
      {"init( 'tv' )", {" 'tv' "}},  // blanks and quotes kept
      {"f(a, g(x))", {"a", " g(x"}}, {"f(a,(b,c),d)", {"a", "(b,c)", "d"}},
  };
  for (const auto& c : cases) EXPECT_EQ(argumentsOf(engine, c.first), c.second) << c.first;
}

TEST(CallParameters, FindsTheSymbolsPositionAndTheCalledName) {
  APIAnalysis engine;
  const std::tuple<std::string, std::string, int, std::string> cases[] = {
      {"init( 'tv' )", "tv", 1, "init"}, {"init(a,b)", "tv", 3, "init"}, {"noCall", "x", 1, "unchanged"},
      {"init(a,\"tv\")", "'tv'", 2, "init"},  // quotes are removed on both sides
      {"init (a)", "a", 1, "init "},           // the name keeps its blank
      {"run(x,\n tv)", "tv", 2, "run"},        // line feeds are removed
  };
  for (const auto& [text, symbol, position, called] : cases) {
    std::string name = "unchanged";
    EXPECT_EQ(engine.funcParameterParsing(text, symbol, name), position) << text;
    EXPECT_EQ(name, called) << text;
  }
}

}  // namespace
