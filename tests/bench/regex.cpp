// Compile and search costs of the scanners' patterns over a generated 1 MB
// page of HTML and script.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "APICheckEngine/PatternTexts.h"
#include "regex/Pattern.h"

namespace {

struct NamedPattern {
  const char* name;
  std::string text;
};

const std::vector<NamedPattern>& patterns() {
  using namespace ::patterns;
  static const std::vector<NamedPattern> all = {
      {"api_name", kMethodCall},
      {"dom_access", ElementAccessForm()},
      {"embeds", kEmbedsForm},
      {"functions", kFunctionHeader},
      {"tags", kTag},
      {"element_id", kQuotedIdForms[0]},
      {"calls_on_tv", CallsOn("tv")},
      {"execute", kExecuteCall},
      {"lookup_call", LookUpMethodCall("tv")},
      {"assignment", kAssignmentTarget},
      {"alias_call", CallWithArgument("tv")},
  };
  return all;
}

// About 1 MB of page text drawn from typical fragments, the same every run.
const std::string& page() {
  static const std::string text = [] {
    const char* fragments[] = {
        "<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-KOB\" width=\"0\" height=\"0\"></object>\n",
        "<div class=\"menu\"><span id='title'>Channel list</span></div>\n",
        "function init(a, b) {\n  var tv = document.getElementById(\"tv\");\n  tv.SetVolume(a + 10);\n}\n",
        "  var items = $(\"list\").children(); for (var i = 0; i < items.length; i++) { total += i * 2; }\n",
        "  x = tv.GetModel(); obj.Execute( \"Start\" ); var e = document.embeds[0];\n",
        "  onKey : function (code) { if (code == 37) { this.focus = (this.focus + 1) % 4; } },\n",
        "  $(\"tv\").Play(getUrl(1)); window.setTimeout(refresh, 500); // poll again\n",
        "  var text = 'Press the red key to continue, or wait ' + seconds + ' seconds.';\n",
    };
    std::string out;
    uint32_t state = 12345;
    while (out.size() < (1u << 20)) {
      state = state * 1103515245u + 12345u;
      out += fragments[(state >> 16) % (sizeof(fragments) / sizeof(fragments[0]))];
    }
    return out;
  }();
  return text;
}

void CompileOnly(benchmark::State& state) {
  const std::string& text = patterns()[state.range(0)].text;
  for (auto _ : state) {
    Pattern pattern(text);
    benchmark::DoNotOptimize(pattern.get());
  }
  state.SetLabel(patterns()[state.range(0)].name);
}

// Compile, then every successive match over the page, as the scanners walk it.
void CompileAndSearchAll(benchmark::State& state) {
  const std::string& text = page();
  int64_t matches = 0;
  for (auto _ : state) {
    Pattern pattern(patterns()[state.range(0)].text);
    pattern.forEachMatch(text.c_str(), [&](const char*, const char*) {
      ++matches;
      return true;
    });
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
  state.counters["matches"] = benchmark::Counter(static_cast<double>(matches) / static_cast<double>(state.iterations()));
  state.SetLabel(patterns()[state.range(0)].name);
}

// Every pattern over one blank-free word of state.range(1) KB, the shape of a
// hostile source whose whole text lands in one excerpt: the time should grow
// with the word's length, not with its square.
void SearchLongWord(benchmark::State& state) {
  const std::string word(static_cast<size_t>(state.range(1)) << 10, 'k');
  for (auto _ : state) {
    Pattern pattern(patterns()[state.range(0)].text);
    pattern.forEachMatch(word.c_str(), [](const char*, const char*) { return true; });
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(word.size()));
  state.SetLabel(patterns()[state.range(0)].name);
}

void LongWords(benchmark::internal::Benchmark* b) {
  for (size_t i = 0; i < patterns().size(); ++i) {
    if (std::string(patterns()[i].name) == "tags") continue;  // `<.*>` needs a `<` to start
    for (int64_t kilobytes : {64, 256, 1024}) b->Args({static_cast<int64_t>(i), kilobytes});
  }
}

void AllPatterns(benchmark::internal::Benchmark* b) {
  for (size_t i = 0; i < patterns().size(); ++i) b->Arg(static_cast<int64_t>(i));
}

BENCHMARK(CompileOnly)->Apply(AllPatterns);
BENCHMARK(CompileAndSearchAll)->Apply(AllPatterns)->Unit(benchmark::kMillisecond);
BENCHMARK(SearchLongWord)->Apply(LongWords)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
