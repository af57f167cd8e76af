// Teardrops of tracks on vias and on pads, of either builder: adding, which checks clearances, and removing,
// by the tool alone; host calls and memory of a track.
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

enum class Builder : std::uint8_t { Current, OlderOfArcs, OlderOfTracks };

template <Builder builder>
void Run(Board& board, bool removes) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  if (builder == Builder::Current) {
    parameters->AddParameter(u"TeardropParam_FlagsEx", removes ? u"968" : u"1000");
    return Tools_TearDrops(&board, parameters.Get());
  }
  parameters->AddParameter(u"Report", u"False");
  parameters->AddParameter(u"Style", builder == Builder::OlderOfArcs ? u"0" : u"1");
  parameters->AddParameter(u"Action", removes ? u"Remove" : u"Add");
  Tools_LegacyTearDrops(&board, parameters.Get());
}

double HeapBytes() {
  const auto heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd);
}

template <Builder builder>
double CallsOf(const std::string& text, bool removes) {
  const Ref<Board> board = Editor::ReadBoardText(text, "");
  if (removes) Run<builder>(*board, false);
  Editor::HostGate::Arm();
  Run<builder>(*board, removes);
  Editor::HostGate::Disarm();
  return static_cast<double>(Editor::HostGate::Calls());
}

// Either adds to a fresh board or removes from one that has them.
template <TrackEnd end, bool removes, Builder builder = Builder::Current>
void Teardrops(benchmark::State& state) {
  const Editor::ClientInstallation installation(Editor::MakeHost<Editor::Client>(Editor::ClientSetup{}));
  const std::string text = BoardOfTrackEnds(state.range(0), end);
  const double calls = CallsOf<builder>(text, removes);
  double bytes = 0, left = 0;
  for (auto _ : state) {
    state.PauseTiming();
    Ref<Board> board = Editor::ReadBoardText(text, "");
    if (removes) Run<builder>(*board, false);
    const double before = HeapBytes();
    state.ResumeTiming();
    Run<builder>(*board, removes);
    state.PauseTiming();
    bytes = HeapBytes() - before;
    left = 0;
    board->objects.ForEach({eRegionObject, eTrackObject, eArcObject}, [&](const Editor::Primitive& drop) {
      left += drop.Has(Editor::kFlag_TearDrop) ? 1 : 0;
    });
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
BENCHMARK(Teardrops<TrackEnd::Via, false, Builder::OlderOfArcs>)->Name("AddArcsOnVias")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Via, true, Builder::OlderOfArcs>)->Name("RemoveArcsFromVias")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Via, false, Builder::OlderOfTracks>)->Name("AddFansOnVias")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Via, true, Builder::OlderOfTracks>)->Name("RemoveFansFromVias")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Pad, false>)->Name("AddOnPads")->Apply(Sizes);
BENCHMARK(Teardrops<TrackEnd::Pad, true>)->Name("RemoveFromPads")->Apply(Sizes);

}  // namespace
}  // namespace Ketril::Benchmarks
