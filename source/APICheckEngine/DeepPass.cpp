// The deep analysis as an option of an analysis: the web sources and the SWF
// call statements of the application go to the parser-based analyser, and
// each undocumented call it finds that the exact scan did not report becomes
// a finding marked as deep.
#include <fstream>
#include <set>
#include <sstream>

#include "APICheckEngine/APIAnalysis.h"
#ifdef TARVO_HAVE_DEEP
#include "deep/DeepAnalysis.h"
#endif

namespace FlashEngine_1_00 {

#ifdef TARVO_HAVE_DEEP
namespace {

bool isWebSource(const std::string& extension) {
  for (const char* web : {"html", "HTML", "htm", "HTM", "js", "JS"}) {
    if (extension == web) return true;
  }
  return false;
}

}  // namespace

void APIAnalysis::RunDeepAnalysis(const std::vector<std::string>& files) {
  std::vector<tarvo_deep::DeepSource> sources;
  for (const std::string& path : files) {
    if (!isWebSource(stringUtil.findFileExtention(path))) continue;
    std::ifstream in(path, std::ios::binary);
    if (!in) continue;
    std::ostringstream text;
    text << in.rdbuf();
    sources.push_back(tarvo_deep::DeepSource{path, text.str()});
  }
  // A method is documented as the exact scan judges it: by its name.
  std::set<std::string> documented;
  for (const std::string* name : whiteAPIList) documented.insert(*name);
  auto isDocumented = [&](const std::string& apiText) {
    return documented.count(apiText.substr(apiText.find('#') + 1)) > 0;
  };

  std::set<std::string> reported;
  for (const AnalysisFinding& found : findingList) reported.insert(found.line);
  auto add = [&](const tarvo_deep::DeepResult& result, bool fromSwf) {
    for (const tarvo_deep::DeepFinding& f : result.findings) {
      AnalysisFinding found;
      found.line = FindingLine(f.path, static_cast<int32_t>(f.line), f.method);
      if (!reported.insert(found.line).second) continue;  // the exact scan's own finding
      found.filePath = f.path;
      found.lineNumber = static_cast<int32_t>(f.line);
      found.method = f.method;
      found.classId = f.classId;
      found.receiver = f.receiver;
      found.fromSwf = fromSwf;
      found.deep = true;
      found.elementId = f.elementId;
      found.binding = f.kind;
      findingList.push_back(found);
    }
    for (const std::string& note : result.notes) NoteInput("deep", note, "");
  };
  add(tarvo_deep::AnalyseWebSources(sources, isDocumented), false);
  const auto elements = tarvo_deep::AnalysePluginElements(sources);
  for (const auto& swf : swfStatements) {
    add(tarvo_deep::AnalyseSwfStatements(swf.first, swf.second, elements, isDocumented), true);
  }
}
#else
void APIAnalysis::RunDeepAnalysis(const std::vector<std::string>&) {
  NoteInput("deep", "the deep analysis is not built into this engine", "");
}
#endif

}  // namespace FlashEngine_1_00
