#include "APICheckEngine/FirstOccurrences.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <utility>

namespace FlashEngine_1_00 {

namespace {

bool skippedLead(unsigned char byte) { return byte < '0' || byte > 'z'; }

// Line feeds at positions 1 .. end-1 of `source`, `from` being where a
// previous count stopped (at least 1).
size_t countLineFeeds(const std::string& source, size_t from, size_t end) {
  if (end <= from) return 0;
  return static_cast<size_t>(std::count(source.begin() + static_cast<std::ptrdiff_t>(from),
                                        source.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
}

// End (exclusive) of the counted prefix for an occurrence at `position`: the
// prefix through `position`, read as a C string.
size_t countedEnd(const std::string& source, size_t position) {
  const void* zero = std::memchr(source.data(), '\0', std::min(position + 1, source.size()));
  return zero ? static_cast<size_t>(static_cast<const char*>(zero) - source.data()) : position + 1;
}

}  // namespace

std::string SymbolNeedle(const std::string& symbol) {
  size_t skip = 0;
  while (skip < symbol.size() && skippedLead(static_cast<unsigned char>(symbol[skip]))) ++skip;
  return skip == symbol.size() ? symbol : symbol.substr(skip);
}

int LineOfPosition(const std::string& source, size_t position) {
  return 1 + static_cast<int>(countLineFeeds(source, 1, countedEnd(source, position)));
}

int LineOfFirstOccurrence(const std::string* source, const std::string& symbol) {
  if (source == nullptr) return -1;
  // memmem skips ahead where a plain find steps byte by byte.
  std::string needle = SymbolNeedle(symbol);
  const void* hit = memmem(source->data(), source->size(), needle.data(), needle.size());
  if (hit == nullptr) return 0;
  return LineOfPosition(*source, static_cast<size_t>(static_cast<const char*>(hit) - source->data()));
}

size_t FirstOccurrenceLines::add(const std::string& needle) {
  int node = 0;
  for (unsigned char byte : needle) {
    int next = buildChild(node, byte);
    if (next < 0) {
      next = static_cast<int>(nodes_.size());
      nodes_.emplace_back();
      children_.emplace_back();
      children_[static_cast<size_t>(node)].emplace_back(byte, next);
    }
    node = next;
  }
  Node& end = nodes_[static_cast<size_t>(node)];
  if (end.needle >= 0) return static_cast<size_t>(end.needle);  // an equal needle ends here
  end.needle = static_cast<int>(lengths_.size());
  lengths_.push_back(needle.size());
  linked_ = false;
  return lengths_.size() - 1;
}

int FirstOccurrenceLines::buildChild(int node, unsigned char byte) const {
  for (const auto& edge : children_[static_cast<size_t>(node)]) {
    if (edge.first == byte) return edge.second;
  }
  return -1;
}

int FirstOccurrenceLines::child(int node, unsigned char byte) const {
  const Node& from = nodes_[static_cast<size_t>(node)];
  for (int e = from.firstEdge; e < from.firstEdge + from.edgeCount; ++e) {
    if (edges_[static_cast<size_t>(e)].first == byte) return edges_[static_cast<size_t>(e)].second;
  }
  return -1;
}

// Lays the children out in one array and sets the fail and output links,
// breadth first.
void FirstOccurrenceLines::link() {
  if (linked_) return;
  edges_.clear();
  for (size_t node = 0; node < nodes_.size(); ++node) {
    nodes_[node].firstEdge = static_cast<int>(edges_.size());
    nodes_[node].edgeCount = static_cast<int>(children_[node].size());
    edges_.insert(edges_.end(), children_[node].begin(), children_[node].end());
  }
  std::deque<int> queue;
  for (const auto& edge : children_[0]) {
    nodes_[static_cast<size_t>(edge.second)].fail = 0;
    nodes_[static_cast<size_t>(edge.second)].nextOutput = -1;
    queue.push_back(edge.second);
  }
  while (!queue.empty()) {
    int node = queue.front();
    queue.pop_front();
    for (const auto& edge : children_[static_cast<size_t>(node)]) {
      int fail = nodes_[static_cast<size_t>(node)].fail;
      int target = child(fail, edge.first);
      while (target < 0 && fail != 0) {
        fail = nodes_[static_cast<size_t>(fail)].fail;
        target = child(fail, edge.first);
      }
      Node& next = nodes_[static_cast<size_t>(edge.second)];
      next.fail = target < 0 ? 0 : target;
      const Node& failNode = nodes_[static_cast<size_t>(next.fail)];
      next.nextOutput = failNode.needle >= 0 ? next.fail : failNode.nextOutput;
      queue.push_back(edge.second);
    }
  }
  linked_ = true;
}

std::vector<int> FirstOccurrenceLines::linesIn(const std::string& text) {
  link();
  const size_t npos = std::string::npos;
  std::vector<size_t> first(lengths_.size(), npos);
  size_t pending = lengths_.size();
  if (nodes_[0].needle >= 0) {  // the empty needle occurs at the start
    first[static_cast<size_t>(nodes_[0].needle)] = 0;
    --pending;
  }

  // Root transitions are looked up for most bytes: keep them in a table.
  int fromRoot[256];
  std::fill(std::begin(fromRoot), std::end(fromRoot), 0);
  for (const auto& edge : children_[0]) fromRoot[edge.first] = edge.second;

  int state = 0;
  for (size_t i = 0; i < text.size() && pending > 0; ++i) {
    unsigned char byte = static_cast<unsigned char>(text[i]);
    int next = -1;
    while (state != 0 && (next = child(state, byte)) < 0) state = nodes_[static_cast<size_t>(state)].fail;
    state = state == 0 ? fromRoot[byte] : next;
    const Node& here = nodes_[static_cast<size_t>(state)];
    for (int out = here.needle >= 0 ? state : here.nextOutput; out >= 0;
         out = nodes_[static_cast<size_t>(out)].nextOutput) {
      size_t id = static_cast<size_t>(nodes_[static_cast<size_t>(out)].needle);
      if (first[id] == npos) {
        first[id] = i + 1 - lengths_[id];
        --pending;
      }
    }
  }

  // Lines in one forward count over the occurrences in text order.
  std::vector<std::pair<size_t, size_t>> found;
  for (size_t id = 0; id < first.size(); ++id) {
    if (first[id] != npos) found.emplace_back(first[id], id);
  }
  std::sort(found.begin(), found.end());
  std::vector<int> lines(lengths_.size(), 0);
  const void* zero = std::memchr(text.data(), '\0', text.size());
  const size_t firstZero = zero ? static_cast<size_t>(static_cast<const char*>(zero) - text.data()) : npos;
  size_t counted = 1;
  size_t lineFeeds = 0;
  for (const auto& occurrence : found) {
    // The counted prefix never shrinks as the occurrences move on.
    size_t end = std::min(occurrence.first + 1, firstZero);
    if (end > counted) {
      lineFeeds += countLineFeeds(text, counted, end);
      counted = end;
    }
    lines[occurrence.second] = 1 + static_cast<int>(lineFeeds);
  }
  return lines;
}

}  // namespace FlashEngine_1_00
