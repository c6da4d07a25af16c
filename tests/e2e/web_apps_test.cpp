// Web applications end to end: a TV application packed as a zip package, its
// plug-in objects declared in index.html and bound in script in each of the
// ways applications do it, checked through the exported interface.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "support/EngineHost.h"
#include "support/ZipBuilder.h"

namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

// The project's database, plus a group documenting `extra` when given.
std::string Database(const std::vector<std::string>& extra = {}) {
  std::string db = ReadFile(std::string(TARVO_SOURCE_DIR) + "/data/APIAnalEngineDB.xml");
  std::string group = "<EXTRA>";
  for (const std::string& name : extra) group += "<Function>" + name + "</Function>";
  group += "</EXTRA>\n";
  db.insert(db.rfind("</APIAnalysisDB>"), group);
  return db;
}

std::string IndexHtml(const std::string& title, const std::string& objects) {
  return "<!DOCTYPE html>\n<html>\n<head>\n<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">\n"
         "<title>" +
         title +
         "</title>\n<link rel=\"stylesheet\" href=\"css/app.css\">\n"
         "<script type=\"text/javascript\" src=\"js/app.js\"></script>\n</head>\n"
         "<body onload=\"App.onLoad();\">\n" +
         objects + "<div id=\"screen\"></div>\n</body>\n</html>\n";
}

std::string Object(const char* id, const char* plugin) {
  return std::string("<object id=\"") + id + "\" classid=\"clsid:MORVANE-NAVERTIX-" + plugin +
         "\" style=\"position:absolute;width:0;height:0\"></object>\n";
}

class WebApps : public ::testing::Test {
 protected:
  // Packs the files under app/www/ of one package, adds a style sheet that is
  // never scanned, and analyses the package.
  EngineHost::Run analyse(const Files& files, const std::vector<std::string>& documented = {}) {
    ZipBuilder zip;
    zip.add("app/www/css/app.css", "body { background: #000; }\n.focus { color: #fff; }\n");
    for (const auto& file : files) zip.add("app/www/" + file.first, file.second);
    const std::string package = dir.file("tvapp.wgt");
    EXPECT_TRUE(zip.write(package));
    DatabaseFile database(Database(documented));
    return host.analyse({package});
  }

  // The code, the result list and the result file agree on the findings.
  static void expectFindings(const EngineHost::Run& run, const std::vector<std::string>& findings) {
    EXPECT_EQ(run.code, findings.empty() ? RUN_SUCCESS : RUN_UNDOCUMENTED_API);
    EXPECT_EQ(run.results, findings);
    std::string file;
    for (const std::string& line : findings) file += line;
    EXPECT_EQ(run.resultFile, file);
    if (!findings.empty()) {
      EXPECT_TRUE(run.logged("[" + std::to_string(findings.size()) + "][StartAnalysis] returnCode [1001] "));
    }
  }

  EngineHost host;
  TempDir dir;
};

// x=document.getElementById("id") inside a function: calls on x in that body.
const char kChannelBanner[] = R"(var App = {
    channel : null
};

App.onLoad = function () {
    channel=document.getElementById("pluginChannel");
    var current = channel.GetCurrentChannel();
    App.show(current, channel.GetChannelName(current));
    channel.SetBannerTimeout(5000);
};

App.show = function (number, name) {
    document.getElementById("screen").innerHTML = number + " " + name;
};
)";

TEST_F(WebApps, VariableBoundByIdInAFunction) {
  Files files = {{"index.html", IndexHtml("Channel Banner", Object("pluginChannel", "CHANNEL"))},
                 {"js/app.js", kChannelBanner}};
  EngineHost::Run run = analyse(files);
  expectFindings(run, {"../js/app.js(9) : UndocumentedAPI 'SetBannerTimeout' used\n"});
  EXPECT_TRUE(run.logged(" additionally added path : [/tmp/0/app/www/index.html]"));
  EXPECT_TRUE(run.logged(" WorthFul File [2] EA"));  // the style sheet is not scanned

  expectFindings(analyse(files, {"SetBannerTimeout"}), {});
}

