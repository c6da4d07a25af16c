// The patterns the scanners compile, on the kind of HTML and script they
// meet; every expected match was worked out from the matching rules.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MarkedMatch.h"
#include "regex/Pattern.h"

namespace {

const std::string kApiName = R"re([\.]\s*[\w\d\_]+\s*\()re";
const std::string kP1 =
    R"re((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)re";
const std::string kP2 =
    R"re((([\w\_]+)[\.]*)*\s*=*\s*[\$]\s*[\_]*\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)re";
const std::string kP3 =
    R"re((([\w\_]+)[\.]*)*\s*=*\s*document\s*\.\s*embeds\s*\[\s*[\d]*\s*\]\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)re";
const std::string kP4 =
    R"re((function\s*[\w\_]*\s*\([\w\_"'\s,]*\))|([\w\_]+\s*[\:]\s*function\s*\([\w\_"'\s,]*\)))re";
const std::string kDomAccess = "(" + kP1 + ")|(" + kP2 + ")";
const std::string kDirectUse = R"re((\s*document\s*\.\s*getElementById\s*[(][\"'\s]*[\w\_]+[\"'\s]*\)\s*\.+)|(\s*[\$]\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.+))re";
const std::string kAssignment = R"re((([\w\_]+)[\.]*)*\s*(=))re";
const std::string kExecute = R"re(Execute\(\s*[\"']*[\w\s\_]*[\"']*)re";

std::string callsOn(const std::string& name) {
  const std::string separator = R"re([\+\-\_\*\/\%\(\{\[\;\:\,\?\s])re";
  return "(" + separator + name + R"re(\s*\.\s*[\w\_]+\s*\([\[\.\]\d"',\s\w\_\(\)/]*\))re" + ")|(" + separator + name +
         R"re(\s*\.\s*[\w\_]+\s*\([\s]*\))re" + ")";
}
std::string lookupCall(const std::string& id) { return R"re([\(][\s"']*)re" + id + R"re([\s"']*[\)]\s*\.\s*[\w\d\_]+\s*\()re"; }
std::string lookupPrefix(const std::string& id) { return R"re([\(][\s"']*)re" + id + R"re([\s"']*[\)]\s*\.)re"; }
std::string lookup(const std::string& id) { return R"re([\(][\s"']*)re" + id + R"re([\s"']*[\)])re"; }
std::string aliasCall(const std::string& s) {
  return R"re([\w\d\_]+\s*\(\s*[\d\w\_"'\s,\.]*)re" + s + R"re(\s*[\d\w\_"'\s,\.]*\)\s*)re";
}
std::string swfCall(const std::string& v) { return R"re([\(][\s"']*)re" + v + R"re([\s"']*[\)]\s*\.\s*[\w\d\_]+)re"; }

struct Case {
  std::string pattern;
  std::string text;
  std::string expected;
};

class SystemPatterns : public testing::TestWithParam<Case> {};

