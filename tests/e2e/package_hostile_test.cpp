// Hostile packages seen from a host: each run ends, writes nothing outside
// its extraction directories and leaves nothing behind.
#include <unistd.h>

#include "PackageRun.h"
#include "support/RawZip.h"
#include "support/ZipBuilder.h"

namespace {

using PackageHostile = PackageRun;

TEST_F(PackageHostile, EscapingEntriesAreSkippedAndTheRestExtracted) {
  const std::string marker = "tarvo-slip-" + std::to_string(getpid());
  const std::vector<std::string> escapes = {"../../" + marker, "../" + marker, "/tmp/" + marker + "-abs",
                                            "app/../../../" + marker};
  std::vector<RawZipEntry> entries;
  for (const std::string& name : escapes) entries.push_back({name, "escaped"});
  entries.push_back({"app/www/ok.js", "var ok;"});

  EngineHost::Run run = host.analyse({package("slip.zip", RawZip(entries))});

  EXPECT_EQ(added(run), std::vector<std::string>{"/tmp/0/app/www/ok.js"});
  EXPECT_EQ(count(run, "unsafe entry name"), static_cast<int>(escapes.size()));
  for (const std::string& path : {"/" + marker, "/tmp/" + marker, "/tmp/" + marker + "-abs"}) {
    EXPECT_FALSE(exists(path)) << path;
    RemoveTree(path);
  }
}

TEST_F(PackageHostile, FortyLevelsOfNestingStopAtTheDepthLimit) {
  std::string level = ZipBuilder().add("level40.js", "40").bytes();
  for (int n = 39; n >= 1; --n) {
    level = ZipBuilder().add("level" + std::to_string(n) + ".js", std::to_string(n)).add("next.zip", level).bytes();
  }

  std::string nested = package("nested.zip", level);
  EngineHost::Run run = host.analyse({nested});

  // Levels 1 to 16 are expanded to /tmp/0 to /tmp/15; level 17 is found
  // there and not expanded.
  EXPECT_EQ(count(run, " zip file found"), 17);
  EXPECT_EQ(count(run, "package nesting limit"), 1);
  EXPECT_EQ(added(run).size(), 32u);
  EXPECT_EQ(workingDirectoryAfter({nested}), "/tmp/15 (deleted)");
  EXPECT_FALSE(exists("/tmp/16"));
}

TEST_F(PackageHostile, SelfContainingPackageStopsAtTheDepthLimit) {
  std::string quine = ZipQuine();
  std::string pkg = package("quine.zip", quine);
  EngineHost::Run run = host.analyse({pkg});

  EXPECT_EQ(count(run, " zip file found"), 17);
  for (int n = 0; n < 16; ++n) {
    EXPECT_TRUE(run.logged(foundLine(extractionDir(n) + "/self-containing-package-00.zip", quine.size()))) << n;
  }
  EXPECT_EQ(count(run, "package nesting limit"), 1);
  EXPECT_EQ(workingDirectoryAfter({pkg}), "/tmp/15 (deleted)");
}

}  // namespace