TEST_F(WebApps, VariableBoundWithBlanksAroundTheAssignmentIsNotFollowed) {
  // The look-up text starts at the blank before "document", so it carries no
  // assignment and binds nothing.
  std::string script = kChannelBanner;
  script.replace(script.find("channel=document"), 16, "var channel = document");
  Files files = {{"index.html", IndexHtml("Channel Banner", Object("pluginChannel", "CHANNEL"))},
                 {"js/app.js", script}};
  expectFindings(analyse(files), {});
}

// this.x=$("id"): calls on this.x anywhere in the file.
const char kPlayer[] = R"(var App = {
    state : 0
};

App.onLoad = function () {
    this.plugin=$("pluginPlayer");
    this.plugin.SetDisplayArea(0, 0, 1280, 720);
    App.play("http://example.com/live/stream.m3u8");
};

App.play = function (url) {
    this.plugin.Play(url);
    this.plugin.SetPlaybackRate(2);
};
)";

TEST_F(WebApps, MemberBoundWithDollarLookUpAcrossTheFile) {
  Files files = {{"index.html", IndexHtml("Player", Object("pluginPlayer", "MEDIAPLAYER"))}, {"js/app.js", kPlayer}};
  expectFindings(analyse(files), {"../js/app.js(13) : UndocumentedAPI 'SetPlaybackRate' used\n"});
  expectFindings(analyse(files, {"SetPlaybackRate"}), {});
}

// document.embeds[n]: the n-th plug-in object.
const char kVolume[] = R"(function Volume() {
}

Volume.prototype.init = function () {
    audio=document.embeds[0];
    audio.SetVolume(10);
    audio.SetEqualizer(3);
};
)";

TEST_F(WebApps, VariableBoundThroughTheEmbedsCollection) {
  Files files = {{"index.html", IndexHtml("Volume", Object("pluginAudio", "AUDIOOUT") + Object("pluginTime", "CLOCK"))},
                 {"js/app.js", kVolume}};
  expectFindings(analyse(files), {"../js/app.js(7) : UndocumentedAPI 'SetEqualizer' used\n"});
  expectFindings(analyse(files, {"SetEqualizer"}), {});

  // An index past the plug-in objects binds nothing.
  std::string script = kVolume;
  script.replace(script.find("embeds[0]"), 9, "embeds[2]");
  files[1].second = script;
  expectFindings(analyse(files), {});
}

// The element id handed to a function: its parameter names the plug-in too.
const char kDevice[] = R"(var Device = {
    bind: function (elementId) {
        info=document.getElementById(elementId);
        info.GetModel();
        info.GetSerialNumber();
    }
};

function start() {
    Device.bind("pluginDevice");
}
)";

TEST_F(WebApps, ElementIdPassedThroughAFunctionParameter) {
  Files files = {{"index.html", IndexHtml("Device", Object("pluginDevice", "DEVICEINFO"))}, {"js/app.js", kDevice}};
  EngineHost::Run run = analyse(files);
  expectFindings(run, {"../js/app.js(5) : UndocumentedAPI 'GetSerialNumber' used\n"});
  std::vector<std::string> texts = run.logTexts();
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "[FindObjectID] VariationSymbol [elementId]\t"), 1);

  expectFindings(analyse(files, {"GetSerialNumber"}), {});
}

// $("id").Method(): a look-up used directly binds no variable, and its text
// (with the call's own parenthesis) is no usable element pattern, so such
// calls are not judged, documented or not.
const char kDirect[] = R"($(document).ready(function () {
    $("pluginDevice").GetModel();
    $("pluginDevice").GetSerialNumber();
    document.getElementById("pluginDevice").GetFirmwareBuild();
});
)";

TEST_F(WebApps, MethodsCalledDirectlyOnALookUpAreNotJudged) {
  Files files = {{"index.html", IndexHtml("Device", Object("pluginDevice", "DEVICEINFO"))}, {"js/app.js", kDirect}};
  expectFindings(analyse(files), {});
}

