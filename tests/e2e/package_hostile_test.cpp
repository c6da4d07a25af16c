// Hostile packages seen from a host: each run ends, writes nothing outside
// its extraction directories and leaves nothing behind.
#include "PackageRun.h"
#include "support/RawZip.h"
#include "support/ZipBuilder.h"

namespace {

using PackageHostile = PackageRun;

TEST_F(PackageHostile, EscapingEntriesRefuseThePackageAndWriteNothingOutside) {
  const std::string marker = "tarvo-slip-" + std::to_string(getpid());
  const Paths escapes = {"../../" + marker, "../" + marker, "/tmp/" + marker + "-abs", "app/../../../" + marker};
  for (const std::string& name : escapes) {
    EngineHost::Run run = host.analyse({package("slip.zip", RawZip({{"app/www/ok.js", "var ok;"}, {name, "x"}}))});
    EXPECT_EQ(run.code, RUN_INPUT_REFUSED);
    EXPECT_EQ(added(run), Paths{"/tmp/0/app/www/ok.js"});
    EXPECT_EQ(count(run, "unsafe entry name"), 1);
  }
  for (const std::string& path : {"/" + marker, "/tmp/" + marker, "/tmp/" + marker + "-abs"}) {
    EXPECT_FALSE(exists(path)) << path;
  }
}

// Forty levels of nesting, and a package that holds itself: levels 1 to 16
// are expanded to /tmp/0 to /tmp/15, the 17th is found there and not expanded.
TEST_F(PackageHostile, NestingStopsAtTheDepthLimit) {
  std::string level = ZipBuilder().add("level40.js", "40").bytes();
  for (int n = 39; n >= 1; --n) {
    level = ZipBuilder().add("level" + std::to_string(n) + ".js", std::to_string(n)).add("next.zip", level).bytes();
  }
  const struct {
    std::string bytes;
    size_t added;
    int sameSize;  // levels found with the outer package's size: the quine's are all the same bytes
  } cases[] = {{level, 32, 1}, {ZipQuine(), 16, 17}};
  for (const auto& c : cases) {
    EngineHost::Run run = host.analyse({package("nested.zip", c.bytes)});
    EXPECT_EQ(count(run, " zip file found"), 17);
    EXPECT_EQ(count(run, "]/ Size [" + std::to_string(c.bytes.size()) + "]"), c.sameSize);
    EXPECT_EQ(count(run, "package nesting limit"), 1);
    EXPECT_EQ(run.code, RUN_INPUT_REFUSED);
    EXPECT_EQ(added(run).size(), c.added);
  }
}

}  // namespace
