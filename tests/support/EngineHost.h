// A host for end-to-end tests: loads the built engine library with dlopen and
// drives it through its exported interface exactly as the review service does.
#pragma once

#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "support/LogCapture.h"

// Holds, for the life of the process, the lock that serialises every test
// program touching the engine's fixed paths (database, result file, /tmp/<n>).
void LockFixedPaths();

// Reads a whole file; "" when it cannot be read.
std::string ReadFile(const std::string& path);
// Writes a whole file, creating missing parent directories.
void WriteFile(const std::string& path, const std::string& content);

class EngineHost {
 public:
  struct Run {
    RunResult code = 0;
    std::vector<std::string> results;  // g_SWFResultVector after the run
    std::string resultFile;            // content of the result file
    std::vector<LogLine> log;          // every line logged from createInstance to destoryInstance
    std::string cwdAfter;              // working directory the run left
    bool logged(const std::string& text) const;
    std::vector<std::string> logTexts() const;
  };

  EngineHost();  // loads the library once per process

  // createResultVector, createInstance, StartAnalysis, read the list,
  // destoryInstance, destoryResultVector; restores the working directory.
  Run analyse(const std::vector<std::string>& files);

  IAppAnalysis* (*createInstance)() = nullptr;
  void (*destoryInstance)(IAppAnalysis*) = nullptr;
  std::vector<std::string>* (*createResultVector)() = nullptr;
  void (*destoryResultVector)() = nullptr;
  std::vector<std::string>** resultVector = nullptr;  // &g_SWFResultVector
  uint32_t* firstTimeVal = nullptr;
  struct timespec* firstCheckTime = nullptr;
  void* handle = nullptr;

  void* symbol(const char* name) const;

  // One analysis through the documented interface (tarvo/analysis.h).
  struct Finding {
    std::string line, file, entry, method, classId, variable, origin;
    uint32_t lineNumber = 0;
    bool deep = false;
    std::string elementId, binding;
  };
  struct Documented {
    int32_t code = 0;
    std::vector<Finding> findings;
    std::vector<std::string> lines;  // the findings' lines
    std::vector<std::string> notes;  // "kind: path: cause"
  };
  Documented analyseDocumented(const std::vector<std::string>& files, bool reportAll = false,
                               const std::string& workDir = "", const std::string& database = "",
                               bool deep = false) const;
};

// Puts `content` at the engine's database path for the life of the object (or
// removes the file for missing()), then restores whatever was there before.
class DatabaseFile {
 public:
  explicit DatabaseFile(const std::string& content);
  static DatabaseFile Missing();
  ~DatabaseFile();
  DatabaseFile(const DatabaseFile&) = delete;
  DatabaseFile(DatabaseFile&& other) noexcept;

 private:
  DatabaseFile() = default;
  void saveExisting();
  bool hadFile_ = false;
  bool active_ = false;
  std::string saved_;
};

// A scratch directory under /tmp, removed with everything in it.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  const std::string& path() const { return path_; }
  std::string file(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// Removes a directory tree (test clean-up).
void RemoveTree(const std::string& path);
