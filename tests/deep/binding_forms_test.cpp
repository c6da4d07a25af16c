// Each binding form as a small application and the calls it must yield.
#include "deep/DeepAnalysis.h"

#include <gtest/gtest.h>

using namespace tarvo_deep;

namespace {

const char* const kPage =
    "<html><body>\n"
    "<OBJECT id='pluginPlayer' CLASSID='clsid:MORVANE-NAVERTIX-MEDIAPLAYER'></OBJECT>\n"
    "<object classid=\"clsid:MORVANE-NAVERTIX-TUNER\" id=pluginTV></object>\n"
    "<object id=\"plain\" classid=\"clsid:NOT-A-PLUGIN\"></object>\n"
    "</body></html>\n";

struct Case {
  const char* name;
  const char* script;
  const char* expected;  // "line:method:kind" joined by spaces
};

std::string Describe(const DeepResult& result) {
  std::string out;
  for (const DeepFinding& f : result.findings)
    out += (out.empty() ? "" : " ") + std::to_string(f.line) + ":" + f.method + ":" + f.kind;
  return out;
}

bool Documented(const std::string& api) { return api == "MORVANE-NAVERTIX-MEDIAPLAYER#Documented"; }

}  // namespace

TEST(DeepBindingForms, FindsTheCallsOfEachForm) {
  const Case cases[] = {
      {"blanks around =", "var p = document.getElementById( \"pluginPlayer\" );\np.Play();", "2:Play:getElementById"},
      {"no declaration", "p=document.getElementById('pluginTV');\np.GetChannel();", "2:GetChannel:getElementById"},
      {"not a plug-in element", "var p = document.getElementById('plain'); p.Play();", ""},
      {"documented call first", "var p = document.getElementById('pluginPlayer');\np.Documented();\np.A();\np.B();",
       "3:A:getElementById 4:B:getElementById"},
      {"local bindings in three functions",
       "function a(){ var picture = document.getElementById('pluginPlayer'); picture.A(); }\n"
       "function b(){ var picture = document.getElementById('pluginPlayer'); picture.B(); }\n"
       "function c(){ var picture = document.getElementById('pluginPlayer'); picture.C(); }",
       "1:A:getElementById 2:B:getElementById 3:C:getElementById"},
      {"local shadows nothing global", "function f(){ var q = document.getElementById('pluginTV'); }\nq.X();", ""},
      {"this in object literal", "var Audio = { init: function() { this.plugin = document.getElementById('pluginTV'); } };\n"
                                 "Audio.plugin.SetVolume(3);", "2:SetVolume:getElementById"},
      {"nested literal", "var App = { Audio: { init: function() { this.p = $('#pluginTV')[0]; } } };\nApp.Audio.p.Mute();",
       "2:Mute:jquery"},
      {"constructor", "function Player() { this.obj = jQuery(\"#pluginPlayer\").get(0); }\nPlayer.obj.Stop();", "2:Stop:jquery"},
      {"prototype method", "Player.prototype.init = function() { this.o = document.embeds[0]; };\nPlayer.o.Pause();",
       "2:Pause:embeds"},
      {"embeds by name", "var e = document.embeds['pluginTV'];\ne.Tune();", "2:Tune:embeds"},
      {"tag name index", "var t = document.getElementsByTagName('object')[1];\nt.Tune();", "2:Tune:getElementsByTagName"},
      {"alias", "var Main = {};\nMain.player = document.getElementById('pluginPlayer');\nvar a = Main.player;\na.Play();",
       "4:Play:getElementById"},
      {"parameter agreed", "function use(o) { o.Seek(1); }\nuse(document.getElementById('pluginPlayer'));", "1:Seek:parameter"},
      {"parameter disagreed",
       "function use(o) { o.Seek(1); }\nuse(document.getElementById('pluginPlayer'));\nuse(document.getElementById('pluginTV'));",
       ""},
      {"createElement", "var o = document.createElement('object');\no.setAttribute('classid', 'clsid:MORVANE-NAVERTIX-EPG');\n"
                        "o.id = 'made';\nvar m = document.getElementById('made');\nm.GetEvents();\no.Refresh();",
       "5:GetEvents:getElementById 6:Refresh:createElement"},
      {"execute and open", "var k = document.getElementById('pluginTV');\nk.Open('ext');\nk.Execute('Start', 1);",
       "3:Start:execute"},
      {"comments are not calls", "var p = document.getElementById('pluginPlayer');\n// p.Hidden();\n/* p.Gone(); */ p.Seen();",
       "3:Seen:getElementById"},
      {"element methods", "var p = document.getElementById('pluginPlayer'); p.setAttribute('x', 1);", ""},
      {"direct look-up", "document.getElementById('pluginPlayer').Play();", "1:Play:getElementById"},
  };
  for (const Case& c : cases) {
    DeepResult result = AnalyseWebSources({{"index.html", kPage}, {"app.js", c.script}}, Documented);
    EXPECT_EQ(Describe(result), c.expected) << c.name;
    EXPECT_TRUE(result.notes.empty()) << c.name;
  }
}

TEST(DeepBindingForms, InlineScriptsAndHandlersKeepThePageLines) {
  const std::string page = std::string(kPage) +
                           "<script type='text/javascript'>\n"
                           "var p = document.getElementById('pluginPlayer');\n"
                           "</script>\n"
                           "<a onclick=\"p.Play()\">x</a>\n"
                           "<script>p.Stop();</script>\n";
  DeepResult result = AnalyseWebSources({{"index.html", page}}, nullptr);
  EXPECT_EQ(Describe(result), "9:Play:getElementById 10:Stop:getElementById");
}

TEST(DeepBindingForms, SwfStatements) {
  DeepResult result = AnalyseSwfStatements(
      "movie.swf", {"trace(\"x\")", "getObject(\"pluginTV\").Tune(1)", "getObject( ext ) . Play()", "getObject(a).Open()"},
      {{"pluginTV", "MORVANE-NAVERTIX-TUNER"}}, nullptr);
  ASSERT_EQ(result.findings.size(), 2u);
  EXPECT_EQ(result.findings[0].classId, "MORVANE-NAVERTIX-TUNER");
  EXPECT_EQ(result.findings[0].line, 2u);
  EXPECT_EQ(result.findings[1].method, "Play");
  EXPECT_EQ(result.findings[1].elementId, "ext");
}

TEST(DeepBindingForms, DeepNestingIsNotedNotFollowed) {
  std::string script = "var p = document.getElementById('pluginPlayer');\n";
  for (int i = 0; i < 3000; ++i) script += "(";
  script += "p.Play()";
  for (int i = 0; i < 3000; ++i) script += ")";
  DeepResult result = AnalyseWebSources({{"index.html", kPage}, {"deep.js", script}}, nullptr);
  EXPECT_FALSE(result.notes.empty());
}
