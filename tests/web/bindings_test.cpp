// Object variable binding: look-ups that name plug-in symbols, the variables
// they are assigned to, and the line of a symbol's first occurrence, found
// one at a time or for many needles in one pass.
#include <cstring>
#include <random>
#include <tuple>

#include "APICheckEngine/FirstOccurrences.h"
#include "web/ScannerFixture.h"

namespace {

const char kPath[] = "/tmp/0/app/www/js/main.js";

class BindingsTest : public ScannerFixture {
 protected:
  void add(std::vector<Record*>& list, std::initializer_list<const char*> expressions) {
    for (const char* e : expressions) list.push_back(record(e, "Global", kPath));
  }
};

TEST_F(BindingsTest, LookUpsAreDeclaredWithTheFirstMatchingSymbolsClassEmbedsOncePerSymbolInReverse) {
  add(engine.objectIdList, {"KOB#tv", "TUNER#tuner", "EPG#b", "CHANNEL#a"});
  engine.objectIdList.push_back(record("SKIPPED#guide", "", "", "Func"));  // text "Func": not a symbol
  add(engine.objectTagList, {"tag", "tag", "tag", "tag", "tag", "tag"});    // more elements than symbols
  add(engine.objectAccessList, {"t=document.getElementById(\"tv\")", "x=$( 'tuner' )", "y=$(\"menu\")",
                                "z=$(\"mytv\")", "g=$(\"guide\")", "f($(\"a\"), $(\"b\"))"});
  add(engine.embedsAccessList, {"e0=document.embeds[0]", "e2=document.embeds[ 2 ]", "e4=document.embeds[4]"});
  EXPECT_EQ(engine.FindDeclareListValidation(), RUN_SUCCESS);
  Texts expected = {"KOB#t=document.getElementById(\"tv\")", "TUNER#x=$( 'tuner' )", "EPG#f($(\"a\"), $(\"b\"))"};
  expected.insert(expected.end(), 4, "EPG#e2=document.embeds[ 2 ]");
  expected.insert(expected.end(), 4, "KOB#e0=document.embeds[0]");
  EXPECT_EQ(expressionsOf(engine.declareList), expected);
  EXPECT_EQ(engine.declareList.back()->accessText, "e0=document.embeds[0]");
  EXPECT_EQ(engine.declareList.back()->filePath, kPath);
}

TEST_F(BindingsTest, AssignmentsBecomeBindings) {
  addSource(kPath, "var x;\n\nfunction init() {\n  tv = document.getElementById('tv');\n}\n");
  const std::string lookUp = "tv = document.getElementById('tv')";
  addFunction(kPath, "function a()", "{ " + lookUp + " }");
  addFunction("/tmp/0/app/www/other.js", "function b()", "{ b " + lookUp + " }");
  addFunction(kPath, "function init()", "{\n  " + lookUp + ";\n}");
  for (const char* e : {"K#tv = document.getElementById('tv')", "K#this.player=$(\"player\")",
                        "K#a = b = document.getElementById('tv')", "K#x==$(\"tv\")",
                        "K#document.getElementById('tv').Open(", "K# $(\"tv\").Play(", "K#obj.tv=$(\"tv\")"}) {
    engine.declareList.push_back(record(e, "Global", kPath, "", std::strchr(e, '#') + 1));
  }
  EXPECT_EQ(engine.FindObjectVariable(), RUN_SUCCESS);
  Texts bindings;
  for (const Record* r : engine.objectVariableList) bindings.push_back(*r->expression + " " + r->scope);
  EXPECT_EQ(bindings, (Texts{"K#tv Func", "K#this.player Src", "K#a Func", "K#b Func", "K#x Func", "K#obj.tv Func"}));
  // The last block of the same file that contains the look-up gives the text.
  EXPECT_EQ(engine.objectVariableList[0]->text, "{\n  " + lookUp + ";\n}");
  EXPECT_EQ(engine.objectVariableList[2]->text, "");
  EXPECT_EQ(engine.objectVariableList[0]->line, 4);
  EXPECT_EQ(engine.objectVariableList[4]->line, 1);  // first occurrence of "x"
}

TEST_F(BindingsTest, LineOfAFirstOccurrence) {
  addSource(kPath, "var tv;\nfunction f() {\n  tv.Play();\n}\n");
  addSource("/lf.js", "\nvar tv;\r\nx\r\n(tv2)\n");
  // Leading bytes outside '0'..'z' are skipped unless nothing is left.
  std::tuple<std::string, std::string, int> cases[] = {
      {kPath, "tv", 1},       {kPath, "  (tv.Play()", 3}, {kPath, "{|~tv.Play", 3}, {kPath, " ;(tv.Play()", 0},
      {kPath, "\xc3\xa9tv", 1}, {kPath, " \t(", 0},         {kPath, "missing", 0},    {"/nowhere.js", "tv", -1},
      {"/lf.js", "tv", 1},    {"/lf.js", "x", 2},         {"/lf.js", "(tv2)", 3},   {"/lf.js", "\n", 1},
  };
  for (auto& [path, symbol, line] : cases) EXPECT_EQ(engine.foundSymbolLineNumber(&path, &symbol), line) << symbol;
}

using FlashEngine_1_00::FirstOccurrenceLines;

// The line rule written out plainly, for one needle: its first occurrence p,
// then one plus the line feeds at positions 1..p, up to a zero byte. The
// one-pass finder for many needles must agree with it.
int ReferenceLine(const std::string& text, const std::string& needle) {
  size_t p = text.find(needle);
  if (p == std::string::npos) return 0;
  int line = 1;
  for (size_t i = 1; i <= p && text[i] != '\0'; ++i) line += text[i] == '\n';
  return text[0] == '\0' ? 1 : line;
}

TEST(FirstOccurrenceLines, AgreesWithOneSearchPerNeedle) {
  std::mt19937 random(7);
  auto randomText = [&](size_t length) {
    std::string text;
    for (size_t i = 0; i < length; ++i) text += "abab\n (\0"[random() % 8];
    return text;
  };
  for (int round = 0; round < 2000; ++round) {
    std::string text = randomText(random() % 120);
    FirstOccurrenceLines batch;
    std::vector<std::pair<std::string, size_t>> needles;  // occurring (maybe earlier too), absent, or empty
    for (int k = 0; k < 12; ++k) {
      std::string needle = random() % 2 && !text.empty() ? text.substr(random() % text.size(), 1 + random() % 6)
                                                         : randomText(random() % 5);
      needles.emplace_back(needle, batch.add(needle));
    }
    std::vector<int> lines = batch.linesIn(text);
    for (const auto& n : needles) ASSERT_EQ(lines[n.second], ReferenceLine(text, n.first)) << round << " " << n.first;
  }
}

}  // namespace
