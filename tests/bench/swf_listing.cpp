// Listing throughput of the SWF disassembler, in bytes of action records per
// second, over a large generated file of typical ActionScript 2 code.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "APICheckEngine/TimeBudget.h"
#include "support/EngineHost.h"
#include "support/SwfWriter.h"
#include "swf/DeAssembler.h"

namespace {

using swf::ActionBuilder;
using swf::PushValue;

// One method call site as compilers emit it, with a conditional around it.
void appendCallSite(ActionBuilder& actions, int n) {
  actions.push({PushValue::constant8(0)}).op(0x1C)  // obj
      .push({PushValue::constant8(1)}).op(0x4E)     // .player
      .push({PushValue::string("track" + std::to_string(n)), PushValue::integer(n), PushValue::float64(n * 0.5),
             PushValue::integer(2), PushValue::constant8(2)})
      .branchIf(7)
      .op(0x52)  // call
      .op(0x17)
      .jump(2)
      .op(0x06).op(0x07);
}

struct Movie {
  std::string path;
  uint64_t actionBytes = 0;
};

Movie makeMovie(const TempDir& dir, bool compressed) {
  swf::SwfWriter writer;
  uint64_t actionBytes = 0;
  for (int block = 0; block < 200; ++block) {
    ActionBuilder actions;
    actions.constantPool({"obj", "player", "play"})
        .defineFunction2("handler" + std::to_string(block), 4, 0x0005, {{3, "event"}, {0, "data"}}, 0);
    for (int n = 0; n < 600; ++n) appendCallSite(actions, n);
    actionBytes += actions.size();
    writer.doAction(actions);
    writer.tag(1, "");
  }
  writer.end();
  Movie movie;
  movie.path = dir.file(compressed ? "large_cws.swf" : "large_fws.swf");
  movie.actionBytes = actionBytes;
  writer.write(movie.path, compressed);
  return movie;
}

void listMovie(benchmark::State& state, bool compressed) {
  TempDir dir;
  Movie movie = makeMovie(dir, compressed);
  DeAssembler deAssembler;
  size_t lineCount = 0;
  for (auto _ : state) {
    firstTimeVal = TimeBudget::nowMicros();
    std::vector<std::string> lines;
    deAssembler.SWFDeAssemblerMain(movie.path, lines);
    lineCount = lines.size();
    benchmark::DoNotOptimize(lines.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * movie.actionBytes));
  state.counters["action_MB"] = static_cast<double>(movie.actionBytes) / 1e6;
  state.counters["lines"] = static_cast<double>(lineCount);
}

void BM_ListPlainFile(benchmark::State& state) { listMovie(state, false); }
void BM_ListCompressedFile(benchmark::State& state) { listMovie(state, true); }

BENCHMARK(BM_ListPlainFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListCompressedFile)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
