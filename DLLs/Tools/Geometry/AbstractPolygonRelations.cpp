// What a point, a segment, a rectangle, another polygon and a line have to do with the ring.
#include <algorithm>
#include <cstdlib>

#include "DLLs/Tools/Geometry/AbstractPolygon.h"
#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/PointUtils.h"
#include "DLLs/Tools/Geometry/RectUtils.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

constexpr TCoord kFar = 999990000;

TCoordPoint Minus(TCoordPoint a, TCoordPoint b) {
  return {SaturateToCoord(std::int64_t{a.x} - b.x), SaturateToCoord(std::int64_t{a.y} - b.y)};
}

// Where an edge meets the line.
bool MeetLine45(TCoordPoint a, TCoordPoint b, const TLine45& line, TCoordPoint& hit) {
  const auto within = [](double v, double low, double high) { return low <= v && v <= high; };
  const double low_x = std::min(a.x, b.x), high_x = std::max(a.x, b.x);
  const bool is_vertical = a.x == b.x;
  if (is_vertical && line.Kind == TLine45::Vertical) return false;
  const double slope = line.Kind == TLine45::Rising ? 1 : line.Kind == TLine45::Falling ? -1 : 0;
  const auto line_y = [&](double x) {
    return line.Kind == TLine45::Horizontal ? double(line.End1.y) : double(line.Intercept) + slope * x;
  };
  if (is_vertical) {
    const double y = line_y(a.x);
    hit = {a.x, TGeomUtils::Nearest(y)};
    return within(a.x, line.Left(), line.Right()) && within(y, std::min(a.y, b.y), std::max(a.y, b.y));
  }
  const double m = (double(b.y) - a.y) / (double(b.x) - a.x), c = a.y - m * a.x;
  if (line.Kind == TLine45::Vertical) {
    hit = {line.End1.x, TGeomUtils::Nearest(c + m * line.End1.x)};
    return within(line.End1.x, low_x, high_x) && within(hit.y, line.Bottom(), line.Top());
  }
  if (m - slope == 0) return false;
  const double x = (line_y(0) - c) / (m - slope);
  hit.x = TGeomUtils::Nearest(x);
  hit.y = TGeomUtils::Nearest(line_y(x));
  return within(hit.x, line.Left(), line.Right()) && within(x, low_x, high_x);
}

}  // namespace

bool TAbstractPolygon::IsPointIn(TCoordPoint Pt) const {
  if (PointCount() == 0 || !TRectUtils::IsPointOnOrIn(FBoundRect, Pt)) return false;
  const std::int32_t n = PointCount();
  std::int32_t turns = 0;
  for (std::int32_t i = 0; i < n; ++i) {
    const TCoordPoint a = Ring(i), b = Ring(i + 1);
    const int turn = TGeomUtils::Clockwise(a, b, Pt);
    if (turn == 0 && TRectUtils::IsPointOnOrIn(TRectUtils::SetRect(a, b), Pt)) return false;
    turns += turn;
  }
  if (std::abs(turns) == n) return true;

  std::int32_t start = 0;
  TCoordPoint low = {kFar, kFar};
  for (std::int32_t i = 0; i < n; ++i) {
    if (Ring(i).x > low.x || Ring(i).y > low.y) continue;
    low = Ring(i);
    start = i;
  }
  // A ray towards +x. A run of vertices on it counts once, by where the ring comes from and goes to.
  const TCoordPoint ray_end = {kFar, Pt.y};
  TCoord before_y = Ring(start).y;
  int crossings = 0;
  for (std::int32_t i = start; i < n + start;) {
    if (!TGeomUtils::Intersect(Ring(i), Ring(i + 1), Pt, ray_end)) {
      before_y = Ring(++i).y;
      continue;
    }
    std::int32_t after = i + 1;
    while (after < i + 1 + n && Ring(after).y == Pt.y) ++after;
    const TCoord after_y = Ring(after).y;
    const int to = TGeomUtils::Sign(std::int64_t{Pt.y} - after_y);
    const int from = TGeomUtils::Sign(std::int64_t{Pt.y} - before_y);
    if (to != 0 && from != 0 && to != from) ++crossings;
    before_y = after_y;
    i = after;
  }
  return crossings % 2 != 0;
}

