// The extraction job's ordinary behaviour: what lands where, its options and
// its failures.
#include <sys/stat.h>

#include <ctime>

#include "JobFixture.h"
#include "support/ZipBuilder.h"

namespace {

using Tree = std::set<std::string>;

ZipBuilder appPackage() {
  return ZipBuilder()
      .add("app/")
      .add("app/www/index.html", "<html></html>")
      .add("app/www/js/main.js", "var a = 1;")
      .add("empty.txt", "")
      .add("deep/a/b/c.txt", std::string(20000, 'c'));
}

using UnzipJobTest = JobFixture;

TEST_F(UnzipJobTest, ExtractsTreeContentAndDateAndStaysInDirectory) {
  ASSERT_EQ(extract(package(appPackage().bytes())), 0);

  EXPECT_EQ(tree(out), (Tree{"app/", "app/www/", "app/www/index.html", "app/www/js/", "app/www/js/main.js",
                             "empty.txt", "deep/", "deep/a/", "deep/a/b/", "deep/a/b/c.txt"}));
  EXPECT_EQ(ReadFile(out + "/app/www/index.html"), "<html></html>");
  EXPECT_EQ(ReadFile(out + "/deep/a/b/c.txt"), std::string(20000, 'c'));  // more than one copy chunk
  EXPECT_EQ(ReadFile(out + "/empty.txt"), "");

  // ZipBuilder stores 15 June 2020, 12:00, local time.
  struct tm stored = {};
  stored.tm_year = 120;
  stored.tm_mon = 5;
  stored.tm_mday = 15;
  stored.tm_hour = 12;
  stored.tm_isdst = -1;
  struct stat st;
  ASSERT_EQ(stat((out + "/app/www/js/main.js").c_str(), &st), 0);
  EXPECT_EQ(st.st_mtime, mktime(&stored));

  char cwd[PATH_MAX];
  ASSERT_NE(getcwd(cwd, sizeof(cwd)), nullptr);
  EXPECT_EQ(std::string(cwd), out);
}

struct OptionCase {
  const char* what;
  std::vector<std::string> args;  // "PKG" and "OUT" are replaced
  int result;
  Tree files;
};

class UnzipOptionTest : public JobFixture, public ::testing::WithParamInterface<OptionCase> {};

TEST_P(UnzipOptionTest, Extracts) {
  std::string pkg = package(appPackage().bytes());
  std::vector<std::string> args = GetParam().args;
  for (std::string& arg : args) {
    if (arg == "PKG") arg = pkg;
    if (arg == "PKG-WITHOUT-SUFFIX") arg = pkg.substr(0, pkg.size() - 4);
    if (arg == "OUT") arg = out;
  }
  EXPECT_EQ(job(args), GetParam().result) << GetParam().what;
  EXPECT_EQ(tree(out), GetParam().files) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Options, UnzipOptionTest,
    ::testing::Values(
        OptionCase{"without stored directories",
                   {"-x", "-e", "PKG", "-o", "-d", "OUT"},
                   0,
                   {"index.html", "main.js", "empty.txt", "c.txt"}},
        OptionCase{"one named entry", {"-x", "PKG", "app/www/js/main.js", "-d", "OUT"}, 0,
                   {"app/", "app/www/", "app/www/js/", "app/www/js/main.js"}},
        OptionCase{"a named entry that is missing", {"-x", "PKG", "app/none.js", "-d", "OUT"}, 1, {}},
        OptionCase{"grouped upper-case letters", {"-XO", "PKG", "-D", "OUT"}, 0,
                   {"app/", "app/www/", "app/www/index.html", "app/www/js/", "app/www/js/main.js", "empty.txt",
                    "deep/", "deep/a/", "deep/a/b/", "deep/a/b/c.txt"}},
        OptionCase{"name completed with .zip", {"-x", "PKG-WITHOUT-SUFFIX", "-e", "-d", "OUT"}, 0,
                   {"index.html", "main.js", "empty.txt", "c.txt"}},
        OptionCase{"listing writes nothing", {"-l", "PKG", "-d", "OUT"}, 0, {}},
        OptionCase{"no package", {"-x", "-d", "OUT"}, 1, {}},
        OptionCase{"missing package", {"-x", "/nonexistent/p.zip", "-d", "OUT"}, 1, {}},
        OptionCase{"missing directory", {"-x", "PKG", "-d", "OUT/none"}, 1, {}}));

TEST_F(UnzipJobTest, ExistingFileIsKeptUnlessOverwriting) {
  std::string pkg = package(ZipBuilder().add("a.txt", "new").bytes());
  WriteFile(out + "/a.txt", "old");
  ASSERT_EQ(job({"-x", pkg, "-d", out}), 0);
  EXPECT_EQ(ReadFile(out + "/a.txt"), "old");
  ASSERT_EQ(job({"-x", pkg, "-o", "-d", out}), 0);
  EXPECT_EQ(ReadFile(out + "/a.txt"), "new");
}

TEST_F(UnzipJobTest, PackageNameLongerThanItsBufferIsRefusedNotCut) {
  // A package sits exactly where the name cut to 255 bytes would lead.
  std::string dir = tmp.file(std::string(200, 'd'));
  ASSERT_EQ(mkdir(dir.c_str(), 0755), 0);
  std::string cut = dir + "/" + std::string(254 - dir.size(), 'p');
  ASSERT_EQ(cut.size(), 255u);
  WriteFile(cut, appPackage().bytes());
  EXPECT_EQ(job({"-x", cut + "-longer-name.zip", "-d", out}), 1);
  EXPECT_EQ(tree(out), Tree{});
  EXPECT_EQ(job({"-x", cut, "-d", out}), 0);  // the 255-byte name itself is fine
}

}  // namespace