TEST_P(SystemPatterns, FirstMatch) { EXPECT_EQ(markFirstMatch(GetParam().pattern, GetParam().text), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(Verdicts, SystemPatterns, testing::Values(
    Case{kApiName, "tv.GetModel()", "tv«.GetModel(»)"},
    Case{kApiName, "x.y = tv . Play ( 1 )", "x.y = tv «. Play (» 1 )"},
    Case{kApiName, "a.\tRun\t(x)", "a«.\tRun\t(»x)"},
    Case{kApiName, "MORVANE-NAVERTIX-KOB#Start", "MORVANE-NAVERTIX-KOB#Start"}));

INSTANTIATE_TEST_SUITE_P(Elements, SystemPatterns, testing::Values(
    Case{"<.*>", "<html><object id=\"tv\">", "«<html>»<object id=\"tv\">"},
    Case{"<.*>", "<><b>", "«<><b>»"},  // the first round always consumes a byte
    Case{"<.*>", "a <> b", "a <> b"},
    Case{"<[Oo][Bb][Jj][Ee][Cc][Tt]", "<div><OBJECT classid=", "<div>«<OBJECT» classid="},
    Case{"[Oo][Bb][Jj][Ee][Cc][Tt]>", "</Object>", "</«Object>»"},
    Case{R"re(id\s*=\s*"[\w\s\_]*")re", R"(<object classid="clsid:MORVANE-NAVERTIX-KOB" id = "tv plugin">)",
         R"(<object classid="clsid:MORVANE-NAVERTIX-KOB" «id = "tv plugin"»>)"},
    Case{R"re(id\s*=\s*'[\w\s\_]*')re", "<embed pid='a' src='x'>", "<embed p«id='a'» src='x'>"},
    Case{aliasCall("tv"), "init(1, tv);", "«init(1, tv)»;"},
    Case{aliasCall("tv"), "init(tv);", "init(tv);"},  // the argument class eats a first argument
    Case{aliasCall("tv"), "f( tv)", "f( tv)"}));

INSTANTIATE_TEST_SUITE_P(Excerpts, SystemPatterns, testing::Values(
    Case{kP1, "var tv = document.getElementById(\"tv\");", "var «tv = document.getElementById(\"tv\")»;"},
    Case{kP1, "  document.getElementById('tv').GetModel();", "«  document.getElementById('tv').GetModel(»);"},
    Case{kP2, "p = $(\"tv\").Play();", "«p = $(\"tv\").Play(»);"},
    Case{kP3, "var tv2 = document.embeds[1];", "var «tv2 = document.embeds[1]»;"},
    Case{kP4, "function init(a, b) {", "«function init(a, b)» {"},
    Case{kP4, "  init : function (a) {", "  «init : function (a)» {"},
    Case{kP4, "var f = function(x) {", "var f = «function(x)» {"}));

INSTANTIATE_TEST_SUITE_P(Bindings, SystemPatterns, testing::Values(
    Case{lookup("tv"), "document.getElementById( 'tv' )", "document.getElementById«( 'tv' )»"},
    Case{kDirectUse, "document.getElementById(\"tv\").Play(", "«document.getElementById(\"tv\").»Play("},
    Case{kDirectUse, "tv = document.getElementById(\"tv\");", "tv = document.getElementById(\"tv\");"},
    Case{kAssignment, "this.player = document.getElementById('tv')", "«this.player =» document.getElementById('tv')"}));

INSTANTIATE_TEST_SUITE_P(Calls, SystemPatterns, testing::Values(
    Case{callsOn("tv"), "x = tv.GetModel();", "x =« tv.GetModel()»;"},
    Case{callsOn("tv"), "x = mytv.GetModel();", "x = mytv.GetModel();"},
    Case{callsOn("tv"), "\ttv.SetVolume(10);", "«\ttv.SetVolume(10)»;"},
    Case{callsOn("tv"), "(tv.Play(getUrl(1)));", "«(tv.Play(getUrl(1)»));"},
    Case{kExecute, "obj.Execute( \"Start\" )", "obj.«Execute( \"Start\"» )"},
    Case{kExecute, "Execute('Play')", "«Execute('Play'»)"},
    Case{lookupCall("tv"), "$(\"tv\").Play();", "$«(\"tv\").Play(»);"},
    Case{lookupPrefix("tv"), "$(\"tv\").Play();", "$«(\"tv\").»Play();"},
    Case{swfCall("myExt"), "getObj(myExt).GetVersion(1)", "getObj«(myExt).GetVersion»(1)"},
    Case{swfCall("myExt"), "f('myExt') . Play()", "f«('myExt') . Play»()"}));

struct Groups {
  std::string pattern;
  std::string text;
  std::vector<std::pair<long, int>> spans;  // begin -1: no part in the match
};

class SystemPatternGroups : public testing::TestWithParam<Groups> {};

TEST_P(SystemPatternGroups, Spans) {
  Pattern pattern(GetParam().pattern);
  ASSERT_TRUE(pattern.search(GetParam().text));
  ASSERT_EQ(trex_getsubexpcount(pattern.get()), static_cast<int>(GetParam().spans.size()));
  for (size_t n = 0; n < GetParam().spans.size(); ++n) {
    TrexSubMatch sub;
    ASSERT_TRUE(pattern.group(static_cast<int>(n), &sub));
    const long begin = sub.begin ? static_cast<long>(sub.begin - pattern.get()->subjectBegin) : -1;
    EXPECT_EQ(std::make_pair(begin, sub.len), GetParam().spans[n]) << "group " << n;
  }
}

INSTANTIATE_TEST_SUITE_P(Captures, SystemPatternGroups, testing::Values(
    Groups{kDomAccess, "var tv = document.getElementById(\"tv\");",
           {{4, 34}, {4, 34}, {4, 2}, {4, 2}, {-1, 0}, {-1, 0}, {-1, 0}}},
    Groups{kAssignment, "this.player = document.getElementById('tv')", {{0, 13}, {0, 5}, {0, 4}, {12, 1}}},
    Groups{kP4, "  init : function (a) {", {{2, 19}, {-1, 0}, {2, 19}}},
    Groups{callsOn("tv"), "x = tv.GetModel();", {{3, 14}, {-1, 0}, {3, 14}}}));

std::vector<std::string> allMatches(const std::string& pattern, const std::string& text) {
  std::vector<std::string> found;
  Pattern(pattern).forEachMatch(text.c_str(), [&](const char* begin, const char* end) {
    found.emplace_back(begin, end);
    return true;
  });
  return found;
}

TEST(SystemPatterns, SuccessiveMatches) {
  EXPECT_EQ(allMatches("<.*>", "<html><object id=\"tv\"></object>\n</html>"),
            (std::vector<std::string>{"<html>", "<object id=\"tv\">", "</object>", "</html>"}));
  EXPECT_EQ(allMatches(kAssignment, "if (a == b) c.d = 1;"), (std::vector<std::string>{"a =", "=", "c.d ="}));
}

}  // namespace
