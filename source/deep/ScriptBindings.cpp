#include "deep/ScriptBindings.h"

#include "APICheckEngine/PluginClassIds.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace tarvo_deep {

namespace {

constexpr int kMaxExpressionDepth = 64;
constexpr int kMaxRounds = 4;

bool IsFunction(TSNode node) {
  if (ts_node_is_null(node)) return false;
  char first = ts_node_type(node)[0];
  if (first != 'f' && first != 'a' && first != 'm' && first != 'g') return false;
  static const char* const kTypes[] = {"function_declaration", "function", "function_expression", "arrow_function", "method_definition",
                                       "generator_function", "generator_function_declaration"};
  for (const char* type : kTypes)
    if (Is(node, type)) return true;
  return false;
}

bool SameElement(const Binding& a, const Binding& b) { return a.classId == b.classId && a.elementId == b.elementId; }

// Methods of the element itself, not of the plug-in behind it.
bool IsElementMethod(const std::string& name) {
  static const char* const kNames[] = {"setAttribute", "getAttribute", "removeAttribute", "appendChild",
                                       "removeChild", "addEventListener", "removeEventListener", "focus", "blur",
                                       "hasOwnProperty", "toString"};
  for (const char* known : kNames)
    if (name == known) return true;
  return false;
}

// "x" or "#x" of a jQuery selector call $("#x") / jQuery("#x"), or "".
std::string JQueryId(const std::string& text, TSNode node) {
  if (!Is(node, "call_expression")) return std::string();
  std::string callee = NodeText(text, Field(node, "function"));
  if (callee != "$" && callee != "jQuery") return std::string();
  std::string selector = StringValue(text, FirstArgument(node));
  if (selector.size() < 2 || selector[0] != '#') return std::string();
  return selector.substr(1);
}

}  // namespace

std::string PluginClassId(const std::string& classidAttribute) {
  std::string value = classidAttribute;
  value.erase(0, value.find_first_not_of(" \t\r\n"));
  if (Lower(value.substr(0, 6)) == "clsid:") value.erase(0, 6);
  value.erase(value.find_last_not_of(" \t\r\n") + 1);
  for (const char* classId : FlashEngine_1_00::pluginClassIdTable)
    if (Lower(value) == Lower(classId)) return classId;
  return std::string();
}

template <typename Visit>
bool ScriptBindings::Walk(const Script& script, Visit visit) {
  TSTreeCursor cursor = ts_tree_cursor_new(ts_tree_root_node(script.tree));
  Path path{ts_tree_cursor_current_node(&cursor)};
  bool complete = true;
  for (;;) {
    visit(path);
    bool descend = path.size() < kMaxDeepNesting;
    if (!descend && ts_node_child_count(path.back()) > 0) complete = false;
    if (descend && ts_tree_cursor_goto_first_child(&cursor)) {
      path.push_back(ts_tree_cursor_current_node(&cursor));
      continue;
    }
    for (;;) {
      if (ts_tree_cursor_goto_next_sibling(&cursor)) {
        path.back() = ts_tree_cursor_current_node(&cursor);
        break;
      }
      if (!ts_tree_cursor_goto_parent(&cursor)) {
        ts_tree_cursor_delete(&cursor);
        return complete;
      }
      path.pop_back();
    }
  }
}

std::string ScriptBindings::ScopeOf(const Script& script, TSNode function) const {
  return std::to_string(script.source) + ":" + std::to_string(ts_node_start_byte(function)) + ":";
}

std::string ScriptBindings::DeclareKey(const Script& script, const Path& path, const std::string& name) const {
  for (size_t i = path.size(); i-- > 0;)
    if (IsFunction(path[i])) return ScopeOf(script, path[i]) + name;
  return name;
}

std::string ScriptBindings::ResolveIdentifier(const Script& script, const Path& path, const std::string& name) const {
  for (size_t i = path.size(); i-- > 0;) {
    if (!IsFunction(path[i])) continue;
    std::string key = ScopeOf(script, path[i]) + name;
    if (declared_.count(key)) return key;
  }
  return name;
}

