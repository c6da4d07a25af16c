// A host program that defines no Print_Log of its own. Without arguments it
// runs an analysis with the engine alone (which must work silently); given the
// path of a log library, it loads that library with RTLD_GLOBAL first and
// checks that the engine's lines arrive there.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tarvo/HostInterface.h"

static int fail(const char* what) {
  fprintf(stderr, "host_program: %s\n", what);
  return 1;
}

int main(int argc, char** argv) {
  int lock = open("/tmp/.tarvo-fixed-paths.lock", O_CREAT | O_RDWR | O_CLOEXEC, 0666);
  if (lock >= 0) flock(lock, LOCK_EX);

  void* sink = nullptr;
  if (argc > 1) {
    sink = dlopen(argv[1], RTLD_NOW | RTLD_GLOBAL);
    if (sink == nullptr) return fail(dlerror());
  } else if (dlsym(RTLD_DEFAULT, "_Z9Print_LogPKcjPcz") != nullptr) {
    return fail("this program must not define Print_Log");
  }

  void* engine = dlopen(TARVO_ENGINE_PATH, RTLD_NOW | RTLD_LOCAL);
  if (engine == nullptr) return fail(dlerror());
  auto createResultVector = reinterpret_cast<std::vector<std::string>* (*)()>(dlsym(engine, "createResultVector"));
  auto destoryResultVector = reinterpret_cast<void (*)()>(dlsym(engine, "destoryResultVector"));
  auto createInstance = reinterpret_cast<IAppAnalysis* (*)()>(dlsym(engine, "createInstance"));
  auto destoryInstance = reinterpret_cast<void (*)(IAppAnalysis*)>(dlsym(engine, "destoryInstance"));
  if (!createResultVector || !destoryResultVector || !createInstance || !destoryInstance) return fail("missing export");

  createResultVector();
  IAppAnalysis* analysis = createInstance();
  std::vector<std::string> files;
  RunResult code = analysis->StartAnalysis(&files);
  destoryInstance(analysis);
  destoryResultVector();
  if (code != 1000 && code != 1010 && code != 1012) return fail("unexpected result code");

  if (sink != nullptr) {
    auto count = reinterpret_cast<size_t (*)()>(dlsym(sink, "sinkLineCount"));
    auto line = reinterpret_cast<const char* (*)(size_t)>(dlsym(sink, "sinkLine"));
    if (!count || !line) return fail("log library lacks its accessors");
    if (count() < 4) return fail("too few log lines reached the log library");
    if (strcmp(line(0), "APIAnalysis|Engine Version [140808_QX_1.30] ") != 0) return fail(line(0));
    if (strcmp(line(count() - 1), "~APIAnalysis|### All Symbol Table data is Successfully deleted!! ###") != 0) {
      return fail(line(count() - 1));
    }
  }
  printf("host_program: ok (code %d)\n", code);
  return 0;
}
