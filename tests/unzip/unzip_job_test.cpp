// The extraction job's ordinary behaviour: what lands where, its options and
// its failures.
#include <ctime>
#include <tuple>

#include "JobFixture.h"
#include "support/ZipBuilder.h"

namespace {

using UnzipJobTest = JobFixture;

TEST_F(UnzipJobTest, OptionsAndWhatLandsWhere) {
  const std::string big(20000, 'c');  // more than one copy chunk
  const std::string pkg = package(
      ZipBuilder().add("app/").add("app/www/index.html", "<html/>").add("app/js/main.js", big).add("e.txt").bytes());
  const Tree all{"app/", "app/www/", "app/www/index.html", "app/js/", "app/js/main.js", "e.txt"};
  const Tree flat{"index.html", "main.js", "e.txt"};
  const std::tuple<std::vector<std::string>, int, Tree> cases[] = {  // arguments, result, what is extracted
      {{"-x", "-e", pkg, "-o", "-d", out}, 0, flat},
      {{"-x", pkg, "app/js/main.js", "-d", out}, 0, {"app/", "app/js/", "app/js/main.js"}},
      {{"-x", pkg, "app/none.js", "-d", out}, 1, {}},
      {{"-x", pkg.substr(0, pkg.size() - 4), "-e", "-d", out}, 0, flat},  // ".zip" appended
      {{"-l", pkg, "-d", out}, 0, {}},
      {{"-x", "-d", out}, 1, {}},
      {{"-x", tmp.file("none.zip"), "-d", out}, 1, {}},
      {{"-x", pkg, "-d", out + "/none"}, 1, {}},
      {{"-XO", pkg, "-D", out}, 0, all},
  };
  for (const auto& [args, result, files] : cases) {
    RemoveTree(out);
    ASSERT_EQ(mkdir(out.c_str(), 0755), 0);
    EXPECT_EQ(job(args), result) << testing::PrintToString(args);
    EXPECT_EQ(tree(out), files) << testing::PrintToString(args);
  }
  EXPECT_EQ(ReadFile(out + "/app/js/main.js"), big);
  struct tm stored = {};  // ZipBuilder's date: 15 June 2020, 12:00 local time
  stored.tm_year = 120, stored.tm_mon = 5, stored.tm_mday = 15, stored.tm_hour = 12, stored.tm_isdst = -1;
  struct stat st;
  EXPECT_TRUE(stat((out + "/app/js/main.js").c_str(), &st) == 0 && st.st_mtime == mktime(&stored));
  char cwd[PATH_MAX];
  EXPECT_EQ(std::string(getcwd(cwd, sizeof(cwd))), out);  // the job stays in its directory

  // An existing file is kept unless overwriting.
  WriteFile(out + "/e.txt", "old");
  ASSERT_EQ(job({pkg, "-d", out}), 0);
  EXPECT_EQ(ReadFile(out + "/e.txt"), "old");
  ASSERT_EQ(job({pkg, "-o", "-d", out}), 0);
  EXPECT_EQ(ReadFile(out + "/e.txt"), "");
}

TEST_F(UnzipJobTest, PackageNameLongerThanItsBufferIsRefusedNotCut) {
  // A package sits exactly where the name cut to 255 bytes would lead.
  std::string cut = tmp.file(std::string(200, 'd'));
  cut += "/" + std::string(254 - cut.size(), 'p');
  WriteFile(cut, ZipBuilder().add("a.txt", "a").bytes());
  EXPECT_EQ(job({cut + "-longer-name.zip", "-d", out}), 1);
  EXPECT_EQ(tree(out), Tree{});
  EXPECT_EQ(job({cut, "-d", out}), 0);  // the 255-byte name itself is fine
}

}  // namespace
