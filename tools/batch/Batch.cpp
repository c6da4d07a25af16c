// The batch's scheduler: keeps up to --jobs workers running, reads their
// reports as they come, enforces the wall-clock limit, and writes each
// package's outcome as soon as it is known.
#include "batch/Batch.h"

#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "APICheckEngine/EngineConfig.h"
#include "EngineLibrary.h"
#include "batch/PackageList.h"
#include "batch/Summary.h"
#include "batch/Worker.h"
#include "report/JsonReport.h"
#include "report/SarifReport.h"

namespace {

volatile sig_atomic_t g_stop = 0;
void onStop(int) { g_stop = 1; }

struct Outcome {
  AnalysisReport report;
  std::string verdict;
  std::string reason;  // why a worker gave no report
  double seconds = 0;
  long peakKiB = 0;
};

std::string reasonFor(const Worker& worker, int status, const BatchOptions& options) {
  if (worker.timedOut) return "wall-clock limit of " + std::to_string(options.timeLimitSeconds) + " s reached";
  if (WIFSIGNALED(status)) {
    int signal = WTERMSIG(status);
    if (signal == SIGXCPU) return "CPU time limit of " + std::to_string(options.cpuLimitSeconds) + " s reached";
    std::string reason = std::string("worker killed by signal ") + std::to_string(signal) + " (" + strsignal(signal) + ")";
    if (signal == SIGABRT) reason += ", as when memory runs out";
    return reason;
  }
  if (WIFEXITED(status) && WEXITSTATUS(status) != 0) return "worker exited with status " + std::to_string(WEXITSTATUS(status));
  return "worker gave no report";
}

// Waits for a worker whose report has ended, cleans up after it and makes its outcome.
Outcome finish(Worker& worker, const BatchOptions& options) {
  close(worker.pipe);
  int status = 0;
  struct rusage usage = {};
  while (wait4(worker.pid, &status, 0, &usage) < 0 && errno == EINTR) {
  }
  RemoveTree(worker.workDir);
  Outcome outcome;
  outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - worker.started).count();
  outcome.peakKiB = usage.ru_maxrss;
  bool reported = false;
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && !worker.timedOut) {
    try {
      outcome.report = FromJson(nlohmann::ordered_json::parse(worker.output));
      reported = true;
    } catch (const nlohmann::json::exception&) {
    }
  }
  if (reported && outcome.report.code >= 0) {
    outcome.verdict = VerdictOf(outcome.report.code);
  } else {
    outcome.verdict = "error";
    outcome.reason = reported ? "the engine refused the analysis's arguments" : reasonFor(worker, status, options);
    outcome.report = AnalysisReport();
    outcome.report.inputs = {worker.package};
    outcome.report.reportAll = options.reportAll;
    outcome.report.code = -1;
    outcome.report.notes.push_back(ReportNote{"error", outcome.reason, worker.package});
  }
  return outcome;
}

void write(const Outcome& outcome, const std::string& package, const std::string& format) {
  if (format == "jsonl") {
    nlohmann::ordered_json line = {{"path", package}};
    line.update(ToJson(outcome.report));
    line["verdict"] = outcome.verdict;
    if (outcome.report.code < 0) line["code"] = nullptr;
    line["seconds"] = outcome.seconds;
    line["peakKiB"] = outcome.peakKiB;
    if (!outcome.reason.empty()) line["reason"] = outcome.reason;
    puts(line.dump().c_str());
  } else if (format == "text") {
    if (outcome.reason.empty()) {
      printf("%s: %s\n", package.c_str(), outcome.verdict.c_str());
    } else {
      printf("%s: error: %s\n", package.c_str(), outcome.reason.c_str());
    }
    for (const ReportFinding& f : outcome.report.findings) printf("  %s", f.line.c_str());
    for (const ReportNote& n : outcome.report.notes) {
      if (n.kind != "error") printf("  note: %s: %s: %s\n", n.kind.c_str(), n.path.c_str(), n.cause.c_str());
    }
  }
  fflush(stdout);
}

