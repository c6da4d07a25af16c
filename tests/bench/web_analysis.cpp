// Full analyses of generated web applications: a many-file application of a
// few megabytes and one large script file, each at three sizes that double, so
// that the time per byte shows whether any step grows faster than the input.
//
//   bench_web_analysis --benchmark_counters_tabular=true
//
// The counter ns_per_byte stays roughly level across the sizes of one family
// when the analysis is linear in its input.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "support/EngineHost.h"

namespace {

// One script module in the style of a TV application: a page object, plug-in
// look-ups bound to variables, plug-in calls, and jQuery-style UI code.
std::string Module(int n) {
  const std::string page = "Page" + std::to_string(n);
  std::string js;
  js += "/* " + page + ": programme list with channel preview. */\n";
  js += "var " + page + " = {\n    items : [],\n    focus : 0,\n    visible : false\n};\n\n";
  js += page + ".init = function () {\n";
  js += "    tv=document.getElementById(\"pluginChannel\");\n";
  js += "    var current = tv.GetCurrentChannel();\n";
  js += "    tv.SetChannel(current + 1);\n";
  js += "    " + page + ".items = tv.GetChannelList(0, 40).split(\"|\");\n";
  js += "    this.player=$(\"pluginPlayer\");\n";
  js += "    this.player.SetDisplayArea(0, 0, 1280, 720);\n";
  js += "    " + page + ".render();\n};\n\n";
  js += page + ".render = function () {\n    var html = \"\";\n";
  js += "    for (var i = 0; i < " + page + ".items.length; i++) {\n";
  js += "        html += \"<li class='item' data-index='\" + i + \"'>\" + " + page + ".items[i] + \"</li>\";\n    }\n";
  js += "    $(\"#" + page + " .list\").html(html);\n";
  js += "    $(\"#" + page + " .item\").eq(" + page + ".focus).addClass(\"focus\");\n};\n\n";
  js += page + ".keyDown = function (event) {\n    switch (event.keyCode) {\n";
  js += "    case 38:\n        " + page + ".move(-1);\n        break;\n";
  js += "    case 40:\n        " + page + ".move(1);\n        break;\n";
  js += "    case 13:\n        this.player.Play(" + page + ".items[" + page + ".focus]);\n        break;\n";
  js += "    }\n};\n\n";
  js += page + ".move = function (step) {\n";
  js += "    $(\"#" + page + " .item\").removeClass(\"focus\");\n";
  js += "    " + page + ".focus = Math.max(0, Math.min(" + page + ".items.length - 1, " + page + ".focus + step));\n";
  js += "    $(\"#" + page + " .item\").eq(" + page + ".focus).addClass(\"focus\");\n};\n\n";
  js += "$(document).ready(function () {\n";
  js += "    $(\"#" + page + "\").on(\"keydown\", function (event) {\n        " + page + ".keyDown(event);\n    });\n";
  js += "    $.ajax({ url : \"data/" + page + ".json\", dataType : \"json\", success : function (data) {\n";
  js += "        $(\"#" + page + " .title\").text(data.title);\n    } });\n});\n\n";
  return js;
}

std::string Page(int n, const std::string& scripts) {
  std::string html = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>Screen " + std::to_string(n) +
                     "</title>\n" + scripts + "</head>\n<body>\n";
  html +=
      "<object id=\"pluginChannel\" classid=\"clsid:MORVANE-NAVERTIX-CHANNEL\" style=\"width:0;height:0\">"
      "</object>\n";
  html += "<object id=\"pluginPlayer\" classid=\"clsid:MORVANE-NAVERTIX-MEDIAPLAYER\"></object>\n";
  for (int row = 0; row < 40; ++row) {
    html += "<div class=\"row\" id=\"row" + std::to_string(row) + "\"><span class=\"time\">" +
            std::to_string(18 + row % 6) + ":00</span><span class=\"title\">Programme " + std::to_string(row) +
            "</span></div>\n";
  }
  html +=
      "<script type=\"text/javascript\">\n$(document).ready(function () { $(\"#row0\").addClass(\"focus\"); "
      "});\n</script>\n</body>\n</html>\n";
  return html;
}

void Write(const std::string& path, const std::string& text) {
  if (FILE* out = std::fopen(path.c_str(), "wb")) {
    std::fwrite(text.data(), 1, text.size(), out);
    std::fclose(out);
  }
}

struct Application {
  TempDir dir;
  std::vector<std::string> files;
  size_t bytes = 0;
};

// About `target` bytes in script files of about 40 KB, with one HTML page
// per ten script files.
std::unique_ptr<Application> ManyFiles(size_t target) {
  auto app = std::make_unique<Application>();
  int module = 0;
  for (int file = 0; app->bytes < target; ++file) {
    std::string js;
    while (js.size() < 40 * 1024) js += Module(module++);
    std::string path = app->dir.file("js" + std::to_string(file) + ".js");
    Write(path, js);
    app->files.push_back(path);
    app->bytes += js.size();
    if (file % 10 == 0) {
      std::string html = Page(file, "<script src=\"js" + std::to_string(file) + ".js\"></script>\n");
      std::string htmlPath = app->dir.file("screen" + std::to_string(file) + ".html");
      Write(htmlPath, html);
      app->files.push_back(htmlPath);
      app->bytes += html.size();
    }
  }
  return app;
}

// One HTML page and one script file of about `target` bytes.
std::unique_ptr<Application> OneScript(size_t target) {
  auto app = std::make_unique<Application>();
  std::string html = Page(0, "<script src=\"bundle.js\"></script>\n");
  Write(app->dir.file("index.html"), html);
  app->files.push_back(app->dir.file("index.html"));
  std::string js;
  for (int module = 0; js.size() < target; ++module) js += Module(module);
  Write(app->dir.file("bundle.js"), js);
  app->files.push_back(app->dir.file("bundle.js"));
  app->bytes = html.size() + js.size();
  return app;
}

void Analyse(benchmark::State& state, Application& app) {
  DatabaseFile database(ReadFile(std::string(TARVO_SOURCE_DIR) + "/data/APIAnalEngineDB.xml"));
  createResultVector();
  RunResult code = 0;
  auto start = std::chrono::steady_clock::now();
  for (auto _ : state) {
    FlashEngine_1_00::APIAnalysis engine;
    std::vector<std::string> files = app.files;
    code = engine.StartAnalysis(&files);
    benchmark::DoNotOptimize(code);
  }
  std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
  if (code != RUN_SUCCESS) state.SkipWithError("the generated application should be clean");
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * app.bytes));
  state.counters["MB"] = static_cast<double>(app.bytes) / (1024.0 * 1024.0);
  state.counters["ns_per_byte"] =
      elapsed.count() / (static_cast<double>(state.iterations()) * static_cast<double>(app.bytes));
  destoryResultVector();
}

template <std::unique_ptr<Application> (*Make)(size_t)>
void BM_Analysis(benchmark::State& state) {
  static std::map<int64_t, std::unique_ptr<Application>> apps;
  std::unique_ptr<Application>& app = apps[state.range(0)];
  if (!app) app = Make(static_cast<size_t>(state.range(0)) * 1024);
  Analyse(state, *app);
}

}  // namespace

// A 10 MB application of many files, with half and double its size.
BENCHMARK_TEMPLATE(BM_Analysis, ManyFiles)
    ->Name("ManyFiles_KB")
    ->Arg(5 * 1024)
    ->Arg(10 * 1024)
    ->Arg(20 * 1024)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(2);
// A 5 MB script file, with half and double its size.
BENCHMARK_TEMPLATE(BM_Analysis, OneScript)
    ->Name("OneScript_KB")
    ->Arg(2560)
    ->Arg(5 * 1024)
    ->Arg(10 * 1024)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(2);

BENCHMARK_MAIN();
