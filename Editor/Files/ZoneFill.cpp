#include "Editor/Files/ZoneFill.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "Editor/Copper/Clipping.h"
#include "Editor/Copper/Distance.h"
#include "Editor/Copper/Outline.h"
#include "Editor/Files/ArcGeometry.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/Copper.h"

namespace Ketril::Editor {

namespace {

constexpr double kStripHalfWidth = 5000;  // 0.5 mil
constexpr std::size_t kFewSides = 64;     // of a ring whose sides are all held against each other
constexpr double kRounding = 3;           // by which clipped vertices may be off, in units

// No two sides meet but in the vertex between them.
bool IsPlain(const Ring& ring) {
  const std::vector<TCoordPoint>& points = ring.points;
  const std::size_t count = points.size();
  if (count < 3 || count > kFewSides) return false;
  const auto side = [](TCoordPoint a, TCoordPoint b, TCoordPoint p) {
    return (double(b.x) - a.x) * (double(p.y) - a.y) - (double(b.y) - a.y) * (double(p.x) - a.x);
  };
  for (std::size_t i = 0; i < count; ++i) {
    const TCoordPoint a = points[i], b = points[(i + 1) % count], after = points[(i + 2) % count];
    if (side(a, b, after) == 0) return false;
    for (std::size_t k = i + 2; k < count && (k + 1) % count != i; ++k) {
      const TCoordPoint c = points[k], d = points[(k + 1) % count];
      if (std::max(a.x, b.x) < std::min(c.x, d.x) || std::max(c.x, d.x) < std::min(a.x, b.x)) continue;
      if (std::max(a.y, b.y) < std::min(c.y, d.y) || std::max(c.y, d.y) < std::min(a.y, b.y)) continue;
      const bool apart = side(a, b, c) * side(a, b, d) > 0 || side(c, d, a) * side(c, d, b) > 0;
      if (!apart) return false;
    }
  }
  return true;
}

CopperShape ShapeOfRings(const std::vector<Ring>& rings) {
  const Area area = AreaOfRings(rings);
  return area.outer.empty() ? CopperShape() : ShapeOf({area});
}

// Rings that do not cross each other: within an outer one and no hole is within an odd number of them.
bool Holds(const std::vector<Ring>& rings, Spot spot) {
  bool inside = false;
  for (const Ring& ring : rings) inside = inside != IsInside(ring.points, spot.x, spot.y);
  return inside;
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

// The strip added to a ring that it leaves by one side: false, and no change, when it does not.
bool Join(Ring& ring, const Ring& strip) {
  struct Crossing {
    std::size_t side = 0;
    double along = 0;
    TCoordPoint at;
    int count = 0;
  };
  const std::vector<TCoordPoint>& points = ring.points;
  const auto cross = [&](TCoordPoint from, TCoordPoint to) {
    Crossing crossing;
    const double dx = double(to.x) - from.x, dy = double(to.y) - from.y;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const TCoordPoint p = points[i], q = points[(i + 1) % points.size()];
      const double ex = double(q.x) - p.x, ey = double(q.y) - p.y, det = dx * ey - dy * ex;
      const double px = double(p.x) - from.x, py = double(p.y) - from.y;
      const double t = (px * ey - py * ex) / det, u = (px * dy - py * dx) / det;  // not in range for det 0
      if (!(t >= 0 && t <= 1 && u >= 0 && u <= 1)) continue;
      crossing = {i, u, {ToCoord(p.x + u * ex), ToCoord(p.y + u * ey)}, crossing.count + 1};
    }
    return crossing;
  };
  const std::vector<TCoordPoint>& corners = strip.points;
  const Crossing right = cross(corners[0], corners[1]), left = cross(corners[3], corners[2]);
  if (right.count != 1 || left.count != 1 || right.side != left.side) return false;
  std::vector<TCoordPoint> way = {right.at, corners[1], corners[2], left.at};
  if (left.along < right.along) std::ranges::reverse(way);
  ring.points.insert(ring.points.begin() + static_cast<std::ptrdiff_t>(right.side) + 1, way.begin(),
                     way.end());
  return true;
}

bool IsTied(const std::vector<Ring>& fills, const std::vector<Ring>& outlines) {
  const CopperShape outline = ShapeOfRings(outlines);
  return std::ranges::any_of(fills, [&](const Ring& ring) {
    return std::ranges::any_of(ring.points, [&](const TCoordPoint& point) {
      const CopperShape spot = ShapeOf({Hull{{Disc{double(point.x), double(point.y), 0}}}});
      return Gap(outline, spot, kRounding) >= kRounding;
    });
  });
}

// By how much the area may be off when each vertex is off by half a unit.
double AreaError(const std::vector<Ring>& rings) {
  double length = 1;
  for (const Ring& ring : rings) {
    for (std::size_t i = 0, j = ring.points.size() - 1; i < ring.points.size(); j = i++)
      length += Distance(SpotOf(ring.points[i]), SpotOf(ring.points[j]));
  }
  return length;
}

bool HaveOneArea(const std::vector<Ring>& rings, const std::vector<Ring>& others) {
  return std::abs(AreaOf(rings) - AreaOf(others)) <= AreaError(rings);
}

// However they were put together: a ring with holes is written as one, with the ends of the cuts as further
// vertices.
bool IsMadeOf(const std::vector<Ring>& rings, const std::vector<Ring>& others) {
  const auto vertices = [](const std::vector<Ring>& of) {
    std::set<std::pair<TCoord, TCoord>> all;
    for (const Ring& ring : of) {
      for (const TCoordPoint& point : ring.points) all.emplace(point.x, point.y);
    }
    return all;
  };
  return HaveOneArea(rings, others) && std::ranges::includes(vertices(rings), vertices(others));
}

}  // namespace

std::vector<Ring> Covered(const std::vector<Ring>& rings) {
  if (rings.size() == 1 && IsPlain(rings.front())) return rings;
  std::vector<Ring> outer, holes;
  for (const Ring& ring : rings) (ring.hole ? holes : outer).push_back(ring);
  std::vector<Ring> covered = Difference(outer, holes);
  // A ring that only touches itself, as one that was cut open to its holes, encloses just what it covers.
  const bool is_long = rings.size() == 1 && rings.front().points.size() > kFewSides;
  return is_long && HaveOneArea(covered, rings) ? rings : covered;
}

std::vector<Ring> TiedFill(const Region& region) {
  std::vector<Ring> fill = Covered(region.data.rings);
  if (!region.board || !region.GetNet() || fill.empty()) return fill;
  struct Tie {
    double length = 0;
    Segment way;
    const Primitive* object = nullptr;
  };
  std::vector<Tie> ties;
  const Spot middle = MiddleOf(fill);
  for (const Primitive* object : region.board->index.Find(region.Bounds())) {
    if (!TObjectSet{eTrackObject, eArcObject, ePadObject, eViaObject}.Contains(object->kind)) continue;
    if (object->GetNet() != region.GetNet() || !HasCopperOn(*object, region.state.layer)) continue;
    for (const Segment& way : WaysTo(*object, middle)) {
      const bool ends_here = Holds(fill, way.b);
      if (ends_here || (way.a != way.b && Holds(fill, way.a)))
        ties.push_back({ends_here ? 0 : Distance(way.a, way.b), way, object});
    }
  }
  std::ranges::stable_sort(ties, {}, &Tie::length);
  // Of a track, what the fill holds is copper; the middle of a teardrop may lie off the pad or via. Whether
  // they touch is the dear question: it is asked of the nearest only.
  const auto tie = std::ranges::find_if(ties, [&](const Tie& candidate) {
    return candidate.object->kind == eTrackObject || Touch(*candidate.object, region);
  });
  if (tie == ties.end() || tie->length == 0) return fill;
  const Ring strip = Strip(tie->way);
  if (fill.size() == 1 && Join(fill.front(), strip)) return fill;
  fill.push_back(strip);
  return Difference(fill, {});
}

std::vector<Ring> WithinPen(const Region& region, std::vector<Ring> fill) {
  if (fill != Covered(region.data.rings)) return fill;
  std::vector<Ring> within = Outline({AreaOfRings(fill)}, -kRegionPen / 2.0, kRounding);
  return within.empty() ? fill : within;
}

bool IsMadeFrom(const std::vector<Ring>& fills, const std::vector<Ring>& outlines, bool may_be_tied) {
  if (fills == outlines) return true;
  return IsMadeOf(fills, Covered(outlines)) || (may_be_tied && IsTied(fills, outlines));
}

}  // namespace Ketril::Editor
