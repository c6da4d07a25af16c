// The extraction job against hostile packages: escaping names, planted
// links, limits and lying headers.
#include <fcntl.h>
#include <sys/stat.h>

#include "JobFixture.h"
#include "support/RawZip.h"
#include "support/ZipBuilder.h"

namespace {

using Tree = std::set<std::string>;
using HostileEntryTest = JobFixture;

bool exists(const std::string& path) {
  struct stat st;
  return lstat(path.c_str(), &st) == 0;
}

TEST_F(HostileEntryTest, UnsafeNamesAreSkippedAndTheRestExtracted) {
  const std::string marker = "tarvo-escape-" + std::to_string(getpid());
  const std::vector<std::string> unsafe = {
      "../" + marker,
      "../../" + marker,
      "../../../../../../../" + marker,
      "app/../../" + marker,
      "..\\" + marker,
      tmp.file(marker),  // absolute
      std::string("ok\0/../../", 10) + marker,
      std::string(300, 'n'),
  };
  std::vector<RawZipEntry> entries;
  for (const std::string& name : unsafe) entries.push_back({name, "escaped"});
  entries.push_back({"app/ok.txt", "kept"});
  ASSERT_EQ(extract(package(RawZip(entries))), 0);

  EXPECT_EQ(tree(out), (Tree{"app/", "app/ok.txt"}));
  EXPECT_EQ(tree(tmp.path()), (Tree{"p.zip", "out/", "out/app/", "out/app/ok.txt"}));
  EXPECT_FALSE(exists("/tmp/" + marker));
  EXPECT_FALSE(exists("/" + marker));
  EXPECT_EQ(logged("unsafe entry name"), static_cast<int>(unsafe.size()));
}

TEST_F(HostileEntryTest, LinkEntryIsWrittenAsRegularFile) {
  RawZipEntry link{"link", "/etc/passwd"};
  link.externalAttributes = 0120777u << 16;
  ASSERT_EQ(extract(package(RawZip({link}))), 0);
  struct stat st;
  ASSERT_EQ(lstat((out + "/link").c_str(), &st), 0);
  EXPECT_TRUE(S_ISREG(st.st_mode));
  EXPECT_EQ(ReadFile(out + "/link"), "/etc/passwd");
}

// Something planted in the extraction directory before the job runs.
struct Planted {
  const char* what;
  const char* entry;  // the package's one entry
  bool overwrite;
  void (*plant)(const std::string& out, const std::string& outside);
};

class PlantedLinkTest : public JobFixture, public ::testing::WithParamInterface<Planted> {};

TEST_P(PlantedLinkTest, NothingOutsideIsWritten) {
  const std::string outside = tmp.file("outside");
  ASSERT_EQ(mkdir(outside.c_str(), 0755), 0);
  WriteFile(outside + "/index.html", "outside");
  GetParam().plant(out, outside);
  const Tree before = tree(outside);

  std::string pkg = package(ZipBuilder().add(GetParam().entry, "from package").bytes());
  job({"-x", pkg, GetParam().overwrite ? "-o" : "-x", "-d", out});

  EXPECT_EQ(tree(outside), before) << GetParam().what;
  EXPECT_EQ(ReadFile(outside + "/index.html"), "outside") << GetParam().what;
  struct stat st;
  if (lstat((out + "/" + GetParam().entry).c_str(), &st) == 0 && !S_ISLNK(st.st_mode)) {
    EXPECT_TRUE(S_ISREG(st.st_mode) && st.st_nlink == 1) << GetParam().what;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Links, PlantedLinkTest,
    ::testing::Values(
        Planted{"directory link", "www/index.html", true,
                [](const std::string& out, const std::string& outside) {
                  ASSERT_EQ(symlink(outside.c_str(), (out + "/www").c_str()), 0);
                }},
        Planted{"directory link deeper", "www/js/new.js", true,
                [](const std::string& out, const std::string& outside) {
                  ASSERT_EQ(mkdir((out + "/www").c_str(), 0755), 0);
                  ASSERT_EQ(symlink(outside.c_str(), (out + "/www/js").c_str()), 0);
                }},
        Planted{"file link, overwriting", "index.html", true,
                [](const std::string& out, const std::string& outside) {
                  ASSERT_EQ(symlink((outside + "/index.html").c_str(), (out + "/index.html").c_str()), 0);
                }},
        Planted{"file link, keeping", "index.html", false,
                [](const std::string& out, const std::string& outside) {
                  ASSERT_EQ(symlink((outside + "/index.html").c_str(), (out + "/index.html").c_str()), 0);
                }},
        Planted{"dangling link to a new outside file", "new.html", true,
                [](const std::string& out, const std::string& outside) {
                  ASSERT_EQ(symlink((outside + "/new.html").c_str(), (out + "/new.html").c_str()), 0);
                }},
        Planted{"hard link, overwriting", "index.html", true,
                [](const std::string& out, const std::string& outside) {
                  ASSERT_EQ(link((outside + "/index.html").c_str(), (out + "/index.html").c_str()), 0);
                }}));

TEST_F(HostileEntryTest, ExtractionDirectoryThatIsALinkIsRefused) {
  const std::string outside = tmp.file("outside");
  ASSERT_EQ(mkdir(outside.c_str(), 0755), 0);
  const std::string linked = tmp.file("linked");
  ASSERT_EQ(symlink(outside.c_str(), linked.c_str()), 0);
  EXPECT_EQ(job({"-x", package(ZipBuilder().add("a.txt", "x").bytes()), "-d", linked}), 1);
  EXPECT_EQ(tree(outside), Tree{});
}

// Budgets ------------------------------------------------------------------

TEST_F(HostileEntryTest, ByteLimitStopsTheJobWithOneLine) {
  ExtractionBudget budget;
  budget.maxBytes = 3 * kEntryCharge + 10000;
  std::vector<RawZipEntry> entries = {
      {"a.txt", std::string(1000, 'a')},
      {"bomb.bin", std::string(1 << 20, '\0'), true},
      {"after.txt", "after"},
  };
  ASSERT_EQ(extract(package(RawZip(entries)), &budget), 0);
  EXPECT_EQ(ReadFile(out + "/a.txt").size(), 1000u);
  EXPECT_LE(ReadFile(out + "/bomb.bin").size(), 10000u - 1000u);
  EXPECT_FALSE(exists(out + "/after.txt"));
  EXPECT_LE(budget.bytesUsed, budget.maxBytes);
  EXPECT_EQ(logged("bytes reached"), 1);
}

TEST_F(HostileEntryTest, EmptyFilesAndDirectoriesDrawOnTheBudget) {
  ExtractionBudget budget;
  budget.maxBytes = 5 * kEntryCharge;
  ZipBuilder builder;
  for (int i = 0; i < 4; ++i) builder.add("d" + std::to_string(i) + "/e.txt");
  ASSERT_EQ(extract(package(builder.bytes()), &budget), 0);
  // d0/, d0/e.txt, d1/, d1/e.txt, d2/ and then the limit.
  EXPECT_EQ(tree(out), (Tree{"d0/", "d0/e.txt", "d1/", "d1/e.txt", "d2/"}));
  EXPECT_EQ(budget.bytesUsed, 5 * kEntryCharge);
  EXPECT_EQ(logged("bytes reached"), 1);
}

TEST_F(HostileEntryTest, EntryLimitStopsEachJobAndByteBudgetIsShared) {
  ExtractionBudget budget;
  budget.maxEntries = 3;
  ZipBuilder builder;
  for (int i = 0; i < 5; ++i) builder.add("f" + std::to_string(i), "x");
  std::string pkg = package(builder.bytes());
  ASSERT_EQ(extract(pkg, &budget), 0);
  EXPECT_EQ(tree(out), (Tree{"f0", "f1", "f2"}));
  EXPECT_EQ(logged("entries reached"), 1);
  EXPECT_EQ(budget.bytesUsed, 3 * (kEntryCharge + 1));

  // A second job with the same budget draws on what is left of it.
  budget.maxBytes = budget.bytesUsed + kEntryCharge + 1;
  ASSERT_EQ(job({"-x", pkg, "-o", "-d", tmp.path()}, &budget), 0);
  EXPECT_TRUE(exists(tmp.file("f0")));
  EXPECT_FALSE(exists(tmp.file("f1")));
}

// Sizes in the headers that do not match the data: nothing beyond the real
// data is written, nothing is sized by the header, and the job ends.
TEST_F(HostileEntryTest, LyingDeclaredSizes) {
  const std::string content(50000, 'z');
  for (int64_t declared : {int64_t{0}, int64_t{10}, int64_t{0xFFFFFFFF}}) {
    for (bool deflate : {false, true}) {
      SCOPED_TRACE(std::to_string(declared) + (deflate ? " deflated" : " stored"));
      RawZipEntry lying{"lying.bin", content, deflate, declared};
      ExtractionBudget budget;
      EXPECT_EQ(job({"-x", package(RawZip({lying, {"next.txt", "n"}})), "-o", "-d", out}, &budget), 0);
      struct stat st;
      if (lstat((out + "/lying.bin").c_str(), &st) == 0) {
        EXPECT_LE(static_cast<size_t>(st.st_size), content.size());
        EXPECT_LE(st.st_blocks * 512, static_cast<long>(content.size()) + 65536);
      }
      EXPECT_LE(budget.bytesUsed, 3 * kEntryCharge + content.size());
    }
  }
}

}  // namespace