bool TAbstractPolygon::GetEdgeHit(TCoordPoint& Pt1, TCoordPoint& Pt2, bool Polygon, TCoordPoint PtHit,
                                  TCoord) const {
  const std::int32_t edges = Polygon ? PointCount() : PointCount() - 1;
  for (std::int32_t i = 0; i < edges; ++i) {
    if (!TGeomUtils::IsPointOnLine(Ring(i), Ring(i + 1), PtHit, 0.0)) continue;
    Pt1 = Ring(i);
    Pt2 = Ring(i + 1);
    return true;
  }
  return false;
}

bool TAbstractPolygon::IsPointOnOrIn(TCoordPoint Pt) const {
  if (PointCount() == 0 || !TRectUtils::IsPointOnOrIn(FBoundRect, Pt)) return false;
  TCoordPoint end1, end2;
  return IsPointOnVertex(Pt) || GetEdgeHit(end1, end2, true, Pt, 0) || IsPointIn(Pt);
}

bool TAbstractPolygon::IsLineIn(TCoordPoint Pt1, TCoordPoint Pt2) const {
  if (!IsPointIn(Pt1) || !IsPointIn(Pt2)) return false;
  for (std::int32_t i = 0; i < PointCount(); ++i) {
    if (TGeomUtils::Intersect(Ring(i), Ring(i + 1), Pt1, Pt2)) return false;
  }
  return true;
}

bool TAbstractPolygon::DoesSegmentIntersect(TCoordPoint SegPoint0, TCoordPoint SegPoint1,
                                            bool BoundaryEdgeOnly) {
  if (SegPoint0 == SegPoint1) return IsPointIn(SegPoint0);
  if (PointCount() == 0 ||
      !TRectUtils::DoRectsIntersect(TRectUtils::SetRect(SegPoint0, SegPoint1), FBoundRect))
    return false;
  if (IsPointIn(SegPoint0) || IsPointIn(SegPoint1))
    return !BoundaryEdgeOnly || !IsLineIn(SegPoint0, SegPoint1);
  const bool is_turned = IsClockwise();  // asked once: a ring with spikes may read as clockwise both ways
  if (is_turned) ReverseRing();
  const bool reaches = ReachesInside(SegPoint0, SegPoint1);
  if (is_turned) ReverseRing();
  return reaches;
}

// Of a segment with no end inside; the ring is counter-clockwise, so the inside is to the left of each edge.
bool TAbstractPolygon::ReachesInside(TCoordPoint SegPoint0, TCoordPoint SegPoint1) const {
  TIntegerList vertices, edges_at_0, edges_at_1;
  const auto on_segment = [&](TCoordPoint p) {
    return TGeomUtils::IsPointOnLine(SegPoint0, SegPoint1, p, 0.0);
  };
  for (std::int32_t i = 0; i < PointCount(); ++i) {
    const TCoordPoint a = Ring(i), b = Ring(i + 1);
    switch (TGeomUtils::DoLinesCross(SegPoint0, SegPoint1, a, b)) {
      case LinesCross:
        return true;
      case LinesColinear:
        if (on_segment(a)) vertices.Add(i);
        break;
      case LinesTee:
        if (b == SegPoint0 || b == SegPoint1) break;
        if (on_segment(a)) {
          vertices.Add(i);
        } else if (TGeomUtils::IsPointOnLine(a, b, SegPoint0, 0.0)) {
          edges_at_0.Add(i);
        } else if (TGeomUtils::IsPointOnLine(a, b, SegPoint1, 0.0)) {
          edges_at_1.Add(i);
        }
        break;
      case LinesDontCross:
        break;
    }
  }
  const auto leaves_inwards = [&](std::int32_t i, TCoordPoint from, TCoordPoint to) {
    return TGeomUtils::CrossProductMagnitude(Minus(Ring(i + 1), Ring(i)), Minus(to, from)) > 0;
  };
  for (const std::int32_t i : edges_at_0) {
    if (leaves_inwards(i, SegPoint0, SegPoint1)) return true;
  }
  for (const std::int32_t i : edges_at_1) {
    if (leaves_inwards(i, SegPoint1, SegPoint0)) return true;
  }
  for (const std::int32_t i : vertices) {
    const auto code = [&](TCoordPoint end) {
      return TGeomUtils::GetPointSectorCode(Ring(i), Ring(i + 1), Ring(i - 1), end);
    };
    if (code(SegPoint0) == 1 || code(SegPoint1) == -1) return true;
  }
  return false;
}

