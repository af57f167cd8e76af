// The polygon clipper beside Clipper 6.4: the union, by the even-odd rule, of the same shapes by both; and
// the area that many tracks cover, where ours, which knows no other rule, joins them two by two, and Clipper
// all at once by the non-zero rule. Set KETRIL_BOARD to a board file to have the copper of its top layer too.
#include <benchmark/benchmark.h>

#include <clipper.hpp>
#include <cstdlib>

#include "Benchmarks/ClipperShapes.h"
#include "DLLs/Tools/Geometry/RT_PolygonClipper.h"
#include "Editor/Copper/Outline.h"
#include "Editor/Files/BoardFile.h"

namespace Ketril::Benchmarks {
namespace {

using namespace Tools;

// Records over vertices, for the clipper.
class PolygonView {
 public:
  explicit PolygonView(const std::vector<Outline>& outlines) : flags_(outlines.size()) {
    vertices_.reserve(outlines.size());
    for (const Outline& outline : outlines) {
      std::vector<Tgpc_vertex>& ring = vertices_.emplace_back();
      for (const Vertex& vertex : outline) ring.push_back({double(vertex.x), double(vertex.y)});
      lists_.push_back({static_cast<std::int32_t>(ring.size()), ring.data()});
    }
    polygon_ = {static_cast<std::int32_t>(lists_.size()), flags_.data(), lists_.data()};
  }
  const Tgpc_polygon* Get() const { return &polygon_; }

 private:
  std::vector<std::vector<Tgpc_vertex>> vertices_;
  std::vector<std::int32_t> flags_;
  std::vector<Tgpc_vertex_list> lists_;
  Tgpc_polygon polygon_;
};

ClipperLib::Paths ToPeer(const std::vector<Outline>& outlines) {
  ClipperLib::Paths paths;
  for (const Outline& outline : outlines) {
    ClipperLib::Path& path = paths.emplace_back();
    for (const Vertex& vertex : outline) path.push_back({vertex.x, vertex.y});
  }
  return paths;
}

ClipperInput SpikyStars(std::int64_t count) {
  return TwoStars(count, 0.7);
}
ClipperInput RoundStars(std::int64_t count) {
  return TwoStars(count, 0.0001);
}

template <ClipperInput (*Make)(std::int64_t)>
void Ours(benchmark::State& state) {
  const ClipperInput input = Make(state.range(0));
  const PolygonView subject(input.subject), clip(input.clip);
  double contours = 0;
  for (auto _ : state) {
    const TPolygonOwner result(NewPolygon());
    ClipPolygons(eClipUnion, subject.Get(), clip.Get(), result.get());
    contours = result->num_contours;
  }
  state.counters["contours"] = contours;
}

template <ClipperInput (*Make)(std::int64_t)>
void Clipper6(benchmark::State& state) {
  const ClipperInput input = Make(state.range(0));
  const ClipperLib::Paths subject = ToPeer(input.subject), clip = ToPeer(input.clip);
  double contours = 0;
  for (auto _ : state) {
    ClipperLib::Clipper clipper;
    clipper.AddPaths(subject, ClipperLib::ptSubject, true);
    clipper.AddPaths(clip, ClipperLib::ptClip, true);
    ClipperLib::Paths result;
    clipper.Execute(ClipperLib::ctUnion, result, ClipperLib::pftEvenOdd, ClipperLib::pftEvenOdd);
    contours = double(result.size());
  }
  state.counters["contours"] = contours;
}

// The tracks from `first` on: halves joined, each the union of its own halves.
TPolygonOwner Joined(const std::vector<Outline>& tracks, std::size_t first, std::size_t count) {
  TPolygonOwner result(NewPolygon());
  if (count == 1) {
    const PolygonView track({tracks[first]}), nothing({});
    ClipPolygons(eClipUnion, track.Get(), nothing.Get(), result.get());
  } else {
    const TPolygonOwner a = Joined(tracks, first, count / 2);
    const TPolygonOwner b = Joined(tracks, first + count / 2, count - count / 2);
    ClipPolygons(eClipUnion, a.get(), b.get(), result.get());
  }
  return result;
}

std::vector<Outline> AllTracks(std::int64_t count) {
  ClipperInput input = Tracks(count);
  input.subject.insert(input.subject.end(), input.clip.begin(), input.clip.end());
  return input.subject;
}

void OursCovered(benchmark::State& state) {
  const std::vector<Outline> tracks = AllTracks(state.range(0));
  for (auto _ : state) {
    const TPolygonOwner result = Joined(tracks, 0, tracks.size());
    state.counters["contours"] = result->num_contours;
  }
}

void Clipper6Covered(benchmark::State& state) {
  ClipperLib::Paths tracks = ToPeer(AllTracks(state.range(0)));
  for (ClipperLib::Path& track : tracks) {
    if (!ClipperLib::Orientation(track)) ClipperLib::ReversePath(track);
  }
  for (auto _ : state) {
    ClipperLib::Clipper clipper;
    clipper.AddPaths(tracks, ClipperLib::ptSubject, true);
    ClipperLib::Paths result;
    clipper.Execute(ClipperLib::ctUnion, result, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    state.counters["contours"] = double(result.size());
  }
}

// Every outline of copper on the top layer, by turns in the one polygon and the other.
ClipperInput BoardLayer(std::int64_t) {
  ClipperInput input;
  const char* path = std::getenv("KETRIL_BOARD");
  if (!path) return input;
  const Ref<Editor::Board> board = Editor::ReadBoard(path);
  board->objects.ForEach(TObjectSet::All(), [&](const Editor::Primitive& object) {
    if (object.MemberList() || object.kind == eTextObject) return;
    for (const Editor::Ring& ring : Editor::Outline(Editor::FormsOf(object, eV6_TopLayer), 0, 500)) {
      Outline& outline = (object.order % 2 ? input.subject : input.clip).emplace_back();
      for (const TCoordPoint& point : ring.points) outline.push_back({point.x, point.y});
    }
  });
  return input;
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
}
void TrackSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(Ours<SpikyStars>)->Apply(Sizes);
BENCHMARK(Clipper6<SpikyStars>)->Apply(Sizes);
BENCHMARK(Ours<RoundStars>)->Apply(Sizes);
BENCHMARK(Clipper6<RoundStars>)->Apply(Sizes);
BENCHMARK(Ours<TwoCombs>)->Apply(Sizes);
BENCHMARK(Clipper6<TwoCombs>)->Apply(Sizes);
BENCHMARK(Ours<Tracks>)->Apply(TrackSizes);
BENCHMARK(Clipper6<Tracks>)->Apply(TrackSizes);
BENCHMARK(OursCovered)->Apply(TrackSizes);
BENCHMARK(Clipper6Covered)->Apply(TrackSizes);
BENCHMARK(Ours<BoardLayer>)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(Clipper6<BoardLayer>)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Ketril::Benchmarks
