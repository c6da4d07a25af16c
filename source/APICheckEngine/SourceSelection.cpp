#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"

extern "C" TARVO_EXPORT const char* const documentExtention[12] = {"js",  "JS",  "xml",  "XML",  "css",  "CSS",
                                                                    "htm", "HTM", "info", "INFO", "html", "HTML"};

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FirstScanSource(std::vector<std::string>* files) {
  PrintProcessingTime("FirstScanSource");
  return RUN_SUCCESS;
}

int APIAnalysis::CheckFileAnalysisWorth(std::string path, std::string*& cleaned) { return 0; }

int APIAnalysis::documentExtentionChecker(std::string extension) { return 0; }

}  // namespace FlashEngine_1_00