bool TAbstractPolygon::DoesRectIntersect(const TCoordRect& Rect) const {
  TCoordRect shared = FBoundRect;
  if (PointCount() == 0 || !TRectUtils::Intersect(shared, Rect)) return false;
  if (shared == Rect) return true;
  const TCoordPoint corners[] = {{Rect.left(), Rect.bottom()},
                                 {Rect.right(), Rect.bottom()},
                                 {Rect.right(), Rect.top()},
                                 {Rect.left(), Rect.top()}};
  for (const TCoordPoint corner : corners) {
    if (IsPointOnOrIn(corner)) return true;
  }
  for (std::int32_t i = 0; i < PointCount(); ++i) {
    for (int side = 0; side < 4; ++side) {
      if (TGeomUtils::Intersect(Ring(i), Ring(i + 1), corners[side], corners[(side + 1) % 4])) return true;
    }
  }
  return false;
}

bool TAbstractPolygon::IsOverlappingPoly(const TAbstractPolygon& Pc) {
  TCoordRect shared = FBoundRect;
  if (!TRectUtils::Intersect(shared, Pc.FBoundRect)) return false;
  if (shared.x1 == shared.x2 || shared.y1 == shared.y2) return false;
  for (std::int32_t i = 0; i < Pc.PointCount(); ++i) {
    if (DoesSegmentIntersect(Pc.Ring(i), Pc.Ring(i + 1), false)) return true;
  }
  return false;
}

bool TAbstractPolygon::DoesAbstractPolygonIntersect(const TAbstractShape& Polygon) {
  const auto* other = dynamic_cast<const TAbstractPolygon*>(&Polygon);
  return other && IsOverlappingPoly(*other);
}

std::int32_t TAbstractPolygon::FindIntersectionPoints(const TLine45& Line, TCoordPoint& IntersectionPoint1,
                                                      std::int32_t& SideIndex1,
                                                      TCoordPoint& IntersectionPoint2,
                                                      std::int32_t& SideIndex2) const {
  SideIndex1 = SideIndex2 = -1;
  TCoord best1 = kFar, best2 = kFar;
  for (std::int32_t i = 0; i < PointCount(); ++i) {
    TCoordPoint hit;
    if (!MeetLine45(Ring(i), Ring(i + 1), Line, hit)) continue;
    const auto take = [&](TCoordPoint end, TCoord& best, TCoordPoint& point, std::int32_t& side) {
      const TCoord distance = TPointUtils::Manhattan(hit, end);
      if (distance >= best) return;
      best = distance;
      point = hit;
      side = i;
    };
    take(Line.End1, best1, IntersectionPoint1, SideIndex1);
    take(Line.End2, best2, IntersectionPoint2, SideIndex2);
  }
  if (SideIndex1 >= 0 && SideIndex2 >= 0 && IntersectionPoint1 == IntersectionPoint2) {
    SideIndex2 = -1;
    IntersectionPoint2 = {0, 0};
  }
  return (SideIndex1 >= 0 ? 1 : 0) + (SideIndex2 >= 0 ? 1 : 0);
}

}  // namespace Ketril::Tools
