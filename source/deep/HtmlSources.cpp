#include "deep/HtmlSources.h"

#include <cctype>

namespace tarvo_deep {

namespace {

// The value node of an attribute (inside the quotes when quoted), or null.
TSNode AttributeValue(TSNode attribute) {
  for (uint32_t i = 0; i < ts_node_named_child_count(attribute); ++i) {
    TSNode child = ts_node_named_child(attribute, i);
    if (Is(child, "attribute_value")) return child;
    if (Is(child, "quoted_attribute_value"))
      return ts_node_named_child_count(child) ? ts_node_named_child(child, 0) : TSNode{};
  }
  return TSNode{};
}

void ReadStartTag(const std::string& text, TSNode tag, HtmlPage& page) {
  std::string tagName, id, classId;
  for (uint32_t i = 0; i < ts_node_named_child_count(tag); ++i) {
    TSNode child = ts_node_named_child(tag, i);
    if (Is(child, "tag_name")) tagName = Lower(NodeText(text, child));
    if (!Is(child, "attribute")) continue;
    std::string name = Lower(NodeText(text, ts_node_named_child(child, 0)));
    TSNode value = AttributeValue(child);
    if (ts_node_is_null(value)) continue;
    if (name == "id") id = NodeText(text, value);
    if (name == "classid") classId = PluginClassId(NodeText(text, value));
    if (name.size() > 2 && name.compare(0, 2, "on") == 0) page.scripts.push_back(value);
  }
  if (tagName == "object" && !classId.empty()) page.elements.push_back(PluginElement{id, classId});
}

}  // namespace

bool IsHtmlPath(const std::string& path) {
  size_t dot = path.rfind('.');
  std::string extension = dot == std::string::npos ? std::string() : Lower(path.substr(dot + 1));
  return extension == "html" || extension == "htm";
}

HtmlPage ReadHtmlPage(const std::string& text) {
  HtmlPage page;
  page.tree = ParseRange(tree_sitter_html(), text, nullptr);
  if (!page.tree) return page;
  TSTreeCursor cursor = ts_tree_cursor_new(ts_tree_root_node(page.tree.get()));
  uint32_t depth = 0;
  for (;;) {
    TSNode node = ts_tree_cursor_current_node(&cursor);
    if (Is(node, "start_tag") || Is(node, "self_closing_tag")) ReadStartTag(text, node, page);
    if (Is(node, "raw_text") && Is(ts_node_parent(node), "script_element")) page.scripts.push_back(node);
    if (depth < kMaxDeepNesting && ts_tree_cursor_goto_first_child(&cursor)) {
      ++depth;
      continue;
    }
    bool more = false;
    while (!(more = ts_tree_cursor_goto_next_sibling(&cursor)) && ts_tree_cursor_goto_parent(&cursor)) --depth;
    if (!more) break;
  }
  ts_tree_cursor_delete(&cursor);
  return page;
}

}  // namespace tarvo_deep
