// Object variable binding: which element look-ups of the sources name a known
// plug-in symbol, which script variables they are assigned to, the scope text
// of each such variable and the line where a name first occurs in a file.
#include <map>
#include <unordered_map>
#include <utility>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/FirstOccurrences.h"
#include "APICheckEngine/RecordLists.h"
#include "APICheckEngine/SourceLookup.h"
#include "APICheckEngine/PatternTexts.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FindDeclareListValidation() {
  // Plug-in symbols with their classes, kept parallel.
  std::vector<std::string> classes;
  std::vector<std::string> symbols;
  std::vector<std::string> pieces;
  for (const SWFStateMentInfo* id : objectIdList) {
    if (id->text == "Func") continue;
    stringUtil.stringTokenizer("#", *id->expression, pieces);
    if (pieces.size() >= 2) {
      classes.push_back(pieces[0]);
      symbols.push_back(pieces[1]);
    } else {
      classes.emplace_back();
      symbols.emplace_back();
    }
  }

  // Look-ups whose parenthesised argument is a plug-in symbol; the first
  // symbol that matches decides the class.
  for (const SWFStateMentInfo* access : objectAccessList) {
    for (size_t k = 0; k < symbols.size(); ++k) {
      Pattern symbolArgument(patterns::SymbolArgument(symbols[k]));
      if (!symbolArgument.search(*access->expression)) continue;
      std::string klass = stringUtil.customReplace(classes[k], " ", "");
      SWFStateMentInfo* record =
          NewRecord(new std::string(klass + "#" + *access->expression), "Global", access->filePath);
      record->accessText = *access->expression;
      declareList.push_back(record);
      break;
    }
  }

  // document.embeds[n]: the class of the n-th symbol, one equal record per
  // known symbol.
  for (SWFStateMentInfo* embeds : embedsAccessList) {
    int n = parseEmbedsTagIndex(embeds->expression);
    if (n < 0 || static_cast<size_t>(n) >= objectTagList.size() || static_cast<size_t>(n) >= classes.size()) continue;
    std::string klass = stringUtil.customReplace(classes[static_cast<size_t>(n)], " ", "");
    for (size_t k = 0; k < symbols.size(); ++k) {
      SWFStateMentInfo* record =
          NewRecord(new std::string(klass + "#" + *embeds->expression), "Global", embeds->filePath);
      record->accessText = *embeds->expression;
      embedsDeclareList.push_back(record);
    }
  }

  // The embeds records follow the look-ups, last one first.
  while (!embedsDeclareList.empty()) {
    declareList.push_back(embedsDeclareList.back());
    embedsDeclareList.pop_back();
  }
  return RUN_SUCCESS;
}

RunResult APIAnalysis::FindObjectVariable() {
  const std::string directUse = patterns::DirectUse();
  // Body of the last function block of a file that contains a look-up, per
  // (path, look-up): many records share both.
  std::map<std::pair<std::string, std::string>, const std::string*> enclosingBodies;
  std::unordered_map<std::string, std::vector<const FlashFunctionInfo*>> blocksOf;  // per file, in list order
  for (const FlashFunctionInfo* block : functionBlockList) blocksOf[block->filePath].push_back(block);
  std::vector<std::string> pieces;
  std::vector<std::string> lookUpPieces;
  // Lines as foundSymbolLineNumber gives them, with the paths indexed once.
  const PathIndex paths(worthfulPathList);

  for (const SWFStateMentInfo* declared : declareList) {
    const std::string& expression = *declared->expression;
    std::string compact = stringUtil.customReplace(*declared->expression, "\n", "");
    compact = stringUtil.customReplace(compact, " ", "");
    stringUtil.stringTokenizer("#", compact, pieces);
    std::string klass = pieces.size() >= 2 ? pieces[0] : std::string();
    klass = stringUtil.customReplace(klass, " ", "");

    if (Pattern(directUse).search(expression)) continue;

    Pattern assignment(patterns::kAssignmentTarget);
    assignment.forEachMatch(expression.c_str(), [&](const char* begin, const char* end) {
      std::string variable(begin, static_cast<size_t>(end - begin));
      variable = stringUtil.customReplace(variable, " ", "");
      variable = stringUtil.customReplace(variable, "=", "");
      if (variable.empty()) return true;

      SWFStateMentInfo* binding = NewRecord(new std::string(klass + "#" + variable), "Func", declared->filePath);
      if (variable.find("this.") != std::string::npos) {
        binding->scope = "Src";
      } else {
        stringUtil.stringTokenizer("#", expression, lookUpPieces);
        std::string lookUp = lookUpPieces.size() >= 2 ? lookUpPieces[1] : std::string();
        auto key = std::make_pair(declared->filePath, lookUp);
        auto cached = enclosingBodies.find(key);
        if (cached == enclosingBodies.end()) {
          const std::string* body = nullptr;
          for (const FlashFunctionInfo* block : blocksOf[declared->filePath]) {
            if (block->body != nullptr && block->body->find(lookUp) != std::string::npos) {
              body = block->body;
            }
          }
          cached = enclosingBodies.emplace(key, body).first;
        }
        if (cached->second != nullptr) binding->text = *cached->second;
      }
      binding->line = LineOfFirstOccurrence(paths.text(cleanedSourceList, declared->filePath), variable);
      objectVariableList.push_back(binding);
      return true;
    });
  }
  return RUN_SUCCESS;
}

int APIAnalysis::foundSymbolLineNumber(std::string* path, std::string* symbol) {
  if (path == nullptr || symbol == nullptr) return -1;
  return LineOfFirstOccurrence(TextForPath(worthfulPathList, cleanedSourceList, *path), *symbol);
}

}  // namespace FlashEngine_1_00
