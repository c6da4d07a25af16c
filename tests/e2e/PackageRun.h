// Shared set-up of the end-to-end package tests: an engine host, the
// reference database, a scratch directory, and the check that every run
// leaves no extraction directory behind.
#pragma once

#include <gtest/gtest.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "support/EngineHost.h"

class PackageRun : public ::testing::Test {
 protected:
  static constexpr int kDirectoriesChecked = 64;

  static std::string extractionDir(int n) { return "/tmp/" + std::to_string(n); }
  static bool exists(const std::string& path) {
    struct stat st;
    return lstat(path.c_str(), &st) == 0;
  }

  void SetUp() override {
    for (int n = 0; n < kDirectoriesChecked; ++n) RemoveTree(extractionDir(n));
  }
  void TearDown() override {
    for (int n = 0; n < kDirectoriesChecked; ++n) {
      EXPECT_FALSE(exists(extractionDir(n))) << extractionDir(n) << " left behind";
      RemoveTree(extractionDir(n));
    }
  }

  std::string package(const std::string& name, const std::string& bytes) {
    std::string path = tmp.file(name);
    WriteFile(path, bytes);
    return path;
  }

  // The paths the driver logged as added, in order.
  static std::vector<std::string> added(const EngineHost::Run& run) {
    std::vector<std::string> paths;
    for (const LogLine& line : run.log) {
      if (line.format == " additionally added path : [%s]") {
        paths.push_back(line.text.substr(28, line.text.size() - 29));
      }
    }
    return paths;
  }
  static int count(const EngineHost::Run& run, const std::string& part) {
    int n = 0;
    for (const LogLine& line : run.log) n += line.text.find(part) != std::string::npos;
    return n;
  }
  static std::string foundLine(const std::string& path, size_t size) {
    return " zip file found [" + path + "]/ Size [" + std::to_string(size) + "]";
  }

  // Runs the engine as a host does and tells where the run left the process's
  // working directory, as the kernel names it: the clean-up has removed the
  // directory by then, so it reads "PATH (deleted)".
  std::string workingDirectoryAfter(const std::vector<std::string>& files) {
    char saved[PATH_MAX];
    if (getcwd(saved, sizeof(saved)) == nullptr) return "";
    host.createResultVector();
    IAppAnalysis* engine = host.createInstance();
    std::vector<std::string> input(files);
    engine->StartAnalysis(&input);
    char where[PATH_MAX];
    ssize_t length = readlink("/proc/self/cwd", where, sizeof(where));
    host.destoryInstance(engine);
    host.destoryResultVector();
    EXPECT_EQ(chdir(saved), 0);
    return length > 0 ? std::string(where, static_cast<size_t>(length)) : "";
  }

  EngineHost host;
  DatabaseFile database{ReadFile(TARVO_SOURCE_DIR "/data/APIAnalEngineDB.xml")};
  TempDir tmp;
};
