// Pieces shared by the pattern compiler and the matcher, not exported.
#pragma once

#include <cstdint>

#include "tarvo/trex.h"

namespace trex {

// Marks an unused operand or the end of a sequence.
constexpr int32_t kNone = -1;

// A repeat bound of 65535 means "no upper bound".
constexpr uint32_t kUnbounded = 0xFFFF;

// Groups may nest this deep in a pattern; a deeper pattern does not compile.
// Keeps the recursive compiler's stack bounded whatever the pattern.
constexpr int kMaxGroupNesting = 200;

// The matcher recurses at most this deep (groups, repeats trying the element
// that follows them, ...); a match attempt that would go deeper fails, and so
// does the whole match or search.
constexpr int kMaxMatchDepth = 1000;

// Longest pattern that compiles: keeps node indices far inside 32 bits.
constexpr uint32_t kMaxPatternLength = 1u << 26;

// Repeat bounds share the node's right operand: min in the upper, max in the
// lower 16 bits.
inline int32_t packBounds(uint32_t min, uint32_t max) {
  return static_cast<int32_t>(((min & 0xFFFFu) << 16) | (max & 0xFFFFu));
}
inline uint32_t repeatMin(const TrexNode& node) { return (static_cast<uint32_t>(node.right) >> 16) & 0xFFFFu; }
inline uint32_t repeatMax(const TrexNode& node) { return static_cast<uint32_t>(node.right) & 0xFFFFu; }

// The sixteen letters that name a character class after a backslash.
bool isClassLetter(unsigned char letter);
// Whether `byte` belongs to the class named by `letter`.
bool classLetterMatches(int32_t letter, unsigned char byte);

// Caps the node visits of each later trex_match/trex_search/trex_searchrange
// call (0, the default, means no cap); a call that reaches the cap fails.
// Only for harnesses that must bound the time spent on arbitrary patterns.
void setMatchStepLimit(uint64_t steps);

// Whether the matcher reuses the end of a run measured from an earlier start
// (on by default; see matchRepeat). Only for harnesses that compare answers
// with and without it.
void setRunReuse(bool on);

// True when the last trex_match/trex_search/trex_searchrange call stopped at
// the depth or step cap.
bool lastCallAborted();

}  // namespace trex
