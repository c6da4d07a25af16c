// Matches a compiled expression by recursive descent over its node array.
//
// Repetition does not backtrack: a repeat stops as soon as the element after
// it matches, and never hands rounds back. An alternation commits to the
// first alternative that matches by itself.
//
// Bounds: the subject is [begin, end) and the byte at end (the terminator of
// a C string) may be read and consumed, so a match can end one byte past the
// subject. Nothing further is ever read: an element that would consume a byte
// beyond the terminator fails instead.
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>

#include "APICheckEngine/Visibility.h"
#include "regex/TrexInternal.h"
#include "tarvo/trex.h"

extern "C" {
TARVO_EXPORT const char* g_limitAddress = nullptr;
}

namespace {

using trex::kNone;

uint64_t g_stepLimit = 0;
bool g_runReuse = true;

// Rounds an unbounded repeat runs at most.
constexpr uint32_t kMaxRounds = trex::kUnbounded + 1;
bool g_lastAborted = false;

// Node kinds that consume exactly one byte and record nothing.
bool consumesOneByte(int32_t kind) {
  return kind < 256 || kind == TREX_NODE_ANY || kind == TREX_NODE_CLASS || kind == TREX_NODE_CLASS_NEGATED ||
         kind == TREX_NODE_CLASS_ESCAPE;
}

class Matcher {
 public:
  Matcher(TrexExpression* e, const char* begin, const char* end)
      : e_(e), nodes_(e->nodes), begin_(begin), end_(end), stepLimit_(g_stepLimit) {
    e->subjectBegin = begin;
    e->subjectEnd = end;
    g_lastAborted = false;
  }
  ~Matcher() { g_lastAborted = aborted_; }

  // One attempt at `at`: the end of the match, or null.
  const char* attempt(const char* at) {
    e_->groupCounter = 0;
    return match(e_->firstNode, at, kNone);
  }

  // Set once the depth or step cap was reached; every later answer is "no".
  bool aborted() const { return aborted_; }

 private:
  const char* match(int32_t index, const char* at, int32_t continuation) {
    if (aborted_) return nullptr;
    if (depth_ >= trex::kMaxMatchDepth || (stepLimit_ != 0 && ++steps_ > stepLimit_)) {
      aborted_ = true;
      return nullptr;
    }
    ++depth_;
    const char* result = matchNode(nodes_[index], at, continuation);
    --depth_;
    return aborted_ ? nullptr : result;
  }

  const char* matchNode(const TrexNode& node, const char* at, int32_t continuation) {
    switch (node.kind) {
      case TREX_NODE_REPEAT: return matchRepeat(node, at, continuation);
      case TREX_NODE_ALTERNATION: return matchAlternation(&node, at);
      case TREX_NODE_GROUP:
      case TREX_NODE_GROUP_NOCAPTURE: return matchGroup(node, at, continuation);
      case TREX_NODE_BEGIN: return at == begin_ ? at : nullptr;
      case TREX_NODE_END: return at == end_ ? at : nullptr;
      case TREX_NODE_BOUNDARY:
        if (at > end_) return nullptr;
        return (isBoundary(at) == (node.left == 'b')) ? at : nullptr;
      default:
        if (at > end_) return nullptr;
        return matchesByte(node, static_cast<unsigned char>(*at)) ? at + 1 : nullptr;
    }
  }

  bool matchesByte(const TrexNode& node, unsigned char byte) const {
    switch (node.kind) {
      case TREX_NODE_ANY: return true;
      case TREX_NODE_CLASS_ESCAPE: return trex::classLetterMatches(node.left, byte);
      case TREX_NODE_CLASS: return classHas(node.left, byte);
      case TREX_NODE_CLASS_NEGATED: return !classHas(node.left, byte);
      default: return node.kind == byte;
    }
  }

  bool classHas(int32_t item, unsigned char byte) const {
    for (; item != kNone; item = nodes_[item].next) {
      const TrexNode& node = nodes_[item];
      switch (node.kind) {
        case TREX_NODE_RANGE:
          if (node.left <= byte && byte <= node.right) return true;
          break;
        case TREX_NODE_CLASS_ESCAPE:
          if (trex::classLetterMatches(node.left, byte)) return true;
          break;
        default:
          if (node.kind == byte) return true;
          break;
      }
    }
    return false;
  }

