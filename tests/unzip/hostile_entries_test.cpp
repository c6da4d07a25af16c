// The extraction job against hostile packages: escaping names, planted
// links and limits.
#include <tuple>

#include "JobFixture.h"
#include "support/RawZip.h"
#include "support/ZipBuilder.h"

namespace {

using HostileEntryTest = JobFixture;
namespace fs = std::filesystem;

// A name that would leave the extraction directory stops the job with its
// cause before anything of it is written; odd names that stay inside and a
// link entry (written as a plain file) are extracted.
TEST_F(HostileEntryTest, UnsafeNamesStopTheJobAndTheRestStaysInside) {
  const std::string marker = "tarvo-escape-" + std::to_string(getpid());
  const std::vector<std::string> unsafe = {"../../../../../../../" + marker, "a/../../" + marker, "..\\" + marker,
                                           tmp.file(marker), "\\" + marker, std::string("ok\0/../", 7) + marker,
                                           std::string(300, 'n')};
  for (const std::string& name : unsafe) {
    SCOPED_TRACE(name);
    RemoveTree(out);
    ASSERT_EQ(mkdir(out.c_str(), 0755), 0);
    ExtractionBudget budget;
    ASSERT_EQ(extract(package(RawZip({{"first.txt", "1"}, {name, "escaped"}, {"after.txt", "2"}})), &budget), 0);
    EXPECT_EQ(tree(out), Tree{"first.txt"});
    EXPECT_NE(budget.refusal.find("leaves the extraction directory"), std::string::npos) << budget.refusal;
  }
  EXPECT_FALSE(fs::exists(fs::symlink_status("/" + marker)));

  RemoveTree(out);
  ASSERT_EQ(mkdir(out.c_str(), 0755), 0);
  std::vector<RawZipEntry> entries = {{"", ""}, {"./", ""}, {"..a/b..", "kept"}, {"x\\.//y.txt", "kept"}};
  entries.push_back({"link", "/etc/passwd", false, 0120777u << 16});
  ExtractionBudget budget;
  ASSERT_EQ(extract(package(RawZip(entries)), &budget), 0);
  EXPECT_EQ(tree(out), (Tree{"..a/", "..a/b..", "x/", "x/y.txt", "link"}));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(out + "/link")));
  EXPECT_EQ(budget.refusal, "");
}

// Links planted in the extraction directory before the job runs, at the
// first component of the package's one entry: to `outside` for a directory,
// to the same name below it for a file.
TEST_F(HostileEntryTest, PlantedLinksWriteNothingOutside) {
  const std::string outside = tmp.file("outside");
  const std::tuple<std::string, bool, bool> cases[] = {  // entry, overwriting, hard link
      {"www/a.html", true, false}, {"index.html", true, false}, {"index.html", false, false},
      {"new.html", false, false},  {"index.html", true, true}};
  for (const auto& [entry, overwrite, hard] : cases) {
    SCOPED_TRACE(entry);
    RemoveTree(out);
    WriteFile(outside + "/index.html", "outside");
    ASSERT_EQ(mkdir(out.c_str(), 0755), 0);
    const std::string first = entry.substr(0, entry.find('/')), at = out + "/" + first;
    const std::string target = first == entry ? outside + "/" + first : outside;
    ASSERT_EQ(hard ? link(target.c_str(), at.c_str()) : symlink(target.c_str(), at.c_str()), 0);

    job({package(ZipBuilder().add(entry, "from package").bytes()), overwrite ? "-o" : "-x", "-d", out});
    EXPECT_EQ(tree(outside), Tree{"index.html"});
    EXPECT_EQ(ReadFile(outside + "/index.html"), "outside");
  }
  // Nor through an extraction directory that is itself a link.
  ASSERT_EQ(symlink(outside.c_str(), tmp.file("linked").c_str()), 0);
  EXPECT_EQ(job({package(ZipBuilder().add("a.txt", "x").bytes()), "-d", tmp.file("linked")}), 1);
  EXPECT_EQ(tree(outside), Tree{"index.html"});
}

TEST_F(HostileEntryTest, ByteLimitStopsTheJobWithOneLine) {
  ExtractionBudget budget;
  budget.maxBytes = 3 * kEntryCharge + 10000;
  std::vector<RawZipEntry> entries = {
      {"a.txt", std::string(1000, 'a')}, {"bomb.bin", std::string(1 << 20, '\0'), true}, {"after.txt", "after"}};
  // The stored size refuses the bomb before anything of it is written (the
  // inflater never yields more than that size).
  ASSERT_EQ(extract(package(RawZip(entries)), &budget), 0);
  EXPECT_EQ(tree(out), Tree{"a.txt"});
  EXPECT_LE(budget.bytesUsed, budget.maxBytes);
  EXPECT_EQ(logged("bytes reached"), 1);
  EXPECT_EQ(budget.refusal, "more than " + std::to_string(budget.maxBytes) + " bytes to extract");
}

// Every file and directory made costs bytes, so that empty entries cannot be
// made without end; and each job handles a bounded number of entries.
TEST_F(HostileEntryTest, EmptyEntriesDrawOnTheBudgetAndEntriesAreCounted) {
  const std::string pkg = package(ZipBuilder().add("d0/e").add("d1/e").add("d2/e").add("d3/e").bytes());
  ExtractionBudget bytes, entries;
  bytes.maxBytes = 5 * kEntryCharge;
  entries.maxEntries = 3;
  ASSERT_EQ(extract(pkg, &bytes), 0);
  EXPECT_EQ(tree(out), (Tree{"d0/", "d0/e", "d1/", "d1/e", "d2/"}));
  ASSERT_EQ(job({pkg, "-d", tmp.path()}, &entries), 0);
  EXPECT_FALSE(fs::exists(tmp.file("d0")));  // refused before anything is written
  EXPECT_EQ(logged("bytes reached"), 1);
  EXPECT_EQ(logged("entries reached"), 1);
  EXPECT_EQ(bytes.refusal.substr(0, 5) + entries.refusal, "more more than 3 entries");
}

}  // namespace
