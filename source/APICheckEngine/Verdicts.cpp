// Verdicts: every found call is judged against the documented-API list; an
// undocumented one becomes a finding line in the result list and the code
// 1001, which stops the run.
#include <cstdio>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/PatternTexts.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

namespace {

// Components from the fifth on (/tmp/<n>/app/www/js/main.js gives js/main.js),
// so that a finding names the file as it stands inside the application.
std::string pathBelowFourthComponent(CStringUtil& util, const std::string& path) {
  std::vector<std::string> components;
  util.stringTokenizer("/", path, components);
  std::string below;
  for (size_t i = 4; i < components.size(); ++i) {
    if (i > 4) below += "/";
    below += components[i];
  }
  return below;
}

}  // namespace

// The path a finding line is made from. Extraction directories other than the
// product's stand for one of the product's ("/tmp/<n>"), so that a finding
// line reads the same whatever work directory the analysis used.
std::string APIAnalysis::shownPath(const std::string& path) const {
  if (config.extractDirFormat == EngineConfig::kExtractDirFormat) return path;
  for (const auto& source : extractionSources) {
    const std::string& dir = source.first;
    if (path.size() > dir.size() && path.compare(0, dir.size(), dir) == 0 && path[dir.size()] == '/') {
      return "/tmp/0" + path.substr(dir.size());
    }
  }
  return path;
}

std::string APIAnalysis::FindingLine(const std::string& path, int32_t line, const std::string& method) {
  char lineNumber[16];
  std::snprintf(lineNumber, sizeof lineNumber, "%d", static_cast<int>(line));
  return "../" + pathBelowFourthComponent(stringUtil, shownPath(path)) + "(" + lineNumber + ")" +
         " : UndocumentedAPI '" + method + "' used" + "\n";
}

RunResult APIAnalysis::DetermineAPISecurity(std::vector<std::string*>& results, SWFStateMentInfo* call) {
  // A call made on ".Open" carries no expression: there is nothing to judge.
  if (call == nullptr || call->expression == nullptr) return RUN_SUCCESS;

  std::vector<std::string> pieces;
  stringUtil.stringTokenizer("#", *call->expression, pieces);
  if (pieces.size() < 2) return RUN_SUCCESS;
  const std::string& callText = pieces[1];

  std::string method;
  Pattern methodCall(patterns::kMethodCall);
  if (!methodCall.firstMatch(callText.c_str(), &method)) method = callText;
  // What the call is made on: the text before the method's dot.
  size_t methodAt = callText.find(method);
  std::string receiver = methodAt != std::string::npos ? callText.substr(0, methodAt) : std::string();
  method = stringUtil.customReplace(method, ".", "");
  method = stringUtil.customReplace(method, " ", "");
  method = stringUtil.customReplace(method, "(", "");

  bool undocumented = true;
  undocumentAPICheckerMain(whiteAPIList, method, undocumented);
  if (!undocumented) return RUN_SUCCESS;

  std::string finding = FindingLine(call->filePath, call->line, method);

  bool known = false;
  for (const std::string* line : results) {
    if (*line == finding) {
      known = true;
      break;
    }
  }
  if (!known) {
    results.push_back(new std::string(finding));
    AnalysisFinding found;
    found.line = finding;
    found.filePath = call->filePath;
    found.lineNumber = call->line;
    found.method = method;
    found.classId = pieces[0];
    if (receiver != "DummyObject") found.receiver = receiver;
    std::string extension = stringUtil.findFileExtention(call->filePath);
    found.fromSwf = extension == "swf" || extension == "SWF";
    findingList.push_back(found);
  }
  // Reporting every call, the scan goes on; the driver makes the code.
  return config.reportAll ? RUN_SUCCESS : RUN_UNDOCUMENTED_API;
}

RunResult APIAnalysis::undocumentAPICheckerMain(std::vector<std::string*> whiteList, std::string apiName,
                                                bool& undocumented) {
  undocumented = true;
  for (const std::string* documented : whiteList) {
    if (*documented == apiName) {
      undocumented = false;
      break;
    }
  }
  return RUN_SUCCESS;
}

RunResult APIAnalysis::Finish(std::vector<std::string*>& results) {
  for (size_t i = 0; i < foundCallList.size(); ++i) {
    RunResult r = DetermineAPISecurity(results, foundCallList[i]);
    if (r != RUN_SUCCESS) return r;
  }
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
