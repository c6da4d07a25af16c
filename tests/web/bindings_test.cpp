// Object variable binding: look-ups that name plug-in symbols, the variables
// they are assigned to, and the line of a symbol's first occurrence.
#include <cstring>

#include "web/ScannerFixture.h"

namespace {

const char kPath[] = "/tmp/0/app/www/js/main.js";

class BindingsTest : public ScannerFixture {
 protected:
  void add(std::vector<Record*>& list, std::initializer_list<const char*> expressions) {
    for (const char* e : expressions) list.push_back(record(e, "Global", kPath));
  }
  void declared(std::initializer_list<const char*> expressions) {
    for (const char* e : expressions)
      engine.declareList.push_back(record(e, "Global", kPath, "", std::strchr(e, '#') + 1));
  }
};

TEST_F(BindingsTest, LookUpsNamingASymbolAreDeclaredWithTheFirstMatchingSymbolsClass) {
  add(engine.objectIdList, {"KOB#tv", "TUNER#tuner", "EPG#b", "CHANNEL#a"});
  engine.objectIdList.push_back(record("SKIPPED#guide", "", "", "Func"));  // text "Func": not a symbol
  add(engine.objectAccessList, {"t=document.getElementById(\"tv\")", "x=$( 'tuner' )", "y=$(\"menu\")", "z=$(\"mytv\")",
                                "w=$(\"tv2\")", "g=$(\"guide\")", " $(\"tuner\").Tune(", "f($(\"a\"), $(\"b\"))"});
  EXPECT_EQ(engine.FindDeclareListValidation(), RUN_SUCCESS);
  ASSERT_EQ(expressions(engine.declareList),
            (std::vector<std::string>{"KOB#t=document.getElementById(\"tv\")", "TUNER#x=$( 'tuner' )",
                                      "TUNER# $(\"tuner\").Tune(", "EPG#f($(\"a\"), $(\"b\"))"}));
  EXPECT_EQ(engine.declareList[1]->accessText, "x=$( 'tuner' )");
  EXPECT_EQ(engine.declareList[1]->filePath, kPath);
}

TEST_F(BindingsTest, EmbedsRecordsRepeatOncePerSymbolArriveInReverseAndNeedAnElementAndAClass) {
  add(engine.objectIdList, {"A#x", "B#y", "C#z"});
  add(engine.objectTagList, {"tag", "tag", "tag", "tag"});  // more elements than symbols
  add(engine.objectAccessList, {"p=$(\"y\")"});
  add(engine.embedsAccessList, {"e0=document.embeds[0]", "e2=document.embeds[ 2 ]", "e3=document.embeds[3]"});
  engine.FindDeclareListValidation();
  std::vector<std::string> expected = {"B#p=$(\"y\")"};
  expected.insert(expected.end(), 3, "C#e2=document.embeds[ 2 ]");
  expected.insert(expected.end(), 3, "A#e0=document.embeds[0]");
  ASSERT_EQ(expressions(engine.declareList), expected);
  EXPECT_EQ(engine.declareList.back()->accessText, "e0=document.embeds[0]");
  EXPECT_TRUE(engine.embedsDeclareList.empty());
}

TEST_F(BindingsTest, AssignmentsBecomeBindings) {
  addSource(kPath, "var x;\n\nfunction init() {\n  tv = document.getElementById('tv');\n}\n");
  const char* lookUp = "tv = document.getElementById('tv')";
  addFunction(kPath, "function a()", std::string("{ ") + lookUp + " }");
  addFunction("/tmp/0/app/www/other.js", "function b()", std::string("{ b ") + lookUp + " }");
  addFunction(kPath, "function init()", std::string("{\n  ") + lookUp + ";\n}");
  addFunction(kPath, "function d()", "{ d }");
  declared({"K#tv = document.getElementById('tv')", "K#this.player=$(\"player\")",
            "K#a = b = document.getElementById('tv')", "K#x==$(\"tv\")", "K#document.getElementById('tv').Open(",
            "K# $(\"tv\").Play(", "K#obj.tv=$(\"tv\")"});
  EXPECT_EQ(engine.FindObjectVariable(), RUN_SUCCESS);
  ASSERT_EQ(expressions(engine.objectVariableList),
            (std::vector<std::string>{"K#tv", "K#this.player", "K#a", "K#b", "K#x", "K#obj.tv"}));
  std::vector<std::string> scopes;
  for (const Record* r : engine.objectVariableList) scopes.push_back(r->scope);
  EXPECT_EQ(scopes, (std::vector<std::string>{"Func", "Src", "Func", "Func", "Func", "Func"}));
  // The last block of the same file that contains the look-up gives the text.
  EXPECT_EQ(engine.objectVariableList[0]->text, std::string("{\n  ") + lookUp + ";\n}");
  EXPECT_EQ(engine.objectVariableList[1]->text, "");
  EXPECT_EQ(engine.objectVariableList[2]->text, "");
  EXPECT_EQ(engine.objectVariableList[0]->line, 4);
  EXPECT_EQ(engine.objectVariableList[4]->line, 1);  // first occurrence of "x"
}

TEST_F(BindingsTest, LineOfAFirstOccurrence) {
  addSource(kPath, "var tv;\nfunction f() {\n  tv.Play();\n}\n");
  const std::string other = "/tmp/0/app/www/lf.js";
  addSource(other, "\nvar tv;\r\nx\r\n(tv2)\n");
  const struct {
    std::string path;
    const char* symbol;
    int line;
  } cases[] = {
      {kPath, "tv", 1},      {kPath, "  (tv.Play()", 3}, {kPath, "{tv.Play", 3}, {kPath, " ;(tv.Play()", 0},
      {kPath, "missing", 0}, {"/nowhere.js", "tv", -1},  {other, "tv", 1},       {other, "x", 2},
      {other, "(tv2)", 3},   {other, "\n", 1},
  };
  for (const auto& c : cases) {
    std::string path = c.path;
    std::string symbol = c.symbol;
    EXPECT_EQ(engine.foundSymbolLineNumber(&path, &symbol), c.line) << c.path << " " << c.symbol;
  }
}

}  // namespace
