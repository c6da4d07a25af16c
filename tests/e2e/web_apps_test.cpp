// Web applications end to end: a TV application packed as a zip package, its
// plug-in objects declared in index.html and bound in script in each of the
// ways applications do it, checked through the exported interface. Each
// application is analysed as it is (its undocumented calls reported) and then
// with those calls documented (nothing reported).
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
    {"this.x=$(id): calls on this.x anywhere in the file", Object("pluginPlayer", "MEDIAPLAYER"),
     R"(var App = {};

App.onLoad = function () {
    this.plugin=$("pluginPlayer");
    this.plugin.SetDisplayArea(0, 0, 1280, 720);
};

App.play = function (url) {
    this.plugin.Play(url);
    this.plugin.SetPlaybackRate(2);
};
)",
     {"../js/app.js(10) : UndocumentedAPI 'SetPlaybackRate' used\n"}, {}},
    {"document.embeds[n]: the n-th plug-in object", Object("pluginAudio", "AUDIOOUT") + Object("pluginTime", "CLOCK"),
     R"(Volume.prototype.init = function () {
    audio=document.embeds[0];
    audio.SetVolume(10);
    audio.SetEqualizer(3);
};
)",
     {"../js/app.js(4) : UndocumentedAPI 'SetEqualizer' used\n"}, {}},
    {"an element id passed to a function names the plug-in in its parameter", Object("pluginDevice", "DEVICEINFO"),
     R"(var Device = {
    bind: function (elementId) {
        info=document.getElementById(elementId);
        info.GetModel();
        info.GetSerialNumber();
    }
};

function start() {
    Device.bind("pluginDevice");
}
)",
     {"../js/app.js(5) : UndocumentedAPI 'GetSerialNumber' used\n"}, {"[FindObjectID] VariationSymbol [elementId]\t"}},
    {"the extension framework's methods are named by Execute(\"Name\")", Object("pluginKob", "KOB"),
     R"(Bridge.start = function () {
    kob=document.getElementById("pluginKob");
    kob.Init();
    kob.Execute("Start");
    kob.Execute("FactoryReset");
};
)",
     {"../js/app.js(5) : UndocumentedAPI 'FactoryReset' used\n"}, {}},
    {"calls on .Open are not judged", Object("pluginCamera", "CAMERA"),
     R"(Camera.init = function () {
    cam=document.getElementById("pluginCamera");
    cam.Open(0);
    cam.OpenSecretStream("/dev/video1");
    cam.SetNightMode(1);
};
)",
     {"../js/app.js(5) : UndocumentedAPI 'SetNightMode' used\n"}, {}},
    {"a variable whose name occurs up to 50 bytes before a common helper is taken for it",
     Object("pluginTV", "BROADCAST"),
     R"(App.onLoad = function () {
    this.plugin=$("pluginTV");
    this.pluginAPI = new Common.API.Plugin();
    this.plugin.SetScreenSaver(1);
    this.tv=$("pluginTV");
    this.tv.SetScreenSaver(2);
};
)",
     {"../js/app.js(6) : UndocumentedAPI 'SetScreenSaver' used\n"}, {}},
    {"every binding is searched after a finding, and each finding is reported",
     Object("pluginTuner", "TUNER") + Object("pluginEpg", "EPG"),
     R"(App.onLoad = function () {
    tuner=document.getElementById("pluginTuner");
    tuner.TuneSecret(7);
    epg=$("pluginEpg");
    epg.GetProgramList();
    epg.DumpGuide();
};
)",
     {"../js/app.js(3) : UndocumentedAPI 'TuneSecret' used\n", "../js/app.js(6) : UndocumentedAPI 'DumpGuide' used\n"},
     {}},
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
