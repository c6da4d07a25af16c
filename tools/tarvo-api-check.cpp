// tarvo-api-check: the command-line host of the API check engine. It loads
// the engine library, runs one analysis over the given paths through the
// documented analysis interface and reports the findings as finding lines,
// JSON or SARIF.
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "APICheckEngine/EngineConfig.h"
#include "EngineLibrary.h"
#include "FileWalk.h"
#include "batch/Batch.h"
#include "report/JsonReport.h"
#include "report/SarifReport.h"

namespace {

const char* kEngineFile = "libtarvo-api-check-engine.so";
bool g_verbose = false;

enum ExitCode {
  kExitClean = 0,
  kExitFinding = 1,
  kExitEngineError = 2,
  kExitRefused = 3,
  kExitUsage = 64,
  kExitNoInput = 66,
  kExitUnavailable = 69
};

const char kUsage[] =
    "usage: tarvo-api-check [options] PATH...\n"
    "       tarvo-api-check --batch [batch options] [options] PATH...\n"
    "       tarvo-api-check [--engine LIB] --listing FILE.swf\n"
    "       tarvo-api-check [--engine LIB] --statements FILE.swf\n"
    "       tarvo-api-check --help | --version\n"
    "\n"
    "Checks the application made of PATH... (files, packages or directories)\n"
    "for calls of undocumented platform APIs and reports each finding.\n"
    "\n"
    "  --format FORMAT     text (finding lines, the default), json or sarif\n"
    "  --all               report every undocumented call, not only the first\n"
    "  --deep              also follow plug-in bindings with a JavaScript and HTML\n"
    "                      parser and report the calls the exact scan misses\n"
    "                      (marked deep)\n"
    "  --db FILE           database of documented APIs (default: the product's,\n"
    "                      /usr/share/lumeric/APIAnalEngineDB.xml)\n"
    "  --work-dir DIR      extract packages below DIR (default: a directory of\n"
    "                      this run's own under $TMPDIR or /tmp)\n"
    "  --engine LIB        engine library to load (default: next to this program)\n"
    "  --verbose           write the engine's log lines to standard error\n"
    "  --listing FILE      print the action listing of a SWF file\n"
    "\n"
    "Batch review: every package (a file given, or each package file below a\n"
    "directory given) is analysed in a worker process of its own.\n"
    "  --batch             review a catalogue; --format is jsonl (the default:\n"
    "                      one object per package as it is done), sarif or text\n"
    "  --jobs N            workers at a time (default 1)\n"
    "  --from-list FILE    more paths, one per line\n"
    "  --shard I/N         only the packages at positions I, I+N, ... of the\n"
    "                      sorted list (I from 0)\n"
    "  --time-limit S      wall-clock seconds per package (default 120)\n"
    "  --cpu-limit S       CPU seconds per package (default 120)\n"
    "  --memory-limit MIB  address space per worker (default 1024)\n"
    "A batch exits with 0 when every package is clean, 1 when any uses an\n"
    "undocumented API, 3 when any is refused or in error (and none is 1).\n"
    "  --statements FILE   print the call statements rebuilt from a SWF file\n"
    "\n"
    "Exit status: 0 no finding, 1 undocumented API used, 2 the engine reported\n"
    "an error (database, SWF file), 3 the application could not be examined in\n"
    "full (it is refused), 64 usage error, 66 a path or file that cannot be\n"
    "read, 69 engine not loadable.\n";

int usageError(std::string message) {
  std::replace(message.begin(), message.end(), '\n', ' ');
  fprintf(stderr, "tarvo-api-check: %s (see --help)\n", message.c_str());
  return kExitUsage;
}

int noInput(const std::string& path, const char* what) {
  fprintf(stderr, "tarvo-api-check: %s: %s\n", path.c_str(), what);
  return kExitNoInput;
}

std::string directoryOfExecutable() {
  char buffer[PATH_MAX];
  ssize_t n = readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
  if (n <= 0) return ".";
  buffer[n] = '\0';
  std::string path(buffer);
  size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash);
}

std::string absolutePath(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  char cwd[PATH_MAX];
  if (getcwd(cwd, sizeof(cwd)) == nullptr) return path;
  return std::string(cwd) + "/" + path;
}