  // White space meeting non-white space, judged at `at` and the byte after.
  // At the terminator the byte after it is not read; it counts as non-white.
  bool isBoundary(const char* at) const {
    bool space = isSpace(at);
    if (at == begin_ && !space) return true;
    if (at == end_ && at > begin_ && !isSpace(at - 1)) return true;
    bool nextSpace = at < end_ && isSpace(at + 1);
    return space != nextSpace;
  }

  static bool isSpace(const char* at) { return std::isspace(static_cast<unsigned char>(*at)) != 0; }

  // Captures on the first entry of the attempt only (the running counter
  // equals the group's number exactly once); a failure clears what this entry
  // recorded.
  const char* matchGroup(const TrexNode& node, const char* at, int32_t continuation) {
    int32_t captured = kNone;
    if (node.kind == TREX_NODE_GROUP && node.right == e_->groupCounter) {
      captured = node.right;
      e_->subMatches[captured].begin = at;
      ++e_->groupCounter;
    }
    const char* cursor = at;
    for (int32_t index = node.left; index != kNone; index = nodes_[index].next) {
      int32_t next = nodes_[index].next;
      cursor = match(index, cursor, next != kNone ? next : continuation);
      if (cursor == nullptr) {
        if (captured != kNone) e_->subMatches[captured] = TrexSubMatch{nullptr, 0};
        return nullptr;
      }
    }
    if (captured != kNone) e_->subMatches[captured].len = static_cast<int>(cursor - at);
    return cursor;
  }

  // An alternative's nodes one after the other, without a continuation.
  const char* matchAlternative(int32_t index, const char* at) {
    for (; index != kNone && at != nullptr; index = nodes_[index].next) at = match(index, at, kNone);
    return at;
  }

  // a|b|c nests to the right; the right-hand chain is walked in a loop.
  const char* matchAlternation(const TrexNode* node, const char* at) {
    for (;;) {
      if (const char* result = matchAlternative(node->left, at)) return result;
      if (aborted_) return nullptr;
      const TrexNode& right = nodes_[node->right];
      if (right.kind != TREX_NODE_ALTERNATION) return matchAlternative(node->right, at);
      node = &right;
    }
  }

  const char* matchRepeat(const TrexNode& node, const char* at, int32_t continuation) {
    const uint32_t min = trex::repeatMin(node);
    const uint32_t max = trex::repeatMax(node);
    auto acceptable = [min, max](uint32_t count) {
      return count >= min && (count <= max || max == trex::kUnbounded);
    };
    const int32_t stop = node.next != kNone ? node.next : continuation;
    // A following repeat that may match nothing would always stop this one
    // at once, so it is not consulted.
    const bool tryStop =
        stop != kNone && !(nodes_[stop].kind == TREX_NODE_REPEAT && trex::repeatMin(nodes_[stop]) == 0);
    int32_t stopContinuation = kNone;
    if (tryStop) {
      stopContinuation = nodes_[stop].next;
      if (stopContinuation == kNone && continuation != kNone) stopContinuation = nodes_[continuation].next;
    }

    // An unbounded repeat of a one-byte element that never consults its stop
    // node simply takes the run of matching bytes that starts at `at`, at most
    // kMaxRounds of them. The run from any start inside a run measured before
    // ends where that run ended (or at the round cap), so each run is measured
    // once per search instead of once per start position: a search over a
    // long word stays linear.
    const TrexNode& element = nodes_[node.left];
    const bool reusable = g_runReuse && !tryStop && max == trex::kUnbounded && consumesOneByte(element.kind);
    const int32_t self = static_cast<int32_t>(&node - nodes_);
    RunEnd* known = reusable ? runFor(self) : nullptr;
    if (known != nullptr && known->node == self && known->from < at && at < known->to) {
      const uint32_t rounds = static_cast<uint32_t>(std::min<ptrdiff_t>(known->to - at, kMaxRounds));
      return acceptable(rounds) ? at + rounds : nullptr;
    }

    uint32_t count = 0;
    const char* cursor = at;
    while (count < max || count == trex::kUnbounded) {
      const char* after = match(node.left, cursor, stop);
      if (after == nullptr) break;
      ++count;
      cursor = after;
      if (tryStop && match(stop, cursor, stopContinuation) != nullptr && acceptable(count)) break;
      if (cursor >= end_) break;
    }
    if (aborted_) return nullptr;
    // An empty run has nothing to offer later starts; storing it would only
    // push out the run it ends (the repeat is often entered again right where
    // its last run stopped).
    if (known != nullptr && count > 0) {
      // Where the matching bytes really end: past the round cap when it cut
      // the run short, for the later starts that reach further.
      const char* runEnd = cursor;
      if (count == kMaxRounds) {
        while (runEnd < end_ && matchesByte(element, static_cast<unsigned char>(*runEnd))) ++runEnd;
      }
      *known = RunEnd{self, at, runEnd};
    }
    if (!acceptable(count)) return nullptr;
    return cursor;
  }

