// Compiles a pattern into the node array, reading it once from left to right.
//
// A compilation error jumps straight back into trex_compile through the jump
// buffer that the expression owns. Every parse function therefore keeps only
// plain values in its frame: nothing to destroy, nothing that could leak, and
// all memory hangs off the expression, which trex_compile releases.
#include <csetjmp>
#include <cctype>
#include <cstdlib>
#include <cstring>

#include "APICheckEngine/Visibility.h"
#include "regex/TrexInternal.h"
#include "tarvo/trex.h"

extern "C" {
TARVO_EXPORT TrexExpression* g_exp = nullptr;
}

namespace {

using trex::kNone;

const char kUnexpectedCharacter[] = "unexpected character";
const char kOutOfMemory[] = "out of memory";

[[noreturn]] void fail(TrexExpression* e, const char* message) {
  if (e->errorSlot != nullptr) *e->errorSlot = message;
  std::longjmp(*static_cast<std::jmp_buf*>(e->abortJump), 1);
}

unsigned char current(const TrexExpression* e) { return static_cast<unsigned char>(*e->cursor); }

int32_t newNode(TrexExpression* e, int32_t kind) {
  if (e->nodeCount == e->nodeCapacity) {
    int32_t capacity = e->nodeCapacity * 2;
    void* grown = std::realloc(e->nodes, sizeof(TrexNode) * static_cast<size_t>(capacity));
    if (grown == nullptr) fail(e, kOutOfMemory);
    e->nodes = static_cast<TrexNode*>(grown);
    e->nodeCapacity = capacity;
  }
  int32_t index = e->nodeCount++;
  e->nodes[index] = TrexNode{kind, kNone, kNone, kNone};
  return index;
}

int32_t newNode(TrexExpression* e, int32_t kind, int32_t left) {
  int32_t index = newNode(e, kind);
  e->nodes[index].left = left;
  return index;
}

// The byte after a backslash; the pattern may not end in a lone backslash.
unsigned char escapedByte(TrexExpression* e) {
  ++e->cursor;  // the backslash
  unsigned char byte = current(e);
  if (byte == '\0') fail(e, kUnexpectedCharacter);
  ++e->cursor;
  return byte;
}

int32_t controlEscape(unsigned char byte) {
  switch (byte) {
    case 'f': return 12;
    case 'n': return 10;
    case 'r': return 13;
    case 't': return 9;
    case 'v': return 11;
    default: return byte;
  }
}

unsigned char printableByte(TrexExpression* e) {
  unsigned char byte = current(e);
  if (!std::isprint(byte)) fail(e, "letter expected");
  ++e->cursor;
  return byte;
}

// One character: a class escape, a boundary (outside brackets), an escaped or
// a plain printable byte.
int32_t parseCharacter(TrexExpression* e, bool inClass) {
  if (current(e) != '\\') return newNode(e, printableByte(e));
  unsigned char byte = escapedByte(e);
  if (trex::isClassLetter(byte)) return newNode(e, TREX_NODE_CLASS_ESCAPE, byte);
  if (!inClass && (byte == 'b' || byte == 'B')) return newNode(e, TREX_NODE_BOUNDARY, byte);
  return newNode(e, controlEscape(byte));
}

// The upper end of a range: an escaped byte or a printable one.
int32_t parseRangeEnd(TrexExpression* e) {
  if (current(e) == '\\') return controlEscape(escapedByte(e));
  return printableByte(e);
}

// After '[': the class node, whose left is the chain of its items.
int32_t parseClass(TrexExpression* e) {
  int32_t kind = TREX_NODE_CLASS;
  if (current(e) == '^') {
    kind = TREX_NODE_CLASS_NEGATED;
    ++e->cursor;
  }
  int32_t classNode = newNode(e, kind);
  if (current(e) == ']') fail(e, "empty class");

  int32_t head = kNone;
  int32_t tail = kNone;
  auto append = [&](int32_t item) {
    if (tail == kNone) {
      head = item;
    } else {
      e->nodes[tail].next = item;
    }
    tail = item;
  };
  // The item just read, held back while a '-' may still make it a range start.
  int32_t pending = kNone;
  // Items are read until a ']' ends them; the terminator is read as an item
  // too, and fails as a byte that is not printable ("letter expected").
  while (current(e) != ']') {
    if (current(e) == '-' && pending != kNone) {
      ++e->cursor;
      if (current(e) == ']') fail(e, "unfinished range");
      int32_t range = newNode(e, TREX_NODE_RANGE);
      // The item's node index, not its byte, is held against the range end:
      // long patterns therefore refuse ranges whose end byte is below the
      // index. The two bytes are never compared with each other.
      if (pending > static_cast<int32_t>(current(e))) fail(e, "invalid range");
      if (e->nodes[pending].kind == TREX_NODE_CLASS_ESCAPE) fail(e, "cannot use character classes in ranges");
      e->nodes[range].left = e->nodes[pending].kind;
      int32_t high = parseRangeEnd(e);
      e->nodes[range].right = high;
      append(range);
      pending = kNone;
    } else {
      if (pending != kNone) append(pending);
      pending = parseCharacter(e, true);
    }
  }
  if (pending != kNone) append(pending);
  ++e->cursor;
  e->nodes[classNode].left = head;
  return classNode;
}

// At most nine digits.
uint32_t parseNumber(TrexExpression* e) {
  uint32_t value = 0;
  int digits = 0;
  while (std::isdigit(current(e))) {
    if (digits == 9) fail(e, "overflow in numeric constant");
    value = value * 10 + (current(e) - '0');
    ++digits;
    ++e->cursor;
  }
  return value;
}

// Reads one quantifier, if any, into min and max; false when there is none.
bool parseQuantifier(TrexExpression* e, uint32_t* min, uint32_t* max) {
  switch (current(e)) {
    case '+': *min = 1; *max = trex::kUnbounded; ++e->cursor; return true;
    case '*': *min = 0; *max = trex::kUnbounded; ++e->cursor; return true;
    case '?': *min = 0; *max = 1; ++e->cursor; return true;
    case '{': break;
    default: return false;
  }
  ++e->cursor;
  if (!std::isdigit(current(e))) fail(e, "number expected");
  *min = parseNumber(e);
  if (current(e) == '}') {
    *max = *min;
  } else if (current(e) == ',') {
    ++e->cursor;
    *max = std::isdigit(current(e)) ? parseNumber(e) : trex::kUnbounded;
    if (current(e) != '}') fail(e, "expected paren");
  } else {
    fail(e, ", or } expected");
  }
  ++e->cursor;
  return true;
}

int32_t parseList(TrexExpression* e, int depth);

int32_t parseGroup(TrexExpression* e, int depth) {
  int32_t group;
  if (current(e) == '?') {
    ++e->cursor;
    if (current(e) != ':') fail(e, "expected paren");
    ++e->cursor;
    group = newNode(e, TREX_NODE_GROUP_NOCAPTURE);
  } else {
    group = newNode(e, TREX_NODE_GROUP);
    e->nodes[group].right = e->groupCount++;
  }
  if (depth >= trex::kMaxGroupNesting) fail(e, kUnexpectedCharacter);
  int32_t list = parseList(e, depth + 1);
  e->nodes[group].left = list;
  if (current(e) != ')') fail(e, "expected paren");
  ++e->cursor;
  return group;
}

// One element with its quantifier, if any.
int32_t parseElement(TrexExpression* e, int depth) {
  int32_t element;
  switch (current(e)) {
    case '$': ++e->cursor; element = newNode(e, TREX_NODE_END); break;
    case '(': ++e->cursor; element = parseGroup(e, depth); break;
    case '.': ++e->cursor; element = newNode(e, TREX_NODE_ANY); break;
    case '[': ++e->cursor; element = parseClass(e); break;
    default: element = parseCharacter(e, false); break;
  }
  uint32_t min = 0;
  uint32_t max = 0;
  if (!parseQuantifier(e, &min, &max)) return element;
  int32_t repeat = newNode(e, TREX_NODE_REPEAT, element);
  e->nodes[repeat].right = trex::packBounds(min, max);
  return repeat;
}

// Elements chained through next; at least one, so an element expected at a
// ')' or '|' takes that byte literally.
int32_t parseSequence(TrexExpression* e, int depth) {
  int32_t first = parseElement(e, depth);
  int32_t last = first;
  for (;;) {
    unsigned char byte = current(e);
    if (byte == '|' || byte == ')' || byte == '*' || byte == '+' || byte == '\0') return first;
    int32_t element = parseElement(e, depth);
    e->nodes[last].next = element;
    last = element;
  }
}

// Alternatives nest to the right (a|b|c is a|(b|c)); the chain is built in a
// loop, making the nodes in the same order as a recursive descent would.
int32_t parseList(TrexExpression* e, int depth) {
  int32_t result = kNone;
  int32_t openAlternation = kNone;  // alternation still waiting for its right side
  for (;;) {
    int32_t head = kNone;
    if (current(e) == '^') {
      ++e->cursor;
      head = newNode(e, TREX_NODE_BEGIN);
    }
    int32_t sequence = parseSequence(e, depth);
    if (head == kNone) {
      head = sequence;
    } else {
      e->nodes[head].next = sequence;
    }
    int32_t alternative = head;
    bool more = current(e) == '|';
    if (more) {
      ++e->cursor;
      alternative = newNode(e, TREX_NODE_ALTERNATION, head);
    }
    if (openAlternation == kNone) {
      result = alternative;
    } else {
      e->nodes[openAlternation].right = alternative;
    }
    if (!more) return result;
    openAlternation = alternative;
  }
}

void release(TrexExpression* e) {
  std::free(e->nodes);
  std::free(e->abortJump);
  std::free(e->subMatches);
  std::free(e);
}

template <typename T>
T* allocate(TrexExpression* e, size_t count) {
  void* memory = std::calloc(count, sizeof(T));
  if (memory == nullptr) fail(e, kOutOfMemory);
  return static_cast<T*>(memory);
}

// Everything after the expression exists: the pattern is at e->cursor.
TrexExpression* compile(TrexExpression* e) {
  size_t length = std::strlen(e->cursor);
  // The dialect has no empty pattern; refusing it here also spares the node
  // array a capacity of zero.
  if (length == 0 || length > trex::kMaxPatternLength) fail(e, kUnexpectedCharacter);
  e->nodeCapacity = static_cast<int32_t>(length);
  e->nodes = allocate<TrexNode>(e, length);

  int32_t root = newNode(e, TREX_NODE_GROUP);
  e->nodes[root].right = 0;
  e->groupCount = 1;
  e->firstNode = root;
  int32_t list = parseList(e, 0);
  e->nodes[root].left = list;
  if (current(e) != '\0') fail(e, kUnexpectedCharacter);
  e->subMatches = allocate<TrexSubMatch>(e, static_cast<size_t>(e->groupCount));
  e->cursor = nullptr;  // the pattern text may go away now
  return e;
}

}  // namespace

extern "C" {

TARVO_EXPORT TrexExpression* trex_compile(const char* pattern, const char** error) {
  TrexExpression* e = static_cast<TrexExpression*>(std::calloc(1, sizeof(TrexExpression)));
  if (e != nullptr) e->abortJump = std::malloc(sizeof(std::jmp_buf));
  if (e == nullptr || e->abortJump == nullptr) {
    if (error != nullptr) *error = kOutOfMemory;
    std::free(e);
    g_exp = nullptr;
    return nullptr;
  }
  e->errorSlot = error;
  e->cursor = pattern != nullptr ? pattern : "";
  g_exp = e;
  // A failed compilation lands here; the expression is the one in g_exp.
  if (setjmp(*static_cast<std::jmp_buf*>(g_exp->abortJump)) != 0) {
    release(g_exp);
    g_exp = nullptr;
    return nullptr;
  }
  return compile(g_exp);
}

TARVO_EXPORT void trex_free(TrexExpression* exp) {
  if (exp == nullptr) return;
  if (g_exp == exp) g_exp = nullptr;
  release(exp);
}

}  // extern "C"
