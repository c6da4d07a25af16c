// tarvo-api-check: a command-line host for the API check engine. It loads the
// engine library the way the platform's review service does, runs one analysis
// over the given files and prints the finding lines.
#include <dirent.h>
#include <dlfcn.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "APICheckEngine/Diagnostics.h"
#include "APICheckEngine/EngineConfig.h"
#include "tarvo/HostInterface.h"

namespace {

const char* kEngineFile = "libtarvo-api-check-engine.so";
bool g_verbose = false;

enum ExitCode {
  kExitClean = 0,
  kExitFinding = 1,
  kExitEngineError = 2,
  kExitRefused = 3,
  kExitUsage = 64,
  kExitUnavailable = 69
};

// The engine's refusal lines ("input refused [PATH] : CAUSE") of the run, for
// the message that says why an application was not examined in full.
std::vector<std::string> g_refusals;

void printUsage(FILE* out) {
  fprintf(out,
          "usage: tarvo-api-check [--engine LIB] [--verbose] PATH...\n"
          "       tarvo-api-check [--engine LIB] --listing FILE.swf\n"
          "       tarvo-api-check [--engine LIB] --statements FILE.swf\n"
          "       tarvo-api-check --help | --version\n"
          "\n"
          "Checks the application made of PATH... (files, packages or directories)\n"
          "for calls of undocumented platform APIs and prints one line per finding.\n"
          "\n"
          "  --engine LIB        engine library to load (default: next to this program)\n"
          "  --verbose           write the engine's log lines to standard error\n"
          "  --listing FILE      print the action listing of a SWF file\n"
          "  --statements FILE   print the call statements rebuilt from a SWF file\n"
          "\n"
          "Exit status: 0 no finding, 1 undocumented API used, 2 the engine reported\n"
          "an error (database, SWF file), 3 the application could not be examined in\n"
          "full (it is refused), 64 usage error, 69 engine not loadable.\n");
}

int usageError(const std::string& message) {
  fprintf(stderr, "tarvo-api-check: %s (see --help)\n", message.c_str());
  return kExitUsage;
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

bool isDirectory(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

// Appends the regular files below `dir`, in sorted order, depth first.
void collectFiles(const std::string& dir, std::vector<std::string>& out) {
  DIR* handle = opendir(dir.c_str());
  if (handle == nullptr) return;
  std::vector<std::string> names;
  while (struct dirent* entry = readdir(handle)) {
    if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0) names.push_back(entry->d_name);
  }
  closedir(handle);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    std::string path = dir + "/" + name;
    struct stat st;
    if (lstat(path.c_str(), &st) != 0) continue;
    if (S_ISDIR(st.st_mode)) {
      collectFiles(path, out);
    } else if (S_ISREG(st.st_mode)) {
      out.push_back(path);
    }
  }
}

struct Engine {
  void* handle = nullptr;
  IAppAnalysis* (*createInstance)() = nullptr;
  void (*destoryInstance)(IAppAnalysis*) = nullptr;
  std::vector<std::string>* (*createResultVector)() = nullptr;
  void (*destoryResultVector)() = nullptr;
  std::vector<std::string>** resultVector = nullptr;
  decltype(&tarvo_swf_listing) listing = nullptr;
  decltype(&tarvo_swf_statements) statements = nullptr;

  bool load(const std::string& path) {
    handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
      fprintf(stderr, "tarvo-api-check: cannot load the engine: %s\n", dlerror());
      return false;
    }
    createInstance = reinterpret_cast<decltype(createInstance)>(dlsym(handle, "createInstance"));
    destoryInstance = reinterpret_cast<decltype(destoryInstance)>(dlsym(handle, "destoryInstance"));
    createResultVector = reinterpret_cast<decltype(createResultVector)>(dlsym(handle, "createResultVector"));
    destoryResultVector = reinterpret_cast<decltype(destoryResultVector)>(dlsym(handle, "destoryResultVector"));
    resultVector = reinterpret_cast<decltype(resultVector)>(dlsym(handle, "g_SWFResultVector"));
    listing = reinterpret_cast<decltype(listing)>(dlsym(handle, "tarvo_swf_listing"));
    statements = reinterpret_cast<decltype(statements)>(dlsym(handle, "tarvo_swf_statements"));
    if (!createInstance || !destoryInstance || !createResultVector || !destoryResultVector || !resultVector ||
        !listing || !statements) {
      fprintf(stderr, "tarvo-api-check: %s is not an API check engine\n", path.c_str());
      return false;
    }
    return true;
  }
};

