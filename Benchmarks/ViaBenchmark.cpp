// Via stitching of a plane of 200 by 200 mm, poured on both sides around the tracks of other nets: time of a
// place by the number of places, and by the number of objects on the board.
#include <benchmark/benchmark.h>

#include "Benchmarks/SyntheticBoard.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Files/Units.h"
#include "Editor/Vias/Stitching.h"
#include "Editor/Vias/ViaUnions.h"

namespace Ketril::Benchmarks {
namespace {

using benchmark::Counter;

// range(0): micrometres between places; range(1): objects.
void Stitch(benchmark::State& state) {
  const Ref<Editor::Board> board = Editor::ReadBoardText(BoardOfPlanes(state.range(1)), "");
  const Ref<Editor::StitchOptions> options = board->Unions().StitchDefaults();
  options->settings.grid_x = options->settings.grid_y =
      Editor::ToUnits(Editor::Nanometres{state.range(0)} * 1000);
  options->settings.reference->SetNet(board->FindNet(u"N1"));
  Editor::ViaRun run;
  for (auto _ : state) {
    run = {};
    Editor::ViaPlacer placer(*board, options->settings, run);
    Editor::FloodWithVias(*board, options->settings, placer, run);
    benchmark::DoNotOptimize(placer.Places().size());
    run.placed = placer.Places().size();
  }
  state.counters["time/place"] =
      Counter(static_cast<double>(run.tried), Counter::kIsIterationInvariantRate | Counter::kInvert);
  state.counters["places"] = static_cast<double>(run.tried);
  state.counters["vias"] = static_cast<double>(run.placed);
}
BENCHMARK(Stitch)
    ->ArgsProduct({{4000, 2000, 1000}, {100000}})
    ->ArgsProduct({{2000}, {10000, 1000000}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Ketril::Benchmarks
