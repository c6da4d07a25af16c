// Shared set-up of the extraction job tests: a scratch directory with an
// extraction directory "out", and the working directory restored afterwards.
#pragma once

#include <gtest/gtest.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <string>
#include <vector>

#include "support/EngineHost.h"
#include "support/LogCapture.h"
#include "unzip/UnzipJob.h"

class JobFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    char cwd[PATH_MAX];
    ASSERT_NE(getcwd(cwd, sizeof(cwd)), nullptr);
    savedCwd_ = cwd;
    ASSERT_EQ(mkdir(out.c_str(), 0755), 0);
    LogCapture::clear();
  }
  void TearDown() override { ASSERT_EQ(chdir(savedCwd_.c_str()), 0); }

  std::string package(const std::string& bytes, const std::string& name = "p.zip") {
    std::string path = tmp.file(name);
    WriteFile(path, bytes);
    return path;
  }

  int job(std::vector<std::string> args, ExtractionBudget* budget = nullptr) {
    args.insert(args.begin(), "uzip");
    std::vector<char*> argv;
    for (std::string& arg : args) argv.push_back(&arg[0]);
    ExtractionBudget own;
    return do_UnzipJob(static_cast<int>(argv.size()), argv.data(), budget ? *budget : own);
  }
  int extract(const std::string& pkg, ExtractionBudget* budget = nullptr) {
    return job({"-x", pkg, "-o", "-d", out}, budget);
  }

  // Every path below `dir`, relative, directories with a trailing "/";
  // links are not followed.
  static std::set<std::string> tree(const std::string& dir);

  // Log lines whose text contains `part`.
  static int logged(const std::string& part) {
    int count = 0;
    for (const LogLine& line : LogCapture::lines()) count += line.text.find(part) != std::string::npos;
    return count;
  }

  TempDir tmp;
  const std::string out = tmp.file("out");

 private:
  std::string savedCwd_;
};
