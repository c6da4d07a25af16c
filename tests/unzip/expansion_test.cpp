// File discovery and removal of extraction trees, and the analysis-wide
// limits of expansion.
#include <algorithm>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/DirectoryRemoval.h"
#include "JobFixture.h"
#include "support/ZipBuilder.h"

namespace {

using DiscoveryTest = JobFixture;

// Links planted in a tree: discovery lists nothing behind them and removal
// takes nothing behind them.
TEST_F(DiscoveryTest, FindsAndRemovesRegularFilesOnlyWithoutFollowingLinks) {
  const std::string outside = tmp.file("outside");
  WriteFile(outside + "/secret.js", "x");
  for (const char* file : {"/a.html", "/www/js/b.js", "/www/empty/.hidden"}) WriteFile(out + file, "x");
  ASSERT_EQ(symlink(outside.c_str(), (out + "/www/dirlink").c_str()), 0);
  ASSERT_EQ(symlink((outside + "/secret.js").c_str(), (out + "/filelink.js").c_str()), 0);
  ASSERT_EQ(symlink("..", (out + "/www/loop").c_str()), 0);
  ASSERT_EQ(mkfifo((out + "/fifo").c_str(), 0644), 0);
  ASSERT_EQ(symlink(outside.c_str(), tmp.file("linked-root").c_str()), 0);

  FlashEngine_1_00::APIAnalysis engine;
  std::vector<std::string> found{"kept"};
  engine.FindAppsFilesLocation(out, found);
  engine.FindAppsFilesLocation(out + "/none", found);
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found,
            (std::vector<std::string>{out + "/a.html", out + "/www/empty/.hidden", out + "/www/js/b.js", "kept"}));

  RemoveDirectoryTree(out);
  RemoveDirectoryTree(tmp.file("linked-root"));  // the link goes, not what it points to
  EXPECT_EQ(tree(tmp.path()), (Tree{"outside/", "outside/secret.js"}));
}

// Expansion inside an engine, on its real extraction directories.
TEST_F(DiscoveryTest, ByteBudgetIsSharedByNestedPackagesAndStartedAfreshByEachAnalysis) {
  LockFixedPaths();
  FlashEngine_1_00::APIAnalysis engine;
  // Ten packages of one file each in one package, with room for little more
  // than the outer one; nested, so the bytes already counted are kept.
  std::string inner = ZipBuilder().add("inner.js", std::string(100, 'i')).bytes();
  ZipBuilder outer;
  for (int i = 0; i < 10; ++i) outer.add("p" + std::to_string(i) + ".zip", inner);
  engine.expansionDepth = 1;
  engine.expansionBytes = EngineConfig::kMaxExtractedBytes - 4 * kEntryCharge - 3 * inner.size();
  engine.addFilePathbyUnzipping({package(outer.bytes())});
  EXPECT_LE(engine.expansionBytes, EngineConfig::kMaxExtractedBytes);
  EXPECT_EQ(engine.extractedFileList.size(), 3u);  // p0, p1, p2
  EXPECT_EQ(logged("bytes reached"), 4);           // the outer package's line, one for each inner one

  // The outermost call of the next analysis has the whole budget again.
  engine.expansionDepth = 0;
  engine.addFilePathbyUnzipping({package(inner)});
  EXPECT_EQ(engine.extractedFileList.size(), 4u);
  EXPECT_EQ(engine.expansionBytes, 2 * kEntryCharge + 100);
  for (const std::string& dir : engine.extractedDirList) RemoveDirectoryTree(dir);
}

}  // namespace
