// The first, cheap pass over one cleaned web source: text excerpts around
// element look-ups, and script function blocks. Used by FirstScanSource.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"

namespace FlashEngine_1_00 {
namespace sourcescan {

// Limits that keep hostile sources from growing the lists or the work
// without bound (see docs/design.md). Real applications stay far below them.
constexpr size_t kMaxAccessRecordsPerFile = 500000;
constexpr size_t kMaxBlockBytesPerFile = size_t(128) << 20;
constexpr size_t kMaxBodyBytesPerFile = size_t(128) << 20;

constexpr size_t kExcerptWidth = 430;
constexpr size_t kBlockLookBack = 100;

// One excerpt: `length` bytes from `first`.
struct Excerpt {
  size_t first;
  size_t length;
  bool operator==(const Excerpt& other) const { return first == other.first && length == other.length; }
};

// Calls `visit` with the excerpt of every `$`/`document` hit of the
// `length` bytes of `text`, in text order.
void forEachExcerpt(const char* text, size_t length, const std::function<void(const Excerpt&)>& visit);
std::vector<Excerpt> findExcerpts(const std::string& text);

// One function block: the bytes from `first` through `last`.
struct Block {
  size_t first;
  size_t last;
  bool operator==(const Block& other) const { return first == other.first && last == other.last; }
};

// Finds the blocks of every `function` keyword of `text` and the headers and
// bodies inside them. Built once per text; answers each query without
// rescanning the text.
class FunctionBlockCutter {
 public:
  FunctionBlockCutter(const char* text, size_t length);

  // Calls `visit` with each block in keyword order until it returns false.
  void forEachBlock(const std::function<bool(const Block&)>& visit) const;

  // The last byte of the body that starts at `from` when its braces balance
  // at or before `limit`; false otherwise.
  bool bodyEnd(size_t from, size_t limit, size_t* last) const;

 private:
  // First brace at or after `from` at which the brace level returns to the
  // level that holds just before `from`.
  bool firstReturn(size_t from, size_t* at) const;
  int64_t levelBefore(size_t position) const;
  // First text chunk at or after `chunk` whose brace levels satisfy `holds`
  // (given the lowest and highest level after a brace in it), or kNone.
  template <typename Holds>
  size_t firstChunk(size_t chunk, Holds holds) const;

  static constexpr size_t kChunk = 128;  // text bytes per chunk
  static constexpr size_t kNone = static_cast<size_t>(-1);

  const char* text_;
  size_t length_;
  size_t chunks_;                      // length_ / kChunk + 1
  std::vector<int64_t> levelAtChunk_;  // level before each chunk's first byte
  // A tree over the chunks (leaf i at leaves_ + i): lowest and highest level
  // after any brace below each node; a chunk without braces holds an empty
  // range (INT64_MAX, INT64_MIN).
  size_t leaves_;
  std::vector<int64_t> lowest_;
  std::vector<int64_t> highest_;
};

// Appends a record (scope "Global", this path) for every match of the DOM
// access pattern in every excerpt of `text` to `accessList`, and for every
// match of the embeds pattern to `embedsList`. Returns false when the record
// limit left part of the text unexamined.
bool collectAccessExpressions(const char* text, size_t length, const std::string& path,
                              std::vector<SWFStateMentInfo*>& accessList, std::vector<SWFStateMentInfo*>& embedsList);

// Appends a FlashFunctionInfo for every function header with a balanced body
// in every function block of `text`. Returns false when a byte limit left
// part of the text unexamined.
bool collectFunctionBlocks(const char* text, size_t length, const std::string& path,
                           std::vector<FlashFunctionInfo*>& functionList);

}  // namespace sourcescan
}  // namespace FlashEngine_1_00
