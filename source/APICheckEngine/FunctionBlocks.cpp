// Script function blocks and the function headers with bodies inside them.
//
// Each `function` keyword gives a block that starts up to 100 bytes before it
// and ends where the braces after its parameter list balance; the function
// pattern then finds the headers in the block, and each header's body runs
// to the brace that balances it. Brace balance is answered from a small index
// of brace levels per 128-byte chunk, built once per text, so unbalanced
// keywords cost no rescan and the index stays a fraction of the text's size.
#include <algorithm>
#include <climits>
#include <cstring>

#include "APICheckEngine/SourceScan.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {
namespace sourcescan {

namespace {

// `function name(a, b)` or `name : function (a)`.
const char* const kFunctionForm =
    R"PAT((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))PAT";

const char kKeyword[] = "function";
constexpr size_t kKeywordLength = sizeof(kKeyword) - 1;

int braceStep(char c) { return c == '{' ? 1 : (c == '}' ? -1 : 0); }

// The first `c` after a position, for positions asked in increasing order:
// each answer is kept while it still lies ahead, so the text is read once.
class NextByte {
 public:
  NextByte(const char* text, size_t length, char c) : text_(text), length_(length), c_(c) {}
  bool after(size_t position, size_t* found) {
    if (!known_ || at_ <= position) {
      if (position + 1 >= length_) return false;
      const void* hit = std::memchr(text_ + position + 1, c_, length_ - position - 1);
      if (hit == nullptr) return false;
      at_ = static_cast<size_t>(static_cast<const char*>(hit) - text_);
      known_ = true;
    }
    *found = at_;
    return true;
  }

