#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

int APIAnalysis::funcParameterParsing(std::string text, std::string symbol, std::string& functionName) { return 1; }
std::string APIAnalysis::getParamterByPosition(std::string text, int position) { return std::string(); }

}  // namespace FlashEngine_1_00
