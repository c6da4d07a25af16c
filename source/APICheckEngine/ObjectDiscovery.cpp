// Plug-in object discovery: the <object> elements that name a platform
// plug-in, their element ids, and the formal parameters that receive an id.
#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <unordered_map>
#include <unordered_set>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/EngineLog.h"
#include "APICheckEngine/PluginClassIds.h"
#include "APICheckEngine/RecordLists.h"
#include "APICheckEngine/PatternTexts.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

namespace {

const char* const kNoId = "_NO_CLASSID_FOUND_";

const char* const kTagSourceExtensions[] = {"html", "HTML", "htm", "HTM", "css", "CSS", "js", "JS", "xml", "XML"};


bool isTagSource(const std::string& extension) {
  for (const char* entry : kTagSourceExtensions) {
    if (extension == entry) return true;
  }
  return false;
}

// The most rounds an unbounded repetition of the regular-expression dialect
// runs.
constexpr size_t kRepetitionRounds = 65536;

// Calls fn(begin, end) for each successive match of "<.*>" in `text`, each
// search starting where the previous match ended. The `.*` takes the byte
// after the `<` whatever it is and then stops at the first `>`, within
// kRepetitionRounds rounds; so a search position can match only when it holds
// a `<` with a `>` 2 to kRepetitionRounds + 1 bytes after it. Searches start
// at such positions only: the matches are the same, and a flood of `<` with
// no `>` near costs no 65536-round attempt per byte.
template <typename Fn>
void forEachTag(Pattern& tagForm, const char* text, Fn fn) {
  const size_t length = std::strlen(text);
  std::vector<size_t> closers;
  for (size_t i = 0; i < length; ++i) {
    if (text[i] == '>') closers.push_back(i);
  }
  size_t cursor = 0;
  while (cursor < length) {
    const void* opener = std::memchr(text + cursor, '<', length - cursor);
    if (opener == nullptr) return;
    size_t at = static_cast<size_t>(static_cast<const char*>(opener) - text);
    auto closer = std::lower_bound(closers.begin(), closers.end(), at + 2);
    if (closer == closers.end()) return;  // no later `<` can match either
    if (*closer - at > kRepetitionRounds + 1) {
      cursor = at + 1;
      continue;
    }
    const char* begin = nullptr;
    const char* end = nullptr;
    if (!tagForm.searchRange(text + at, text + length, &begin, &end)) return;
    fn(begin, end);
    size_t next = static_cast<size_t>(end - text);
    cursor = next > at ? next : at + 1;
  }
}

// A formal parameter that receives a plug-in symbol, and the source of the call.
struct ParameterUse {
  size_t source;
  std::string parameter;
};

// Base-10 value of [begin, end): leading white space and a sign accepted,
// stops at the first other byte, saturates instead of overflowing.
int decimalValue(const char* begin, const char* end) {
  const char* p = begin;
  while (p < end && std::isspace(static_cast<unsigned char>(*p))) ++p;
  bool negative = false;
  if (p < end && (*p == '+' || *p == '-')) negative = (*p++ == '-');
  const long long limit = static_cast<long long>(INT_MAX) + 1;
  long long value = 0;
  for (; p < end && *p >= '0' && *p <= '9'; ++p) value = std::min(value * 10 + (*p - '0'), limit);
  if (negative) return static_cast<int>(-value);
  return static_cast<int>(std::min(value, static_cast<long long>(INT_MAX)));
}

}  // namespace

RunResult APIAnalysis::FindObjectTagToken() {
  for (size_t i = 0; i < worthfulSourceList.size() && i < worthfulExtList.size() && i < worthfulPathList.size(); ++i) {
    if (isTagSource(*worthfulExtList[i])) FindObjectTags(worthfulSourceList[i], worthfulPathList[i]);
  }
  return RUN_SUCCESS;
}

bool APIAnalysis::FindObjectTags(std::string* text, std::string* path) {
  if (text == nullptr || path == nullptr) return false;
  std::vector<std::string> classIds(pluginClassIdTable, pluginClassIdTable + kPluginClassIdCount);
  Pattern tagForm(patterns::kTag);
  if (!tagForm.compiled()) return false;

  // Each match is one tag; an element runs from the tag that opens an object
  // through the tag that closes it.
  bool inside = false;
  std::string element;
  size_t elements = 0;
  forEachTag(tagForm, text->c_str(), [&](const char* begin, const char* end) {
    std::string tag(begin, static_cast<size_t>(end - begin));
    bool hasStart = false;
    bool hasEnd = false;
    ObjectStartIDChecker(hasStart, hasEnd, &tag);
    bool complete = false;
    if (hasStart && hasEnd) {
      element = tag;
      complete = true;
    } else if (hasStart) {
      element += tag;
      inside = true;
    } else if (inside) {
      element += tag;
      complete = hasEnd;
    }
    if (!complete) return true;

    ++elements;
    for (const std::string& classId : classIds) {
      if (element.find(classId) == std::string::npos) continue;
      std::string bareId = classId;
      bareId = stringUtil.customReplace(bareId, " ", "");
      std::string bareElement = stringUtil.customReplace(element, " ", "");
      objectTagList.push_back(NewRecord(new std::string(bareId + "#" + bareElement), "Global", *path));
      objectClassList.push_back(NewRecord(new std::string(bareId), "Global", *path));
      break;
    }
    element.clear();
    inside = false;
    return true;
  });
  return elements > 0;
}

