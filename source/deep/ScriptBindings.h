// The binding analysis over all scripts of an application: which names,
// properties and parameters hold plug-in objects, and which calls are made
// on them.
#pragma once

#include "deep/DeepAnalysis.h"
#include "deep/SyntaxTree.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tarvo_deep {

struct PluginElement {
  std::string id;
  std::string classId;
};

struct Binding {
  std::string classId;
  std::string elementId;
  std::string kind;
};

struct Script {
  size_t source = 0;         // index into the sources
  const std::string* text = nullptr;  // the whole document the tree positions refer to
  const std::string* path = nullptr;
  TSTree* tree = nullptr;
};

class ScriptBindings {
 public:
  explicit ScriptBindings(std::vector<PluginElement> elements) : elements_(std::move(elements)) {}
  // Follows the bindings until nothing changes (a few rounds at most).
  void Bind(const std::vector<Script>& scripts, std::vector<std::string>& notes);
  // Every call on a bound value, as (source index, byte offset, finding).
  void CollectCalls(const std::vector<Script>& scripts, const std::vector<DeepSource>& sources,
                    std::vector<std::pair<std::pair<size_t, uint32_t>, DeepFinding>>& calls);

 private:
  struct Function {
    std::string scope;
    std::vector<std::string> params;
  };
  struct Created {
    std::string classId;
    std::string id;
  };
  using Path = std::vector<TSNode>;

  template <typename Visit>
  bool Walk(const Script& script, Visit visit);
  void VisitForBindings(const Script& script, const Path& path);
  std::string ScopeOf(const Script& script, TSNode function) const;
  std::string DeclareKey(const Script& script, const Path& path, const std::string& name) const;
  std::string ResolveIdentifier(const Script& script, const Path& path, const std::string& name) const;
  std::string ExprKey(const Script& script, const Path& path, TSNode node, int depth) const;
  std::string ThisName(const Script& script, const Path& path) const;
  std::string ObjectLiteralName(const Script& script, const Path& path, size_t index) const;
  const Binding* Evaluate(const Script& script, const Path& path, TSNode node, Binding& scratch, int depth) const;
  const PluginElement* ElementById(const std::string& id) const;
  const PluginElement* ElementAt(TSNode index, const std::string& text) const;
  void Assign(const std::string& key, const Binding* value);
  void NoteCreatedAttribute(const std::string& key, const std::string& name, const std::string& value);
  void DefineFunction(const Script& script, const std::string& key, TSNode function);

  std::vector<PluginElement> elements_;
  std::map<std::string, Binding> bindings_;
  std::map<std::string, Created> created_;
  std::set<std::string> declared_;
  std::map<std::string, Function> functions_;
  std::map<std::string, std::vector<std::vector<Binding>>> callSites_;
  bool changed_ = false;
};

// The class identifier of the engine's table that a classid attribute names
// ("clsid:" prefix and case ignored), or "".
std::string PluginClassId(const std::string& classidAttribute);

}  // namespace tarvo_deep
