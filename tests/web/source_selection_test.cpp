// File selection and loading, comment and blank-line removal, and the first
// pass: excerpts, function blocks and the records collected from them.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "APICheckEngine/SourceScan.h"
#include "support/EngineHost.h"
#include "web/ScannerFixture.h"

namespace {

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::sourcescan::Excerpt;
using FlashEngine_1_00::sourcescan::collectAccessExpressions;
using FlashEngine_1_00::sourcescan::collectFunctionBlocks;
using FlashEngine_1_00::sourcescan::findExcerpts;

TEST(SourceSelection, SelectsByCaseSensitiveExtensionAndCleansUpToTheFirstZeroByte) {
  TempDir dir;
  APIAnalysis engine;
  const std::string zero(1, '\0'), skipped = "<skipped>";
  const std::tuple<std::string, std::string, std::string> cases[] = {  // name, content, cleaned text
      {"a.html", "x", "x" + zero}, {"a.HTM", "x", "x" + zero}, {"a.js", "x", "x" + zero}, {"a.XML", "x", "x" + zero},
      {"a.Html", "x", skipped},    {"a.css", "x", skipped},    {"a.info", "x", skipped}, {"a.swf", "x", skipped},
      {"a.png", "x", skipped},     {"noext", "x", skipped},    {"e.js", "", skipped},    {"z.js", zero + "x", skipped},
      {"b.js", "a = 1; // x\nb" + zero + "ignored // c", "a = 1; \nb" + zero},
      {"c.js", "// a\n/* b */", "\n" + zero},  // comments only: still a worthful text
  };
  for (const auto& [name, content, expected] : cases) {
    WriteFile(dir.file(name), content);
    std::string* cleaned = nullptr;
    EXPECT_EQ(engine.CheckFileAnalysisWorth(dir.file(name), cleaned), expected == skipped ? 0 : 1) << name;
    EXPECT_EQ(cleaned ? *cleaned : skipped, expected) << name;
  }
  EXPECT_EQ(engine.cleanedSourceList.size(), 6u);
  // The extension table lists css, which is still not scanned.
  EXPECT_EQ(engine.documentExtentionChecker("css"), 1);
  EXPECT_EQ(engine.documentExtentionChecker("Js"), 0);

  LogCapture::clear();
  std::string* cleaned = nullptr;
  EXPECT_EQ(engine.CheckFileAnalysisWorth(dir.file("missing.js"), cleaned), 0);
  EXPECT_TRUE(LogCapture::contains(" file[" + dir.file("missing.js") + "] Open Error "));
}

// The excerpt text of each hit, as the first pass cuts it.
Texts excerptTexts(const std::string& text) {
  Texts out;
  for (const Excerpt& e : findExcerpts(text)) out.push_back(text.substr(e.first, e.length));
  return out;
}

TEST(SourceExcerpts, StartAtTheNearestBlankAndNeverTakeTheLastByte) {
  const std::string word(600, 'w');
  const std::vector<std::pair<std::string, Texts>> cases = {
      {"$(a)bbbb", {}},                                         // shorter than 9 bytes
      {"document.getElementById('obj')", {"document.getElementById('obj'"}},
      {"var t = document.getElementById(\"tv\");", {" document.getElementById(\"tv\")"}},
      {"x DoCuMeNt.y z", {" DoCuMeNt.y"}},
      {"a $ x $.y $ (x) zzzzzzzzzz", {" $ (x) zzzzzzzzz"}},  // `$ (` hits, `$ x` and `$.` do not
      {" $(" + word + " tail", {" $(" + word}},               // extended to the next blank
      {"a b" + word + "$(x) c and more", {" b" + word + "$(x)"}},  // starts far before its hit
  };
  for (const auto& c : cases) EXPECT_EQ(excerptTexts(c.first), c.second) << c.first.substr(0, 40);

  // 430 bytes from the blank, then on to the next blank (one byte further
  // here); two hits in one word give two equal excerpts.
  std::string spaced = " $(x$_yz ";
  while (spaced.size() < 1000) spaced += "ab ";
  EXPECT_EQ(findExcerpts(spaced), (std::vector<Excerpt>{{0, 431}, {0, 431}}));
}

TEST(FirstScan, CollectsAccessAndEmbedsExpressionsFromExcerpts) {
  // Fillers longer than an excerpt keep every statement in its own excerpt.
  std::string filler = "\n";
  for (int i = 0; i < 200; ++i) filler += "aa ";
  const std::string source = "var t = document.getElementById(\"tv\");" + filler +
                             "t=document.getElementById(\"tv\").Open(\"a\");" + filler + "p = $ (\"tv\");" + filler +
                             "var e = document.embeds[0].Play();";
  APIAnalysis engine;
  collectAccessExpressions(source.c_str(), source.size(), "p.js", engine.objectAccessList, engine.embedsAccessList);
  EXPECT_EQ(expressionsOf(engine.objectAccessList),
            (Texts{" document.getElementById(\"tv\")", "t=document.getElementById(\"tv\").Open(\"a\"", " $ (\"tv\")"}));
  EXPECT_EQ(expressionsOf(engine.embedsAccessList), Texts{" document.embeds[0].Play("});
}

TEST(FirstScan, FunctionsComeFromBlocksCutUpTo100BytesBeforeTheKeyword) {
  const std::vector<std::pair<std::string, Texts>> cases = {
      {"function a(x) { if (x) { y(); } } rest", {"function a(x)| { if (x) { y(); } }"}},
      {"var h = { start : function (x) { go(x); } };", {"start : function (x)| { go(x); }"}},
      {"xa:" + std::string(98, ' ') + "function(){}", {"a:" + std::string(98, ' ') + "function()|{}"}},
      {"xa:" + std::string(99, ' ') + "function(){}", {"function()|{}"}},  // the name lies before the block
      {"function f( { }", {}}, {"function f() { {", {}},                // never closed, never balanced
      {"function f() }{ x", {"function f()| }{"}},                     // counts, not nesting
      // The inner keyword's block is cut short for the outer header, and holds the inner one again.
      {"function a(){ function b(){} }", {"function a()|{ function b(){} }", "function b()|{}", "function b()|{}"}},
  };
  for (const auto& c : cases) {
    APIAnalysis engine;
    collectFunctionBlocks(c.first.c_str(), c.first.size(), "p.js", engine.functionBlockList);
    Texts functions;
    for (const auto* f : engine.functionBlockList) functions.push_back(f->header + "|" + *f->body);
    EXPECT_EQ(functions, c.second) << c.first.substr(0, 40);
  }
}

using Stripper = int (*)(const char*, int, char*);
using Cases = std::vector<std::pair<std::string, std::string>>;

void expectStripped(Stripper strip, const Cases& cases) {
  for (const auto& c : cases) {
    std::vector<char> out(c.first.size());
    int written = strip(c.first.data(), static_cast<int>(c.first.size()), out.data());
    ASSERT_LE(written, static_cast<int>(c.first.size())) << c.first.substr(0, 20);
    EXPECT_EQ(std::string(out.data(), static_cast<size_t>(written)), c.second) << c.first.substr(0, 20);
  }
}

TEST(DeleteComment, RemovesCommentsWithTheirQuirks) {
  const std::string zero(1, '\0');
  expectStripped(delete_comment, {
      {"a/* x */b", "ab"}, {"a*/b", "a*/b"}, {"a/", "a/"}, {"//1\n//2\n", "\n\n"},
      {"a/* x *//* y */b", "a/* y */b"},  // the byte after a closer is copied unexamined
      {"a/*/b*/c", "ac"},                 // `/*/` does not close
      {"var s = \"a//b\"; var o = 1;\nz", "var s = \"a\nz"},  // no string literals; the line feed survives
      // A comment running to the end is followed by one zero byte.
      {"a// to the end", "a" + zero}, {"a/* never closed", "a" + zero}, {"a/**/", "a" + zero},
  });
  EXPECT_EQ(delete_comment("abc", 0, nullptr), 0);
}

TEST(DeleteBlankline, DropsWhitespaceOnlyLines) {
  const std::string longLine(3000, 'x');  // longer than the first line buffer
  expectStripped(delete_blankline, {
      // A run of dropped lines becomes one line feed before the next kept
      // line; a last line without a feed is written as it stands.
      {"a\n\n  \t\nb\n", "a\n\nb\n"}, {"a\n \n", "a\n"}, {"\n\nb", "b"}, {"a\r\n\r\nb\n", "a\r\n\r\nb\n"},
      {longLine + "\n\n" + longLine, longLine + "\n" + longLine},
  });
}

}  // namespace
