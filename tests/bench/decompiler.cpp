// Replay speed of the decompiler on a large generated listing: every sixth
// record a call, with the member reads, arithmetic and branches around it
// that compiled ActionScript carries.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "APICheckEngine/TimeBudget.h"
#include "decompiler/DeCompiler.h"

namespace {

std::string pushLine(const char* type, const std::string& value) {
  return std::string("ActionPush#@x441#type#@x442#") + type + "#@x441#value#@x442#" + value;
}

std::vector<std::string> makeListing(int calls) {
  std::vector<std::string> lines;
  for (int i = 0; i < calls; ++i) {
    const std::string n = std::to_string(i);
    lines.insert(lines.end(), {
        "[ActionPush]", pushLine("0", "arg" + n), pushLine("7", "1"), pushLine("0", "_root"),
        "[ActionGetVariable]",
        "[ActionPush]", pushLine("0", "player" + n),
        "[ActionGetMember]",
        "[ActionPush]", pushLine("0", "Play"),
        "[ActionCallMethod]",
        "[ActionPop]",
        "----EMPTY----", "Label#@x442#0x" + n,
        "[ActionPush]", pushLine("8", "counter"),
        "[ActionIncrement]",
        "[ActionIf]", "ActionIf#@x441#offset#@x442#10#@x441#address#@x442#" + n,
    });
  }
  return lines;
}

void BM_ReplayListing(benchmark::State& state) {
  std::vector<std::string> listing = makeListing(static_cast<int>(state.range(0)));
  DeCompiler machine;
  std::vector<std::string> statements;
  for (auto _ : state) {
    firstTimeVal = TimeBudget::nowMicros();
    machine.SWFDeCompilerMain(listing, statements);
    benchmark::DoNotOptimize(statements.data());
  }
  state.counters["statements/s"] =
      benchmark::Counter(static_cast<double>(statements.size()) * state.iterations(), benchmark::Counter::kIsRate);
  state.counters["lines/s"] =
      benchmark::Counter(static_cast<double>(listing.size()) * state.iterations(), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ReplayListing)->Arg(1000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
