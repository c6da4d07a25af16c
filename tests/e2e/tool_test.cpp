// The command-line host, run as a user runs it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "support/EngineHost.h"

namespace {

struct ToolRun {
  int status = -1;
  std::string out;
  std::string err;
};

ToolRun RunTool(const std::string& arguments) {
  TempDir scratch;
  std::string command = std::string(TARVO_TOOL_PATH) + " " + arguments + " >" + scratch.file("out") + " 2>" +
                        scratch.file("err") + " </dev/null";
  int raw = system(command.c_str());
  ToolRun run;
  run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  run.out = ReadFile(scratch.file("out"));
  run.err = ReadFile(scratch.file("err"));
  return run;
}

size_t LineCount(const std::string& text) { return static_cast<size_t>(std::count(text.begin(), text.end(), '\n')); }

TEST(Tool, UsageErrorsExitWith64AndOneLine) {
  for (const char* arguments : {"", "--bogus", "--engine", "--listing", "--listing a.swf b.swf"}) {
    ToolRun run = RunTool(arguments);
    EXPECT_EQ(run.status, 64) << arguments;
    EXPECT_EQ(LineCount(run.err), 1u) << arguments << ": " << run.err;
    EXPECT_EQ(run.out, "") << arguments;
  }
}

TEST(Tool, VersionAndHelp) {
  ToolRun version = RunTool("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_NE(version.out.find("140808_QX_1.30"), std::string::npos) << version.out;
  ToolRun help = RunTool("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("--listing"), std::string::npos);
}

TEST(Tool, ExitStatusFollowsTheEngineCode) {
  LockFixedPaths();
  TempDir app;
  WriteFile(app.file("www/index.html"), "<html><body>plain page</body></html>\n");
  {
    DatabaseFile database("<APIAnalysisDB><G><Function>GetModel</Function></G></APIAnalysisDB>");
    ToolRun clean = RunTool(app.path());
    EXPECT_EQ(clean.status, 0) << clean.err;
    EXPECT_EQ(clean.out, "");
    EXPECT_EQ(clean.err, "");  // quiet without --verbose

    ToolRun verbose = RunTool("--verbose " + app.path());
    EXPECT_EQ(verbose.status, 0);
    EXPECT_NE(verbose.err.find("Engine Version [140808_QX_1.30] "), std::string::npos) << verbose.err;
  }
  for (bool missing : {true, false}) {
    DatabaseFile database = missing ? DatabaseFile::Missing() : DatabaseFile("<NotTheRoot/>");
    ToolRun failed = RunTool(app.path());
    EXPECT_EQ(failed.status, 2) << (missing ? "missing database" : "database without root");
  }
}

TEST(Tool, MissingEngineLibraryIsReported) {
  ToolRun run = RunTool("--engine /nonexistent/libengine.so /tmp");
  EXPECT_NE(run.status, 0);
  EXPECT_NE(run.err.find("cannot load the engine"), std::string::npos) << run.err;
}

}  // namespace
