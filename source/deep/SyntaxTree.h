// Parsing with Tree-sitter in bounds, and the small node helpers that the
// binding analysis uses.
#pragma once

#include <tree_sitter/api.h>

#include <cctype>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

extern "C" const TSLanguage* tree_sitter_javascript(void);
extern "C" const TSLanguage* tree_sitter_html(void);

namespace tarvo_deep {

struct TreeDeleter {
  void operator()(TSTree* tree) const { ts_tree_delete(tree); }
};
using TreePtr = std::unique_ptr<TSTree, TreeDeleter>;

// Parses text[begin, end) of a document, keeping the document's positions
// (rows and bytes), so that a script inside an HTML page has the page's lines.
TreePtr ParseRange(const TSLanguage* language, const std::string& text, const TSNode* rangeNode);

inline std::string NodeText(const std::string& text, TSNode node) {
  uint32_t begin = ts_node_start_byte(node), end = ts_node_end_byte(node);
  if (begin > end || end > text.size()) return std::string();
  return text.substr(begin, end - begin);
}

inline bool Is(TSNode node, const char* type) {
  if (ts_node_is_null(node)) return false;
  const char* name = ts_node_type(node);
  return name[0] == type[0] && std::strcmp(name, type) == 0;
}

inline TSNode Field(TSNode node, const char* name) {
  return ts_node_child_by_field_name(node, name, static_cast<uint32_t>(std::char_traits<char>::length(name)));
}

// ASCII lower case: tag, attribute and class names compare without case.
inline std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// The content of a string literal node ("x" or 'x'), or "" for anything else.
std::string StringValue(const std::string& text, TSNode node);

// The first named child of a node's argument list, or a null node.
TSNode FirstArgument(TSNode call);

}  // namespace tarvo_deep
