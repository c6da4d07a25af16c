// File selection, loading and the position rules of the first pass.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "web/RecordTexts.h"
#include "APICheckEngine/SourceScan.h"
#include "support/EngineHost.h"
#include "support/LogCapture.h"

namespace {

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::sourcescan::Block;
using FlashEngine_1_00::sourcescan::Excerpt;
using FlashEngine_1_00::sourcescan::findExcerpts;
using FlashEngine_1_00::sourcescan::FunctionBlockCutter;

TEST(SourceSelection, ChoosesFilesByCaseSensitiveExtension) {
  TempDir dir;
  APIAnalysis engine;
  const std::vector<std::pair<std::string, int>> cases = {
      {"a.html", 1}, {"a.HTML", 1}, {"a.htm", 1}, {"a.HTM", 1}, {"a.js", 1},  {"a.JS", 1},
      {"a.xml", 1},  {"a.XML", 1},  {"a.Html", 0}, {"a.css", 0}, {"a.info", 0}, {"a.swf", 0},
      {"a.png", 0},  {"a.so", 0},   {"noext", 0},
  };
  int selected = 0;
  for (const auto& c : cases) {
    WriteFile(dir.file(c.first), "x = 1;");
    std::string* cleaned = nullptr;
    EXPECT_EQ(engine.CheckFileAnalysisWorth(dir.file(c.first), cleaned), c.second) << c.first;
    EXPECT_EQ(cleaned != nullptr, c.second == 1) << c.first;
    selected += c.second;
  }
  EXPECT_EQ(engine.cleanedSourceList.size(), static_cast<size_t>(selected));
  // documentExtentionChecker knows the twelve table entries, byte for byte.
  for (const char* entry : documentExtention) EXPECT_EQ(engine.documentExtentionChecker(entry), 1) << entry;
  for (const char* other : {"Js", "swf", "", "html "}) EXPECT_EQ(engine.documentExtentionChecker(other), 0);
}

TEST(SourceSelection, LoadsUpToTheFirstZeroByteAndStripsComments) {
  TempDir dir;
  APIAnalysis engine;
  const std::string zero(1, '\0');
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"a = 1; // x\nb" + zero + "ignored // c", "a = 1; \nb" + zero},
      {"// a\n/* b */", "\n" + zero},  // comments only: still a worthful text
      {"x /* open", "x " + zero},
  };
  for (const auto& c : cases) {
    WriteFile(dir.file("s.js"), c.first);
    std::string* cleaned = nullptr;
    ASSERT_EQ(engine.CheckFileAnalysisWorth(dir.file("s.js"), cleaned), 1);
    EXPECT_EQ(*cleaned, c.second);
    EXPECT_EQ(engine.cleanedSourceList.back(), cleaned);
  }
  for (const std::string& empty : {std::string(), zero + "text"}) {
    WriteFile(dir.file("e.js"), empty);
    std::string* cleaned = nullptr;
    EXPECT_EQ(engine.CheckFileAnalysisWorth(dir.file("e.js"), cleaned), 0);
  }
  EXPECT_EQ(engine.cleanedSourceList.size(), cases.size());

  LogCapture::clear();
  std::string* cleaned = nullptr;
  EXPECT_EQ(engine.CheckFileAnalysisWorth(dir.file("missing.js"), cleaned), 0);
  EXPECT_TRUE(LogCapture::contains(" file[" + dir.file("missing.js") + "] Open Error "));
}

TEST(SourceSelection, FirstScanFillsParallelListsAndLogsTheCount) {
  TempDir dir;
  WriteFile(dir.file("index.html"), "<html></html>");
  WriteFile(dir.file("style.css"), "body {}");
  WriteFile(dir.file("app.JS"), "var a;");
  APIAnalysis engine;
  std::vector<std::string> files = {dir.file("index.html"), dir.file("style.css"), dir.file("none.js"),
                                    dir.file("app.JS")};
  LogCapture::clear();
  EXPECT_EQ(engine.FirstScanSource(&files), RUN_SUCCESS);
  ASSERT_EQ(engine.worthfulSourceList.size(), 2u);
  ASSERT_EQ(engine.worthfulPathList.size(), 2u);
  ASSERT_EQ(engine.worthfulExtList.size(), 2u);
  EXPECT_EQ(*engine.worthfulPathList[1], dir.file("app.JS"));
  EXPECT_EQ(*engine.worthfulExtList[0], "html");
  EXPECT_EQ(*engine.worthfulExtList[1], "JS");
  EXPECT_EQ(engine.worthfulSourceList[1], engine.cleanedSourceList[1]);
  EXPECT_EQ(*engine.worthfulSourceList[1], std::string("var a;") + '\0');
  ASSERT_TRUE(LogCapture::contains(" WorthFul File [2] EA"));
  EXPECT_EQ(LogCapture::lines().back().format, "Time [%s]:%ld:%ld ");

  APIAnalysis idle;
  std::vector<std::string> none;
  EXPECT_EQ(idle.FirstScanSource(&none), RUN_SUCCESS);
  EXPECT_TRUE(LogCapture::contains(" WorthFul File [0] EA"));
}