 private:
  const char* text_;
  size_t length_;
  char c_;
  bool known_ = false;
  size_t at_ = 0;
};

}  // namespace

FunctionBlockCutter::FunctionBlockCutter(const char* text, size_t length)
    : text_(text), length_(length), chunks_(length / kChunk + 1), levelAtChunk_(chunks_) {
  leaves_ = 1;
  while (leaves_ < chunks_) leaves_ *= 2;
  lowest_.assign(2 * leaves_, INT64_MAX);
  highest_.assign(2 * leaves_, INT64_MIN);
  int64_t level = 0;
  for (size_t chunk = 0; chunk < chunks_; ++chunk) {
    levelAtChunk_[chunk] = level;
    const size_t end = std::min(length, (chunk + 1) * kChunk);
    for (size_t i = chunk * kChunk; i < end; ++i) {
      const int step = braceStep(text[i]);
      if (step == 0) continue;
      level += step;
      lowest_[leaves_ + chunk] = std::min(lowest_[leaves_ + chunk], level);
      highest_[leaves_ + chunk] = std::max(highest_[leaves_ + chunk], level);
    }
  }
  for (size_t node = leaves_ - 1; node > 0; --node) {
    lowest_[node] = std::min(lowest_[2 * node], lowest_[2 * node + 1]);
    highest_[node] = std::max(highest_[2 * node], highest_[2 * node + 1]);
  }
}

int64_t FunctionBlockCutter::levelBefore(size_t position) const {
  const size_t chunk = std::min(position / kChunk, chunks_ - 1);
  int64_t level = levelAtChunk_[chunk];
  for (size_t i = chunk * kChunk; i < position && i < length_; ++i) level += braceStep(text_[i]);
  return level;
}

template <typename Holds>
size_t FunctionBlockCutter::firstChunk(size_t chunk, Holds holds) const {
  if (chunk >= chunks_) return kNone;
  // Climb from the leaf while the part of the tree to the right of the path
  // cannot hold an answer, then descend to the leftmost leaf that does.
  size_t node = leaves_ + chunk;
  while (!holds(lowest_[node], highest_[node])) {
    while (node & 1) {  // a right child: its right neighbours are all done
      node >>= 1;
      if (node == 0) return kNone;
    }
    ++node;  // the next subtree to the right
  }
  while (node < leaves_) {
    node *= 2;
    if (!holds(lowest_[node], highest_[node])) ++node;
  }
  const size_t found = node - leaves_;
  return found < chunks_ ? found : kNone;
}

// Counting `{` and `}` from `from`, both counts are first positive and equal
// at the first brace after which the level is back where it was before
// `from`: the first brace moves the level away, so a return needs both kinds.
// The level moves one step per brace, so a chunk entered above the starting
// level holds the return exactly when its lowest level reaches it (below:
// when its highest does); chunks that cannot hold it are skipped.
bool FunctionBlockCutter::firstReturn(size_t from, size_t* at) const {
  const int64_t base = levelBefore(from);
  int64_t level = base;
  size_t chunk = std::min(from / kChunk, chunks_ - 1);
  size_t i = from;
  for (;;) {
    const size_t end = std::min(length_, (chunk + 1) * kChunk);
    for (; i < end; ++i) {
      const int step = braceStep(text_[i]);
      if (step == 0) continue;
      level += step;
      if (level == base) {
        *at = i;
        return true;
      }
    }
    if (level > base) {
      chunk = firstChunk(chunk + 1, [base](int64_t low, int64_t) { return low <= base; });
    } else if (level < base) {
      chunk = firstChunk(chunk + 1, [base](int64_t, int64_t high) { return high >= base; });
    } else {  // no brace yet: the next chunk that has one
      chunk = firstChunk(chunk + 1, [](int64_t low, int64_t high) { return low <= high; });
    }
    if (chunk == kNone) return false;
    i = chunk * kChunk;
    level = levelAtChunk_[chunk];
  }
}

bool FunctionBlockCutter::bodyEnd(size_t from, size_t limit, size_t* last) const {
  size_t at = 0;
  if (!firstReturn(from, &at) || at > limit) return false;
  *last = at;
  return true;
}

void FunctionBlockCutter::forEachBlock(const std::function<bool(const Block&)>& visit) const {
  if (length_ < kKeywordLength) return;
  NextByte nextOpen(text_, length_, '('), nextClose(text_, length_, ')');
  for (size_t p = 0; p + kKeywordLength <= length_; ++p) {
    const void* hit = std::memchr(text_ + p, kKeyword[0], length_ - kKeywordLength + 1 - p);
    if (hit == nullptr) break;
    p = static_cast<size_t>(static_cast<const char*>(hit) - text_);
    if (std::memcmp(text_ + p, kKeyword, kKeywordLength) != 0) continue;
    // Braces count only once both a `(` and a `)` have been seen after p.
    size_t open = 0;
    size_t close = 0;
    if (!nextOpen.after(p, &open) || !nextClose.after(p, &close)) continue;
    size_t end = 0;
    if (!firstReturn(std::max(open, close) + 1, &end)) continue;
    size_t first = (p > kBlockLookBack) ? p - kBlockLookBack : 0;
    if (!visit(Block{first, end})) return;
  }
}

bool collectFunctionBlocks(const char* text, size_t length, const std::string& path,
                           std::vector<FlashFunctionInfo*>& functionList) {
  FunctionBlockCutter cutter(text, length);
  size_t blockBytes = 0;
  size_t bodyBytes = 0;
  bool full = false;
  cutter.forEachBlock([&](const Block& block) {
    size_t size = block.last - block.first + 1;
    if (size > kMaxBlockBytesPerFile - blockBytes) {
      full = true;
      return false;
    }
    blockBytes += size;
    std::string blockText(text + block.first, size);
    Pattern header(kFunctionForm);
    header.forEachMatch(blockText.c_str(), [&](const char* begin, const char* end) {
      size_t bodyFirst = block.first + static_cast<size_t>(end - blockText.c_str());
      size_t bodyLast = 0;
      if (!cutter.bodyEnd(bodyFirst, block.last, &bodyLast)) return true;  // no body: header dropped
      size_t bodySize = bodyLast - bodyFirst + 1;
      if (bodySize > kMaxBodyBytesPerFile - bodyBytes) {
        full = true;
        return false;
      }
      bodyBytes += bodySize;
      FlashFunctionInfo* info = new FlashFunctionInfo;
      info->header.assign(begin, static_cast<size_t>(end - begin));
      info->body = new std::string(text + bodyFirst, bodySize);
      info->filePath = path;
      functionList.push_back(info);
      return true;
    });
    return !full;
  });
  return !full;
}

}  // namespace sourcescan
}  // namespace FlashEngine_1_00