std::string ScriptBindings::ObjectLiteralName(const Script& script, const Path& path, size_t index) const {
  // path[index] is an object literal; its name is where it is stored.
  if (index == 0) return std::string();
  TSNode parent = path[index - 1];
  const std::string& text = *script.text;
  std::string name;
  if (Is(parent, "variable_declarator")) {
    name = NodeText(text, Field(parent, "name"));
  } else if (Is(parent, "assignment_expression")) {
    Path outer(path.begin(), path.begin() + static_cast<long>(index - 1));
    name = ExprKey(script, outer, Field(parent, "left"), 0);
  } else if (Is(parent, "pair") && index >= 2 && Is(path[index - 2], "object")) {
    std::string owner = ObjectLiteralName(script, path, index - 2);
    if (owner.empty()) return std::string();
    std::string key = NodeText(text, Field(parent, "key"));
    if (!key.empty() && (key[0] == '"' || key[0] == '\'')) key = key.substr(1, key.size() - 2);
    name = owner + "." + key;
  }
  const std::string suffix = ".prototype";
  if (name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0)
    name.erase(name.size() - suffix.size());
  return name;
}

std::string ScriptBindings::ThisName(const Script& script, const Path& path) const {
  const std::string& text = *script.text;
  for (size_t i = path.size(); i-- > 0;) {
    TSNode node = path[i];
    if (!IsFunction(node) || Is(node, "arrow_function")) continue;
    if (Is(node, "function_declaration")) return NodeText(text, Field(node, "name"));
    if (i == 0) return std::string();
    TSNode parent = path[i - 1];
    if ((Is(parent, "pair") || Is(node, "method_definition")) && i >= 2) {
      size_t objectIndex = Is(node, "method_definition") ? i - 1 : i - 2;
      if (Is(path[objectIndex], "object")) return ObjectLiteralName(script, path, objectIndex);
    }
    if (Is(parent, "assignment_expression")) {
      // X.prototype.m = function () {...} and X.m = function () {...}: this is X.
      Path outer(path.begin(), path.begin() + static_cast<long>(i - 1));
      std::string key = ExprKey(script, outer, Field(parent, "left"), 0);
      size_t cut = key.find(".prototype.");
      if (cut != std::string::npos) return key.substr(0, cut);
      size_t dot = key.rfind('.');
      return dot == std::string::npos ? key : key.substr(0, dot);
    }
    if (Is(parent, "variable_declarator")) return NodeText(text, Field(parent, "name"));
    return std::string();
  }
  return std::string();
}

std::string ScriptBindings::ExprKey(const Script& script, const Path& path, TSNode node, int depth) const {
  if (ts_node_is_null(node) || depth > kMaxExpressionDepth) return std::string();
  const std::string& text = *script.text;
  if (Is(node, "identifier")) return ResolveIdentifier(script, path, NodeText(text, node));
  if (Is(node, "this")) return ThisName(script, path);
  if (Is(node, "parenthesized_expression") && ts_node_named_child_count(node) == 1)
    return ExprKey(script, path, ts_node_named_child(node, 0), depth + 1);
  std::string property;
  if (Is(node, "member_expression")) property = NodeText(text, Field(node, "property"));
  if (Is(node, "subscript_expression")) property = StringValue(text, Field(node, "index"));
  if (property.empty()) return std::string();
  std::string object = ExprKey(script, path, Field(node, "object"), depth + 1);
  return object.empty() ? std::string() : object + "." + property;
}

const PluginElement* ScriptBindings::ElementById(const std::string& id) const {
  for (const PluginElement& element : elements_)
    if (!id.empty() && element.id == id) return &element;
  return nullptr;
}

const PluginElement* ScriptBindings::ElementAt(TSNode index, const std::string& text) const {
  if (Is(index, "string")) return ElementById(StringValue(text, index));
  if (!Is(index, "number")) return nullptr;
  unsigned long n = std::strtoul(NodeText(text, index).c_str(), nullptr, 10);
  return n < elements_.size() ? &elements_[n] : nullptr;
}

const Binding* ScriptBindings::Evaluate(const Script& script, const Path& path, TSNode node, Binding& scratch,
                                        int depth) const {
  if (ts_node_is_null(node) || depth > kMaxExpressionDepth) return nullptr;
  const std::string& text = *script.text;
  auto found = [&](const PluginElement* element, const char* kind) -> const Binding* {
    if (!element) return nullptr;
    scratch = Binding{element->classId, element->id, kind};
    return &scratch;
  };
  if (Is(node, "parenthesized_expression") && ts_node_named_child_count(node) == 1)
    return Evaluate(script, path, ts_node_named_child(node, 0), scratch, depth + 1);
  if (Is(node, "assignment_expression")) return Evaluate(script, path, Field(node, "right"), scratch, depth + 1);
  if (Is(node, "call_expression")) {
    TSNode callee = Field(node, "function");
    std::string name = NodeText(text, callee);
    if (name == "document.getElementById")
      return found(ElementById(StringValue(text, FirstArgument(node))), "getElementById");
    if (Is(callee, "member_expression") && NodeText(text, Field(callee, "property")) == "get" &&
        NodeText(text, FirstArgument(node)) == "0")
      return found(ElementById(JQueryId(text, Field(callee, "object"))), "jquery");
    return nullptr;
  }
  if (Is(node, "subscript_expression")) {
    TSNode object = Field(node, "object"), index = Field(node, "index");
    std::string jqueryId = JQueryId(text, object);
    if (!jqueryId.empty()) return NodeText(text, index) == "0" ? found(ElementById(jqueryId), "jquery") : nullptr;
    std::string objectText = NodeText(text, object);
    if (objectText == "document.embeds") return found(ElementAt(index, text), "embeds");
    if (Is(object, "call_expression") &&
        NodeText(text, Field(object, "function")) == "document.getElementsByTagName" &&
        Lower(StringValue(text, FirstArgument(object))) == "object")
      return found(ElementAt(index, text), "getElementsByTagName");
  }
  auto bound = bindings_.find(ExprKey(script, path, node, depth + 1));
  return bound == bindings_.end() ? nullptr : &bound->second;
}

