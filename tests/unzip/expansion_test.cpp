// Package recognition, file discovery and removal of extraction trees, and
// the analysis-wide limits of expansion.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/DirectoryRemoval.h"
#include "APICheckEngine/EngineConfig.h"
#include "APICheckEngine/PackageSignature.h"
#include "JobFixture.h"
#include "support/RawZip.h"
#include "support/ZipBuilder.h"

namespace {

using Tree = std::set<std::string>;

TEST(PackageSignatureTest, RecognisesTheSixSignaturesOnly) {
  const std::pair<std::string, bool> cases[] = {
      {std::string("PK\3\4rest", 8), true}, {std::string("PK\5\6", 4), true}, {std::string("PK\7\x08", 4), true},
      {"PKLI", true},                       {"PKSp", true},                    {"PKnZ", true},
      {std::string("PK\3\5", 4), false},    {std::string("PK\4\3", 4), false}, {"PKli", false},
      {"PKsp", false},                      {std::string("pk\3\4", 4), false}, {std::string("PK\3", 3), false},
      {"", false},                          {"\xff\xd8PK", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IsPackageSignature(reinterpret_cast<const unsigned char*>(c.first.data()), c.first.size()), c.second)
        << c.first;
  }
}

using DiscoveryTest = JobFixture;

TEST_F(DiscoveryTest, FindsRegularFilesOnlyWithoutFollowingLinks) {
  const std::string outside = tmp.file("outside");
  WriteFile(outside + "/secret.js", "x");
  WriteFile(out + "/a.html", "a");
  WriteFile(out + "/www/js/b.js", "b");
  WriteFile(out + "/www/empty/.hidden", "");
  ASSERT_EQ(symlink(outside.c_str(), (out + "/www/dirlink").c_str()), 0);
  ASSERT_EQ(symlink((outside + "/secret.js").c_str(), (out + "/filelink.js").c_str()), 0);
  ASSERT_EQ(symlink("..", (out + "/www/loop").c_str()), 0);
  ASSERT_EQ(mkfifo((out + "/fifo").c_str(), 0644), 0);

  FlashEngine_1_00::APIAnalysis engine;
  std::vector<std::string> found{"kept"};
  engine.FindAppsFilesLocation(out, found);
  std::sort(found.begin(), found.end());
  std::vector<std::string> expected{"kept", out + "/a.html", out + "/www/empty/.hidden", out + "/www/js/b.js"};
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(found, expected);

  found.clear();
  engine.FindAppsFilesLocation(out + "/none", found);
  EXPECT_TRUE(found.empty());
}

TEST_F(DiscoveryTest, RemovalTakesTheTreeButNothingBehindItsLinks) {
  const std::string outside = tmp.file("outside");
  WriteFile(outside + "/keep.txt", "keep");
  WriteFile(out + "/www/js/b.js", "b");
  ASSERT_EQ(symlink(outside.c_str(), (out + "/www/dirlink").c_str()), 0);
  ASSERT_EQ(symlink((outside + "/keep.txt").c_str(), (out + "/filelink").c_str()), 0);
  const std::string linkedRoot = tmp.file("linked-root");
  ASSERT_EQ(symlink(outside.c_str(), linkedRoot.c_str()), 0);

  RemoveDirectoryTree(out);
  RemoveDirectoryTree(linkedRoot);  // the link goes, not what it points to
  RemoveDirectoryTree(tmp.file("none"));
  EXPECT_EQ(tree(tmp.path()), (Tree{"outside/", "outside/keep.txt"}));
}

// Expansion inside an engine, with the analysis's limits already partly
// spent: runs on the engine's real extraction directories.
class ExpansionLimitTest : public JobFixture {
 protected:
  void SetUp() override {
    JobFixture::SetUp();
    LockFixedPaths();
  }
  void TearDown() override {
    for (const std::string& dir : engine.extractedDirList) RemoveDirectoryTree(dir);
    JobFixture::TearDown();
  }
  FlashEngine_1_00::APIAnalysis engine;
};

TEST_F(ExpansionLimitTest, SpentByteBudgetStopsEveryFurtherPackage) {
  // A package of ten packages of one file each, with room for little more
  // than the outer one.
  std::string inner = ZipBuilder().add("inner.js", std::string(100, 'i')).bytes();
  ZipBuilder outer;
  for (int i = 0; i < 10; ++i) outer.add("p" + std::to_string(i) + ".zip", inner);
  std::string pkg = package(outer.bytes());
  engine.expansionDepth = 1;  // nested: the bytes already counted are kept
  engine.expansionBytes = EngineConfig::kMaxExtractedBytes - 4 * kEntryCharge - 3 * inner.size();
  engine.addFilePathbyUnzipping({pkg});

  EXPECT_LE(engine.expansionBytes, EngineConfig::kMaxExtractedBytes);
  ASSERT_EQ(engine.extractedDirList.size(), 1u);
  EXPECT_EQ(engine.extractedFileList.size(), 3u);  // p0, p1, p2
  // One line for the outer package, one for each inner one found.
  EXPECT_EQ(logged("bytes reached"), 4);
}

TEST_F(ExpansionLimitTest, OutermostCallStartsTheBudgetAfresh) {
  engine.expansionBytes = EngineConfig::kMaxExtractedBytes;
  engine.addFilePathbyUnzipping({package(ZipBuilder().add("a.js", "a").bytes())});
  EXPECT_EQ(engine.extractedFileList.size(), 1u);
  EXPECT_EQ(engine.expansionBytes, 2 * kEntryCharge + 1);
}

}  // namespace