// A variable whose name begins a common helper's variable within 50 bytes is
// taken for the helper and not searched.
const char kHelpers[] = R"(var widgetAPI = new Common.API.Widget();
var tvKey = new Common.API.TVKeyValue();

var App = {};

App.onLoad = function () {
    this.plugin=$("pluginTV");
    this.pluginAPI = new Common.API.Plugin();
    this.plugin.SetScreenSaver(1);
    widgetAPI.sendReadyEvent();
};
)";

TEST_F(WebApps, CommonHelperNextToAPlugInVariable) {
  Files files = {{"index.html", IndexHtml("Helpers", Object("pluginTV", "BROADCAST"))}, {"js/app.js", kHelpers}};
  expectFindings(analyse(files), {});

  std::string script = kHelpers;
  script.replace(script.find("this.pluginAPI"), 14, "this.helperAPI");
  files[1].second = script;
  expectFindings(analyse(files), {"../js/app.js(9) : UndocumentedAPI 'SetScreenSaver' used\n"});
}

// The extension framework's methods are reached through Execute("Name").
TEST_F(WebApps, ExtensionFrameworkCallsAreNamedByTheirExecuteArgument) {
  const std::string head =
      "var Bridge = {};\n\nBridge.start = function () {\n"
      "    kob=document.getElementById(\"pluginKob\");\n    kob.Init();\n"
      "    kob.Execute(\"Start\");\n";
  const struct {
    const char* extra;
    std::vector<std::string> findings;
  } cases[] = {
      {"", {}},
      {"    kob.Execute(\"FactoryReset\");\n", {"../js/app.js(7) : UndocumentedAPI 'FactoryReset' used\n"}},
      {"    kob.Execute( \"Close\" );\n    kob.Execute(\"Wipe\");\n",
       {"../js/app.js(8) : UndocumentedAPI 'Wipe' used\n"}},
      // Single quotes stay in the name, which is then not the documented one.
      {"    kob.Execute('Start');\n", {"../js/app.js(7) : UndocumentedAPI ''Start'' used\n"}},
  };
  for (const auto& c : cases) {
    Files files = {{"index.html", IndexHtml("Bridge", Object("pluginKob", "KOB"))},
                   {"js/app.js", head + c.extra + "};\n"}};
    expectFindings(analyse(files), c.findings);
  }
}

// Calls whose text holds ".Open" are recorded without a method to judge.
const char kOpen[] = R"(var Camera = {};

Camera.init = function () {
    cam=document.getElementById("pluginCamera");
    cam.Open(0);
    cam.OpenSecretStream("/dev/video1");
    cam.StartPreview();
    cam.SetNightMode(1);
};
)";

TEST_F(WebApps, OpenCallsAreNotJudged) {
  Files files = {{"index.html", IndexHtml("Camera", Object("pluginCamera", "CAMERA"))}, {"js/app.js", kOpen}};
  expectFindings(analyse(files), {"../js/app.js(8) : UndocumentedAPI 'SetNightMode' used\n"});
  expectFindings(analyse(files, {"SetNightMode"}), {});
}

// Every binding is searched even after a finding, so one run can report
// several calls; Finish then answers for the first queued one.
TEST_F(WebApps, EveryBindingIsSearchedAfterAFinding) {
  const char script[] = R"(var App = {};

App.onLoad = function () {
    tuner=document.getElementById("pluginTuner");
    tuner.TuneSecret(7);
    epg=$("pluginEpg");
    epg.GetProgramList();
    epg.DumpGuide();
};
)";
  Files files = {{"index.html", IndexHtml("Guide", Object("pluginTuner", "TUNER") + Object("pluginEpg", "EPG"))},
                 {"js/app.js", script}};
  expectFindings(analyse(files), {"../js/app.js(5) : UndocumentedAPI 'TuneSecret' used\n",
                                  "../js/app.js(8) : UndocumentedAPI 'DumpGuide' used\n"});
}

}  // namespace
