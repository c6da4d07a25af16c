// Comment removal and blank-line removal, exported with C names.
//
// Both work on bytes only: there is no notion of string or regular-expression
// literals, so a `//` inside a quoted URL starts a comment like any other.
#include "APICheckEngine/CommentStripping.h"

#include <string>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"

namespace FlashEngine_1_00 {

size_t stripComments(const char* source, size_t length, char* output) {
  // A comment that runs to the end of the input is followed by one more
  // output byte: the one just past the input, which is taken to be a zero
  // byte and never read. Since every comment is at least two bytes long, the
  // output never outgrows the input.
  size_t in = 0;
  size_t out = 0;
  while (in < length) {
    char c = source[in];
    if (c != '/') {
      output[out++] = c;
      ++in;
      continue;
    }
    if (in + 1 == length) {  // a slash as the last byte
      output[out++] = c;
      break;
    }
    char next = source[in + 1];
    if (next == '/') {
      // Drop through to the line feed, which is copied as an ordinary byte
      // so that later line numbers do not move.
      size_t feed = in + 2;
      while (feed < length && source[feed] != '\n') ++feed;
      if (feed == length) {
        output[out++] = '\0';
        break;
      }
      in = feed;
      continue;
    }
    if (next == '*') {
      // The closing search starts after the `*` of the opener, so `/*/`
      // does not close it.
      size_t close = in + 2;
      while (close + 1 < length && !(source[close] == '*' && source[close + 1] == '/')) ++close;
      if (close + 1 >= length) {  // never closed
        output[out++] = '\0';
        break;
      }
      // The byte after the closer is copied unexamined: in `/* a *//* b */`
      // the second opener's slash is copied and its text stays.
      size_t after = close + 2;
      output[out++] = after < length ? source[after] : '\0';
      in = after + 1;
      continue;
    }
    output[out++] = c;  // a lone slash; the next byte is examined normally
    ++in;
  }
  return out;
}

}  // namespace FlashEngine_1_00

extern "C" TARVO_EXPORT int delete_comment(const char* source, int length, char* output) {
  if (source == nullptr || output == nullptr || length <= 0) return 0;
  return static_cast<int>(FlashEngine_1_00::stripComments(source, static_cast<size_t>(length), output));
}

extern "C" TARVO_EXPORT int delete_blankline(const char* source, int length, char* output) {
  if (source == nullptr || output == nullptr || length <= 0) return 0;
  // The line buffer starts at 1024 bytes and grows with the longest line.
  std::string line;
  line.reserve(1024);
  bool droppedBefore = false;
  int out = 0;
  int start = 0;
  while (start < length) {
    int end = start;
    while (end < length && source[end] != '\n') ++end;
    line.assign(source + start, static_cast<size_t>(end - start));
    if (end == length) {
      // A last line without a line feed is written as it stands.
      for (char c : line) output[out++] = c;
      break;
    }
    if (line.find_first_not_of(" \t") == std::string::npos) {
      droppedBefore = true;
    } else {
      // A run of dropped lines shrinks to one line feed; that line feed fits
      // in the room the run left, so the output never outgrows the input.
      if (droppedBefore) output[out++] = '\n';
      droppedBefore = false;
      for (char c : line) output[out++] = c;
      output[out++] = '\n';
    }
    start = end + 1;
  }
  return out;
}
