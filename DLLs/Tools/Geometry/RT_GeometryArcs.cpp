#include "DLLs/Tools/Geometry/RT_GeometryArcs.h"

#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/RT_GeometryLines.h"
#include "DLLs/Tools/Geometry/RT_GeometryTolerances.h"

namespace Ketril::Tools {

namespace {

GeoPointType PointOnArc(const ThinArcType& arc, double angle) {
  return {CosDeg(angle) * arc.Radius + arc.Cx, SinDeg(angle) * arc.Radius + arc.Cy};
}

// Keeps those of the `Count` points that pass, in their order.
template <class Test>
void KeepPoints(int& Count, GeoPointType& P1, GeoPointType& P2, const Test& passes) {
  const bool keep1 = Count > 0 && passes(P1);
  const bool keep2 = Count > 1 && passes(P2);
  if (keep2 && !keep1) P1 = P2;
  Count = keep1 + keep2;
}

}  // namespace

void UpdateArcEnds(ThinArcType& arc) {
  NormalizeAngle(arc.Angle1);
  NormalizeAngle(arc.Angle2);
  const GeoPointType start = PointOnArc(arc, arc.Angle1);
  const GeoPointType end = PointOnArc(arc, arc.Angle2);
  arc.Sx = start.x;
  arc.Sy = start.y;
  arc.Ex = end.x;
  arc.Ey = end.y;
}

void ArcBounds(ThinArcType arc, LineType& box) {
  UpdateArcEnds(arc);
  const LineType circle_box = {arc.Cx - arc.Radius, arc.Cy - arc.Radius, arc.Cx + arc.Radius,
                               arc.Cy + arc.Radius};
  box = {arc.Ex, arc.Ey, arc.Ex, arc.Ey};
  if (arc.Angle1 == arc.Angle2) return;
  LineBounds({arc.Sx, arc.Sy, arc.Ex, arc.Ey}, box);

  const int first = AngleQuadrant(arc.Angle1);
  const int last = AngleQuadrant(arc.Angle2);
  if (first == last) {
    const bool backwards = first < 3 ? arc.Ex >= arc.Sx : arc.Sx >= arc.Ex;
    if (arc.Angle1 > arc.Angle2 && backwards) box = circle_box;
    return;
  }
  for (int quadrant = first; quadrant != last; quadrant = quadrant % 4 + 1) {
    if (quadrant == 1) box.y2 = circle_box.y2;
    if (quadrant == 2) box.x1 = circle_box.x1;
    if (quadrant == 3) box.y1 = circle_box.y1;
    if (quadrant == 4) box.x2 = circle_box.x2;
  }
}

bool IsPointInCircle(const CircleType& circle, GeoPointType p) {
  if (std::abs(p.x - circle.Cx) <= kNearDistance && std::abs(p.y - circle.Cy) <= kNearDistance) return true;
  return circle.Radius + kNearDistance >= PointDistance(p, circle.Center());
}

bool IsPointOnArc(double px, double py, const ThinArcType& arc, double Width) {
  const double off = std::abs(CoordDistance(arc.Cx, arc.Cy, px, py) - arc.Radius);
  if (!(std::abs(Width) + kNearDistance >= off)) return false;
  double angle1 = arc.Angle1;
  double angle2 = arc.Angle2;
  NormalizeAngle(angle1);
  NormalizeAngle(angle2);
  return IsAngleInSweep(angle1, angle2, PointAngle(px, py, arc.Cx, arc.Cy));
}

void IntersectCircleLine(const CircleType& circle, const LineType& line, int& Count, GeoPointType& P1,
                         GeoPointType& P2, bool CheckBounds) {
  Count = 0;
  if (line.P1() == line.P2()) return;
  const GeoPointType center = circle.Center();
  for (const GeoPointType end : line.Points()) {
    if (ValuesNear(PointDistance(center, end), circle.Radius)) (Count++ == 0 ? P1 : P2) = end;
  }
  if (Count == 2) return;

  LineType ray;
  LineToRay(line, ray);
  const GeoPointType base = ray.P1();
  const GeoPointType direction = ray.P2();
  const GeoPointType to_center = SubtractPoints(center, base);
  const double off = CrossProduct(direction, to_center);
  const double s = circle.Radius * circle.Radius - off * off;
  if (s < 0) return;
  const double along = DotProduct(direction, to_center);
  const auto place = [&](double way) { return AddPoints(base, ScalePoint(direction, way)); };
  if (ValuesNear(0, s)) {
    Count = 1;
    P1 = place(along);
  } else {
    Count = 2;
    P1 = place(along - std::sqrt(s));
    P2 = place(along + std::sqrt(s));
  }
  if (!CheckBounds) return;
  LineType box;
  LineBounds(line, box);
  KeepPoints(Count, P1, P2, [&](GeoPointType p) {
    return IsPointInBox(box, p) && PointDistance(center, p) <= circle.Radius + kNearDistance;
  });
}

void IntersectCircles(const CircleType& c1, const CircleType& c2, GeoPointType& P1, GeoPointType& P2,
                      int& Count) {
  Count = 0;
  const double d = std::floor(PointDistance(c1.Center(), c2.Center()));
  const double difference = std::abs(c1.Radius - c2.Radius);
  if (!(d > 0 && d <= c1.Radius + c2.Radius && difference <= d)) return;
  const double a = (d * d - c2.Radius * c2.Radius + c1.Radius * c1.Radius) / (2 * d);
  // Of circles that just touch, rounding may leave less than 0.
  const double h = std::sqrt(std::max(0.0, c1.Radius * c1.Radius - a * a));
  const GeoPointType way = SubtractPoints(c2.Center(), c1.Center());
  const GeoPointType middle = AddPoints(c1.Center(), ScalePoint(way, a / d));
  const GeoPointType aside = {way.y * h / d, -way.x * h / d};
  P1 = AddPoints(middle, aside);
  P2 = SubtractPoints(middle, aside);
  Count = P1 == P2 ? 1 : 2;
}

void IntersectArcLine(ThinArcType arc, const LineType& line, GeoPointType& P1, GeoPointType& P2, int& Count,
                      bool CheckBounds) {
  UpdateArcEnds(arc);
  IntersectCircleLine(arc.Circle(), line, Count, P1, P2, CheckBounds);
  KeepPoints(Count, P1, P2, [&](GeoPointType hit) {
    return IsAngleInSweep(arc.Angle1, arc.Angle2, PointAngle(hit.x, hit.y, arc.Cx, arc.Cy));
  });
}

}  // namespace Ketril::Tools
