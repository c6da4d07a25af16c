// Script API call extraction: the method calls made on variables bound to
// plug-in objects and through element look-ups, each recorded in
// foundCallList and judged at once.
#include <cstring>

#include "APICheckEngine/APIAnalysis.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

namespace {

// A call `name.method(...)` needs one of these bytes (or white space) right
// before the name, so that a longer identifier ending in the name is not taken.
const char kSeparatorBeforeName[] = R"re([\+\-\_\*\/\%\(\{\[\;\:\,\?\s])re";
// `.method(` with a simple argument list, closed by `)`.
const char kCallWithArguments[] = R"re(\s*\.\s*[\w\_]+\s*\([\[\.\]\d"',\s\w\_\(\)/]*\))re";
// `.method()` with only blanks inside.
const char kCallWithoutArguments[] = R"re(\s*\.\s*[\w\_]+\s*\([\s]*\))re";

// The method name of the extension framework's generic call `Execute("Name")`.
const char kExecuteCall[] = R"re(Execute\(\s*["']*[\w\s\_]*["']*)re";

// An element look-up `("id")` followed by a member access.
const char kLookUpOpen[] = R"re([\(][\s"']*)re";
const char kLookUpMethodCall[] = R"re([\s"']*[\)]\s*\.\s*[\w\d\_]+\s*\()re";
const char kLookUpMember[] = R"re([\s"']*[\)]\s*\.)re";

// Variables that hold the platform's common script helpers, not plug-ins.
const char* const kCommonHelpers[] = {"Common.API.Plugin", "Common.API.Widget", "Common.API.TVKeyValue"};
const size_t kHelperWindow = 50;

const char kExtensionFramework[] = "MORVANE-NAVERTIX-KOB";

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

// True when some occurrence of `name` in `text` has a common helper within
// the 50 bytes that begin there.
bool namesCommonHelper(const std::string& text, const std::string& name) {
  for (size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
    std::string window = text.substr(at, kHelperWindow);
    for (const char* helper : kCommonHelpers) {
      if (contains(window, helper)) return true;
    }
    if (at >= text.size()) break;
  }
  return false;
}

// True when the call text holds a built-in function name followed by "(".
bool callsBuiltIn(const std::string& candidate) {
  for (const char* builtIn : SystemFunctionPool) {
    std::string call = std::string(builtIn) + "(";
    if (candidate.find(call) != std::string::npos) return true;
  }
  return false;
}

// The cleaned source of a file worth scanning, by its path; null if unknown.
std::string* sourceOf(const std::vector<std::string*>& paths, const std::vector<std::string*>& sources,
                      const std::string& path) {
  for (size_t i = 0; i < paths.size() && i < sources.size(); ++i) {
    if (*paths[i] == path) return sources[i];
  }
  return nullptr;
}

}  // namespace

RunResult APIAnalysis::FindAPIFunctionName4JS() {
  if (objectVariableList.empty()) return RUN_SUCCESS;
  std::vector<std::string> pieces;
  for (size_t i = 0; i < objectVariableList.size(); ++i) {
    SWFStateMentInfo* binding = objectVariableList[i];
    std::string* text = nullptr;
    if (binding->scope == "Func") {
      text = &binding->text;
    } else if (binding->scope == "Src") {
      text = sourceOf(worthfulPathList, worthfulSourceList, binding->filePath);
    }
    if (text == nullptr) continue;

    std::string classId;
    std::string name;
    stringUtil.stringTokenizer("#", binding->expression ? *binding->expression : std::string(), pieces);
    if (pieces.size() >= 2) {
      classId = pieces[0];
      name = pieces[1];
    }
    if (namesCommonHelper(*text, name)) continue;

    // Every binding is searched, even after a finding.
    findAPIsFromPool(classId, name, text, binding->filePath);
  }
  return RUN_SUCCESS;
}