int exitCodeFor(RunResult code) {
  switch (code) {
    case 1000:
      return kExitClean;
    case 1001:
      return kExitFinding;
    case RUN_INPUT_REFUSED:
      return kExitRefused;
    default:
      return kExitEngineError;
  }
}

// Prints each line of a SWF diagnostic followed by a line feed. What could be
// read is printed even when the file is damaged; the engine's code then goes
// to standard error and the exit status.
int runSwfDiagnostic(Engine& engine, bool statements, const std::string& file) {
  IAppAnalysis* instance = engine.createInstance();
  std::vector<std::string> lines;
  std::string path = absolutePath(file);
  RunResult code = statements ? engine.statements(instance, path.c_str(), &lines)
                              : engine.listing(instance, path.c_str(), &lines);
  engine.destoryInstance(instance);
  for (const std::string& line : lines) {
    fwrite(line.data(), 1, line.size(), stdout);
    fputc('\n', stdout);
  }
  fflush(stdout);
  if (code == RUN_SUCCESS) return kExitClean;
  fprintf(stderr, "tarvo-api-check: %s: the engine returned %d\n", file.c_str(), static_cast<int>(code));
  return kExitEngineError;
}

}  // namespace

// The engine's log lines arrive here.
void Print_Log(const char* function, unsigned line, char* format, ...) {
  va_list args;
  if (format != nullptr && strstr(format, " input refused [") != nullptr) {
    char text[1024];
    va_start(args, format);
    vsnprintf(text, sizeof(text), format, args);
    va_end(args);
    g_refusals.emplace_back(text);
  }
  if (!g_verbose) return;
  va_start(args, format);
  fprintf(stderr, "[%s:%u] ", function ? function : "", line);
  vfprintf(stderr, format, args);
  fputc('\n', stderr);
  va_end(args);
}

int main(int argc, char** argv) {
  std::string enginePath;
  std::string swfFile;
  bool wantStatements = false;
  std::vector<std::string> inputs;

  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--help" || arg == "-h") {
      printUsage(stdout);
      return kExitClean;
    } else if (arg == "--version") {
      printf("tarvo-api-check %s (engine %s)\n", EngineConfig::kProjectVersion, EngineConfig::kEngineVersion);
      return kExitClean;
    } else if (arg == "--verbose" || arg == "-v") {
      g_verbose = true;
    } else if (arg == "--engine" || arg == "--listing" || arg == "--statements") {
      if (i + 1 >= argc) return usageError(arg + " needs an argument");
      std::string value = argv[++i];
      if (arg == "--engine") {
        enginePath = value;
      } else {
        if (!swfFile.empty()) return usageError("only one of --listing and --statements may be given");
        swfFile = value;
        wantStatements = (arg == "--statements");
      }
    } else if (arg == "--") {
      for (++i; i < argc; ++i) inputs.push_back(argv[i]);
    } else if (arg.size() > 1 && arg[0] == '-') {
      return usageError("unknown option " + arg);
    } else {
      inputs.push_back(arg);
    }
  }
  if (!swfFile.empty() && !inputs.empty()) return usageError("--listing and --statements take one file and no paths");
  if (swfFile.empty() && inputs.empty()) return usageError("no path given");

  if (enginePath.empty()) {
    enginePath = directoryOfExecutable() + "/" + kEngineFile;
    if (access(enginePath.c_str(), R_OK) != 0) enginePath = kEngineFile;  // the loader's search path
  }
  Engine engine;
  if (!engine.load(enginePath)) return kExitUnavailable;

  if (!swfFile.empty()) return runSwfDiagnostic(engine, wantStatements, swfFile);

  // The engine changes the working directory, so every path is made absolute first.
  std::vector<std::string> files;
  for (const std::string& input : inputs) {
    std::string path = absolutePath(input);
    if (isDirectory(path)) {
      collectFiles(path, files);
    } else {
      files.push_back(path);
    }
  }

  engine.createResultVector();
  IAppAnalysis* instance = engine.createInstance();
  RunResult code = instance->StartAnalysis(&files);
  for (const std::string& line : **engine.resultVector) fwrite(line.data(), 1, line.size(), stdout);
  fflush(stdout);
  engine.destoryInstance(instance);
  engine.destoryResultVector();
  if (code == RUN_INPUT_REFUSED) {
    fprintf(stderr, "tarvo-api-check: the application could not be examined in full:\n");
    for (const std::string& refusal : g_refusals) {
      size_t first = refusal.find_first_not_of(' '), last = refusal.find_last_not_of(' ');
      fprintf(stderr, "  %s\n", refusal.substr(first, last - first + 1).c_str());
    }
  }
  return exitCodeFor(code);
}
