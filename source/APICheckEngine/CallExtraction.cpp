#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FindAPIFunctionName4JS() { return RUN_SUCCESS; }
RunResult APIAnalysis::FindAPIFunctionName4JSSpe() { return RUN_SUCCESS; }
RunResult APIAnalysis::findAPIsFromPool(std::string classId, std::string name, std::string* source,
                                        std::string path) {
  return RUN_SUCCESS;
}
std::string APIAnalysis::findAPINameForKOBCase(std::string* callText) { return std::string(); }

}  // namespace FlashEngine_1_00
