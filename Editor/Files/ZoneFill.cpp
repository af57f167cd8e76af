#include "Editor/Files/ZoneFill.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "Editor/Copper/Clipping.h"
#include "Editor/Copper/Distance.h"
#include "Editor/Files/ArcGeometry.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/Copper.h"

namespace Ketril::Editor {

namespace {

constexpr double kStripHalfWidth = 5000;  // 0.5 mil
constexpr double kRounding = 3;           // by which clipped vertices may be off, in units

CopperShape ShapeOfRings(const std::vector<Ring>& rings) {
  const Area area = AreaOfRings(rings);
  return area.outer.empty() ? CopperShape() : ShapeOf({area});
}

bool Holds(const CopperShape& shape, Spot spot) {
  return std::ranges::any_of(shape.parts, [&](const CopperPart& part) { return part.Surrounds(spot); });
}

Spot SpotOf(TCoordPoint point) {
  return {double(point.x), double(point.y)};
}

Spot MiddleOf(const std::vector<Ring>& rings) {
  Spot sum;
  const std::vector<TCoordPoint>& points = rings.front().points;
  for (const TCoordPoint& point : points) sum = {sum.x + point.x, sum.y + point.y};
  return {sum.x / static_cast<double>(points.size()), sum.y / static_cast<double>(points.size())};
}

Spot Foot(Spot spot, const Segment& s) {
  const double dx = s.b.x - s.a.x, dy = s.b.y - s.a.y, square = dx * dx + dy * dy;
  const double t =
      square > 0 ? std::clamp(((spot.x - s.a.x) * dx + (spot.y - s.a.y) * dy) / square, 0.0, 1.0) : 0;
  return {s.a.x + t * dx, s.a.y + t * dy};
}

// The places by which the object counts as connected, with the line that leads there from the spot.
std::vector<Segment> WaysTo(const Primitive& object, Spot from) {
  if (const Track* track = As<Track>(&object)) {
    const Segment line = {SpotOf(track->data.p1), SpotOf(track->data.p2)};
    const Spot foot = Foot(from, line);
    return {{foot, line.a}, {foot, line.b}};
  }
  if (const Arc* arc = As<Arc>(&object)) {
    const TCoordPoint a = PointOnArc(arc->data, 0), b = PointOnArc(arc->data, 1);
    return {{SpotOf(a), SpotOf(a)}, {SpotOf(b), SpotOf(b)}};
  }
  return {{from, SpotOf(object.Reference())}};
}

// A little longer than the line at both ends, so that these are inside.
Ring Strip(const Segment& line) {
  const double dx = line.b.x - line.a.x, dy = line.b.y - line.a.y, length = std::hypot(dx, dy);
  const double x = dx / length * kStripHalfWidth, y = dy / length * kStripHalfWidth;
  const auto corner = [&](Spot spot, double along, double across) {
    return TCoordPoint{ToCoord(spot.x + along * x - across * y), ToCoord(spot.y + along * y + across * x)};
  };
  return {{corner(line.a, -1, -1), corner(line.b, 1, -1), corner(line.b, 1, 1), corner(line.a, -1, 1)},
          false};
}

}  // namespace

std::vector<Ring> Covered(const std::vector<Ring>& rings) {
  std::vector<Ring> outer, holes;
  for (const Ring& ring : rings) (ring.hole ? holes : outer).push_back(ring);
  std::vector<Ring> covered = Difference(outer, holes);
  // A plain outline keeps its first vertex.
  if (covered.size() != 1 || rings.size() != 1 || rings.front().points.empty()) return covered;
  std::vector<TCoordPoint>& points = covered.front().points;
  const auto first = std::ranges::find(points, rings.front().points.front());
  std::rotate(points.begin(), first == points.end() ? points.begin() : first, points.end());
  return covered;
}

std::vector<Ring> TiedFill(const Region& region) {
  std::vector<Ring> fill = Covered(region.data.rings);
  if (!region.board || !region.GetNet() || fill.empty()) return fill;
  const CopperShape shape = ShapeOfRings(fill);
  const Spot middle = MiddleOf(fill);
  std::optional<Segment> best;
  for (const Primitive* object : region.board->index.Find(region.Bounds())) {
    if (!TObjectSet{eTrackObject, eArcObject, ePadObject, eViaObject}.Contains(object->kind)) continue;
    if (object->GetNet() != region.GetNet() || !HasCopperOn(*object, region.state.layer)) continue;
    if (!Touch(*object, region)) continue;
    for (const Segment& way : WaysTo(*object, middle)) {
      if (Holds(shape, way.b)) return fill;
      if (!Holds(shape, way.a) || way.a == way.b) continue;
      if (!best || Distance(way.a, way.b) < Distance(best->a, best->b)) best = way;
    }
  }
  if (!best) return fill;
  fill.push_back(Strip(*best));
  return Difference(fill, {});
}

bool IsTied(const std::vector<Ring>& fills, const std::vector<Ring>& outlines) {
  if (fills == outlines) return false;
  const CopperShape outline = ShapeOfRings(outlines);
  return std::ranges::any_of(fills, [&](const Ring& ring) {
    return std::ranges::any_of(ring.points, [&](const TCoordPoint& point) {
      const CopperShape spot = ShapeOf({Hull{{Disc{double(point.x), double(point.y), 0}}}});
      return Gap(outline, spot, kRounding) >= kRounding;
    });
  });
}

}  // namespace Ketril::Editor
