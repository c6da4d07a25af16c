// Reusing the end of a run measured from an earlier start position is an
// optimisation only: every search answers exactly as without it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "APICheckEngine/PatternTexts.h"
#include "TrexTestSupport.h"
#include "regex/Pattern.h"
#include "regex/TrexInternal.h"

namespace {

// The group spans (group 0 first) of every successive match over the text,
// walked as the scanners walk it.
std::vector<Spans> walk(const std::string& pattern, const std::string& text, bool reuse) {
  trex::setRunReuse(reuse);
  Pattern p(pattern);
  EXPECT_TRUE(p.compiled()) << pattern;
  std::vector<Spans> answers;
  p.forEachMatch(text.c_str(), [&](const char*, const char*) {
    answers.push_back(groupSpans(p.get(), text.c_str()));
    return true;
  });
  trex::setRunReuse(true);
  return answers;
}

TEST(RunReuse, AnswersAreTheSameWithAndWithoutIt) {
  const std::string word(3000, 'k');
  const std::vector<std::string> forms = {
      patterns::kGetElementByIdForm, patterns::kAssignmentTarget, patterns::CallWithArgument("tv"),
      patterns::kMethodCall,
      "a*b", "[^x]*", "(a+)(b*)c", "k{2,}z|k+",
      // A later start entering the repeat before the earlier run began; a repeat
      // that consults what follows it, whose run is no run of matching bytes.
      "(?:(?:bxz|x)[^z]*|q)z", "[xy]{2,}yz",
  };
  const std::vector<std::string> texts = {
      word, word + "=document.getElementById('tv').Play();", "x = " + word + ".y = z == 2;",
      "f(a, " + word + ", tv) g(tv)", "obj." + word + " (1)", "aaab aab ab b c", "kkkz kk " + word,
      "bxzaaw", "xxyxyz"};
  for (const std::string& pattern : forms) {
    for (const std::string& text : texts)
      EXPECT_EQ(walk(pattern, text, true), walk(pattern, text, false)) << pattern << " on " << text.substr(0, 40);
  }
}

TEST(RunReuse, ARunCutByTheRoundCapStillStopsAtTheCapFromLaterStarts) {
  // From start s the run reaches the b only when at most 65536 a's remain,
  // so the first match starts at 10: a later start may not run further than
  // 65536 rounds, nor stop where the capped run from an earlier start did.
  const std::string text = std::string(65546, 'a') + "b";
  const std::vector<Spans> answers = walk("a+x*b", text, true);
  ASSERT_FALSE(answers.empty());
  EXPECT_EQ(answers[0][0], std::make_pair(10L, 65537));
  EXPECT_EQ(answers, walk("a+x*b", text, false));
}

}  // namespace
