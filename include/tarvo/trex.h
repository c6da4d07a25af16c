// The engine's own regular-expression engine: a small, non-backtracking
// matcher in whose dialect every pattern of the engine is written.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Node kinds above the 256 literal byte values.
enum {
  TREX_NODE_REPEAT = 256,
  TREX_NODE_ALTERNATION = 257,
  TREX_NODE_GROUP = 258,
  TREX_NODE_GROUP_NOCAPTURE = 259,
  TREX_NODE_ANY = 260,
  TREX_NODE_CLASS = 261,
  TREX_NODE_CLASS_ESCAPE = 262,
  TREX_NODE_CLASS_NEGATED = 263,
  TREX_NODE_RANGE = 264,
  TREX_NODE_END = 266,
  TREX_NODE_BEGIN = 267,
  TREX_NODE_BOUNDARY = 268
};

typedef struct TrexNode {
  int32_t kind;   // literal byte 0-255 or a TREX_NODE_* kind
  int32_t left;   // first operand, -1 when unused
  int32_t right;  // second operand, -1 when unused
  int32_t next;   // following node of the same sequence, -1 at its end
} TrexNode;

typedef struct TrexSubMatch {
  const char* begin;  // null when the group took no part in the match
  int len;
} TrexSubMatch;

typedef struct TrexExpression {
  const char* subjectEnd;    // end of the current subject (null while compiling)
  const char* subjectBegin;  // start of the current subject
  const char* cursor;        // parse position in the pattern (compiling only)
  int32_t firstNode;         // always 0: the pattern is wrapped in group 0
  TrexNode* nodes;
  int32_t nodeCapacity;
  int32_t nodeCount;
  int32_t groupCount;        // group 0 included
  TrexSubMatch* subMatches;  // one per group
  int32_t groupCounter;      // running group counter of the current attempt
  void* abortJump;           // jump buffer that aborts a failed compilation
  const char** errorSlot;    // caller's error slot, may be null
} TrexExpression;

TrexExpression* trex_compile(const char* pattern, const char** error);
void trex_free(TrexExpression* exp);
int trex_match(TrexExpression* exp, const char* text);
int trex_search(TrexExpression* exp, const char* text, const char** out_begin, const char** out_end);
int trex_searchrange(TrexExpression* exp, const char* begin, const char* end, const char** out_begin,
                     const char** out_end);
int trex_getsubexpcount(TrexExpression* exp);
int trex_getsubexp(TrexExpression* exp, int n, TrexSubMatch* sub);

// The expression trex_compile is working on; null after a failed compilation.
extern TrexExpression* g_exp;
// End of the subject of the last trex_search (start plus length).
extern const char* g_limitAddress;

#ifdef __cplusplus
}
#endif
