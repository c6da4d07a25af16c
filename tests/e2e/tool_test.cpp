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

// Argument errors, paths that cannot be read and what the engine answers, with
// the exit status and one line of standard error for each mistake.
TEST(Tool, ExitStatusAndMessages) {
  LockFixedPaths();
  TempDir app;
  WriteFile(app.file("www/index.html"), "<html><body>plain page</body></html>\n");
  WriteFile(app.file("bad/broken.zip"), std::string("PK\x03\x04") + " not a package");
  WriteFile(app.file("found/index.html"),
            "<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-PICTURE\"></object>\n"
            "<script>\nfunction f() {\n  tv=document.getElementById(\"tv\");\n  tv.Zap(1);\n}\n</script>\n");
  WriteFile(app.file("db.xml"), "<APIAnalysisDB><G><Function>GetModel</Function></G></APIAnalysisDB>");
  DatabaseFile database("<APIAnalysisDB><G><Function>GetModel</Function></G></APIAnalysisDB>");
  const std::string www = app.file("www"), found = app.file("found");
  const struct {
    std::string arguments;
    int status;
    std::string err;  // a part of standard error; "" for none at all
  } cases[] = {
      {"", 64, "no path given"},
      {"--bogus " + www, 64, "--bogus"},
      {"--engine", 64, "--engine"},
      {"--listing a.swf b.swf", 64, "take one file and no paths"},
      {"--listing a.swf --statements b.swf", 64, "excludes"},
      {"--format xml " + www, 64, "--format"},
      {"/no/such/file", 66, "/no/such/file: No such file or directory"},
      {"--db /no/such.xml " + www, 66, "/no/such.xml: No such file or directory"},
      {"--work-dir /no/dir " + www, 66, "/no/dir: not a directory"},
      {"--engine /no/engine.so " + www, 69, "cannot load the engine"},
      {www, 0, ""},
      {"--db " + app.file("db.xml") + " --work-dir " + app.path() + " " + www, 0, ""},
      {found, 1, ""},
      {app.file("bad"), 3, "could not be examined in full:\n  " + app.file("bad/broken.zip") + ": not a readable zip package\n"},
      {"--version", 0, ""},
  };
  for (const auto& c : cases) {
    ToolRun run = RunTool(c.arguments);
    EXPECT_EQ(run.status, c.status) << c.arguments << ": " << run.err;
    if (c.err.empty()) {
      EXPECT_EQ(run.err, "") << c.arguments;
    } else {
      EXPECT_NE(run.err.find(c.err), std::string::npos) << c.arguments << ": " << run.err;
      if (c.status == 64 || c.status == 66) {
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << c.arguments;
      }
    }
  }
  EXPECT_NE(RunTool("--version").out.find("140808_QX_1.30"), std::string::npos);
  // The finding line keeps the components of the path from the fifth on:
  // none of /tmp/tarvo-test-XXXXXX/found/index.html.
  EXPECT_EQ(RunTool(found).out, "../(5) : UndocumentedAPI 'Zap' used\n");
  ToolRun verbose = RunTool("--verbose " + www);
  EXPECT_NE(verbose.err.find("Engine Version [140808_QX_1.30] "), std::string::npos) << verbose.err;
  for (bool missing : {true, false}) {
    DatabaseFile broken = missing ? DatabaseFile::Missing() : DatabaseFile("<NotTheRoot/>");
    EXPECT_EQ(RunTool(www).status, 2) << (missing ? "missing database" : "database without root");
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