void ScriptBindings::Assign(const std::string& key, const Binding* value) {
  if (key.empty() || !value) return;
  // The first binding found stays: no name flips between elements from round to round.
  if (bindings_.emplace(key, *value).second) changed_ = true;
}

void ScriptBindings::NoteCreatedAttribute(const std::string& key, const std::string& name, const std::string& value) {
  auto it = created_.find(key);
  if (it == created_.end()) return;
  std::string attribute = Lower(name);
  if (attribute == "classid") it->second.classId = PluginClassId(value);
  if (attribute == "id") it->second.id = value;
  if (it->second.classId.empty()) return;
  if (!it->second.id.empty() && !ElementById(it->second.id))
    elements_.push_back(PluginElement{it->second.id, it->second.classId});
  Binding binding{it->second.classId, it->second.id, "createElement"};
  auto bound = bindings_.find(key);
  if (bound == bindings_.end() || bound->second.elementId != binding.elementId) {
    bindings_[key] = binding;
    changed_ = true;
  }
}

void ScriptBindings::DefineFunction(const Script& script, const std::string& key, TSNode function) {
  if (key.empty() || !IsFunction(function)) return;
  Function& defined = functions_[key];
  defined.scope = ScopeOf(script, function);
  defined.params.clear();
  TSNode params = Field(function, "parameters");
  if (ts_node_is_null(params)) params = Field(function, "parameter");
  if (Is(params, "identifier")) {
    defined.params.push_back(NodeText(*script.text, params));
    return;
  }
  for (uint32_t i = 0; !ts_node_is_null(params) && i < ts_node_named_child_count(params); ++i) {
    TSNode param = ts_node_named_child(params, i);
    defined.params.push_back(Is(param, "identifier") ? NodeText(*script.text, param) : std::string());
  }
}