// The excerpt text of each hit, as the first pass cuts it.
std::vector<std::string> excerptTexts(const std::string& text) {
  std::vector<std::string> out;
  for (const Excerpt& e : findExcerpts(text)) out.push_back(text.substr(e.first, e.length));
  return out;
}

TEST(SourceExcerpts, StartAtTheNearestBlankAndNeverTakeTheLastByte) {
  const std::string word(600, 'w');
  const std::string dollarWord = " $(" + word + " tail";
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"$(a)bbbb", {}},                                         // shorter than 9 bytes
      {"document.getElementById('obj')", {"document.getElementById('obj'"}},
      {"var t = document.getElementById(\"tv\");", {" document.getElementById(\"tv\")"}},
      {"x DoCuMeNt.y z", {" DoCuMeNt.y"}},
      {"a $ x $.y $ (x) zzzzzzzzzz", {" $ (x) zzzzzzzzz"}},  // `$ (` hits, `$ x` and `$.` do not
      {dollarWord, {" $(" + word}},                           // extended to the next blank
      {"a b" + word + "$(x) c and more", {" b" + word + "$(x)"}},  // starts far before its hit
  };
  for (const auto& c : cases) EXPECT_EQ(excerptTexts(c.first), c.second) << c.first.substr(0, 40);

  // 430 bytes from the blank, then on to the next blank (one byte further
  // here); two hits in one word give two equal excerpts.
  std::string spaced = " $(x$_yz ";
  while (spaced.size() < 1000) spaced += "ab ";
  const std::vector<Excerpt> excerpts = findExcerpts(spaced);
  ASSERT_EQ(excerpts.size(), 2u);
  EXPECT_EQ(excerpts[0].first, 0u);
  EXPECT_EQ(excerpts[0].length, 431u);
  EXPECT_EQ(excerpts[1], excerpts[0]);
}

std::vector<std::string> blockTexts(const std::string& text) {
  std::vector<std::string> out;
  for (const Block& b : FunctionBlockCutter(text.c_str(), text.size()).blocks())
    out.push_back(text.substr(b.first, b.last - b.first + 1));
  return out;
}

TEST(FunctionBlocks, CutFromUpTo100BytesBeforeTheKeywordToTheBalancingBrace) {
  const std::string pad(150, '.');
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"function a(x) { if (x) { y(); } } rest", {"function a(x) { if (x) { y(); } }"}},
      {pad + "function f(){}", {pad.substr(50) + "function f(){}"}},
      {"function f( { }", {}},             // the parameter list never closes
      {"function f() { {", {}},            // the braces never balance
      {"function f({a}) {b} c", {"function f({a}) {b}"}},  // braces count after `(` and `)`
      {"function f() }{ x", {"function f() }{"}},          // counts, not nesting
      {"function a(){ function b(){} }", {"function a(){ function b(){} }", "function a(){ function b(){}"}},
      {"functionfunction(){}", {"functionfunction(){}", "functionfunction(){}"}},
  };
  for (const auto& c : cases) EXPECT_EQ(blockTexts(c.first), c.second) << c.first.substr(0, 40);
}

TEST(FirstScan, CollectsAccessExpressionsEmbedsAndFunctions) {
  // Fillers longer than an excerpt keep every statement in its own excerpt.
  std::string filler = "\n";
  for (int i = 0; i < 200; ++i) filler += "aa ";
  filler += "\n";
  const std::string source = "var t = document.getElementById(\"tv\");" + filler +
                             "t=document.getElementById(\"tv\").Open(\"a\");" + filler +
                             "p = $ (\"tv\");" + filler +
                             "var e = document.embeds[0].Play();" + filler +
                             "function init(a, b) { if (a) { b(); } }" + filler +
                             "var handlers = { start : function (x) { go(x); } };" + filler +
                             "function broken(a) { if (a) {";
  TempDir dir;
  WriteFile(dir.file("app.js"), source);
  APIAnalysis engine;
  std::vector<std::string> files = {dir.file("app.js")};
  engine.FirstScanSource(&files);

  const std::vector<std::string> access = {" document.getElementById(\"tv\")",
                                           "t=document.getElementById(\"tv\").Open(\"a\"", " $ (\"tv\")"};
  EXPECT_EQ(expressionsOf(engine.objectAccessList), access);
  EXPECT_EQ(expressionsOf(engine.embedsAccessList), std::vector<std::string>{" document.embeds[0].Play("});
  for (const auto* record : engine.objectAccessList) {
    EXPECT_EQ(record->scope, "Global");
    EXPECT_EQ(record->filePath, dir.file("app.js"));
  }
  ASSERT_EQ(engine.functionBlockList.size(), 2u);
  EXPECT_EQ(engine.functionBlockList[0]->header, "function init(a, b)");
  EXPECT_EQ(*engine.functionBlockList[0]->body, " { if (a) { b(); } }");
  EXPECT_EQ(engine.functionBlockList[1]->header, "start : function (x)");
  EXPECT_EQ(*engine.functionBlockList[1]->body, " { go(x); }");
  EXPECT_EQ(engine.functionBlockList[1]->filePath, dir.file("app.js"));
}

}  // namespace
