// The Prepare stage's work: choosing the web sources worth scanning, loading
// and cleaning them, and the first pass that collects access expressions,
// embeds expressions and function blocks for the later scanners.
#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CommentStripping.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/SourceScan.h"
#include "APICheckEngine/Visibility.h"

extern "C" TARVO_EXPORT const char* const documentExtention[12] = {"js",  "JS",  "xml",  "XML",  "css",  "CSS",
                                                                    "htm", "HTM", "info", "INFO", "html", "HTML"};

namespace FlashEngine_1_00 {

namespace {

const char* const kSkippedExtensions[] = {"jpg", "JPG", "gif", "GIF", "so", "SO", "png", "PNG", "pcm", "PCM"};
const char* const kScannedExtensions[] = {"html", "HTML", "htm", "HTM", "js", "JS", "xml", "XML"};

template <size_t N>
bool isOneOf(const std::string& value, const char* const (&table)[N]) {
  for (const char* entry : table) {
    if (value == entry) return true;
  }
  return false;
}

}  // namespace

RunResult APIAnalysis::FirstScanSource(std::vector<std::string>* files) {
  if (files != nullptr) {
    for (const std::string& path : *files) {
      std::string* cleaned = nullptr;
      if (CheckFileAnalysisWorth(path, cleaned) != 1 || cleaned == nullptr) continue;
      const char* text = cleaned->c_str();
      size_t length = std::strlen(text);
      if (!sourcescan::collectAccessExpressions(text, length, path, objectAccessList, embedsAccessList)) {
        RefuseInput("more than " + std::to_string(sourcescan::kMaxAccessRecordsPerFile) + " element look-ups", path);
      }
      if (!sourcescan::collectFunctionBlocks(text, length, path, functionBlockList)) {
        RefuseInput("function blocks larger than their limit", path);
      }
      worthfulSourceList.push_back(cleaned);
      worthfulPathList.push_back(new std::string(path));
      worthfulExtList.push_back(new std::string(stringUtil.findFileExtention(path)));
    }
  }
  ENGINE_LOG("FirstScanSource", " WorthFul File [%d] EA", static_cast<int>(worthfulSourceList.size()));
  PrintProcessingTime("FirstScanSource");
  return RUN_SUCCESS;
}

int APIAnalysis::CheckFileAnalysisWorth(std::string path, std::string*& cleaned) {
  std::string extension = stringUtil.findFileExtention(path);
  if (isOneOf(extension, kSkippedExtensions)) return 0;
  if (!isOneOf(extension, kScannedExtensions)) return 0;

  FILE* in = fopen(path.c_str(), "rb");
  if (in == nullptr) {
    ENGINE_LOG("CheckFileAnalysisWorth", " file[%s] Open Error ", path.c_str());
    return 0;
  }
  // A source larger than the read limit is refused, never read whole: no
  // real application comes near it.
  std::string content;
  struct stat status;
  bool tooLarge = fstat(fileno(in), &status) == 0 && static_cast<uint64_t>(status.st_size) > config.maxSourceFileBytes;
  char chunk[65536];
  size_t got;
  while (!tooLarge && (got = fread(chunk, 1, sizeof(chunk), in)) > 0) {
    if (got > config.maxSourceFileBytes - content.size()) {
      tooLarge = true;
      break;
    }
    content.append(chunk, got);
  }
  fclose(in);
  if (tooLarge) {
    RefuseInput("web source larger than " + std::to_string(config.maxSourceFileBytes) + " bytes", path);
    return 0;
  }
  // Everything from the first zero byte on is ignored.
  size_t length = std::strlen(content.c_str());
  if (length == 0) return 0;

  // The terminating zero byte goes through the stripper too, so the cleaned
  // string ends with one zero byte inside it.
  std::string* text = new std::string(length + 1, '\0');
  text->resize(stripComments(content.c_str(), length + 1, &(*text)[0]));
  cleanedSourceList.push_back(text);
  cleaned = text;
  return 1;
}

int APIAnalysis::documentExtentionChecker(std::string extension) {
  for (const char* entry : documentExtention) {
    if (extension == entry) return 1;
  }
  return 0;
}

}  // namespace FlashEngine_1_00
