// Taking out of a polygon what adds nothing to its area: vertices on straight runs, spikes, and the loops
// where it crosses itself.
#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/PolygonUtils.h"
#include "DLLs/Tools/Geometry/PolygonUtilsInternal.h"
#include "DLLs/Tools/Geometry/RT_GeometryLines.h"

namespace Ketril::Tools {

namespace {

bool IsOn(TCoordPoint a, TCoordPoint b, TCoordPoint point, double fuzz = 0) {
  return TGeomUtils::IsPointOnLine(a, b, point, fuzz);
}

TDPPoint AsDoubles(TCoordPoint point) {
  return {double(point.x), double(point.y)};
}

// The vertex on a side of the bounding rectangle whose nearest other vertex is farthest: one that no loop
// contains.
void AnchorOutside(TAbstractPolygon& poly) {
  const std::int32_t n = poly.PointCount();
  const TCoordRect bounds = poly.GetState_BoundingRectangle();
  const double limit = 2 * std::max(double(bounds.x2) - bounds.x1, double(bounds.y2) - bounds.y1);
  std::int32_t chosen = 0;
  double farthest = -1;
  for (std::int32_t i = 0; i < n; ++i) {
    const TCoordPoint p = poly.Ring(i);
    if (p.x != bounds.x1 && p.x != bounds.x2 && p.y != bounds.y1 && p.y != bounds.y2) continue;
    double nearest = limit;
    for (std::int32_t k = 0; k < n; ++k) {
      if (k != i) nearest = std::min(nearest, TGeomUtils::Distance(AsDoubles(p), AsDoubles(poly.Ring(k))));
    }
    if (nearest <= farthest) continue;
    farthest = nearest;
    chosen = i;
  }
  poly.Anchor(chosen);
}

bool DoEdgesCross(const TAbstractPolygon& poly, std::int32_t i, std::int32_t j) {
  const TLEdgeType edge1 = {poly.Ring(i), poly.Ring(i + 1)}, edge2 = {poly.Ring(j), poly.Ring(j + 1)};
  const TLineCrossType cross = TGeomUtils::DoLinesCross(edge1.Left, edge1.Right, edge2.Left, edge2.Right);
  if (cross != LinesCross && cross != LinesTee) return false;
  TCoordPoint at;
  const int code = TGeomUtils::IntersectionCode(edge1, edge2, poly.Ring(i - 1), poly.Ring(i + 2),
                                                poly.Ring(j - 1), poly.Ring(j + 2), at);
  constexpr int kCrossing[] = {19, 49, 66, 68, 70, 129, 131};
  return std::ranges::find(kCrossing, code) != std::end(kCrossing);
}

// The loop between the edges gives way to the place where they cross.
void CutLoop(TAbstractPolygon& poly, std::int32_t i, std::int32_t j) {
  const LineType line1 = {double(poly.Ring(i).x), double(poly.Ring(i).y), double(poly.Ring(i + 1).x),
                          double(poly.Ring(i + 1).y)};
  const LineType line2 = {double(poly.Ring(j).x), double(poly.Ring(j).y), double(poly.Ring(j + 1).x),
                          double(poly.Ring(j + 1).y)};
  TDPPoint crossing;
  if (IntersectInfiniteLines(line1.x1, line1.y1, line1.x2, line1.y2, line2.x1, line2.y1, line2.x2, line2.y2,
                             crossing.x, crossing.y) == 0) {
    // Parallel to the double half, whose slopes forgive; the exact place is had in whole numbers.
    TCoordPoint whole;
    TGeomUtils::Intersection(poly.Ring(i), poly.Ring(i + 1), poly.Ring(j), poly.Ring(j + 1), whole);
    crossing = AsDoubles(whole);
  }
  for (std::int32_t count = j - i; count > 0; --count) {
    poly.DeletePoint(i + 1 < poly.PointCount() ? i + 1 : 0);
  }
  std::int32_t at = std::min(i + 1, poly.PointCount());
  for (const TCoordPoint point : WholeCorner(crossing, line1, line2)) poly.AddPoint(point, at++);
}

// Each cut takes at least one vertex more than it adds, or leaves fewer fractions; the bound is for what
// rounding may do in between.
void RemoveSelfIntersections(TAbstractPolygon& poly) {
  TAbstractPolygon work;
  work.AssignFromPoly(poly);
  AnchorOutside(work);
  std::int32_t cuts_left = 4 * work.PointCount() + 16;
  // A rounded crossing moves its two edges, which may then cross one that was passed: hence another pass.
  for (bool has_cut = true; has_cut;) {
    has_cut = false;
    for (std::int32_t i = 0; i <= work.PointCount() - 3;) {
      std::int32_t j = i + 2;
      while (j < work.PointCount() && !DoEdgesCross(work, i, j)) ++j;
      if (j < work.PointCount() && cuts_left-- > 0) {
        CutLoop(work, i, j);
        has_cut = true;
      } else {
        ++i;
      }
    }
  }
  poly.AssignFromPoly(work);
}

}  // namespace

std::vector<TCoordPoint> WholeCorner(TDPPoint corner, const LineType& line1, const LineType& line2) {
  const bool is_fraction = corner.x != std::floor(corner.x) || corner.y != std::floor(corner.y);
  const double dx = line1.x2 - line1.x1, dy = line1.y2 - line1.y1;
  if (!is_fraction || std::abs(dx) != std::abs(dy) || !ArePerpendicular(line1, line2, 1e-12))
    return {{TGeomUtils::Nearest(corner.x), TGeomUtils::Nearest(corner.y)}};
  const auto pull_back = [](double value, double direction) {
    return TGeomUtils::Nearest(direction < 0 ? value + 0.5 : value - 0.5);
  };
  return {{pull_back(corner.x, dx), pull_back(corner.y, dy)},
          {pull_back(corner.x, line2.x2 - line2.x1), pull_back(corner.y, line2.y2 - line2.y1)}};
}

void TPolygonUtils::RemoveColinearAndCoincidentVertices(TAbstractPolygon& Poly,
                                                        std::int32_t CollinearFuzzFactor) {
  for (std::int32_t i = 0; i < Poly.PointCount();) {
    const TCoordPoint before = Poly.Ring(i - 1), point = Poly.Ring(i), after = Poly.Ring(i + 1);
    if (point == before || point == after || IsOn(before, after, point, CollinearFuzzFactor)) {
      Poly.DeletePoint(i);
    } else {
      ++i;
    }
  }
}

void TPolygonUtils::RemoveDoublebackSegments(TAbstractPolygon& Poly) {
  for (std::int32_t i = 0; i < Poly.PointCount();) {
    const std::int32_t n = Poly.PointCount(), at_p = (i + n - 1) % n;
    const TCoordPoint p = Poly.Ring(i - 1), c = Poly.Ring(i), q = Poly.Ring(i + 1);
    if (!IsOn(p, c, q) && !IsOn(c, q, p)) {
      ++i;
      continue;
    }
    Poly.DeletePoint(i);
    if (p == q) Poly.DeletePoint(at_p);
  }
}

void TPolygonUtils::CleanUpPolygon(TAbstractPolygon& Poly) {
  using Step = void (*)(TAbstractPolygon&);
  constexpr Step kStraighten = [](TAbstractPolygon& poly) { RemoveColinearAndCoincidentVertices(poly, 0); };
  for (const Step step : {kStraighten, &RemoveDoublebackSegments, &RemoveSelfIntersections, kStraighten,
                          &RemoveDoublebackSegments}) {
    if (Poly.PointCount() == 0) return;
    step(Poly);
  }
}

}  // namespace Ketril::Tools