// The files an input path stands for, made absolute (the engine changes the
// working directory); 0, or the exit status of a path that cannot be read.
int expandInput(const std::string& input, std::vector<std::string>& files) {
  std::string path = absolutePath(input);
  struct stat st;
  if (stat(path.c_str(), &st) != 0) return noInput(input, strerror(errno));
  if (S_ISDIR(st.st_mode)) {
    if (access(path.c_str(), R_OK | X_OK) != 0) return noInput(input, strerror(errno));
    CollectFiles(path, files);
  } else {
    if (access(path.c_str(), R_OK) != 0) return noInput(input, strerror(errno));
    files.push_back(path);
  }
  return 0;
}

int exitCodeFor(int32_t code) {
  switch (code) {
    case 1000:
      return kExitClean;
    case 1001:
      return kExitFinding;
    case 1030:
      return kExitRefused;
    default:
      return kExitEngineError;
  }
}

// Prints each line of a SWF diagnostic followed by a line feed. What could be
// read is printed even when the file is damaged; the engine's code then goes
// to standard error and the exit status.
int runSwfDiagnostic(const EngineLibrary& engine, bool statements, const std::string& file) {
  std::vector<std::string> lines;
  RunResult code = engine.swfLines(statements, absolutePath(file), lines);
  for (const std::string& line : lines) {
    fwrite(line.data(), 1, line.size(), stdout);
    fputc('\n', stdout);
  }
  fflush(stdout);
  if (code == RUN_SUCCESS) return kExitClean;
  fprintf(stderr, "tarvo-api-check: %s: the engine returned %d\n", file.c_str(), static_cast<int>(code));
  return kExitEngineError;
}

// A work directory of this run's own, removed afterwards when it is empty
// (the engine removes what it extracts).
struct OwnWorkDir {
  std::string path;
  OwnWorkDir() {
    const char* base = getenv("TMPDIR");
    std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/tarvo-api-check.XXXXXX";
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    if (mkdtemp(buffer.data()) != nullptr) path = buffer.data();
  }
  ~OwnWorkDir() {
    if (!path.empty()) rmdir(path.c_str());
  }
};

void printText(const AnalysisReport& report) {
  for (const ReportFinding& f : report.findings) {
    if (!f.deep) {
      fwrite(f.line.data(), 1, f.line.size(), stdout);
    } else {  // where a reviewer opens it
      printf("%s(%u) : UndocumentedAPI '%s' used\n", (f.entry.empty() ? f.file : f.entry).c_str(), f.lineNumber,
             f.method.c_str());
    }
  }
  if (report.code == 1030) {
    fprintf(stderr, "tarvo-api-check: the application could not be examined in full:\n");
    for (const ReportNote& note : report.notes) {
      if (note.kind == "refused") fprintf(stderr, "  %s: %s\n", note.path.c_str(), note.cause.c_str());
    }
  }
  for (const ReportNote& note : report.notes) {
    if (note.kind != "refused") fprintf(stderr, "tarvo-api-check: %s: %s\n", note.path.c_str(), note.cause.c_str());
  }
}

}  // namespace

// The engine's log lines arrive here.
void Print_Log(const char* function, unsigned line, char* format, ...) {
  if (!g_verbose) return;
  va_list args;
  va_start(args, format);
  fprintf(stderr, "[%s:%u] ", function ? function : "", line);
  vfprintf(stderr, format, args);
  fputc('\n', stderr);
  va_end(args);
}

