// Batch review of a catalogue: every package analysed in a worker process of
// its own, with its own work directory and limits, reported as it finishes.
#pragma once

#include <string>
#include <vector>

class EngineLibrary;

struct BatchOptions {
  std::vector<std::string> paths;  // packages and directories to search for packages
  std::string listFile;            // more paths, one per line ("" none)
  std::string format = "jsonl";    // jsonl, sarif or text
  std::string database;            // "" the product's
  bool reportAll = false;
  bool deep = false;
  unsigned jobs = 1;
  unsigned shardIndex = 0, shardCount = 1;
  // Per package. The engine's own SWF budget is 20 s; web sources of a large
  // application take a few seconds on a TV-class core.
  unsigned timeLimitSeconds = 120;  // wall clock, enforced with SIGKILL
  unsigned cpuLimitSeconds = 120;   // RLIMIT_CPU
  unsigned memoryLimitMiB = 1024;   // RLIMIT_AS
};

// Runs the batch and returns the exit status: 0 every package clean, 1 any
// uses an undocumented API, 3 any refused or in error (and none 1), 66 when a
// path or the list cannot be read.
int RunBatch(const BatchOptions& options, const EngineLibrary& engine);
