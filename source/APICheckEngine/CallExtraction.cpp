// Script API call extraction: the method calls made on variables bound to
// plug-in objects and through element look-ups, each recorded in
// foundCallList and judged at once.
#include <map>
#include <unordered_set>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CallForms.h"
#include "APICheckEngine/FirstOccurrences.h"
#include "APICheckEngine/RecordLists.h"
#include "APICheckEngine/SourceLookup.h"
#include "APICheckEngine/PatternTexts.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

namespace {

// Variables that hold the platform's common script helpers, not plug-ins.
const char* const kCommonHelpers[] = {"Common.API.Plugin", "Common.API.Widget", "Common.API.TVKeyValue"};
const size_t kHelperWindow = 50;

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

// True when some occurrence of `name` in `text` has a common helper within
// the 50 bytes that begin there.
bool namesCommonHelper(const std::string& text, const std::string& name) {
  for (size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
    std::string window = text.substr(at, kHelperWindow);
    for (const char* helper : kCommonHelpers) {
      if (contains(window, helper)) return true;
    }
  }
  return false;
}

// What decides the calls that searching for a record finds: its expression,
// kind and file, and the text searched when the record carries it. Records
// that agree on all of these find the same calls with the same verdicts, so
// searching them again adds nothing to the results.
std::string searchIdentity(const SWFStateMentInfo* record, const std::string& text) {
  std::string identity = record->expression ? *record->expression : std::string();
  for (const std::string* part : {&record->scope, &record->filePath, &text}) {
    identity += '\0';
    identity += *part;
  }
  return identity;
}

// Group 0 of each successive match of the calls made on `name` in `source`,
// each text once, in the order of first appearance; none when the pattern
// does not compile. A repeated call text would give the same record (its line
// is that of the text's first occurrence) and the same verdict, and it can only
// follow a documented one, so it would add nothing but memory: a source that
// repeats one documented call a million times gives one record.
std::vector<std::string> callsOn(CStringUtil& util, std::string name, const std::string& source) {
  name = util.customReplace(name, " ", "");
  Pattern calls(patterns::CallsOn(name));
  std::vector<std::string> found;
  std::unordered_set<std::string> seen;
  calls.forEachMatch(source.c_str(), [&](const char* begin, const char* end) {
    std::string call(begin, static_cast<size_t>(end - begin));
    if (seen.insert(call).second) found.push_back(std::move(call));
    return true;
  });
  return found;
}

// Records a call found on a bound variable and judges it. A generic "Execute"
// call is named by the method it executes; a call made on ".Open" is recorded
// without a text to judge.
RunResult reportCall(APIAnalysis& engine, const std::string& classId, std::string callText, const std::string& path,
                     int line) {
  CStringUtil& util = engine.stringUtil;
  std::string* apiText = nullptr;
  if (contains(callText, "Execute")) {
    std::string executed = engine.findAPINameForKOBCase(&callText);
    if (!executed.empty()) {
      std::string named = classId + "#" + executed;
      apiText = new std::string(util.customReplace(named, " ", ""));
    }
  }
  if (apiText == nullptr && !contains(callText, ".Open")) {
    std::string plain = classId + "#" + callText;
    apiText = new std::string(util.customReplace(plain, " ", ""));
  }

  SWFStateMentInfo* call = NewRecord(apiText, "Src", path, line);
  engine.foundCallList.push_back(call);
  return engine.DetermineAPISecurity(engine.resultList, call);
}

}  // namespace

