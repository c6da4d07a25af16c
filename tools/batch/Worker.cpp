#include "batch/Worker.h"

#include <ftw.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "EngineLibrary.h"
#include "report/JsonReport.h"

#if defined(__SANITIZE_ADDRESS__)
#define TARVO_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARVO_ADDRESS_SANITIZER 1
#endif
#endif

namespace {

void limit(int resource, rlim_t value) {
  struct rlimit bound = {value, value};
  setrlimit(resource, &bound);
}

void writeAll(int fd, const std::string& text) {
  const char* data = text.data();
  size_t left = text.size();
  while (left > 0) {
    ssize_t written = write(fd, data, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    data += written;
    left -= static_cast<size_t>(written);
  }
}

#ifdef TARVO_BATCH_TEST_HOOKS
// Test builds only: a package whose path contains the text of
// TARVO_BATCH_TEST_CRASH crashes its worker, one containing that of
// TARVO_BATCH_TEST_HANG never finishes.
void testHooks(const std::string& package) {
  const char* crash = getenv("TARVO_BATCH_TEST_CRASH");
  if (crash != nullptr && *crash != '\0' && package.find(crash) != std::string::npos) raise(SIGSEGV);
  const char* hang = getenv("TARVO_BATCH_TEST_HANG");
  if (hang != nullptr && *hang != '\0' && package.find(hang) != std::string::npos) {
    for (;;) pause();
  }
}
#else
void testHooks(const std::string&) {}
#endif

[[noreturn]] void runWorker(const Worker& worker, int out, const BatchOptions& options, const EngineLibrary& engine) {
  signal(SIGINT, SIG_DFL);
  signal(SIGTERM, SIG_DFL);
  limit(RLIMIT_CPU, options.cpuLimitSeconds);
#ifndef TARVO_ADDRESS_SANITIZER  // the sanitizer reserves terabytes of address space
  limit(RLIMIT_AS, static_cast<rlim_t>(options.memoryLimitMiB) << 20);
#endif
  limit(RLIMIT_CORE, 0);
  testHooks(worker.package);
  AnalysisReport report = engine.analyse({worker.package}, options.database, worker.workDir, options.reportAll,
                                         options.deep);
  writeAll(out, ToJson(report).dump());
  _exit(0);
}

int removeEntry(const char* path, const struct stat*, int type, struct FTW*) {
  if (type == FTW_DP) {
    rmdir(path);
  } else {
    unlink(path);
  }
  return 0;
}

}  // namespace

void RemoveTree(const std::string& path) { nftw(path.c_str(), removeEntry, 16, FTW_DEPTH | FTW_PHYS); }

bool StartWorker(const std::string& package, const std::string& batchDir, unsigned serial, const BatchOptions& options,
                 const EngineLibrary& engine, Worker& worker) {
  worker = Worker();
  worker.package = package;
  worker.workDir = batchDir + "/" + std::to_string(serial);
  if (mkdir(worker.workDir.c_str(), 0700) != 0) return false;
  int fds[2];
  if (pipe(fds) != 0) {
    rmdir(worker.workDir.c_str());
    return false;
  }
  fflush(nullptr);
  worker.started = std::chrono::steady_clock::now();
  worker.pid = fork();
  if (worker.pid == 0) {
    close(fds[0]);
    runWorker(worker, fds[1], options, engine);
  }
  close(fds[1]);
  if (worker.pid < 0) {
    close(fds[0]);
    rmdir(worker.workDir.c_str());
    return false;
  }
  worker.pipe = fds[0];
  return true;
}
