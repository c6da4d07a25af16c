// The library's exported entry points and process-wide state.
#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"

extern "C" {

TARVO_EXPORT std::vector<std::string>* g_SWFResultVector = nullptr;
TARVO_EXPORT struct timespec firstCheckTime = {0, 0};
TARVO_EXPORT uint32_t firstTimeVal = 0;

TARVO_EXPORT IAppAnalysis* createInstance() { return new FlashEngine_1_00::APIAnalysis(); }

TARVO_EXPORT void destoryInstance(IAppAnalysis* instance) {
  if (instance != nullptr) delete instance;
}

// A second call replaces the pointer and abandons the earlier list: hosts rely
// on the list they were handed staying valid.
TARVO_EXPORT std::vector<std::string>* createResultVector() {
  g_SWFResultVector = new std::vector<std::string>();
  return g_SWFResultVector;
}

// Leaves the stale pointer in g_SWFResultVector, as hosts expect.
TARVO_EXPORT void destoryResultVector() {
  if (g_SWFResultVector == nullptr) return;
  delete g_SWFResultVector;
}

}  // extern "C"