RunResult APIAnalysis::FindAPIFunctionName4JS() {
  if (objectVariableList.empty()) return RUN_SUCCESS;

  // The calls on each binding, in binding order. Finding them does not depend
  // on the verdicts, so all are found first and their lines looked up with
  // one pass over each file, before they are judged in the same order.
  struct Search {
    std::string classId;
    std::string path;
    std::vector<std::string> calls;
    std::vector<int> lines;
  };
  std::vector<Search> searches;
  std::vector<std::string> pieces;
  std::unordered_set<std::string> searched;
  const PathIndex paths(worthfulPathList);
  for (SWFStateMentInfo* binding : objectVariableList) {
    std::string* text = nullptr;
    if (binding->scope == "Func") {
      text = &binding->text;
    } else if (binding->scope == "Src") {
      text = paths.text(worthfulSourceList, binding->filePath);
    }
    if (text == nullptr) continue;
    // A binding equal to one already searched finds the same calls again.
    if (!searched.insert(searchIdentity(binding, binding->scope == "Func" ? *text : std::string())).second) continue;

    std::string classId;
    std::string name;
    stringUtil.stringTokenizer("#", binding->expression ? *binding->expression : std::string(), pieces);
    if (pieces.size() >= 2) {
      classId = pieces[0];
      name = pieces[1];
    }
    if (namesCommonHelper(*text, name)) continue;
    searches.push_back({classId, binding->filePath, callsOn(stringUtil, name, *text), {}});
  }

  // Line of each call: its first occurrence in its file's cleaned source.
  std::map<std::string, std::vector<Search*>> byPath;
  for (Search& search : searches) byPath[search.path].push_back(&search);
  for (auto& file : byPath) {
    const std::string* source = paths.text(cleanedSourceList, file.first);
    FirstOccurrenceLines occurrences;
    std::vector<std::vector<size_t>> needles;
    for (const Search* search : file.second) {
      needles.emplace_back();
      for (const std::string& call : search->calls) needles.back().push_back(occurrences.add(SymbolNeedle(call)));
    }
    std::vector<int> lines = source ? occurrences.linesIn(*source) : std::vector<int>();
    for (size_t k = 0; k < file.second.size(); ++k) {
      for (size_t needle : needles[k]) file.second[k]->lines.push_back(source ? lines[needle] : -1);
    }
  }

  // Every binding is judged, even after a finding; a finding ends only the
  // calls of its own binding.
  for (const Search& search : searches) {
    for (size_t k = 0; k < search.calls.size(); ++k) {
      if (reportCall(*this, search.classId, search.calls[k], search.path, search.lines[k]) != RUN_SUCCESS) break;
    }
  }
  return RUN_SUCCESS;
}

RunResult APIAnalysis::findAPIsFromPool(std::string classId, std::string name, std::string* source, std::string path) {
  if (source == nullptr) return RUN_SUCCESS;
  for (std::string& call : callsOn(stringUtil, name, *source)) {
    RunResult result = reportCall(*this, classId, call, path, foundSymbolLineNumber(&path, &call));
    if (result != RUN_SUCCESS) return result;
  }
  return RUN_SUCCESS;
}

std::string APIAnalysis::findAPINameForKOBCase(std::string* callText) {
  std::string name;
  if (callText == nullptr || !Pattern(patterns::kExecuteCall).firstMatch(callText->c_str(), &name)) return std::string();
  // Single quotes stay: Execute('Play') is named 'Play'.
  for (const char* noise : {"\n", "Execute", " ", "(", "\""}) name = stringUtil.customReplace(name, noise, "");
  return name;
}

RunResult APIAnalysis::FindAPIFunctionName4JSSpe() {
  std::vector<std::string> pieces;
  std::unordered_set<std::string> searched;
  const PathIndex paths(worthfulPathList);
  for (size_t i = 0; i < declareList.size(); ++i) {
    SWFStateMentInfo* declared = declareList[i];
    std::string* source = paths.text(worthfulSourceList, declared->filePath);
    if (source == nullptr || declared->expression == nullptr) continue;
    // A record equal to one already searched finds the same calls again.
    if (!searched.insert(searchIdentity(declared, declared->accessText)).second) continue;

    stringUtil.stringTokenizer("#", *declared->expression, pieces);
    std::string classId = pieces.size() >= 1 ? pieces[0] : std::string();
    // The look-up's element part, pasted into the patterns as it stands.
    std::string id = pieces.size() >= 2 ? pieces[1] : std::string();

    Pattern methodCall(patterns::LookUpMethodCall(id));
    Pattern member(patterns::LookUpMember(id));
    RunResult result = RUN_SUCCESS;
    methodCall.forEachMatch(source->c_str(), [&](const char* begin, const char* end) {
      std::string candidate(begin, static_cast<size_t>(end - begin));
      const char* memberEnd = nullptr;
      if (!member.search(candidate, nullptr, &memberEnd)) return true;
      std::string callText = candidate.substr(static_cast<size_t>(memberEnd - candidate.c_str()));
      if (CallsSystemFunction(candidate)) return true;

      std::string* apiName = nullptr;
      if (classId == kExtensionFrameworkClassId || contains(callText, "Execute")) {
        std::string dummy = "DummyObject." + callText + ")";
        dummy = stringUtil.customReplace(dummy, ")", "");
        dummy = stringUtil.customReplace(dummy, " ", "");
        apiName = new std::string(classId + "#" + findAPINameForKOBCase(&dummy));
      } else if (!contains(callText, ".Open")) {
        std::string dummy = classId + "#DummyObject." + callText + ")";
        dummy = stringUtil.customReplace(dummy, ")", "");
        apiName = new std::string(stringUtil.customReplace(dummy, " ", ""));
      }

      SWFStateMentInfo* call = NewRecord(
          apiName, "Src", declared->filePath,
          LineOfFirstOccurrence(paths.text(cleanedSourceList, declared->filePath), declared->accessText));
      foundCallList.push_back(call);
      result = DetermineAPISecurity(resultList, call);
      return result == RUN_SUCCESS;
    });
    if (result != RUN_SUCCESS) return result;
  }
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
