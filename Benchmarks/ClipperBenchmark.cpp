// The polygon clipper beside Clipper 6.4: the union, by the even-odd rule, of the same shapes by both.
#include <benchmark/benchmark.h>

#include <clipper.hpp>

#include "Benchmarks/ClipperShapes.h"
#include "DLLs/Tools/Geometry/ClipPolygons.h"

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

}  // namespace
}  // namespace Ketril::Benchmarks
