#include "Editor/Copper/Clipping.h"

#include <clipper.hpp>

namespace Ketril::Editor {

namespace {

namespace Clip = ClipperLib;

// Clipper rounds crossings along its scan lines, so that on a nearly level side they may be several units
// off: it is given finer coordinates.
constexpr int kFiner = 256;

Clip::Paths PathsOf(const std::vector<Ring>& rings) {
  Clip::Paths paths;
  paths.reserve(rings.size());
  for (const Ring& ring : rings) {
    Clip::Path& path = paths.emplace_back();
    path.reserve(ring.points.size());
    for (const TCoordPoint& point : ring.points)
      path.emplace_back(Clip::cInt{kFiner} * point.x, Clip::cInt{kFiner} * point.y);
  }
  return paths;
}

// Rounding to whole units may leave a small ring without area, or turn it over.
std::vector<Ring> RingsOf(const Clip::Paths& paths) {
  const auto coordinate = [](Clip::cInt value) { return ToCoord(static_cast<double>(value) / kFiner); };
  std::vector<Ring> rings;
  for (const Clip::Path& path : paths) {
    Ring& ring = rings.emplace_back(Ring{{}, !Clip::Orientation(path)});
    for (const Clip::IntPoint& point : path)
      ring.points.push_back({coordinate(point.X), coordinate(point.Y)});
    RemoveRedundantVertices(ring);
    const double area = AreaOf(ring);
    if (ring.hole ? area >= 0 : area <= 0) rings.pop_back();
  }
  return rings;
}

}  // namespace

std::vector<Ring> Difference(const std::vector<Ring>& rings, const std::vector<Ring>& less) {
  Clip::Clipper clipper;
  clipper.AddPaths(PathsOf(rings), Clip::ptSubject, true);
  clipper.AddPaths(PathsOf(less), Clip::ptClip, true);
  Clip::Paths result;
  clipper.Execute(Clip::ctDifference, result, Clip::pftNonZero, Clip::pftNonZero);
  return RingsOf(result);
}

std::vector<Ring> Offset(const std::vector<Ring>& rings, double reach, double error, bool filled,
                         bool closed) {
  // Clipper rounds the number of chords of a corner: one may stand for one and a half.
  Clip::ClipperOffset offset(2, kFiner * error / 2.25);
  offset.AddPaths(PathsOf(rings), Clip::jtRound,
                  filled   ? Clip::etClosedPolygon
                  : closed ? Clip::etClosedLine
                           : Clip::etOpenRound);
  Clip::Paths result;
  offset.Execute(result, kFiner * reach);
  return RingsOf(result);
}

}  // namespace Ketril::Editor
