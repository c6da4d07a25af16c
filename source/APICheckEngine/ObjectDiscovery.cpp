#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FindObjectTagToken() { return RUN_SUCCESS; }
bool APIAnalysis::FindObjectTags(std::string* text, std::string* path) { return false; }
RunResult APIAnalysis::ObjectStartIDChecker(bool& hasStart, bool& hasEnd, std::string* text) {
  hasStart = hasEnd = false;
  return RUN_SUCCESS;
}
std::string APIAnalysis::parseObjectID(std::string text) { return "_NO_CLASSID_FOUND_"; }
RunResult APIAnalysis::FindObjectID() { return RUN_SUCCESS; }
int APIAnalysis::parseEmbedsTagIndex(std::string* text) { return 0; }

}  // namespace FlashEngine_1_00
