#include "Editor/Files/ArcGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Editor/Files/Units.h"

namespace Ketril::Editor {

namespace {

constexpr double kRadian = std::numbers::pi / 180.0;
constexpr double kChordError = 394;  // 1 micrometre
constexpr int kMostChords = 256;

bool InRange(double value) {
  return std::abs(value) <= kMaxUnits;
}

double DegreesOf(double x, double y) {
  return NormalAngle(std::atan2(y, x) / kRadian);
}

int ChordsFor(double radius, double degrees) {
  if (radius <= kChordError) return 4;
  const double step = 2 * std::acos(1 - kChordError / radius) / kRadian;
  return std::clamp(static_cast<int>(std::ceil(degrees / step)), 1, kMostChords);
}

}  // namespace

bool ArcThrough(TCoordPoint start, TCoordPoint mid, TCoordPoint end, ArcData& arc, bool& clockwise) {
  // About the start, so that the result does not depend on where the arc is.
  const double mx = static_cast<double>(mid.x) - start.x, my = static_cast<double>(mid.y) - start.y;
  const double ex = static_cast<double>(end.x) - start.x, ey = static_cast<double>(end.y) - start.y;
  clockwise = false;
  if (start == end) {
    arc.center = {start.x + ToCoord(mx / 2), start.y + ToCoord(my / 2)};
    arc.radius = ToCoord(std::hypot(mx, my) / 2);
    arc.angle1 = 0;
    arc.angle2 = 360;
    return arc.radius > 0;
  }
  const double cross = mx * ey - my * ex;
  if (cross == 0) return false;
  const double m2 = mx * mx + my * my, e2 = ex * ex + ey * ey;
  const double cx = (m2 * ey - e2 * my) / (2 * cross);
  const double cy = (e2 * mx - m2 * ex) / (2 * cross);
  const double radius = std::hypot(cx, cy);
  if (!InRange(radius) || !InRange(start.x + cx) || !InRange(start.y + cy)) return false;
  arc.center = {start.x + ToCoord(cx), start.y + ToCoord(cy)};
  arc.radius = ToCoord(radius);
  arc.angle1 = DegreesOf(-cx, -cy);
  arc.angle2 = DegreesOf(ex - cx, ey - cy);
  clockwise = cross < 0;
  if (clockwise) std::swap(arc.angle1, arc.angle2);
  return true;
}

bool ArcAround(TCoordPoint center, TCoordPoint start, double sweep, ArcData& arc) {
  const double dx = static_cast<double>(start.x) - center.x, dy = static_cast<double>(start.y) - center.y;
  const double radius = std::hypot(dx, dy);
  if (!InRange(radius)) return false;
  arc.center = center;
  arc.radius = ToCoord(radius);
  if (std::abs(sweep) >= 360) {
    arc.angle1 = 0;
    arc.angle2 = 360;
  } else {
    const double angle = DegreesOf(dx, dy);
    arc.angle1 = sweep < 0 ? NormalAngle(angle + sweep) : angle;
    arc.angle2 = sweep < 0 ? angle : NormalAngle(angle + sweep);
  }
  return true;
}

double SweepOf(const ArcData& arc) {
  const double sweep = NormalAngle(arc.angle2 - arc.angle1);
  return sweep == 0 && arc.angle1 != arc.angle2 ? 360.0 : sweep;
}

bool IsSameShape(const ArcData& a, const ArcData& b) {
  return a.radius == b.radius && IsSameAngle(a.angle1, b.angle1) && IsSameAngle(a.angle2, b.angle2) &&
         IsFullCircle(a) == IsFullCircle(b);
}

bool IsFullCircle(const ArcData& arc) {
  return SweepOf(arc) == 360.0;
}

TCoordPoint PointOnArc(const ArcData& arc, double part) {
  const double angle = (arc.angle1 + part * SweepOf(arc)) * kRadian;
  const double dx = arc.radius * std::cos(angle), dy = arc.radius * std::sin(angle);
  return {ToCoord(std::int64_t{arc.center.x} + ToCoord(dx)),
          ToCoord(std::int64_t{arc.center.y} + ToCoord(dy))};
}

std::vector<TCoordPoint> PointsOnArc(const ArcData& arc) {
  const int chords = ChordsFor(arc.radius, SweepOf(arc));
  std::vector<TCoordPoint> points;
  for (int i = 0; i <= chords; ++i) points.push_back(PointOnArc(arc, static_cast<double>(i) / chords));
  return points;
}

void AddArcPoints(TCoordPoint start, TCoordPoint mid, TCoordPoint end, std::vector<TCoordPoint>& points) {
  ArcData arc;
  bool clockwise = false;
  if (ArcThrough(start, mid, end, arc, clockwise)) {
    std::vector<TCoordPoint> inner = PointsOnArc(arc);
    if (clockwise) std::ranges::reverse(inner);
    points.insert(points.end(), inner.begin() + 1, inner.end() - 1);
  }
  points.push_back(end);
}

void AddCurvePoints(const TCoordPoint (&controls)[4], std::vector<TCoordPoint>& points) {
  // About the start, for the same result wherever the curve is. A chord over 1/n of the curve is off it by at
  // most L / (8 n^2), L the largest second derivative.
  double x[4], y[4];
  for (int i = 0; i < 4; ++i) {
    x[i] = static_cast<double>(controls[i].x) - controls[0].x;
    y[i] = static_cast<double>(controls[i].y) - controls[0].y;
  }
  double bend = 0;
  for (int i = 0; i < 2; ++i) {
    bend = std::max(bend, 6 * std::hypot(x[i] - 2 * x[i + 1] + x[i + 2], y[i] - 2 * y[i + 1] + y[i + 2]));
  }
  const int chords =
      static_cast<int>(std::clamp(std::ceil(std::sqrt(bend / (8 * kChordError))), 1.0, double{kMostChords}));
  for (int i = 1; i <= chords; ++i) {
    const double t = static_cast<double>(i) / chords, s = 1 - t;
    const double b1 = 3 * s * s * t, b2 = 3 * s * t * t, b3 = t * t * t;
    points.push_back({controls[0].x + ToCoord(b1 * x[1] + b2 * x[2] + b3 * x[3]),
                      controls[0].y + ToCoord(b1 * y[1] + b2 * y[2] + b3 * y[3])});
  }
}

std::vector<TCoordPoint> LineAsPolygon(TCoordPoint p1, TCoordPoint p2, TCoord width) {
  constexpr int kCapChords = 8;
  const double along = std::atan2(static_cast<double>(p2.y) - p1.y, static_cast<double>(p2.x) - p1.x);
  std::vector<TCoordPoint> points;
  for (const bool at_end : {true, false}) {
    const TCoordPoint center = at_end ? p2 : p1;
    const double from = along + (at_end ? -0.5 : 0.5) * std::numbers::pi;
    for (int i = 0; i <= kCapChords; ++i) {
      const double angle = from + i * std::numbers::pi / kCapChords;
      points.push_back({ToCoord(center.x + width / 2.0 * std::cos(angle)),
                        ToCoord(center.y + width / 2.0 * std::sin(angle))});
    }
  }
  return points;
}

}  // namespace Ketril::Editor
