#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::DetermineAPISecurity(std::vector<std::string*>& results, SWFStateMentInfo* call) {
  return RUN_SUCCESS;
}

RunResult APIAnalysis::undocumentAPICheckerMain(std::vector<std::string*> whiteList, std::string apiName,
                                                bool& undocumented) {
  undocumented = true;
  return RUN_SUCCESS;
}

RunResult APIAnalysis::Finish(std::vector<std::string*>& results) { return RUN_SUCCESS; }

}  // namespace FlashEngine_1_00
