// The check of clearances of a whole board, its shapes and index built anew.
#include <benchmark/benchmark.h>

#include "Benchmarks/SyntheticBoard.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Rules/Clearance.h"

namespace Ketril::Benchmarks {
namespace {

void Check(benchmark::State& state) {
  const Ref<Editor::Board> board = Editor::ReadBoardText(SyntheticBoard(state.range(0)), "");
  double found = 0;
  for (auto _ : state) found = static_cast<double>(Editor::ClearanceChecker(*board).CheckBoard().size());
  state.counters["violations"] = found;
  state.counters["time/object"] =
      benchmark::Counter(static_cast<double>(board->objects.Count()),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(Check)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Ketril::Benchmarks
