// Shared set-up of the end-to-end package tests: an engine host, the
// reference database, a scratch directory, and the check that every run
// leaves no extraction directory behind.
#pragma once

#include <gtest/gtest.h>
#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/EngineHost.h"

using Paths = std::vector<std::string>;

class PackageRun : public ::testing::Test {
 protected:
  static bool exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }
  void SetUp() override {
    for (int n = 0; n < 64; ++n) RemoveTree("/tmp/" + std::to_string(n));
  }
  void TearDown() override {
    for (int n = 0; n < 64; ++n) {
      EXPECT_FALSE(exists("/tmp/" + std::to_string(n))) << n << " left behind";
      RemoveTree("/tmp/" + std::to_string(n));
    }
  }

  std::string package(const std::string& name, const std::string& bytes) {
    WriteFile(tmp.file(name), bytes);
    return tmp.file(name);
  }
  // The paths the driver logged as added, in order.
  static Paths added(const EngineHost::Run& run) {
    Paths paths;
    for (const LogLine& l : run.log) {
      if (l.format == " additionally added path : [%s]") paths.push_back(l.text.substr(28, l.text.size() - 29));
    }
    return paths;
  }
  static int count(const EngineHost::Run& run, const std::string& part) {
    return std::count_if(run.log.begin(), run.log.end(),
                         [&](const LogLine& l) { return l.text.find(part) != std::string::npos; });
  }
  static std::string found(const std::string& path, size_t size) {
    return " zip file found [" + path + "]/ Size [" + std::to_string(size) + "]";
  }

  // Runs the engine as a host does and tells where it left the working
  // directory, as the kernel names it: the clean-up has removed it by then, so
  // it reads "PATH (deleted)".
  std::string workingDirectoryAfter(const Paths& files) {
    char saved[PATH_MAX], where[PATH_MAX];
    if (getcwd(saved, sizeof(saved)) == nullptr) return "";
    host.createResultVector();
    IAppAnalysis* engine = host.createInstance();
    Paths input(files);
    engine->StartAnalysis(&input);
    ssize_t length = readlink("/proc/self/cwd", where, sizeof(where));
    host.destoryInstance(engine);
    host.destoryResultVector();
    EXPECT_EQ(chdir(saved), 0);
    return std::string(where, length > 0 ? static_cast<size_t>(length) : 0);
  }

  EngineHost host;
  DatabaseFile database{ReadFile(TARVO_SOURCE_DIR "/data/APIAnalEngineDB.xml")};
  TempDir tmp;
};
