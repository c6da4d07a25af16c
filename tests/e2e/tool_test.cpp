// The command-line host, run as a user runs it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "support/EngineHost.h"

namespace {

struct ToolRun {
  int status = -1;
  std::string out, err;
};

ToolRun RunTool(const std::string& arguments) {
  TempDir scratch;
  const std::string command = std::string(TARVO_TOOL_PATH) + " " + arguments + " >" + scratch.file("out") + " 2>" +
                              scratch.file("err") + " </dev/null";
  const int raw = system(command.c_str());
  return ToolRun{WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFile(scratch.file("out")), ReadFile(scratch.file("err"))};
}

TEST(Tool, UsageErrorsExitWith64AndOneLine) {
  for (const char* arguments : {"", "--bogus", "--engine", "--listing a.swf b.swf"}) {
    ToolRun run = RunTool(arguments);
    EXPECT_EQ(run.status, 64) << arguments;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << arguments << ": " << run.err;
  }
  ToolRun version = RunTool("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_NE(version.out.find("140808_QX_1.30"), std::string::npos) << version.out;
}

TEST(Tool, ExitStatusFollowsTheEngineCode) {
  LockFixedPaths();
  TempDir app;
  WriteFile(app.file("www/index.html"), "<html><body>plain page</body></html>\n");
  {
    DatabaseFile database("<APIAnalysisDB><G><Function>GetModel</Function></G></APIAnalysisDB>");
    ToolRun clean = RunTool(app.path());
    EXPECT_EQ(clean.status, 0) << clean.err;
    EXPECT_EQ(clean.out + clean.err, "");  // quiet without --verbose
    ToolRun verbose = RunTool("--verbose " + app.path());
    EXPECT_NE(verbose.err.find("Engine Version [140808_QX_1.30] "), std::string::npos) << verbose.err;
    // A package that cannot be opened is refused, with its cause.
    WriteFile(app.file("broken.zip"), std::string("PK\x03\x04") + " not a package");
    ToolRun refused = RunTool(app.file("broken.zip"));
    EXPECT_EQ(refused.status, 3);
    EXPECT_EQ(refused.err, "tarvo-api-check: the application could not be examined in full:\n  input refused [" +
                               app.file("broken.zip") + "] : not a readable zip package\n");
    remove(app.file("broken.zip").c_str());
  }
  for (bool missing : {true, false}) {
    DatabaseFile database = missing ? DatabaseFile::Missing() : DatabaseFile("<NotTheRoot/>");
    EXPECT_EQ(RunTool(app.path()).status, 2) << (missing ? "missing database" : "database without root");
  }
  // A SWF file that cannot be read is an error, not an empty listing.
  for (const char* option : {"--listing ", "--statements "}) {
    ToolRun run = RunTool(option + app.file("www/index.html"));
    EXPECT_EQ(run.status, 2) << option;
    EXPECT_EQ(run.out, "") << option;
    EXPECT_NE(run.err.find("returned 1022"), std::string::npos) << option << run.err;
  }
}

}  // namespace
