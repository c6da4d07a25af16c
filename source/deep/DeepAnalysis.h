// Deep analysis: follows how an application's scripts bind plug-in objects
// (element look-ups, assignments, object properties, aliases, parameters) with
// a real JavaScript/HTML parser and reports every call made on a bound value
// that the documented set does not contain.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tarvo_deep {

struct DeepSource {
  std::string path;  // as shown in findings
  std::string text;  // .html/.htm files are read as HTML, anything else as JavaScript
};

struct DeepFinding {
  std::string classId;    // "MORVANE-NAVERTIX-..." (without "clsid:")
  std::string elementId;  // the element's id, or "" when it has none
  std::string receiver;   // the receiver as written, e.g. "Audio.plugin"
  std::string path;
  uint32_t line = 0;      // 1-based line of the call
  std::string method;
  std::string kind;       // how the binding was found: "getElementById", "jquery", ...
};

struct DeepResult {
  std::vector<DeepFinding> findings;  // file order as given, then position
  std::vector<std::string> notes;     // inputs that could not be examined in full
};

// The documented set is asked with the API text "<class id>#<method>".
using IsDocumented = std::function<bool(const std::string& apiText)>;

// Whole-application analysis: all sources share one global scope.
DeepResult AnalyseWebSources(const std::vector<DeepSource>& sources, const IsDocumented& isDocumented);

// Call statements of one SWF file as the decompiler prints them, one per entry.
// `elements` names the application's plug-in elements (id, class identifier),
// as AnalysePluginElements gives them; a call on an element that is not among
// them is reported with an empty class identifier.
DeepResult AnalyseSwfStatements(const std::string& path, const std::vector<std::string>& statements,
                                const std::vector<std::pair<std::string, std::string>>& elements,
                                const IsDocumented& isDocumented);

// The plug-in elements (id, class identifier) that the HTML sources declare.
std::vector<std::pair<std::string, std::string>> AnalysePluginElements(const std::vector<DeepSource>& sources);

// Largest source that is parsed; a larger one is left out with a note.
constexpr size_t kMaxDeepSourceBytes = 32u << 20;
// Deepest syntax nesting that is followed; deeper code is left out with a note.
constexpr uint32_t kMaxDeepNesting = 2000;

}  // namespace tarvo_deep
