// Where a symbol first occurs in a cleaned source, and on which line: for one
// symbol at a time, and for many symbols in one pass over the source.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace FlashEngine_1_00 {

// The part of a symbol that is looked for: its leading bytes outside '0'..'z'
// (blanks, quotes, '(' and the like) are skipped, unless nothing would be left.
std::string SymbolNeedle(const std::string& symbol);

// 1-based line of `position` in `source`: one plus the line feeds at positions
// 1 to `position`, counted no further than the first zero byte.
int LineOfPosition(const std::string& source, size_t position);

// Line of the first occurrence of `symbol`'s needle in `source`: -1 without a
// source, 0 when the needle does not occur.
int LineOfFirstOccurrence(const std::string* source, const std::string& symbol);

// Lines of the first occurrences of many needles in one text, found in one
// pass over the text (an Aho-Corasick automaton), so that looking up every call
// of a large file costs about as much as reading the file once.
class FirstOccurrenceLines {
 public:
  // Adds a needle; returns its number (equal needles share one).
  size_t add(const std::string& needle);
  // The line of each needle's first occurrence in `text`, by number; 0 for a
  // needle that does not occur.
  std::vector<int> linesIn(const std::string& text);

 private:
  struct Node {
    int fail = 0;
    int needle = -1;      // needle that ends here
    int nextOutput = -1;  // nearest node on the fail chain where a needle ends
    int firstEdge = 0;    // children in edges_ once linked
    int edgeCount = 0;
  };
  int buildChild(int node, unsigned char byte) const;
  int child(int node, unsigned char byte) const;
  void link();

  std::vector<size_t> lengths_;  // of each needle
  std::vector<Node> nodes_ = std::vector<Node>(1);
  std::vector<std::vector<std::pair<unsigned char, int>>> children_ =
      std::vector<std::vector<std::pair<unsigned char, int>>>(1);
  std::vector<std::pair<unsigned char, int>> edges_;  // every node's children, contiguous
  bool linked_ = false;
};

}  // namespace FlashEngine_1_00
