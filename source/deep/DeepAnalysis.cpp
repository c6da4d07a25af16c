#include "deep/DeepAnalysis.h"

#include "deep/HtmlSources.h"
#include "deep/ScriptBindings.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace tarvo_deep {

namespace {

using Located = std::pair<std::pair<size_t, uint32_t>, DeepFinding>;

// Sorts by source and position, keeps each (file, line, method) once and drops
// the documented calls.
DeepResult Report(std::vector<Located> calls, std::vector<std::string> notes, const IsDocumented& isDocumented) {
  std::stable_sort(calls.begin(), calls.end(),
                   [](const Located& a, const Located& b) { return a.first < b.first; });
  DeepResult result;
  result.notes = std::move(notes);
  std::set<std::tuple<std::string, uint32_t, std::string>> seen;
  for (Located& call : calls) {
    DeepFinding& finding = call.second;
    if (!seen.insert({finding.path, finding.line, finding.method}).second) continue;
    if (isDocumented && isDocumented(finding.classId + "#" + finding.method)) continue;
    result.findings.push_back(std::move(finding));
  }
  return result;
}

}  // namespace

std::vector<std::pair<std::string, std::string>> AnalysePluginElements(const std::vector<DeepSource>& sources) {
  std::vector<std::pair<std::string, std::string>> elements;
  for (const DeepSource& source : sources) {
    if (!IsHtmlPath(source.path) || source.text.size() > kMaxDeepSourceBytes) continue;
    for (const PluginElement& element : ReadHtmlPage(source.text).elements)
      elements.emplace_back(element.id, element.classId);
  }
  return elements;
}

DeepResult AnalyseWebSources(const std::vector<DeepSource>& sources, const IsDocumented& isDocumented) {
  try {
    std::vector<std::string> notes;
    std::vector<HtmlPage> pages;
    std::vector<TreePtr> trees;
    std::vector<Script> scripts;
    std::vector<PluginElement> elements;
    for (size_t i = 0; i < sources.size(); ++i) {
      const DeepSource& source = sources[i];
      if (source.text.size() > kMaxDeepSourceBytes) {
        notes.push_back(source.path + ": larger than " + std::to_string(kMaxDeepSourceBytes) + " bytes, left out");
        continue;
      }
      std::vector<const TSNode*> fragments;
      if (IsHtmlPath(source.path)) {
        pages.push_back(ReadHtmlPage(source.text));
        if (!pages.back().tree) {
          notes.push_back(source.path + ": the page could not be parsed");
          continue;
        }
        elements.insert(elements.end(), pages.back().elements.begin(), pages.back().elements.end());
        for (const TSNode& fragment : pages.back().scripts) fragments.push_back(&fragment);
      } else {
        fragments.push_back(nullptr);
      }
      for (const TSNode* fragment : fragments) {
        trees.push_back(ParseRange(tree_sitter_javascript(), source.text, fragment));
        if (!trees.back()) {
          notes.push_back(source.path + ": a script could not be parsed in time");
          continue;
        }
        scripts.push_back(Script{i, &source.text, &source.path, trees.back().get()});
      }
    }
    ScriptBindings bindings(std::move(elements));
    bindings.Bind(scripts, notes);
    std::vector<Located> calls;
    bindings.CollectCalls(scripts, sources, calls);
    return Report(std::move(calls), std::move(notes), isDocumented);
  } catch (const std::exception& error) {
    DeepResult result;
    result.notes.push_back(std::string("deep analysis stopped: ") + error.what());
    return result;
  }
}

DeepResult AnalyseSwfStatements(const std::string& path, const std::vector<std::string>& statements,
                                const std::vector<std::pair<std::string, std::string>>& elements,
                                const IsDocumented& isDocumented) {
  // The decompiler prints a plug-in call as getObject(id).Method(...), the id
  // quoted or not, with blanks anywhere between the parts.
  static const std::string kLookUp = "getObject";
  std::vector<Located> calls;
  try {
    for (size_t line = 0; line < statements.size(); ++line) {
      const std::string& statement = statements[line];
      size_t at = 0;
      while ((at = statement.find(kLookUp, at)) != std::string::npos) {
        size_t pos = at + kLookUp.size();
        at = pos;
        auto skipBlanks = [&] { while (pos < statement.size() && std::isspace(static_cast<unsigned char>(statement[pos]))) ++pos; };
        auto isWord = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$'; };
        skipBlanks();
        if (pos >= statement.size() || statement[pos] != '(') continue;
        size_t close = statement.find(')', pos);
        if (close == std::string::npos) continue;
        std::string id = statement.substr(pos + 1, close - pos - 1);
        id.erase(std::remove_if(id.begin(), id.end(), [](char c) { return c == '"' || c == '\'' || std::isspace(static_cast<unsigned char>(c)); }), id.end());
        pos = close + 1;
        skipBlanks();
        if (pos >= statement.size() || statement[pos] != '.') continue;
        ++pos;
        skipBlanks();
        size_t begin = pos;
        while (pos < statement.size() && isWord(statement[pos])) ++pos;
        std::string method = statement.substr(begin, pos - begin);
        skipBlanks();
        if (method.empty() || pos >= statement.size() || statement[pos] != '(' || method == "Open") continue;
        std::string classId;
        for (const auto& element : elements)
          if (element.first == id) classId = element.second;
        calls.push_back({{0, static_cast<uint32_t>(line)},
                         DeepFinding{classId, id, statement.substr(at - kLookUp.size(), close + 1 - (at - kLookUp.size())),
                                     path, static_cast<uint32_t>(line + 1), method, "getObject"}});
      }
    }
  } catch (const std::exception& error) {
    return DeepResult{{}, {std::string("deep analysis stopped: ") + error.what()}};
  }
  return Report(std::move(calls), {}, isDocumented);
}

}  // namespace tarvo_deep
