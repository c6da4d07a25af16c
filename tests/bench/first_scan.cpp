// The Prepare stage over one generated JavaScript file of jQuery-style TV
// application code: loading, comment removal, excerpts with the access and
// embeds patterns, function blocks with the function pattern. Doubling the
// size should roughly double the time.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/SourceScan.h"
#include "support/EngineHost.h"

namespace {

std::string applicationScript(size_t size) {
  std::string out;
  for (int n = 0; out.size() < size; ++n) {
    std::string i = std::to_string(n);
    out += "// Scene " + i + ": key handling and player control\n"
           "var Scene" + i + " = {\n"
           "    focus : 0,\n"
           "    init : function (tvId, items) {\n"
           "        this.player = document.getElementById(tvId);\n"
           "        $(\"menu" + i + "\").show();\n"
           "        for (var k = 0; k < items.length; k++) { $(\"item\" + k).removeClass(\"on\"); }\n"
           "    },\n"
           "    keyDown : function (event) {\n"
           "        switch (event.keyCode) {\n"
           "            case 37: this.focus--; $(\"list\").animate({ left: this.focus * 120 }); break;\n"
           "            case 39: this.focus++; break;\n"
           "            default: /* ignored */ break;\n"
           "        }\n"
           "    }\n"
           "};\n"
           "function play" + i + "(url) {\n"
           "    var tv = document.getElementById(\"tv\");\n"
           "    var audio = document.embeds[1];\n"
           "    if (tv) { tv.Play(url); audio.SetVolume(10); }\n"
           "}\n\n";
  }
  return out;
}

void BM_FirstScanSource(benchmark::State& state) {
  TempDir dir;
  const std::string path = dir.file("app.js");
  WriteFile(path, applicationScript(static_cast<size_t>(state.range(0))));
  std::vector<std::string> files = {path};
  for (auto _ : state) {
    FlashEngine_1_00::APIAnalysis engine;
    engine.FirstScanSource(&files);
    benchmark::DoNotOptimize(engine.objectAccessList.size());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_FirstScanSource)->Arg(1 << 20)->Arg(2 << 20)->Arg(4 << 20)->Unit(benchmark::kMillisecond);

// The two halves of the first pass on their own, over the same text.
void BM_AccessExpressions(benchmark::State& state) {
  const std::string text = applicationScript(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    FlashEngine_1_00::APIAnalysis engine;
    FlashEngine_1_00::sourcescan::collectAccessExpressions(text.c_str(), text.size(), "app.js", engine.objectAccessList,
                                                           engine.embedsAccessList);
    benchmark::DoNotOptimize(engine.objectAccessList.size());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_AccessExpressions)->Arg(1 << 20)->Arg(2 << 20)->Unit(benchmark::kMillisecond);

void BM_FunctionBlocks(benchmark::State& state) {
  const std::string text = applicationScript(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    FlashEngine_1_00::APIAnalysis engine;
    FlashEngine_1_00::sourcescan::collectFunctionBlocks(text.c_str(), text.size(), "app.js", engine.functionBlockList);
    benchmark::DoNotOptimize(engine.functionBlockList.size());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_FunctionBlocks)->Arg(1 << 20)->Arg(2 << 20)->Unit(benchmark::kMillisecond);

// Object elements and their ids followed into every source: the page holds
// three plug-in objects, the script is the generated one.
void BM_ObjectDiscovery(benchmark::State& state) {
  TempDir dir;
  WriteFile(dir.file("index.html"),
            "<html><body>\n<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-TUNER\"></object>\n"
            "<object id=\"audio\" classid=\"clsid:MORVANE-NAVERTIX-AUDIOOUT\"></object>\n"
            "<object id=\"kob\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>\n</body></html>\n");
  WriteFile(dir.file("app.js"), applicationScript(static_cast<size_t>(state.range(0))));
  std::vector<std::string> files = {dir.file("index.html"), dir.file("app.js")};
  for (auto _ : state) {
    state.PauseTiming();
    FlashEngine_1_00::APIAnalysis engine;
    engine.FirstScanSource(&files);
    state.ResumeTiming();
    engine.FindObjectTagToken();
    engine.FindObjectID();
    benchmark::DoNotOptimize(engine.objectIdList.size());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_ObjectDiscovery)->Arg(1 << 20)->Arg(2 << 20)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