int main(int argc, char** argv) {
  std::string enginePath, listingFile, statementsFile, format = "text", database, workDir;
  std::vector<std::string> inputs;
  bool all = false, help = false, version = false, batch = false, deep = false;
  BatchOptions batchOptions;
  std::string shard;

  CLI::App app("tarvo-api-check");
  app.set_help_flag();
  app.add_flag("-h,--help", help);
  app.add_flag("--version", version);
  app.add_flag("-v,--verbose", g_verbose);
  app.add_flag("--all", all);
  app.add_flag("--deep", deep);
  auto* formatOption = app.add_option("--format", format)->check(CLI::IsMember({"text", "json", "jsonl", "sarif"}));
  app.add_flag("--batch", batch);
  app.add_option("--jobs", batchOptions.jobs)->check(CLI::Range(1u, 256u));
  app.add_option("--from-list", batchOptions.listFile);
  app.add_option("--shard", shard);
  app.add_option("--time-limit", batchOptions.timeLimitSeconds)->check(CLI::Range(1u, 86400u));
  app.add_option("--cpu-limit", batchOptions.cpuLimitSeconds)->check(CLI::Range(1u, 86400u));
  app.add_option("--memory-limit", batchOptions.memoryLimitMiB)->check(CLI::Range(16u, 1u << 20));
  app.add_option("--db", database);
  app.add_option("--work-dir", workDir);
  app.add_option("--engine", enginePath);
  auto* listing = app.add_option("--listing", listingFile);
  auto* statements = app.add_option("--statements", statementsFile)->excludes(listing);
  app.add_option("paths", inputs);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return usageError(error.what());
  }
  if (help) {
    fputs(kUsage, stdout);
    return kExitClean;
  }
  if (version) {
    printf("tarvo-api-check %s (engine %s)\n", EngineConfig::kProjectVersion, EngineConfig::kEngineVersion);
    return kExitClean;
  }
  if (batch) {
    if (listing->count() + statements->count() > 0) return usageError("--batch takes no --listing or --statements");
    if (formatOption->count() == 0) format = "jsonl";
    if (format == "json") return usageError("--batch writes jsonl, sarif or text");
    if (!shard.empty()) {
      unsigned index = 0, count = 0;
      char rest = 0;
      if (sscanf(shard.c_str(), "%u/%u%c", &index, &count, &rest) != 2 || count == 0 || index >= count) {
        return usageError("--shard takes I/N with 0 <= I < N");
      }
      batchOptions.shardIndex = index;
      batchOptions.shardCount = count;
    }
    if (inputs.empty() && batchOptions.listFile.empty()) return usageError("no path given");
  } else if (format == "jsonl") {
    return usageError("--format jsonl is for --batch");
  }
  const bool swfDiagnostic = listing->count() + statements->count() > 0;
  if (swfDiagnostic && !inputs.empty()) return usageError("--listing and --statements take one file and no paths");
  if (!swfDiagnostic && !batch && inputs.empty()) return usageError("no path given");

  std::vector<std::string> files;
  for (const std::string& input : inputs) {
    if (batch) break;  // the batch finds its packages itself
    if (int status = expandInput(input, files)) return status;
  }
  if (!database.empty() && access(database.c_str(), R_OK) != 0) return noInput(database, strerror(errno));
  if (!workDir.empty()) {
    struct stat st;
    if (stat(workDir.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) return noInput(workDir, "not a directory");
    workDir = absolutePath(workDir);
  }

  if (enginePath.empty()) {
    enginePath = directoryOfExecutable() + "/" + kEngineFile;
    if (access(enginePath.c_str(), R_OK) != 0) enginePath = kEngineFile;  // the loader's search path
  }
  EngineLibrary engine;
  if (!engine.load(enginePath)) return kExitUnavailable;
  if (batch) {
    batchOptions.paths = inputs;
    batchOptions.format = format;
    batchOptions.database = database.empty() ? "" : absolutePath(database);
    batchOptions.reportAll = all;
    batchOptions.deep = deep;
    return RunBatch(batchOptions, engine);
  }
  if (swfDiagnostic) {
    return runSwfDiagnostic(engine, statements->count() > 0, statements->count() > 0 ? statementsFile : listingFile);
  }

  OwnWorkDir own;
  if (workDir.empty() && own.path.empty()) return noInput("work directory", strerror(errno));
  AnalysisReport report = engine.analyse(files, database.empty() ? "" : absolutePath(database),
                                         workDir.empty() ? own.path : workDir, all, deep);
  if (report.code < 0) {
    fprintf(stderr, "tarvo-api-check: the engine refused the analysis's arguments\n");
    return kExitEngineError;
  }
  if (format == "json") {
    puts(ToJson(report).dump(2).c_str());
  } else if (format == "sarif") {
    puts(ToSarif({report}, EngineConfig::kProjectVersion).dump(2).c_str());
  } else {
    printText(report);
  }
  fflush(stdout);
  return exitCodeFor(report.code);
}
