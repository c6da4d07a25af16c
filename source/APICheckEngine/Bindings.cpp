#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FindDeclareListValidation() { return RUN_SUCCESS; }
RunResult APIAnalysis::FindObjectVariable() { return RUN_SUCCESS; }
int APIAnalysis::foundSymbolLineNumber(std::string* path, std::string* symbol) { return -1; }

}  // namespace FlashEngine_1_00