RunResult APIAnalysis::ObjectStartIDChecker(bool& hasStart, bool& hasEnd, std::string* text) {
  hasStart = false;
  hasEnd = false;
  if (text == nullptr) return RUN_SUCCESS;
  hasStart = Pattern(patterns::kObjectStart).search(*text);
  hasEnd = Pattern(patterns::kObjectEnd).search(*text);
  return RUN_SUCCESS;
}

std::string APIAnalysis::parseObjectID(std::string text) {
  std::string id = kNoId;
  if (text.empty()) return id;
  // Only a single id-like attribute in the whole text counts; two or more
  // are ambiguous, so the search can stop at the second.
  std::vector<std::string> found;
  for (const char* form : patterns::kQuotedIdForms) {
    Pattern pattern(form);
    pattern.forEachMatch(text.c_str(), [&](const char* begin, const char* end) {
      found.emplace_back(begin, static_cast<size_t>(end - begin));
      return found.size() < 2;
    });
    if (found.size() >= 2) return id;
  }
  if (found.size() != 1) return id;
  const std::string& match = found.front();
  size_t open = match.find_first_of("\"'");
  size_t close = match.find_last_of("\"'");
  if (open != std::string::npos && close > open) id = match.substr(open + 1, close - open - 1);
  return id;
}

RunResult APIAnalysis::FindObjectID() {
  std::unordered_set<std::string> known;
  for (SWFStateMentInfo* record : objectIdList) {
    if (record->expression != nullptr) known.insert(*record->expression);
  }

  // The defined name of every function block, with its blank-free header;
  // the name does not depend on the symbol looked for.
  std::vector<std::string> definitions;
  std::unordered_map<std::string, std::vector<size_t>> definitionsByName;
  for (FlashFunctionInfo* block : functionBlockList) {
    std::string header = stringUtil.customReplace(block->header, " ", "");
    header = stringUtil.customReplace(header, "function", "");
    header = stringUtil.customReplace(header, ":", "");
    std::string name;
    funcParameterParsing(header, std::string(), name);
    definitionsByName[name].push_back(definitions.size());
    definitions.push_back(header);
  }

  // Every formal parameter that receives `symbol` in a call of some source,
  // in source order, then call order, then block order.
  auto parametersReceiving = [&](const std::string& symbol) {
    std::vector<ParameterUse> uses;
    for (size_t j = 0; j < worthfulSourceList.size() && j < worthfulPathList.size(); ++j) {
      Pattern call(patterns::CallWithArgument(symbol));
      call.forEachMatch(worthfulSourceList[j]->c_str(), [&](const char* begin, const char* end) {
        std::string callText(begin, static_cast<size_t>(end - begin));
        std::string called;
        int position = funcParameterParsing(callText, symbol, called);
        if (called.find("getElementById") != std::string::npos) return true;  // the direct look-up
        auto sameName = definitionsByName.find(called);
        if (sameName == definitionsByName.end()) return true;
        for (size_t index : sameName->second) {
          uses.push_back(ParameterUse{j, getParamterByPosition(definitions[index], position)});
        }
        return true;
      });
    }
    return uses;
  };
  std::unordered_map<std::string, std::vector<ParameterUse>> parametersBySymbol;

  std::vector<std::string> tokens;
  for (size_t r = 0; r < objectTagList.size(); ++r) {
    SWFStateMentInfo* tag = objectTagList[r];
    std::string expression = tag->expression ? *tag->expression : std::string();
    std::string symbol = parseObjectID(expression);
    std::string classId = kNoId;
    stringUtil.stringTokenizer("#", expression, tokens);
    if (tokens.size() >= 2) classId = tokens[0];
    symbol = stringUtil.customReplace(symbol, " ", "");

    std::string key = classId + "#" + symbol;
    if (known.insert(key).second) objectIdList.push_back(NewRecord(new std::string(key), "Global", tag->filePath));

    // Calls that pass the symbol to a function defined in the sources make
    // the formal parameter at that position a further name of the plug-in.
    // The parameters found for a symbol do not depend on the class, so an id
    // seen again (the same element in several pages) reuses them.
    auto cached = parametersBySymbol.find(symbol);
    if (cached == parametersBySymbol.end()) {
      cached = parametersBySymbol.emplace(symbol, parametersReceiving(symbol)).first;
    }
    for (const ParameterUse& use : cached->second) {
      std::string aliasKey = classId + "#" + use.parameter;
      if (!known.insert(aliasKey).second) continue;
      ENGINE_LOG("FindObjectID", "[%s] VariationSymbol [%s]\t", "FindObjectID", use.parameter.c_str());
      objectIdList.push_back(NewRecord(new std::string(aliasKey), "", *worthfulPathList[use.source]));
    }
  }
  return RUN_SUCCESS;
}

int APIAnalysis::parseEmbedsTagIndex(std::string* text) {
  if (text == nullptr || text->empty()) return 0;
  const char* t = text->c_str();
  size_t open = text->find('[');
  if (open == std::string::npos) return decimalValue(t, t + 1);  // the first byte alone
  size_t close = text->rfind(']');
  if (close == std::string::npos || close < open) return 0;
  return decimalValue(t + open + 1, t + close);
}

}  // namespace FlashEngine_1_00
