// Web applications end to end: a TV application packed as a zip package, its
// plug-in objects declared in index.html and bound in script, checked through
// the exported interface. Each application is analysed as it is (its
// undocumented calls reported) and then with those calls documented (nothing
// reported). The binding forms one by one are the scanner tests' concern.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/EngineHost.h"
#include "support/ZipBuilder.h"

namespace {

using Texts = std::vector<std::string>;

std::string Object(const char* id, const char* plugin) {
  return std::string("<object id=\"") + id + "\" classid=\"clsid:MORVANE-NAVERTIX-" + plugin +
         "\" style=\"position:absolute;width:0;height:0\"></object>\n";
}

struct App {
  const char* name;
  std::string objects;   // plug-in elements of index.html
  const char* script;    // js/app.js
  Texts findings;        // reported, in order, when nothing extra is documented
  Texts logged;          // log lines each logged exactly once in that run
};

const App kApps[] = {
    {"x=document.getElementById(id) in a function: calls on x in its body", Object("pluginChannel", "CHANNEL"),
     R"(var App = {};

App.onLoad = function () {
    channel=document.getElementById("pluginChannel");
    var current = channel.GetCurrentChannel();
    document.getElementById("screen").innerHTML = channel.GetChannelName(current);
    channel.SetBannerTimeout(5000);
};
)",
     {"../js/app.js(7) : UndocumentedAPI 'SetBannerTimeout' used\n"},
     // index.html and js/app.js are scanned, the style sheet is not.
     {" additionally added path : [/tmp/0/app/www/index.html]", " WorthFul File [2] EA"}},
};

class WebApps : public ::testing::Test {
 protected:
  // Packs the application under app/www/ with a style sheet that is never
  // scanned, and analyses it with the project's database plus `documented`.
  EngineHost::Run analyse(const App& app, const Texts& documented) {
    ZipBuilder zip;
    zip.add("app/www/css/app.css", "body { background: #000; }\n");
    zip.add("app/www/index.html", "<html>\n<head>\n<script src=\"js/app.js\"></script>\n</head>\n<body>\n" +
                                      app.objects + "<div id=\"screen\"></div>\n</body>\n</html>\n");
    zip.add("app/www/js/app.js", app.script);
    const std::string package = dir.file("tvapp.wgt");
    EXPECT_TRUE(zip.write(package));
    std::string db = ReadFile(std::string(TARVO_SOURCE_DIR) + "/data/APIAnalEngineDB.xml");
    std::string group = "<EXTRA>";
    for (const std::string& name : documented) group += "<Function>" + name + "</Function>";
    db.insert(db.rfind("</APIAnalysisDB>"), group + "</EXTRA>\n");
    DatabaseFile database(db);
    EngineHost::Run run = host.analyse({package});
    // The documented interface in exact mode answers as the host interface does.
    EngineHost::Documented exact = host.analyseDocumented({package}, false, dir.path());
    EXPECT_EQ(exact.code, run.code);
    EXPECT_EQ(exact.lines, run.results);
    return run;
  }

  EngineHost host;
  TempDir dir;
};

TEST_F(WebApps, UndocumentedCallsAreReportedWithTheirLinesAndDocumentedOnesPass) {
  for (const App& app : kApps) {
    SCOPED_TRACE(app.name);
    EngineHost::Run run = analyse(app, {});
    EXPECT_EQ(run.code, RUN_UNDOCUMENTED_API);
    EXPECT_EQ(run.results, app.findings);
    std::string file;
    Texts documented;
    for (const std::string& line : app.findings) {
      file += line;
      documented.push_back(line.substr(line.find('\'') + 1, line.rfind('\'') - line.find('\'') - 1));
    }
    EXPECT_EQ(run.resultFile, file);
    Texts logged = app.logged, texts = run.logTexts();
    logged.push_back("[" + std::to_string(app.findings.size()) + "][StartAnalysis] returnCode [1001] ");
    for (const std::string& line : logged) EXPECT_EQ(std::count(texts.begin(), texts.end(), line), 1) << line;

    EngineHost::Run passed = analyse(app, documented);
    EXPECT_EQ(passed.code, RUN_SUCCESS);
    EXPECT_EQ(passed.results, Texts{});
    EXPECT_EQ(passed.resultFile, "");
  }
}

}  // namespace
