// The patterns the scanners compile, on the kind of HTML and script they
// meet; every expected match was worked out from the matching rules.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TrexTestSupport.h"
#include "regex/Pattern.h"

namespace {

const std::string kApiName = R"re([\.]\s*[\w\d\_]+\s*\()re";
const std::string kByIdAccess =
    R"re((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)re";
const std::string kFunction =
    R"re((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))re";
const std::string kAssignment = R"re((([\w\_]+)[\.]*)*\s*(=))re";
const std::string kCallsOnTv =
    R"re(([\+\-\_\*\/\%\(\{\[\;\:\,\?\s]tv\s*\.\s*[\w\_]+\s*\([\[\.\]\d"',\s\w\_\(\)/]*\))|([\+\-\_\*\/\%\(\{\[\;\:\,\?\s]tv\s*\.\s*[\w\_]+\s*\([\s]*\)))re";
const std::string kAliasCall = R"re([\w\d\_]+\s*\(\s*[\d\w\_"'\s,\.]*tv\s*[\d\w\_"'\s,\.]*\)\s*)re";

TEST(SystemPatterns, FirstMatch) { expectMarks({
    {kApiName, "x.y = tv . Play ( 1 )", "x.y = tv «. Play (» 1 )"},
    {"<.*>", "<><b>", "«<><b>»"},  // the first round always consumes a byte
    {R"re(id\s*=\s*"[\w\s\_]*")re", R"(<object classid="clsid:A-B" id = "tv 1">)",
     R"(<object classid="clsid:A-B" «id = "tv 1"»>)"},
    {kByIdAccess, "var tv = document.getElementById('tv').GetModel();",
     "var «tv = document.getElementById('tv').GetModel(»);"},
    {kCallsOnTv, "x = mytv.GetModel();", "x = mytv.GetModel();"},
    {kCallsOnTv, "(tv.Play(getUrl(1)));", "«(tv.Play(getUrl(1)»));"},
    {kAliasCall, "init(1, tv);", "«init(1, tv)»;"},
    {kAliasCall, "init(tv);", "init(tv);"},  // the argument class eats a first argument
}); }

TEST(SystemPatterns, GroupsAndSuccessiveMatches) {
  EXPECT_EQ(spansOf(kAssignment, "this.player = document.getElementById('tv')"),
            (Spans{{0, 13}, {0, 5}, {0, 4}, {12, 1}}));
  EXPECT_EQ(spansOf(kFunction, "  init : function (a) {"), (Spans{{2, 19}, {-1, 0}, {2, 19}}));
  std::vector<std::string> found;  // each search starts where the last match ended
  Pattern(kAssignment).forEachMatch("if (a == b) c.d = 1;", [&](const char* begin, const char* end) {
    found.emplace_back(begin, end);
    return true;
  });
  EXPECT_EQ(found, (std::vector<std::string>{"a =", "=", "c.d ="}));
}

}  // namespace
