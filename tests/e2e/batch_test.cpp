// Batch review through the command-line host: workers that crash or hang do
// not stop the batch, every package gets one line with the right verdict, the
// exit status sums the verdicts up, shards split the catalogue, and nothing is
// left in the temporary directory, also when the batch is interrupted.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "support/EngineHost.h"
#include "support/RawZip.h"
#include "support/ZipBuilder.h"

namespace {

const char* const kPage =
    "<html><body>\n<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-PICTURE\"></object>\n<script>\n"
    "function f() {\n  tv=document.getElementById(\"tv\");\n  tv.%s(1);\n}\n</script>\n</body></html>\n";

std::string page(const char* method) {
  char text[512];
  snprintf(text, sizeof text, kPage, method);
  return text;
}

class Batch : public ::testing::Test {
 protected:
  void SetUp() override {
    WriteFile(dir.file("db.xml"),
              "<APIAnalysisDB><MORVANE-NAVERTIX-PICTURE><Function>GetBrightness</Function>"
              "</MORVANE-NAVERTIX-PICTURE></APIAnalysisDB>");
    const std::string clean = ZipBuilder().add("app/www/index.html", page("GetBrightness")).bytes();
    packages = {{"a-clean.zip", "clean"},        {"b-undocumented.zip", "undocumented"},
                {"c-refused.zip", "refused"},    {"d-crash.zip", "error"},
                {"e-hang.zip", "error"},         {"f-clean.zip", "clean"}};
    for (const auto& p : packages) WriteFile(dir.file("catalogue/" + p.first), clean);
    WriteFile(dir.file("catalogue/b-undocumented.zip"), ZipBuilder().add("app/www/index.html", page("Zap")).bytes());
    WriteFile(dir.file("catalogue/c-refused.zip"), RawZip({{"app/www/x.js", "x"}, {"../up.js", "y"}}));
    WriteFile(dir.file("catalogue/notes.txt"), "not a package: not reviewed\n");
    ASSERT_EQ(mkdir(dir.file("tmp").c_str(), 0700), 0);
  }

  // The batch's command line, with the test hooks and a temporary directory of its own.
  std::string command(const std::string& arguments) {
    return "TMPDIR=" + dir.file("tmp") + " TARVO_BATCH_TEST_CRASH=d-crash TARVO_BATCH_TEST_HANG=e-hang " +
           TARVO_TOOL_PATH + " --batch --db " + dir.file("db.xml") + " " + arguments + " >" + dir.file("out") +
           " 2>" + dir.file("err");
  }
  int run(const std::string& arguments) {
    int raw = system(command(arguments).c_str());
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  }
  // Verdict by file name, from the JSON lines written.
  std::map<std::string, std::string> verdicts() {
    std::map<std::string, std::string> found;
    std::istringstream lines(ReadFile(dir.file("out")));
    for (std::string line; std::getline(lines, line);) {
      nlohmann::json object = nlohmann::json::parse(line);
      std::string path = object["path"];
      EXPECT_EQ(found.count(path), 0u) << path << " twice";
      found[path.substr(path.rfind('/') + 1)] = object["verdict"];
    }
    return found;
  }
  bool tmpEmpty() { return system(("rmdir " + dir.file("tmp") + " && mkdir " + dir.file("tmp")).c_str()) == 0; }

  TempDir dir;
  std::vector<std::pair<std::string, std::string>> packages;
};

TEST_F(Batch, EveryPackageGetsItsVerdictWhateverItsWorkerDoes) {
  EXPECT_EQ(run("--jobs 2 --time-limit 3 " + dir.file("catalogue")), 1);
  std::map<std::string, std::string> expected(packages.begin(), packages.end());
  EXPECT_EQ(verdicts(), expected);
  EXPECT_NE(ReadFile(dir.file("err")).find("6 of 6 packages"), std::string::npos) << ReadFile(dir.file("err"));
  EXPECT_TRUE(tmpEmpty());

  // Exit status: 3 for refused or in error without an undocumented one, 0 all clean.
  EXPECT_EQ(run(dir.file("catalogue/c-refused.zip") + " " + dir.file("catalogue/a-clean.zip")), 3);
  EXPECT_EQ(run("--format text " + dir.file("catalogue/a-clean.zip") + " " + dir.file("catalogue/f-clean.zip")), 0);
  EXPECT_EQ(ReadFile(dir.file("out")),
            dir.file("catalogue/a-clean.zip") + ": clean\n" + dir.file("catalogue/f-clean.zip") + ": clean\n");
  EXPECT_EQ(run("/no/such/catalogue"), 66);
}

TEST_F(Batch, ShardsSplitTheSortedCatalogue) {
  std::multiset<std::string> seen;
  for (const char* shard : {"0/3", "1/3", "2/3"}) {
    run(std::string("--shard ") + shard + " --time-limit 3 " + dir.file("catalogue"));
    for (const auto& found : verdicts()) seen.insert(found.first);
  }
  std::multiset<std::string> all;
  for (const auto& p : packages) all.insert(p.first);
  EXPECT_EQ(seen, all);
  EXPECT_EQ(run("--shard 3/3 " + dir.file("catalogue")), 64);
}

TEST_F(Batch, InterruptedBatchStopsItsWorkersAndStillSums) {
  pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    execl("/bin/sh", "sh", "-c", ("exec env " + command("--jobs 2 " + dir.file("catalogue"))).c_str(), nullptr);
    _exit(127);
  }
  // Once the four packages before it are reported, the hanging worker runs.
  for (int wait = 0; wait < 600; ++wait) {
    std::string out = ReadFile(dir.file("out"));
    if (std::count(out.begin(), out.end(), '\n') >= 4) break;
    usleep(100000);
  }
  kill(child, SIGTERM);
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status)) << status;
  const std::string err = ReadFile(dir.file("err"));
  EXPECT_NE(err.find("interrupted"), std::string::npos) << err;
  EXPECT_EQ(verdicts().count("e-hang.zip"), 0u);  // stopped, not reported
  EXPECT_TRUE(tmpEmpty());
}

}  // namespace
