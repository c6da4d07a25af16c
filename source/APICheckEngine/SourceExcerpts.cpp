// Text excerpts around element look-ups and the access expressions in them.
//
// Only excerpts of about 430 bytes around each `$(`, `$_` or `document` hit
// are searched with the access patterns, never whole files.
#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "APICheckEngine/RecordLists.h"
#include "APICheckEngine/SourceScan.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {
namespace sourcescan {

namespace {

// `x = document.getElementById("id").Method("arg"` and the like.
const char* const kGetElementByIdForm =
    R"PAT((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)PAT";
// `x = $("id").Method("arg"` and the like.
const char* const kDollarForm =
    R"PAT((([\w\_]+)[\.]*)*\s*=*\s*[\$]\s*[\_]*\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)PAT";
// `x = document.embeds[n].Method("arg"` and the like.
const char* const kEmbedsForm =
    R"PAT((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*embeds\s*\[\s*[\d]*\s*\]\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)PAT";

bool isBlank(char c) { return c == ' '; }

// A `$` followed by `_` or `(`, directly or after one blank; or "DOCUMENT"
// in any letter case (each byte compared with its upper-case bit cleared).
bool isHit(const unsigned char* t, size_t k) {
  if (t[k] == '$') {
    unsigned char next = t[k + 1];
    if (next == '_' || next == '(') return true;
    if (next == ' ' && (t[k + 2] == '_' || t[k + 2] == '(')) return true;
  }
  static const char kWord[] = "DOCUMENT";
  for (size_t j = 0; j < 8; ++j) {
    if ((t[k + j] & 0xDF) != static_cast<unsigned char>(kWord[j])) return false;
  }
  return true;
}

// Every match of the pattern in the subject. A subject that lacks all of
// `required` (literal texts one of which every match contains) cannot match
// and is not searched.
std::vector<std::string> allMatches(const std::string& patternText, const std::string& subject,
                                    std::initializer_list<const char*> required) {
  std::vector<std::string> found;
  bool possible = false;
  for (const char* literal : required) possible = possible || subject.find(literal) != std::string::npos;
  if (!possible) return found;
  Pattern pattern(patternText);
  pattern.forEachMatch(subject.c_str(), [&](const char* begin, const char* end) {
    found.emplace_back(begin, static_cast<size_t>(end - begin));
    return true;
  });
  return found;
}

}  // namespace

void forEachExcerpt(const char* text, size_t length, const std::function<void(const Excerpt&)>& visit) {
  if (length < 9) return;
  const unsigned char* t = reinterpret_cast<const unsigned char*>(text);
  const size_t last = length - 1;
  // The first blank at or after `from`, or `last` when there is none before
  // it. The answer for the last position asked is kept: every blank-free
  // stretch is read once, whichever way the positions asked move.
  size_t askedFrom = length;
  size_t answer = last;
  auto nextBlank = [&](size_t from) {
    if (from < askedFrom) {
      size_t i = from;
      while (i < askedFrom && i < last && !isBlank(text[i])) ++i;
      if (i < askedFrom) answer = i;
    } else if (from > answer) {
      const void* hit = std::memchr(text + from, ' ', last - from);
      answer = hit ? static_cast<size_t>(static_cast<const char*>(hit) - text) : last;
    }
    askedFrom = from;
    return answer;
  };
  bool seenBlank = false;
  size_t nearestBlank = 0;
  for (size_t k = 0; k + 8 < length; ++k) {
    if (isBlank(text[k])) {
      seenBlank = true;
      nearestBlank = k;
    }
    if (!isHit(t, k)) continue;
    size_t first = seenBlank ? nearestBlank : 0;
    size_t width = std::min(length - k - 1, kExcerptWidth);
    // first + width <= last here; extend until a blank or the last byte.
    size_t reach = first + width;
    if (!isBlank(text[reach]) && reach < last) reach = nextBlank(reach);
    visit(Excerpt{first, reach - first});
  }
}

std::vector<Excerpt> findExcerpts(const std::string& text) {
  std::vector<Excerpt> out;
  forEachExcerpt(text.c_str(), std::strlen(text.c_str()), [&](const Excerpt& e) { out.push_back(e); });
  return out;
}

bool collectAccessExpressions(const char* text, size_t length, const std::string& path,
                              std::vector<SWFStateMentInfo*>& accessList, std::vector<SWFStateMentInfo*>& embedsList) {
  const std::string domAccessForm = std::string("(") + kGetElementByIdForm + ")|(" + kDollarForm + ")";
  size_t made = 0;
  // Hits in one word share their excerpt; the matches of an excerpt equal to
  // the previous one are reused instead of searched again.
  bool havePrevious = false;
  Excerpt previous{0, 0};
  std::vector<std::string> accessMatches;
  std::vector<std::string> embedsMatches;

  bool full = false;
  auto append = [&](std::vector<SWFStateMentInfo*>& list, const std::string& expression) {
    if (made >= kMaxAccessRecordsPerFile) {
      full = true;
      return;
    }
    list.push_back(NewRecord(new std::string(expression), "Global", path));
    ++made;
  };

  forEachExcerpt(text, length, [&](const Excerpt& excerpt) {
    if (full) return;
    if (!havePrevious || !(excerpt == previous)) {
      std::string subject(text + excerpt.first, excerpt.length);
      accessMatches = allMatches(domAccessForm, subject, {"getElementById", "$"});
      embedsMatches = allMatches(kEmbedsForm, subject, {"embeds"});
      previous = excerpt;
      havePrevious = true;
    }
    for (const std::string& m : accessMatches) append(accessList, m);
    for (const std::string& m : embedsMatches) append(embedsList, m);
  });
  return !full;
}

}  // namespace sourcescan
}  // namespace FlashEngine_1_00
