// Reading and saving boards, walking them through the wrappers, searching them by area, and what an object
// costs in memory.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <random>

#include "Benchmarks/SyntheticBoard.h"
#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/Primitives.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/HostCall.h"

namespace Ketril::Benchmarks {
namespace {

using benchmark::Counter;
using Editor::Board;

// Seconds divided by `count` objects, shown with a prefix: "80n" is 80 nanoseconds an object.
Counter PerObject(std::int64_t count) {
  return Counter(static_cast<double>(count), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void ReadBoard(benchmark::State& state) {
  const std::string text = SyntheticBoard(state.range(0));
  double bytes = 0;
  std::size_t objects = 0;
  for (auto _ : state) {
    const auto before = mallinfo2();
    const Ref<Board> board = Editor::ReadBoardText(text, "");
    state.PauseTiming();
    const auto after = mallinfo2();
    bytes = static_cast<double>(after.uordblks + after.hblkhd) -
            static_cast<double>(before.uordblks + before.hblkhd);
    objects = board->objects.Count();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
  state.counters["time/object"] = PerObject(static_cast<std::int64_t>(objects));
  state.counters["bytes/object"] = bytes / static_cast<double>(objects);
}
BENCHMARK(ReadBoard)->Arg(1000)->Arg(10000)->Arg(50000)->Arg(100000)->Arg(1000000)->Unit(
    benchmark::kMillisecond);

void SaveUnchanged(benchmark::State& state) {
  const Ref<Board> board = Editor::ReadBoardText(SyntheticBoard(state.range(0)), "");
  for (auto _ : state) benchmark::DoNotOptimize(Editor::WriteBoardText(*board));
  state.SetBytesProcessed(static_cast<std::int64_t>(board->file.text.size()) * state.iterations());
}
BENCHMARK(SaveUnchanged)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void SaveWithAllTracksChanged(benchmark::State& state) {
  const Ref<Board> board = Editor::ReadBoardText(SyntheticBoard(state.range(0)), "");
  board->objects.ForEach({eTrackObject}, [](Editor::Primitive& track) {
    track.Write([&] { static_cast<Editor::Track&>(track).data.width += 1000; });
  });
  for (auto _ : state) benchmark::DoNotOptimize(Editor::WriteBoardText(*board));
}
BENCHMARK(SaveWithAllTracksChanged)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// One walk of all tracks as a tool makes it; closing the scope, which frees the wrappers, is part of it.
std::int64_t WalkTracks(Board& board) {
  using namespace Tools;
  std::int64_t sum = 0;
  BeginObjectScope();
  {
    TBoard* wrapper = TBoard::Create(Ref<IPCB_Board>(&board));
    TBoardIterator iterator(wrapper);
    iterator.SetState_FilterObject({eTrackObject});
    for (TPrimitive* object = iterator.First(); object; object = iterator.Next()) {
      auto* track = static_cast<TTrack*>(object);
      sum += track->Width() + track->Layer().ID + (track->Net() ? 1 : 0);
    }
  }
  EndObjectScope();
  return sum;
}

void WalkTracksThroughWrappers(benchmark::State& state) {
  const Ref<Board> board = Editor::ReadBoardText(SyntheticBoard(state.range(0)), "");
  for (auto _ : state) benchmark::DoNotOptimize(WalkTracks(*board));
  Editor::HostGate::Arm();
  WalkTracks(*board);
  state.counters["host calls/object"] =
      static_cast<double>(Editor::HostGate::Calls()) / static_cast<double>(state.range(0));
  Editor::HostGate::Disarm();
  state.counters["time/object"] = PerObject(state.range(0));
}
BENCHMARK(WalkTracksThroughWrappers)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

// The first search of a board builds the index.
void BuildIndex(benchmark::State& state) {
  const Ref<Board> board = Editor::ReadBoardText(SyntheticBoard(state.range(0)), "");
  for (auto _ : state) {
    board->index.Rebuild();
    benchmark::DoNotOptimize(board->index.Find({0, 0, 1, 1}));
  }
  state.counters["time/object"] = PerObject(static_cast<std::int64_t>(board->objects.Count()));
}
BENCHMARK(BuildIndex)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void SearchByArea(benchmark::State& state) {
  using namespace Tools;
  const Ref<Board> board = Editor::ReadBoardText(SyntheticBoard(state.range(0)), "");
  const TCoordRect extents = board->Extents();
  std::mt19937 random(1);
  std::uniform_int_distribution<TCoord> x(extents.x1, extents.x2), y(extents.y1, extents.y2);
  constexpr TCoord kSide = 393701;  // 1 mm
  std::int64_t found = 0;
  board->index.Find({0, 0, 1, 1});  // builds the index
  for (auto _ : state) {
    BeginObjectScope();
    {
      TBoard* wrapper = TBoard::Create(Ref<IPCB_Board>(board.Get()));
      TSpatialIterator iterator(wrapper);
      const TCoord left = x(random), bottom = y(random);
      iterator.SetState_FilterArea(left, bottom, left + kSide, bottom + kSide);
      for (TPrimitive* object = iterator.First(); object; object = iterator.Next()) ++found;
    }
    EndObjectScope();
  }
  state.counters["found"] = static_cast<double>(found) / static_cast<double>(state.iterations());
}
BENCHMARK(SearchByArea)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace Ketril::Benchmarks
