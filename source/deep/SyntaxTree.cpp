#include "deep/SyntaxTree.h"

namespace tarvo_deep {

namespace {
struct ParserDeleter {
  void operator()(TSParser* parser) const { ts_parser_delete(parser); }
};
}  // namespace

TreePtr ParseRange(const TSLanguage* language, const std::string& text, const TSNode* rangeNode) {
  std::unique_ptr<TSParser, ParserDeleter> parser(ts_parser_new());
  if (!parser || !ts_parser_set_language(parser.get(), language)) return TreePtr();
  if (rangeNode) {
    TSRange range{ts_node_start_point(*rangeNode), ts_node_end_point(*rangeNode),
                  ts_node_start_byte(*rangeNode), ts_node_end_byte(*rangeNode)};
    if (!ts_parser_set_included_ranges(parser.get(), &range, 1)) return TreePtr();
  }
  // A hostile input could make the parser's error recovery slow: bound it.
  ts_parser_set_timeout_micros(parser.get(), 20u * 1000u * 1000u);
  return TreePtr(ts_parser_parse_string(parser.get(), nullptr, text.data(), static_cast<uint32_t>(text.size())));
}

std::string StringValue(const std::string& text, TSNode node) {
  if (!Is(node, "string")) return std::string();
  std::string raw = NodeText(text, node);
  if (raw.size() < 2) return std::string();
  return raw.substr(1, raw.size() - 2);
}

TSNode FirstArgument(TSNode call) {
  TSNode args = Field(call, "arguments");
  if (ts_node_is_null(args) || ts_node_named_child_count(args) == 0) return TSNode{};
  return ts_node_named_child(args, 0);
}

}  // namespace tarvo_deep
