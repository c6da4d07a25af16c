#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FindAPIFunctionName4SWF(std::vector<std::string> statements, std::string fileName) {
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
