// Flash applications through the exported interface: generated SWF files are
// listed, decompiled and searched for calls on the plug-in objects that the
// application's HTML declares.
#include <gtest/gtest.h>

#include <cstdio>

#include "support/EngineHost.h"
#include "support/SwfWriter.h"
#include "support/ZipBuilder.h"

namespace {

using swf::ActionBuilder;

const char* const kDatabase =
    "<APIAnalysisDB><MORVANE-NAVERTIX-AUDIOOUT><Function>GetVolume</Function>"
    "<Function>SetVolume</Function></MORVANE-NAVERTIX-AUDIOOUT></APIAnalysisDB>";
const char* const kPage =
    "<html><body>\n<object id=\"audio\" classid=\"clsid:MORVANE-NAVERTIX-AUDIOOUT\"></object>\n</body></html>\n";

enum : uint8_t { kEnd = 0x00 };

// A movie whose one script block calls each of `methods` on the plug-in.
std::string movie(const std::vector<std::string>& methods, bool compressed = false) {
  ActionBuilder actions;
  for (const std::string& method : methods) swf::callOnPlugin(actions, "audio", method);
  actions.op(kEnd);
  swf::SwfWriter writer;
  writer.doAction(actions).tag(1, "").end();
  return compressed ? writer.cws() : writer.fws();
}

class SwfAnalysis : public ::testing::Test {
 protected:
  void SetUp() override { LockFixedPaths(); }
  EngineHost host;
  DatabaseFile database{kDatabase};
  TempDir dir;
};

TEST_F(SwfAnalysis, UndocumentedCallInAPackagedMovieIsReported) {
  for (bool compressed : {false, true}) {
    SCOPED_TRACE(compressed ? "CWS" : "FWS");
    ZipBuilder()
        .add("app/www/index.html", kPage)
        .add("app/www/movie.swf", movie({"GetVolume", "SetSecretMode", "SetHiddenGain"}, compressed))
        .write(dir.file("app.zip"));
    EngineHost::Run run = host.analyse({dir.file("app.zip")});
    EXPECT_EQ(run.code, RUN_UNDOCUMENTED_API);
    EngineHost::Documented exact = host.analyseDocumented({dir.file("app.zip")}, false, dir.path());
    EXPECT_EQ(exact.code, run.code);
    EXPECT_EQ(exact.lines, run.results);
    // The documented call gives nothing; the first undocumented call ends
    // the movie's search.
    const std::vector<std::string> expected{"../movie.swf(0) : UndocumentedAPI 'SetSecretMode' used\n"};
    EXPECT_EQ(run.results, expected);
    EXPECT_EQ(run.resultFile, expected[0]);
  }
}

TEST_F(SwfAnalysis, OnlyTheLastMoviesCodeIsReturned) {
  // The first movie's finding is published; the run ends with the second
  // movie's 1000 and the verdict stage does not judge the movie calls again.
  WriteFile(dir.file("app/www/index.html"), kPage);
  WriteFile(dir.file("app/www/first.swf"), movie({"SetSecretMode"}));
  WriteFile(dir.file("app/www/second.swf"), movie({"GetVolume"}));
  EngineHost::Run run = host.analyse(
      {dir.file("app/www/index.html"), dir.file("app/www/first.swf"), dir.file("app/www/second.swf")});
  EXPECT_EQ(run.code, RUN_SUCCESS);
  const std::vector<std::string> expected{"../first.swf(0) : UndocumentedAPI 'SetSecretMode' used\n"};
  EXPECT_EQ(run.results, expected);
  EXPECT_EQ(run.resultFile, expected[0]);

  EngineHost::Run reversed = host.analyse(
      {dir.file("app/www/index.html"), dir.file("app/www/second.swf"), dir.file("app/www/first.swf")});
  EXPECT_EQ(reversed.code, RUN_UNDOCUMENTED_API);
  EXPECT_EQ(reversed.results.size(), 1u);
}

TEST_F(SwfAnalysis, CommandLineHostPrintsTheStatements) {
  WriteFile(dir.file("movie.swf"), movie({"GetVolume", "SetSecretMode"}, true));
  const std::string command = std::string(TARVO_TOOL_PATH) + " --statements " + dir.file("movie.swf");
  FILE* pipe = popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  std::string out;
  char buffer[256];
  while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) out.append(buffer, n);
  EXPECT_EQ(pclose(pipe), 0);
  EXPECT_EQ(out,
            "getPlugin(audio)\ngetPlugin(audio).GetVolume(1)\n"
            "getPlugin(audio)\ngetPlugin(audio).SetSecretMode(1)\n");
}

}  // namespace