void ScriptBindings::VisitForBindings(const Script& script, const Path& path) {
  TSNode node = path.back();
  const std::string& text = *script.text;
  Binding scratch;
  if (Is(node, "variable_declarator")) {
    TSNode name = Field(node, "name"), value = Field(node, "value");
    if (!Is(name, "identifier")) return;
    std::string key = DeclareKey(script, path, NodeText(text, name));
    if (key.find(':') != std::string::npos) declared_.insert(key);
    if (NodeText(text, value) == "document.createElement(\"object\")" ||
        NodeText(text, value) == "document.createElement('object')")
      created_.emplace(key, Created{});
    DefineFunction(script, key, value);
    Assign(key, Evaluate(script, path, value, scratch, 0));
  } else if (Is(node, "assignment_expression")) {
    TSNode left = Field(node, "left"), right = Field(node, "right");
    std::string key = ExprKey(script, path, left, 0);
    if (key.empty()) return;
    if (Is(left, "member_expression") && Is(right, "string")) {
      std::string owner = ExprKey(script, path, Field(left, "object"), 0);
      NoteCreatedAttribute(owner, NodeText(text, Field(left, "property")), StringValue(text, right));
    }
    if (NodeText(text, right) == "document.createElement(\"object\")" ||
        NodeText(text, right) == "document.createElement('object')")
      created_.emplace(key, Created{});
    DefineFunction(script, key, right);
    Assign(key, Evaluate(script, path, right, scratch, 0));
  } else if (Is(node, "pair") && path.size() >= 2) {
    std::string owner = ObjectLiteralName(script, path, path.size() - 2);
    if (owner.empty()) return;
    std::string key = owner + "." + NodeText(text, Field(node, "key"));
    DefineFunction(script, key, Field(node, "value"));
    Assign(key, Evaluate(script, path, Field(node, "value"), scratch, 0));
  } else if (Is(node, "function_declaration")) {
    Path outer(path.begin(), path.end() - 1);
    DefineFunction(script, DeclareKey(script, outer, NodeText(text, Field(node, "name"))), node);
  } else if (IsFunction(node)) {
    auto params = Field(node, "parameters");
    for (uint32_t i = 0; !ts_node_is_null(params) && i < ts_node_named_child_count(params); ++i) {
      TSNode param = ts_node_named_child(params, i);
      if (Is(param, "identifier")) declared_.insert(ScopeOf(script, node) + NodeText(text, param));
    }
  } else if (Is(node, "call_expression")) {
    TSNode callee = Field(node, "function");
    if (Is(callee, "member_expression") && NodeText(text, Field(callee, "property")) == "setAttribute") {
      TSNode args = Field(node, "arguments");
      if (ts_node_named_child_count(args) >= 2)
        NoteCreatedAttribute(ExprKey(script, path, Field(callee, "object"), 0),
                             StringValue(text, ts_node_named_child(args, 0)),
                             StringValue(text, ts_node_named_child(args, 1)));
    }
    std::string calleeKey = ExprKey(script, path, callee, 0);
    if (calleeKey.empty() || functions_.count(calleeKey) == 0) return;
    TSNode args = Field(node, "arguments");
    std::vector<Binding> site;
    for (uint32_t i = 0; !ts_node_is_null(args) && i < ts_node_named_child_count(args); ++i) {
      const Binding* value = Evaluate(script, path, ts_node_named_child(args, i), scratch, 0);
      site.push_back(value ? *value : Binding{});
    }
    callSites_[calleeKey].push_back(std::move(site));
  }
}

void ScriptBindings::Bind(const std::vector<Script>& scripts, std::vector<std::string>& notes) {
  for (int round = 0; round < kMaxRounds; ++round) {
    changed_ = false;
    callSites_.clear();
    for (const Script& script : scripts) {
      bool complete = Walk(script, [&](const Path& path) { VisitForBindings(script, path); });
      if (!complete && round == 0)
        notes.push_back(*script.path + ": code nested deeper than " + std::to_string(kMaxDeepNesting) +
                        " levels left out");
    }
    // A parameter holds a plug-in object when every call site passes the same one.
    for (const auto& [key, function] : functions_) {
      auto sites = callSites_.find(key);
      if (sites == callSites_.end()) continue;
      for (size_t i = 0; i < function.params.size(); ++i) {
        const Binding* agreed = nullptr;
        bool agree = !function.params[i].empty();
        for (const auto& site : sites->second) {
          if (i >= site.size() || site[i].classId.empty() || (agreed && !SameElement(*agreed, site[i]))) agree = false;
          if (!agree) break;
          agreed = &site[i];
        }
        if (!agree || !agreed) continue;
        std::string paramKey = function.scope + function.params[i];
        declared_.insert(paramKey);
        Binding binding = *agreed;
        binding.kind = "parameter";
        Assign(paramKey, &binding);
      }
    }
    if (!changed_) break;
  }
}

void ScriptBindings::CollectCalls(const std::vector<Script>& scripts, const std::vector<DeepSource>& sources,
                                  std::vector<std::pair<std::pair<size_t, uint32_t>, DeepFinding>>& calls) {
  for (const Script& script : scripts) {
    const std::string& text = *script.text;
    Walk(script, [&](const Path& path) {
      TSNode node = path.back();
      if (!Is(node, "call_expression")) return;
      TSNode callee = Field(node, "function");
      std::string method;
      if (Is(callee, "member_expression")) method = NodeText(text, Field(callee, "property"));
      if (Is(callee, "subscript_expression")) method = StringValue(text, Field(callee, "index"));
      if (method.empty() || IsElementMethod(method) || method == "Open") return;
      TSNode receiver = Field(callee, "object");
      Binding scratch;
      const Binding* bound = Evaluate(script, path, receiver, scratch, 0);
      if (!bound) return;
      std::string kind = bound->kind;
      if (method == "Execute") {
        method = StringValue(text, FirstArgument(node));
        kind = "execute";
        if (method.empty()) return;
      }
      DeepFinding finding{bound->classId, bound->elementId, NodeText(text, receiver), sources[script.source].path,
                          ts_node_start_point(node).row + 1, method, kind};
      calls.push_back({{script.source, ts_node_start_byte(node)}, std::move(finding)});
    });
  }
}

}  // namespace tarvo_deep
