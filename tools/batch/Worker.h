// One package analysed in a worker process: forked from the batch with the
// engine already loaded, with resource limits of its own, reporting its
// analysis as JSON through a pipe.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>

#include "batch/Batch.h"

struct Worker {
  std::string package;
  std::string workDir;  // made before the fork, removed by the batch afterwards
  pid_t pid = -1;
  int pipe = -1;        // the report, read while the worker runs
  std::string output;
  std::chrono::steady_clock::time_point started;
  bool timedOut = false;
};

// Starts a worker for `package` with a fresh work directory below `batchDir`;
// false when no process or directory could be made.
bool StartWorker(const std::string& package, const std::string& batchDir, unsigned serial, const BatchOptions& options,
                 const EngineLibrary& engine, Worker& worker);

// Removes a directory tree without following links.
void RemoveTree(const std::string& path);
