// The patterns the scanners compile, on the kind of HTML and script they
// meet; every expected match was worked out from the matching rules.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "APICheckEngine/PatternTexts.h"
#include "TrexTestSupport.h"
#include "regex/Pattern.h"

namespace {

using namespace patterns;

TEST(SystemPatterns, FirstMatch) { expectMarks({
    {kMethodCall, "x.y = tv . Play ( 1 )", "x.y = tv «. Play (» 1 )"},
    {kTag, "<><b>", "«<><b>»"},  // the first round always consumes a byte
    {kQuotedIdForms[0], R"(<object classid="clsid:A-B" id = "tv 1">)",
     R"(<object classid="clsid:A-B" «id = "tv 1"»>)"},
    {kGetElementByIdForm, "var tv = document.getElementById('tv').GetModel();",
     "var «tv = document.getElementById('tv').GetModel(»);"},
    {CallsOn("tv"), "x = mytv.GetModel();", "x = mytv.GetModel();"},
    {CallsOn("tv"), "(tv.Play(getUrl(1)));", "«(tv.Play(getUrl(1)»));"},
    {CallWithArgument("tv"), "init(1, tv);", "«init(1, tv)»;"},
    {CallWithArgument("tv"), "init(tv);", "init(tv);"},  // the argument class eats a first argument
}); }

TEST(SystemPatterns, GroupsAndSuccessiveMatches) {
  EXPECT_EQ(spansOf(kAssignmentTarget, "this.player = document.getElementById('tv')"),
            (Spans{{0, 13}, {0, 5}, {0, 4}, {12, 1}}));
  EXPECT_EQ(spansOf(kFunctionHeader, "  init : function (a) {"), (Spans{{2, 19}, {-1, 0}, {2, 19}}));
  std::vector<std::string> found;  // each search starts where the last match ended
  Pattern(kAssignmentTarget).forEachMatch("if (a == b) c.d = 1;", [&](const char* begin, const char* end) {
    found.emplace_back(begin, end);
    return true;
  });
  EXPECT_EQ(found, (std::vector<std::string>{"a =", "=", "c.d ="}));
}

}  // namespace