std::string makeBatchDir() {
  const char* base = getenv("TMPDIR");
  std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/tarvo-batch.XXXXXX";
  std::vector<char> buffer(pattern.begin(), pattern.end());
  buffer.push_back('\0');
  return mkdtemp(buffer.data()) != nullptr ? std::string(buffer.data()) : std::string();
}

}  // namespace

int RunBatch(const BatchOptions& options, const EngineLibrary& engine) {
  std::vector<std::string> paths = options.paths, packages;
  if (!options.listFile.empty() && !ReadPathList(options.listFile, paths)) {
    fprintf(stderr, "tarvo-api-check: %s: %s\n", options.listFile.c_str(), strerror(errno));
    return 66;
  }
  for (const std::string& path : paths) {
    if (!AddPackages(path, packages)) {
      fprintf(stderr, "tarvo-api-check: %s: %s\n", path.c_str(), strerror(errno));
      return 66;
    }
  }
  packages = ShardOf(packages, options.shardIndex, options.shardCount);
  const std::string batchDir = makeBatchDir();
  if (batchDir.empty()) {
    fprintf(stderr, "tarvo-api-check: cannot make a work directory: %s\n", strerror(errno));
    return 66;
  }

  struct sigaction stop = {};
  stop.sa_handler = onStop;
  sigaction(SIGINT, &stop, nullptr);
  sigaction(SIGTERM, &stop, nullptr);

  BatchSummary summary(packages.size(), isatty(STDERR_FILENO) != 0);
  std::vector<Worker> running;
  std::vector<AnalysisReport> reports;
  size_t next = 0;
  unsigned serial = 0;
  const auto limit = std::chrono::seconds(options.timeLimitSeconds);
  while ((next < packages.size() && !g_stop) || !running.empty()) {
    while (!g_stop && running.size() < std::max(1u, options.jobs) && next < packages.size()) {
      Worker worker;
      if (StartWorker(packages[next], batchDir, serial++, options, engine, worker)) {
        running.push_back(worker);
      } else {
        Outcome failed;
        failed.verdict = "error";
        failed.reason = std::string("cannot start a worker: ") + strerror(errno);
        failed.report.inputs = {packages[next]};
        failed.report.code = -1;
        write(failed, packages[next], options.format);
        summary.done(packages[next], failed.verdict, 0);
        reports.push_back(failed.report);
      }
      ++next;
    }
    std::vector<struct pollfd> fds;
    for (const Worker& worker : running) fds.push_back({worker.pipe, POLLIN, 0});
    if (!fds.empty() && poll(fds.data(), fds.size(), 100) < 0 && errno != EINTR) break;
    auto now = std::chrono::steady_clock::now();
    for (size_t i = running.size(); i-- > 0;) {
      Worker& worker = running[i];
      if (g_stop || (!worker.timedOut && now - worker.started > limit)) {
        worker.timedOut = !g_stop;
        kill(worker.pid, SIGKILL);
      }
      if (!(fds[i].revents & (POLLIN | POLLHUP | POLLERR))) continue;
      char buffer[65536];
      ssize_t got = read(worker.pipe, buffer, sizeof buffer);
      if (got > 0) {
        worker.output.append(buffer, static_cast<size_t>(got));
        continue;
      }
      if (got < 0 && errno == EINTR) continue;
      Outcome outcome = finish(worker, options);
      const std::string package = worker.package;
      running.erase(running.begin() + static_cast<long>(i));
      if (g_stop && outcome.verdict == "error") continue;  // stopped, not done
      write(outcome, package, options.format);
      summary.done(package, outcome.verdict, outcome.seconds);
      reports.push_back(outcome.report);
    }
    summary.showProgress();
  }
  RemoveTree(batchDir);
  if (options.format == "sarif") puts(ToSarif(reports, EngineConfig::kProjectVersion).dump(2).c_str());
  summary.print(g_stop != 0);

  if (summary.count("undocumented") > 0) return 1;
  if (summary.count("refused") + summary.count("error") > 0 || g_stop) return 3;
  return 0;
}
