// The interface between the engine library and the host that loads it.
//
// A host creates the result list, creates one engine, hands it the paths of
// one application through StartAnalysis, reads the finding lines from
// g_SWFResultVector and destroys both again. Every log line of the engine goes
// through the host's Print_Log.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

// Code returned by every stage of the engine.
typedef int32_t RunResult;

enum : RunResult {
  RUN_SUCCESS = 1000,
  RUN_UNDOCUMENTED_API = 1001,
  RUN_DB_LOAD_FAILED = 1010,
  RUN_DB_NO_ROOT = 1012,
  RUN_SWF_OPEN_FAILED = 1021,
  RUN_SWF_BAD_SIGNATURE = 1022,
  RUN_SWF_UNCOMPRESS_FAILED = 1023,
  RUN_DECOMPILE_FAILED = 1024,
  RUN_SWF_TAG_ALLOC_FAILED = 1025,
  RUN_SWF_BUFFER_ALLOC_FAILED = 1026,
  RUN_TIME_LIMIT = 1027,
  // Part of the application could not be examined in full (a package entry
  // that cannot be extracted whole, a limit of the engine reached) and no
  // undocumented API use was found: the application must not pass.
  RUN_INPUT_REFUSED = 1030,
};

// The host's analysis interface: exactly three virtual slots (complete
// destructor, deleting destructor, StartAnalysis).
class IAppAnalysis {
 public:
  virtual ~IAppAnalysis() {}
  virtual RunResult StartAnalysis(std::vector<std::string>* files) = 0;
};

// The host's log sink. The engine calls it whenever the process defines it.
void Print_Log(const char* function, unsigned line, char* format, ...);

extern "C" {
IAppAnalysis* createInstance();
void destoryInstance(IAppAnalysis* instance);
std::vector<std::string>* createResultVector();
void destoryResultVector();

extern std::vector<std::string>* g_SWFResultVector;
extern struct timespec firstCheckTime;
extern uint32_t firstTimeVal;
}