RunResult APIAnalysis::findAPIsFromPool(std::string classId, std::string name, std::string* source, std::string path) {
  name = stringUtil.customReplace(name, " ", "");
  Pattern calls(std::string("(") + kSeparatorBeforeName + name + kCallWithArguments + ")|(" + kSeparatorBeforeName +
                name + kCallWithoutArguments + ")");
  if (!calls.compiled() || source == nullptr) return RUN_SUCCESS;

  RunResult result = RUN_SUCCESS;
  calls.forEachMatch(source->c_str(), [&](const char* begin, const char* end) {
    std::string callText(begin, static_cast<size_t>(end - begin));

    // A generic "Execute" call is named by the method it executes; a call
    // made on ".Open" is recorded without a text to judge.
    std::string* apiText = nullptr;
    if (contains(callText, "Execute")) {
      std::string executed = findAPINameForKOBCase(&callText);
      if (!executed.empty()) {
        std::string named = classId + "#" + executed;
        apiText = new std::string(stringUtil.customReplace(named, " ", ""));
      }
    }
    if (apiText == nullptr && !contains(callText, ".Open")) {
      std::string plain = classId + "#" + callText;
      apiText = new std::string(stringUtil.customReplace(plain, " ", ""));
    }

    SWFStateMentInfo* call = new SWFStateMentInfo;
    call->expression = apiText;
    call->scope = "Src";
    call->filePath = path;
    call->line = foundSymbolLineNumber(&path, &callText);
    foundCallList.push_back(call);
    result = DetermineAPISecurity(resultList, call);
    return result == RUN_SUCCESS;
  });
  return result;
}

std::string APIAnalysis::findAPINameForKOBCase(std::string* callText) {
  std::string name;
  if (callText == nullptr || !Pattern(kExecuteCall).firstMatch(callText->c_str(), &name)) return std::string();
  // Single quotes stay: Execute('Play') is named 'Play'.
  for (const char* noise : {"\n", "Execute", " ", "(", "\""}) name = stringUtil.customReplace(name, noise, "");
  return name;
}

RunResult APIAnalysis::FindAPIFunctionName4JSSpe() {
  std::vector<std::string> pieces;
  for (size_t i = 0; i < declareList.size(); ++i) {
    SWFStateMentInfo* declared = declareList[i];
    std::string* source = sourceOf(worthfulPathList, worthfulSourceList, declared->filePath);
    if (source == nullptr || declared->expression == nullptr) continue;

    stringUtil.stringTokenizer("#", *declared->expression, pieces);
    std::string classId = pieces.size() >= 1 ? pieces[0] : std::string();
    // The look-up's element part, pasted into the patterns as it stands.
    std::string id = pieces.size() >= 2 ? pieces[1] : std::string();

    Pattern methodCall(kLookUpOpen + id + kLookUpMethodCall);
    Pattern member(kLookUpOpen + id + kLookUpMember);
    RunResult result = RUN_SUCCESS;
    methodCall.forEachMatch(source->c_str(), [&](const char* begin, const char* end) {
      std::string candidate(begin, static_cast<size_t>(end - begin));
      const char* memberEnd = nullptr;
      if (!member.search(candidate, nullptr, &memberEnd)) return true;
      std::string callText = candidate.substr(static_cast<size_t>(memberEnd - candidate.c_str()));
      if (callsBuiltIn(candidate)) return true;

      std::string* apiName = nullptr;
      if (classId == kExtensionFramework || contains(callText, "Execute")) {
        std::string dummy = "DummyObject." + callText + ")";
        dummy = stringUtil.customReplace(dummy, ")", "");
        dummy = stringUtil.customReplace(dummy, " ", "");
        apiName = new std::string(classId + "#" + findAPINameForKOBCase(&dummy));
      } else if (!contains(callText, ".Open")) {
        std::string dummy = classId + "#DummyObject." + callText + ")";
        dummy = stringUtil.customReplace(dummy, ")", "");
        apiName = new std::string(stringUtil.customReplace(dummy, " ", ""));
      }

      SWFStateMentInfo* call = new SWFStateMentInfo;
      call->expression = apiName;
      call->scope = "Src";
      call->filePath = declared->filePath;
      call->line = foundSymbolLineNumber(&declared->filePath, &declared->accessText);
      foundCallList.push_back(call);
      result = DetermineAPISecurity(resultList, call);
      return result == RUN_SUCCESS;
    });
    if (result != RUN_SUCCESS) return result;
  }
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
