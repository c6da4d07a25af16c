// Script function blocks and the function headers with bodies inside them.
//
// Each `function` keyword gives a block that starts up to 100 bytes before it
// and ends where the braces after its parameter list balance; the function
// pattern then finds the headers in the block, and each header's body runs
// to the brace that balances it. Brace balance is answered from an index of
// brace levels built once per text, so unbalanced keywords cost no rescan.
#include <algorithm>
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

bool firstAfter(const std::vector<size_t>& positions, size_t after, size_t* found) {
  auto it = std::upper_bound(positions.begin(), positions.end(), after);
  if (it == positions.end()) return false;
  *found = *it;
  return true;
}

}  // namespace

FunctionBlockCutter::FunctionBlockCutter(const char* text, size_t length) : text_(text), length_(length) {
  int64_t level = 0;
  for (size_t i = 0; i < length; ++i) {
    switch (text[i]) {
      case '(':
        openParens_.push_back(i);
        break;
      case ')':
        closeParens_.push_back(i);
        break;
      case '{':
      case '}':
        level += (text[i] == '{') ? 1 : -1;
        bracePositions_.push_back(i);
        braceLevelAfter_.push_back(level);
        byLevel_.emplace_back(level, i);
        break;
      default:
        break;
    }
  }
  std::sort(byLevel_.begin(), byLevel_.end());
}

int64_t FunctionBlockCutter::levelBefore(size_t position) const {
  auto it = std::lower_bound(bracePositions_.begin(), bracePositions_.end(), position);
  if (it == bracePositions_.begin()) return 0;
  return braceLevelAfter_[static_cast<size_t>(it - bracePositions_.begin()) - 1];
}

// Counting `{` and `}` from `from`, both counts are first positive and equal
// at the first brace after which the level is back where it was before
// `from`: the first brace moves the level away, so a return needs both kinds.
bool FunctionBlockCutter::firstReturn(size_t from, size_t* at) const {
  int64_t base = levelBefore(from);
  auto it = std::lower_bound(byLevel_.begin(), byLevel_.end(), std::make_pair(base, from));
  if (it == byLevel_.end() || it->first != base) return false;
  *at = it->second;
  return true;
}

bool FunctionBlockCutter::bodyEnd(size_t from, size_t limit, size_t* last) const {
  size_t at = 0;
  if (!firstReturn(from, &at) || at > limit) return false;
  *last = at;
  return true;
}

void FunctionBlockCutter::forEachBlock(const std::function<bool(const Block&)>& visit) const {
  if (length_ < kKeywordLength) return;
  for (size_t p = 0; p + kKeywordLength <= length_; ++p) {
    const void* hit = std::memchr(text_ + p, kKeyword[0], length_ - kKeywordLength + 1 - p);
    if (hit == nullptr) break;
    p = static_cast<size_t>(static_cast<const char*>(hit) - text_);
    if (std::memcmp(text_ + p, kKeyword, kKeywordLength) != 0) continue;
    // Braces count only once both a `(` and a `)` have been seen after p.
    size_t open = 0;
    size_t close = 0;
    if (!firstAfter(openParens_, p, &open) || !firstAfter(closeParens_, p, &close)) continue;
    size_t end = 0;
    if (!firstReturn(std::max(open, close) + 1, &end)) continue;
    size_t first = (p > kBlockLookBack) ? p - kBlockLookBack : 0;
    if (!visit(Block{first, end})) return;
  }
}

std::vector<Block> FunctionBlockCutter::blocks() const {
  std::vector<Block> out;
  forEachBlock([&](const Block& block) {
    out.push_back(block);
    return true;
  });
  return out;
}

void collectFunctionBlocks(const char* text, size_t length, const std::string& path,
                           std::vector<FlashFunctionInfo*>& functionList) {
  FunctionBlockCutter cutter(text, length);
  size_t blockBytes = 0;
  size_t bodyBytes = 0;
  bool full = false;
  cutter.forEachBlock([&](const Block& block) {
    size_t size = block.last - block.first + 1;
    if (size > kMaxBlockBytesPerFile - blockBytes) return false;
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
}

}  // namespace sourcescan
}  // namespace FlashEngine_1_00
