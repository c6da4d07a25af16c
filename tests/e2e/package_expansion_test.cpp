// Package expansion seen from a host: which files are packages, where they
// are extracted, what the run adds and what it leaves.
#include <algorithm>

#include "PackageRun.h"
#include "support/RawZip.h"
#include "support/ZipBuilder.h"

namespace {

using PackageExpansion = PackageRun;

TEST_F(PackageExpansion, NestedPackagesAreExtractedAddedAndRemoved) {
  std::string inner = ZipBuilder().add("www/inner.js", "i").bytes();
  std::string bytes =
      ZipBuilder().add("app/www/index.html", "<html/>").add("app/www/js/a.js", "a").add("inner.zip", inner).bytes();
  Paths files = {package("readme.txt", "not a package"), package("app.zip", bytes),
                 package("second.zip", ZipBuilder().add("second.js", "s").bytes())};

  EngineHost::Run run = host.analyse(files);

  EXPECT_TRUE(run.logged(" \n [addFilePathbyUnzipping] [3]"));
  EXPECT_TRUE(run.logged(found(files[1], bytes.size())));
  EXPECT_TRUE(run.logged(found("/tmp/0/inner.zip", inner.size())));
  // The first package's own files, then its nested package's, then the next
  // package's: depth first, numbered in that order.
  Paths paths = added(run);
  ASSERT_EQ(paths.size(), 5u);
  std::sort(paths.begin(), paths.begin() + 3);
  EXPECT_EQ(paths, (Paths{"/tmp/0/app/www/index.html", "/tmp/0/app/www/js/a.js", "/tmp/0/inner.zip",
                          "/tmp/1/www/inner.js", "/tmp/2/second.js"}));
  EXPECT_EQ(workingDirectoryAfter(files), "/tmp/2 (deleted)");
}

// The first four bytes decide, not the name: "PK" and one of six pairs.
// Paths holding ".fla" are never opened as packages; a path that cannot be
// opened is logged and passed over; an empty package gets a directory (so
// "/tmp/0", examined after it, opens), which is removed with the others; it
// is the end record alone: "PK", 5, 6.
TEST_F(PackageExpansion, WhichFilesArePackages) {
  std::string bytes = ZipBuilder().add("index.html", "<html/>").bytes();
  Paths files = {tmp.file("missing.zip"), package("movie.fla", bytes), package("anim.flash.zip", bytes),
                 package("empty.zip", RawZip({})), "/tmp/0", package("app.wgt", bytes),
                 package("outer.zip", ZipBuilder().add("x/movie.fla", bytes).bytes())};
  for (const char* head : {"<html/>", "PK", "PKsp", "PK\4\3", "pk\3\4", "PK\7\10", "PKLI", "PKSp", "PKnZ"}) {
    files.push_back(package(std::to_string(files.size()) + ".zip", head));
  }

  EngineHost::Run run = host.analyse(files);

  EXPECT_TRUE(run.logged(" [" + files[0] + "] Open Error "));
  EXPECT_FALSE(run.logged(" [/tmp/0] Open Error "));
  EXPECT_EQ(count(run, " zip file found"), 7);
  EXPECT_TRUE(run.logged(found(files[3], 22)));
  EXPECT_TRUE(run.logged(found(files[5], bytes.size())));
  EXPECT_TRUE(run.logged(found(files.back(), 4)));
  EXPECT_EQ(added(run), (Paths{"/tmp/1/index.html", "/tmp/2/x/movie.fla"}));
}

}  // namespace
