// Shared set-up of the extraction job tests: a scratch directory with an
// extraction directory "out", and the working directory restored afterwards.
#pragma once

#include <gtest/gtest.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/EngineHost.h"
#include "unzip/UnzipJob.h"

using Tree = std::set<std::string>;

class JobFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(getcwd(savedCwd_, sizeof(savedCwd_)), nullptr);
    ASSERT_EQ(mkdir(out.c_str(), 0755), 0);
    LogCapture::clear();
  }
  void TearDown() override { ASSERT_EQ(chdir(savedCwd_), 0); }

  std::string package(const std::string& bytes) {
    WriteFile(tmp.file("p.zip"), bytes);
    return tmp.file("p.zip");
  }
  int job(std::vector<std::string> args, ExtractionBudget* budget = nullptr) {
    args.insert(args.begin(), "uzip");
    std::vector<char*> argv;
    for (std::string& arg : args) argv.push_back(&arg[0]);
    ExtractionBudget own;
    return do_UnzipJob(static_cast<int>(argv.size()), argv.data(), budget ? *budget : own);
  }
  int extract(const std::string& pkg, ExtractionBudget* budget = nullptr) {
    return job({pkg, "-o", "-d", out}, budget);
  }

  // Every path below `dir`, relative; directories (not links) end in "/".
  static Tree tree(const std::string& dir) {
    Tree paths;
    std::error_code error;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(dir, error)) {
      bool isDir = entry.symlink_status().type() == std::filesystem::file_type::directory;
      paths.insert(entry.path().string().substr(dir.size() + 1) + (isDir ? "/" : ""));
    }
    return paths;
  }
  // Log lines whose text contains `part`.
  static int logged(const std::string& part) {
    const std::vector<LogLine>& lines = LogCapture::lines();
    return std::count_if(lines.begin(), lines.end(),
                         [&](const LogLine& l) { return l.text.find(part) != std::string::npos; });
  }

  TempDir tmp;
  const std::string out = tmp.file("out");

 private:
  char savedCwd_[PATH_MAX];
};