  // Where the run of a repeat node measured from `from` ended.
  struct RunEnd {
    int32_t node = kNone;
    const char* from = nullptr;
    const char* to = nullptr;
  };
  // The slot that holds (or will hold) the run of repeat node `self`: each
  // node keeps its own slot while there are enough; beyond that, slots are
  // taken over in turn.
  RunEnd* runFor(int32_t self) {
    for (uint32_t slot = 0; slot < usedRuns_; ++slot) {
      if (runs_[slot].node == self) return &runs_[slot];
    }
    if (usedRuns_ < kRunSlots) return &runs_[usedRuns_++];
    return &runs_[nextEvicted_++ % kRunSlots];
  }
  static constexpr uint32_t kRunSlots = 16;
  RunEnd runs_[kRunSlots];
  uint32_t usedRuns_ = 0;
  uint32_t nextEvicted_ = 0;

  TrexExpression* e_;
  const TrexNode* nodes_;
  const char* begin_;
  const char* end_;
  uint64_t stepLimit_;
  uint64_t steps_ = 0;
  int depth_ = 0;
  bool aborted_ = false;
};

}  // namespace

namespace trex {
void setMatchStepLimit(uint64_t steps) { g_stepLimit = steps; }
void setRunReuse(bool on) { g_runReuse = on; }
bool lastCallAborted() { return g_lastAborted; }
}  // namespace trex

extern "C" {

TARVO_EXPORT int trex_match(TrexExpression* exp, const char* text) {
  if (exp == nullptr || text == nullptr) return 0;
  const char* end = text + std::strlen(text);
  Matcher matcher(exp, text, end);
  return matcher.attempt(text) == end ? 1 : 0;
}

TARVO_EXPORT int trex_searchrange(TrexExpression* exp, const char* begin, const char* end, const char** out_begin,
                                  const char** out_end) {
  if (exp == nullptr || begin == nullptr || end == nullptr || begin >= end) return 0;
  Matcher matcher(exp, begin, end);
  // The last start tried is end - 1: an empty match at end is never found.
  for (const char* start = begin; start < end && !matcher.aborted(); ++start) {
    if (const char* stop = matcher.attempt(start)) {
      if (out_begin != nullptr) *out_begin = start;
      if (out_end != nullptr) *out_end = stop;
      return 1;
    }
  }
  return 0;
}

TARVO_EXPORT int trex_search(TrexExpression* exp, const char* text, const char** out_begin, const char** out_end) {
  if (text == nullptr) return 0;
  const char* end = text + std::strlen(text);
  g_limitAddress = end;
  return trex_searchrange(exp, text, end, out_begin, out_end);
}

TARVO_EXPORT int trex_getsubexpcount(TrexExpression* exp) { return exp == nullptr ? 0 : exp->groupCount; }

TARVO_EXPORT int trex_getsubexp(TrexExpression* exp, int n, TrexSubMatch* sub) {
  if (exp == nullptr || n < 0 || n >= exp->groupCount) return 0;
  if (sub != nullptr) *sub = exp->subMatches[n];
  return 1;
}

}  // extern "C"
