#include "DLLs/Tools/Geometry/RT_GeometryLines.h"

#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/RT_GeometryTolerances.h"

namespace Ketril::Tools {

namespace {

// Is the point inside the box after each side has moved out by `growth`.
bool IsPointInGrownBox(const LineType& box, GeoPointType p, double growth) {
  return !(box.x1 > p.x + growth || p.x - growth > box.x2 || box.y1 > p.y + growth || p.y - growth > box.y2);
}

bool IsOnSegment(GeoPointType p, const LineType& segment) {
  return PointToSegmentDistance(p, segment) <= kNearDistance;
}

// To a segment along one axis: `across` is the way to its line, `along` the place beside it.
double DistanceToAxisSegment(double along, double across, double end1, double end2) {
  const auto [low, high] = std::minmax(end1, end2);
  if (along >= low && along <= high) return std::abs(across);
  return PointLength({across, along < low ? low - along : along - high});
}

}  // namespace

void LineBounds(const LineType& line, LineType& box) {
  box = {std::min(line.x1, line.x2), std::min(line.y1, line.y2), std::max(line.x1, line.x2),
         std::max(line.y1, line.y2)};
}

void LineToRay(const LineType& line, LineType& ray) {
  GeoPointType direction = SubtractPoints(line.P1(), line.P2());
  UnitVector(direction);
  ray = MakeLine(line.P1(), direction);
}

bool PerpendicularOffset(double x1, double y1, double x2, double y2, double Dist, double& dx, double& dy,
                         bool ToLeft) {
  dx = dy = 0;
  const double length = CoordDistance(x1, y1, x2, y2);
  if (length == 0) return false;
  const double ux = (x2 - x1) / length * Dist;
  const double uy = (y2 - y1) / length * Dist;
  dx = ToLeft ? -uy : uy;
  dy = ToLeft ? ux : -ux;
  return true;
}

void OffsetLine(double& x1, double& y1, double& x2, double& y2, double Dist, bool ToLeft) {
  double dx, dy;
  if (!PerpendicularOffset(x1, y1, x2, y2, Dist, dx, dy, ToLeft)) return;
  x1 += dx;
  y1 += dy;
  x2 += dx;
  y2 += dy;
}

void OffsetLine(LineType& line, double Dist, bool ToLeft) {
  OffsetLine(line.x1, line.y1, line.x2, line.y2, Dist, ToLeft);
}

int SideOfLine(double x1, double y1, double x2, double y2, double px, double py) {
  const double side = (x2 - x1) * (py - y1) - (px - x1) * (y2 - y1);
  return side > 0 ? 1 : side < 0 ? -1 : 0;
}

int SideOfLine(const LineType& line, GeoPointType p) {
  return SideOfLine(line.x1, line.y1, line.x2, line.y2, p.x, p.y);
}

bool ArePerpendicular(const LineType& line1, const LineType& line2, double Tolerance) {
  const GeoPointType way1 = SubtractPoints(line1.P2(), line1.P1());
  const GeoPointType way2 = SubtractPoints(line2.P2(), line2.P1());
  return IsEqual(-way1.y * way2.y, way2.x * way1.x, Tolerance);
}

double PointToSegmentDistance(double px, double py, double x1, double y1, double x2, double y2) {
  if (x1 == x2) return DistanceToAxisSegment(py, px - x1, y1, y2);
  if (y1 == y2) return DistanceToAxisSegment(px, py - y1, x1, x2);
  if (x1 > x2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  const double m = (y2 - y1) / (x2 - x1);
  const double foot_x = (px + m * py + m * m * x1 - m * y1) / (m * m + 1);
  if (foot_x < x1) return CoordDistance(px, py, x1, y1);
  if (foot_x > x2) return CoordDistance(px, py, x2, y2);
  return std::abs(m * px - py - m * x1 + y1) / std::sqrt(m * m + 1);
}

double PointToSegmentDistance(GeoPointType p, const LineType& segment) {
  return PointToSegmentDistance(p.x, p.y, segment.x1, segment.y1, segment.x2, segment.y2);
}

void IntersectLines(const LineType& line1, const LineType& line2, bool CheckBounds, GeoPointType& Point,
                    bool& Found) {
  const struct {
    GeoPointType End;
    const LineType& Other;
  } ends[] = {{line2.P1(), line1}, {line2.P2(), line1}, {line1.P1(), line2}, {line1.P2(), line2}};
  for (const auto& [end, other] : ends) {
    if (!IsOnSegment(end, other)) continue;
    Point = end;
    Found = true;
    return;
  }
  const GeoPointType way1 = SubtractPoints(line1.P2(), line1.P1());
  const GeoPointType way2 = SubtractPoints(line2.P2(), line2.P1());
  const double d = CrossProduct(way2, way1);
  Found = d != 0;
  Point = {};
  if (!Found) return;
  const double t = CrossProduct(way2, SubtractPoints(line2.P1(), line1.P1())) * (1 / d);
  Point = AddPoints(line1.P1(), ScalePoint(way1, t));
  if (CheckBounds) Found = IsOnSegment(Point, line1) && IsOnSegment(Point, line2);
}

void IntersectLines(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4,
                    bool CheckBounds, GeoPointType& Point, bool& Found) {
  IntersectLines({x1, y1, x2, y2}, {x3, y3, x4, y4}, CheckBounds, Point, Found);
}

int IntersectInfiniteLines(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                           double y4, double& x, double& y) {
  x = y = 0;
  const bool vertical1 = std::abs(x2 - x1) <= kSlopeTolerance;
  const bool vertical2 = std::abs(x4 - x3) <= kSlopeTolerance;
  if (vertical1 && vertical2) return 0;
  const double slope1 = (y2 - y1) / (vertical1 ? 1 : x2 - x1);
  const double slope2 = (y4 - y3) / (vertical2 ? 1 : x4 - x3);
  // Seen from (x1, y1), so that little is lost in the intercepts of steep lines.
  const double intercept2 = (y3 - y1) - slope2 * (x3 - x1);
  if (vertical1) {
    x = x1;
    y = y1 + intercept2;
    return 1;
  }
  if (!vertical2 && std::abs(slope1 - slope2) <= kSlopeTolerance) return 0;
  const double dx = vertical2 ? x3 - x1 : intercept2 / (slope1 - slope2);
  x = vertical2 ? x3 : x1 + dx;
  y = y1 + slope1 * dx;
  return 1;
}

bool IsPointInBox(const LineType& box, GeoPointType p) {
  return IsPointInGrownBox(box, p, kNearDistance);
}

bool IsPointInSegmentBox(double px, double py, double x1, double y1, double x2, double y2) {
  LineType box;
  LineBounds({x1, y1, x2, y2}, box);
  return IsPointInBox(box, {px, py});
}

bool DoBoxesTouch(const LineType& a, const LineType& b) {
  return !(b.x1 - kNearDistance > a.x2 || a.x1 - kNearDistance > b.x2 || b.y1 - kNearDistance > a.y2 ||
           a.y1 - kNearDistance > b.y2);
}

bool IsPointNearSegment(double px, double py, double x1, double y1, double x2, double y2, double Width) {
  const double reach = Width + kNearDistance;
  LineType box;
  LineBounds({x1, y1, x2, y2}, box);
  if (!IsPointInGrownBox(box, {px, py}, reach)) return false;
  if ((x1 == x2) != (y1 == y2)) return true;
  return PointToSegmentDistance(px, py, x1, y1, x2, y2) <= reach;
}

}  // namespace Ketril::Tools
