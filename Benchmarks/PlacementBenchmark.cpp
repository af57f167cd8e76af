// Components to the grid, and the shove in a crowd of components: by the tool alone, with its host calls.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <utility>

#include "Benchmarks/SyntheticBoard.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/HostCall.h"
#include "Interfaces/Tools.h"

namespace Ketril::Benchmarks {
namespace {

using benchmark::Counter;
using Editor::Board;

constexpr double kRoomy = 4, kCrowded = 1.8;  // mm from one to the next, which are 2 mm wide

TCoordPoint MiddleOf(const Board& board) {
  const TCoordRect box = board.Extents();
  const TCoordPoint middle{box.x1 + (box.x2 - box.x1) / 2, box.y1 + (box.y2 - box.y1) / 2};
  TCoordPoint nearest;
  double least = 0;
  board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& component) {
    const TCoordPoint at = component.Reference();
    const double x = double(at.x) - middle.x, y = double(at.y) - middle.y, distance = x * x + y * y;
    if (least != 0 && distance >= least) return;
    least = distance;
    nearest = at;
  });
  return nearest;
}

// The pick of the user, once a run.
bool picked = false;
TCoordPoint pick;

Editor::ClientSetup User(std::int32_t passes) {
  Editor::ClientSetup setup;
  setup.shove_passes = passes;
  setup.choose_location = [](const std::u16string&) -> std::optional<TCoordPoint> {
    if (std::exchange(picked, true)) return std::nullopt;
    return pick;
  };
  return setup;
}

// Runs `tool` on fresh boards; counts its calls and the components that it moved once.
template <class Tool>
void Measure(benchmark::State& state, double pitch, std::int32_t passes, Tool tool) {
  const Editor::ClientInstallation installation(Editor::MakeHost<Editor::Client>(User(passes)));
  const std::string text = BoardOfComponents(state.range(0), pitch);
  const auto fresh = [&] {
    const Ref<Board> board = Editor::ReadBoardText(text, "");
    board->objects.ForEach({eComponentObject},
                           [](Editor::Primitive& c) { c.Set(Editor::kFlag_Selected, true); });
    pick = MiddleOf(*board);
    picked = false;
    std::srand(1);
    return board;
  };
  double calls = 0, moved = 0;
  {
    const Ref<Board> board = fresh();
    board->journal.Begin();
    Editor::HostGate::Arm();
    tool(*board);
    Editor::HostGate::Disarm();
    calls = static_cast<double>(Editor::HostGate::Calls());
    for (const Editor::Change& change : board->journal.Changes())
      moved += change.object->kind == eComponentObject ? 1 : 0;
  }
  for (auto _ : state) {
    state.PauseTiming();
    Ref<Board> board = fresh();
    state.ResumeTiming();
    tool(*board);
    state.PauseTiming();
    board = nullptr;
    state.ResumeTiming();
  }
  state.counters["moved"] = moved;
  state.counters["time/moved"] = Counter(moved, Counter::kIsIterationInvariantRate | Counter::kInvert);
  state.counters["calls/moved"] = calls / moved;
  state.SetComplexityN(state.range(0));
  Tools::ReleasePCBServer();
}

void ToGrid(benchmark::State& state) {
  Measure(state, kRoomy, 0, [](Board& board) { Tools_MoveAllCompsToGrid(&board); });
}
// A fixed number of waves: what grows is the board around them.
void ShoveTenWaves(benchmark::State& state) {
  Measure(state, kCrowded, 10, [](Board& board) { Tools_ShoveComponents(&board, board.view.Get()); });
}
// Until the push has reached everything.
void ShoveAllWaves(benchmark::State& state) {
  Measure(state, kCrowded, 1000, [](Board& board) { Tools_ShoveComponents(&board, board.view.Get()); });
}

BENCHMARK(ToGrid)->RangeMultiplier(10)->Range(100, 100000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(ShoveTenWaves)->RangeMultiplier(10)->Range(100, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ShoveAllWaves)->RangeMultiplier(4)->Range(64, 4096)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
}  // namespace Ketril::Benchmarks
