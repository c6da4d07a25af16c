#include "APICheckEngine/Diagnostics.h"

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"

using FlashEngine_1_00::APIAnalysis;

extern "C" TARVO_EXPORT RunResult tarvo_swf_listing(IAppAnalysis* engine, const char* path,
                                                    std::vector<std::string>* lines) {
  APIAnalysis* analysis = static_cast<APIAnalysis*>(engine);
  if (analysis == nullptr || path == nullptr || lines == nullptr) return RUN_SWF_OPEN_FAILED;
  return analysis->deAssembler.SWFDeAssemblerMain(path, *lines);
}

extern "C" TARVO_EXPORT RunResult tarvo_swf_statements(IAppAnalysis* engine, const char* path,
                                                       std::vector<std::string>* statements) {
  APIAnalysis* analysis = static_cast<APIAnalysis*>(engine);
  if (analysis == nullptr || path == nullptr || statements == nullptr) return RUN_SWF_OPEN_FAILED;
  // Whatever part of the file could be listed is replayed; a listing failure
  // outranks the replay's own code.
  std::vector<std::string> lines;
  RunResult listed = analysis->deAssembler.SWFDeAssemblerMain(path, lines);
  RunResult replayed = static_cast<RunResult>(analysis->deCompiler.SWFDeCompilerMain(lines, *statements));
  return listed != RUN_SUCCESS ? listed : replayed;
}
