// A host of the installed engine: loads it by name as the review service
// does, analyses one application and checks the code it returns.
//   consumer PACKAGE EXPECTED_CODE
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <tarvo/HostInterface.h>

void Print_Log(const char*, unsigned, char*, ...) {}

template <typename T>
T symbol(void* library, const char* name) {
  void* address = dlsym(library, name);
  if (address == nullptr) {
    std::fprintf(stderr, "consumer: %s missing\n", name);
    std::exit(2);
  }
  return reinterpret_cast<T>(address);
}

int main(int argc, char** argv) {
  if (argc != 3) return 64;
  void* engine = dlopen("libtarvo-api-check-engine.so", RTLD_NOW);
  if (engine == nullptr) {
    std::fprintf(stderr, "consumer: %s\n", dlerror());
    return 2;
  }
  auto createResultVector = symbol<std::vector<std::string>* (*)()>(engine, "createResultVector");
  auto destoryResultVector = symbol<void (*)()>(engine, "destoryResultVector");
  auto createInstance = symbol<IAppAnalysis* (*)()>(engine, "createInstance");
  auto destoryInstance = symbol<void (*)(IAppAnalysis*)>(engine, "destoryInstance");
  auto results = symbol<std::vector<std::string>**>(engine, "g_SWFResultVector");

  createResultVector();
  IAppAnalysis* instance = createInstance();
  std::vector<std::string> files{argv[1]};
  RunResult code = instance->StartAnalysis(&files);
  for (const std::string& line : **results) std::fputs(line.c_str(), stdout);
  destoryInstance(instance);
  destoryResultVector();
  std::printf("code %d\n", static_cast<int>(code));
  return code == std::atoi(argv[2]) ? 0 : 1;
}
