// Teardrops of tracks on vias and on pads: adding, which checks clearances, and removing, by the tool alone;
// host calls and memory of a track.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include "Benchmarks/SyntheticBoard.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/HostCall.h"
#include "Interfaces/Tools.h"

namespace Ketril::Benchmarks {
namespace {

using benchmark::Counter;
using Editor::Board;

constexpr char16_t kAdd[] = u"1000", kRemove[] = u"968";

void Run(Board& board, const char16_t* flags) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  parameters->AddParameter(u"TeardropParam_FlagsEx", flags);
  Tools_TearDrops(&board, parameters.Get());
}

double HeapBytes() {
  const auto heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd);
}

double CallsOf(const std::string& text, bool removes) {
  const Ref<Board> board = Editor::ReadBoardText(text, "");
  if (removes) Run(*board, kAdd);
  Editor::HostGate::Arm();
  Run(*board, removes ? kRemove : kAdd);
  Editor::HostGate::Disarm();
  return static_cast<double>(Editor::HostGate::Calls());
}

// Either adds to a fresh board or removes from one that has them.
template <TrackEnd end, bool removes>
void Teardrops(benchmark::State& state) {
  const Editor::ClientInstallation installation(Editor::MakeHost<Editor::Client>(Editor::ClientSetup{}));
  const std::string text = BoardOfTrackEnds(state.range(0), end);
  const double calls = CallsOf(text, removes);
  double bytes = 0, left = 0;
  for (auto _ : state) {
    state.PauseTiming();
    Ref<Board> board = Editor::ReadBoardText(text, "");
    if (removes) Run(*board, kAdd);
    const double before = HeapBytes();
    state.ResumeTiming();
    Run(*board, removes ? kRemove : kAdd);
    state.PauseTiming();
    bytes = HeapBytes() - before;
    left = 0;
    board->objects.ForEach({eRegionObject}, [&](const Editor::Primitive&) { ++left; });
    board = nullptr;
    state.ResumeTiming();
  }
  const double tracks = static_cast<double>(state.range(0));
  state.counters["time/track"] = Counter(tracks, Counter::kIsIterationInvariantRate | Counter::kInvert);
  state.counters["calls/track"] = calls / tracks;
  state.counters["teardrops/track"] = left / tracks;
  if (!removes) state.counters["bytes/track"] = bytes / tracks;
  Tools::ReleasePCBServer();
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(Teardrops<TrackEnd::Via, false>)->Name("AddOnVias")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Via, true>)->Name("RemoveFromVias")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Pad, false>)->Name("AddOnPads")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Pad, true>)->Name("RemoveFromPads")->Apply(Sizes);

}  // namespace
}  // namespace Ketril::Benchmarks
