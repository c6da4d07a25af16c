// The report formats: JSON that reads back as what was written, and SARIF
// that places each finding where a code viewer can open it.
#include <gtest/gtest.h>

#include "report/JsonReport.h"
#include "report/SarifReport.h"

namespace {

AnalysisReport sample() {
  AnalysisReport report;
  report.inputs = {"/apps/my app.zip", "/apps/\"quoted\".html"};
  report.reportAll = true;
  report.deep = true;
  report.code = 1001;
  report.findings = {
      {"../js/a.js(3) : UndocumentedAPI 'Zap' used\n", "/apps/my app.zip", "app/www/js/a.js", 3, "Zap",
       "MORVANE-NAVERTIX-PICTURE", "picture", "web", false, "", ""},
      {"../movie.swf(0) : UndocumentedAPI 'Zap' used\n", "/apps/my app.zip", "lib/in.zip!/movie.swf", 0, "Zap",
       "MORVANE-NAVERTIX-AUDIOOUT", "", "swf", false, "", ""},
      {"../(7) : UndocumentedAPI 'Go' used\n", "/apps/\"quoted\".html", "", 7, "Go", "X", "Main.tv", "web", true,
       "pluginTV", "property"}};
  report.notes = {{"refused", "entry [é] is encrypted", "/apps/my app.zip"}};
  report.stages = {{"expansion", 12}, {"scan", 3400}};
  return report;
}

TEST(Reports, JsonReadsBackAsWritten) {
  const AnalysisReport report = sample();
  EXPECT_EQ(FromJson(nlohmann::ordered_json::parse(ToJson(report).dump())), report);
  EXPECT_EQ(ToJson(report)["verdict"], "undocumented");
}

TEST(Reports, SarifPlacesEachFinding) {
  nlohmann::ordered_json run = ToSarif({sample()}, "1.0.0")["runs"][0];
  const auto& rules = run["tool"]["driver"]["rules"];
  const auto& results = run["results"];
  ASSERT_EQ(results.size(), 3u);
  const struct {
    const char* uri;
    int line;  // 0: no region
    const char* rule;
  } expected[] = {{"app/www/js/a.js", 3, "undocumented-api-web"},
                  {"lib/in.zip!/movie.swf", 0, "undocumented-api-swf"},
                  {"file:///apps/%22quoted%22.html", 7, "undocumented-api-web"}};
  for (size_t i = 0; i < results.size(); ++i) {
    const auto& physical = results[i]["locations"][0]["physicalLocation"];
    EXPECT_EQ(physical["artifactLocation"]["uri"], expected[i].uri);
    EXPECT_EQ(physical.contains("region"), expected[i].line != 0);
    if (expected[i].line != 0) {
      EXPECT_EQ(physical["region"]["startLine"], expected[i].line);
    }
    EXPECT_EQ(results[i]["ruleId"], expected[i].rule);
    EXPECT_EQ(rules[results[i]["ruleIndex"].get<size_t>()]["id"], expected[i].rule);
  }
  EXPECT_EQ(run["invocations"][0]["properties"]["code"], 1001);
  EXPECT_EQ(run["invocations"][0]["toolExecutionNotifications"][0]["level"], "error");
}

}  // namespace
