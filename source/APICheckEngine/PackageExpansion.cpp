#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {

void APIAnalysis::addFilePathbyUnzipping(std::vector<std::string> files) {}

void APIAnalysis::FindAppsFilesLocation(std::string dir, std::vector<std::string>& found) {}

}  // namespace FlashEngine_1_00
