// Reusing the end of a run measured from an earlier start position is an
// optimisation only: every search answers exactly as without it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "regex/TrexInternal.h"
#include "regex/trex.h"

namespace {

struct Answer {
  int found = 0;
  long begin = -1;
  long end = -1;
  std::vector<std::pair<long, int>> groups;
  bool operator==(const Answer& other) const {
    return found == other.found && begin == other.begin && end == other.end && groups == other.groups;
  }
};

// Every successive match over the text, as the scanners walk it.
std::vector<Answer> walk(const std::string& pattern, const std::string& text, bool reuse) {
  trex::setRunReuse(reuse);
  TrexExpression* exp = trex_compile(pattern.c_str(), nullptr);
  std::vector<Answer> answers;
  const char* cursor = text.c_str();
  const char* limit = text.c_str() + text.size();
  while (exp != nullptr && cursor < limit) {
    Answer answer;
    const char* begin = nullptr;
    const char* end = nullptr;
    answer.found = trex_search(exp, cursor, &begin, &end);
    if (answer.found) {
      answer.begin = begin - text.c_str();
      answer.end = end - text.c_str();
      for (int n = 0; n < trex_getsubexpcount(exp); ++n) {
        TrexSubMatch sub;
        trex_getsubexp(exp, n, &sub);
        answer.groups.emplace_back(sub.begin ? sub.begin - text.c_str() : -1, sub.len);
      }
    }
    answers.push_back(answer);
    if (!answer.found) break;
    cursor = end > cursor ? end : cursor + 1;
  }
  trex_free(exp);
  trex::setRunReuse(true);
  return answers;
}

TEST(RunReuse, AnswersAreTheSameWithAndWithoutIt) {
  const std::string word(3000, 'k');
  const std::vector<std::string> patterns = {
      R"re((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)re",
      R"re((([\w\_]+)[\.]*)*\s*(=))re",
      R"re([\w\d\_]+\s*\(\s*[\d\w\_"'\s,\.]*tv\s*[\d\w\_"'\s,\.]*\)\s*)re",
      R"re([\.]\s*[\w\d\_]+\s*\()re",
      "a*b",
      "[^x]*",
      "(a+)(b*)c",
      "k{2,}z|k+",
  };
  const std::vector<std::string> texts = {
      word,
      word + "=document.getElementById('tv').Play();",
      "x = " + word + ".y = z == 2;",
      "f(a, " + word + ", tv) g(tv)",
      "obj." + word + " (1)",
      "aaab aab ab b c",
      "kkkz kk " + word,
  };
  for (const std::string& pattern : patterns) {
    for (const std::string& text : texts) {
      EXPECT_EQ(walk(pattern, text, true), walk(pattern, text, false)) << pattern << " on " << text.substr(0, 40);
    }
  }
}

TEST(RunReuse, ARunCutByTheRoundCapStillStopsAtTheCapFromLaterStarts) {
  // From start s the run reaches the b only when at most 65536 a's remain,
  // so the first match starts at 10: a later start may not run further than
  // 65536 rounds, nor stop where the capped run from an earlier start did.
  const std::string text = std::string(65546, 'a') + "b";
  const std::vector<Answer> answers = walk("a+x*b", text, true);
  ASSERT_FALSE(answers.empty());
  EXPECT_EQ(answers[0].begin, 10);
  EXPECT_EQ(answers, walk("a+x*b", text, false));
}

}  // namespace
