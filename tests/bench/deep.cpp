// Throughput of the deep analysis on a generated application: object-literal
// modules that bind plug-ins in their init and call them from other files.
#include "deep/DeepAnalysis.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

std::vector<tarvo_deep::DeepSource> GenerateApplication(size_t bytesPerFile, int files) {
  std::vector<tarvo_deep::DeepSource> sources{
      {"index.html", "<object id='pluginPlayer' classid='clsid:MORVANE-NAVERTIX-MEDIAPLAYER'></object>\n"}};
  for (int f = 0; f < files; ++f) {
    std::string text;
    for (int m = 0; text.size() < bytesPerFile; ++m) {
      std::string name = "Module" + std::to_string(f) + "_" + std::to_string(m);
      text += "var " + name + " = {\n  init: function (a, b) {\n    this.player = document.getElementById(\"pluginPlayer\");\n"
              "    var total = 0;\n    for (var i = 0; i < a; i++) { total += i * b; }\n    return total;\n  },\n"
              "  play: function (url) {\n    " + name + ".player.Play(url);\n    this.player.SetDisplayArea(0, 0, 960, 540);\n  }\n};\n";
    }
    sources.push_back({"Module" + std::to_string(f) + ".js", std::move(text)});
  }
  return sources;
}

void BM_DeepAnalysis(benchmark::State& state) {
  const auto sources = GenerateApplication(static_cast<size_t>(state.range(0)) << 10, 8);
  size_t bytes = 0;
  for (const auto& source : sources) bytes += source.text.size();
  for (auto _ : state) {
    auto result = tarvo_deep::AnalyseWebSources(sources, [](const std::string&) { return false; });
    benchmark::DoNotOptimize(result);
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes * state.iterations()));
}
BENCHMARK(BM_DeepAnalysis)->Arg(64)->Arg(512)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
