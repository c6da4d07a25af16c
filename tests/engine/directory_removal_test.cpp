// Removal of an extraction directory tree: everything below it goes, including
// deep and wide directories, but a symbolic link inside the tree is removed
// itself and what it points to is left alone.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "APICheckEngine/DirectoryRemoval.h"
#include "support/EngineHost.h"

namespace {

bool Exists(const std::string& path) {
  struct stat st;
  return lstat(path.c_str(), &st) == 0;
}

TEST(DirectoryRemoval, RemovesTheWholeTreeButNothingALinkPointsTo) {
  TempDir scratch;
  TempDir outside;
  WriteFile(outside.file("keep.txt"), "kept");
  const std::string root = scratch.file("0");
  const char* files[] = {"index.html", "app/www/js/main.js", "app/www/js/lib/a.js", "app/img/logo.png",
                         "app/www/.hidden", "deep/1/2/3/4/5/6/7/8/leaf"};
  for (const char* name : files) WriteFile(root + "/" + name, name);
  for (int i = 0; i < 200; ++i) WriteFile(root + "/many/file" + std::to_string(i), "x");
  mkdir((root + "/empty").c_str(), 0755);
  ASSERT_EQ(symlink(outside.path().c_str(), (root + "/app/link").c_str()), 0);

  RemoveDirectoryTree(root);

  EXPECT_FALSE(Exists(root));
  EXPECT_TRUE(Exists(scratch.path()));
  EXPECT_EQ(ReadFile(outside.file("keep.txt")), "kept");
}

TEST(DirectoryRemoval, MissingOrEmptyPathIsIgnored) {
  TempDir scratch;
  RemoveDirectoryTree(scratch.file("absent"));
  RemoveDirectoryTree("");
  EXPECT_TRUE(Exists(scratch.path()));
}

}  // namespace
