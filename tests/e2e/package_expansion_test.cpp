// Package expansion seen from a host: which files are packages, where they
// are extracted, what the run adds and what it leaves.
#include <algorithm>

#include "PackageRun.h"
#include "support/ZipBuilder.h"

namespace {

using Paths = std::vector<std::string>;

Paths sorted(Paths paths) {
  std::sort(paths.begin(), paths.end());
  return paths;
}

using PackageExpansion = PackageRun;

TEST_F(PackageExpansion, AppPackageIsExtractedAddedAndRemoved) {
  std::string bytes = ZipBuilder()
                          .add("app/www/index.html", "<html><script src='js/app.js'></script></html>")
                          .add("app/www/js/app.js", "var x = 1;")
                          .add("app/config.xml", "<widget/>")
                          .bytes();
  std::string pkg = package("app.zip", bytes);
  std::string readme = package("readme.txt", "not a package");

  EngineHost::Run run = host.analyse({readme, pkg});

  EXPECT_EQ(run.code, RUN_SUCCESS);
  EXPECT_TRUE(run.logged(" \n [addFilePathbyUnzipping] [2]"));
  EXPECT_TRUE(run.logged(foundLine(pkg, bytes.size())));
  EXPECT_EQ(count(run, " zip file found"), 1);
  EXPECT_EQ(sorted(added(run)), (Paths{"/tmp/0/app/config.xml", "/tmp/0/app/www/index.html",
                                       "/tmp/0/app/www/js/app.js"}));
  EXPECT_EQ(workingDirectoryAfter({readme, pkg}), "/tmp/0 (deleted)");
}

TEST_F(PackageExpansion, NestedPackagesTakeTheNextNumbersDepthFirst) {
  std::string inner = ZipBuilder().add("www/inner.js", "i").bytes();
  std::string first = package("first.zip", ZipBuilder().add("inner.zip", inner).add("outer.js", "o").bytes());
  std::string second = package("second.zip", ZipBuilder().add("second.js", "s").bytes());

  EngineHost::Run run = host.analyse({first, second});

  Paths paths = added(run);
  ASSERT_EQ(paths.size(), 4u);
  // The first package's own files, then its nested package's, then the next
  // package's.
  EXPECT_EQ(sorted(Paths(paths.begin(), paths.begin() + 2)), (Paths{"/tmp/0/inner.zip", "/tmp/0/outer.js"}));
  EXPECT_EQ(paths[2], "/tmp/1/www/inner.js");
  EXPECT_EQ(paths[3], "/tmp/2/second.js");
  EXPECT_TRUE(run.logged(foundLine("/tmp/0/inner.zip", inner.size())));
  EXPECT_EQ(workingDirectoryAfter({first, second}), "/tmp/2 (deleted)");
}

TEST_F(PackageExpansion, EmptyPackageGetsADirectoryThatIsRemoved) {
  std::string empty = package("empty.zip", std::string("PK\5\6", 4) + std::string(18, '\0'));
  std::string next = package("next.zip", ZipBuilder().add("next.js", "n").bytes());

  // "/tmp/0" is examined after the empty package: it opens only if the
  // directory was made.
  EngineHost::Run run = host.analyse({empty, "/tmp/0", next});

  EXPECT_TRUE(run.logged(foundLine(empty, 22)));
  EXPECT_FALSE(run.logged(" [/tmp/0] Open Error "));
  EXPECT_EQ(added(run), Paths{"/tmp/1/next.js"});
}

TEST_F(PackageExpansion, ContentDecidesNotTheName) {
  std::string bytes = ZipBuilder().add("index.html", "<html/>").bytes();
  std::string widget = package("app.wgt", bytes);
  std::string fake = package("fake.zip", "<html>not a package</html>");
  std::string shortFile = package("short.zip", "PK");

  EngineHost::Run run = host.analyse({fake, shortFile, widget});

  EXPECT_EQ(count(run, " zip file found"), 1);
  EXPECT_TRUE(run.logged(foundLine(widget, bytes.size())));
  EXPECT_EQ(added(run), Paths{"/tmp/0/index.html"});
}

TEST_F(PackageExpansion, PathsContainingFlaAreNeverExpanded) {
  std::string bytes = ZipBuilder().add("a.js", "a").bytes();
  std::string fla = package("movie.fla", bytes);
  std::string flash = package("anim.flash.zip", bytes);
  std::string outer = package("outer.zip", ZipBuilder().add("assets/movie.fla", bytes).bytes());

  EngineHost::Run run = host.analyse({fla, flash, outer});

  EXPECT_EQ(count(run, " zip file found"), 1);
  EXPECT_EQ(added(run), Paths{"/tmp/0/assets/movie.fla"});
}

TEST_F(PackageExpansion, UnreadablePathIsLoggedAndTheRestExamined) {
  std::string pkg = package("app.zip", ZipBuilder().add("a.js", "a").bytes());
  std::string missing = tmp.file("missing.zip");

  EngineHost::Run run = host.analyse({missing, pkg});

  EXPECT_TRUE(run.logged(" [" + missing + "] Open Error "));
  EXPECT_EQ(added(run), Paths{"/tmp/0/a.js"});
}

}  // namespace
