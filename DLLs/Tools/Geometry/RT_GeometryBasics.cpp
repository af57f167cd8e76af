#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"

#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Geometry/RT_GeometryTolerances.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

void SwapValues(double& a, double& b) {
  std::swap(a, b);
}

void SwapPoints(GeoPointType& p, GeoPointType& q) {
  std::swap(p, q);
}

double MinValue(double a, double b) {
  return std::min(a, b);
}

double MaxValue(double a, double b) {
  return std::max(a, b);
}

bool IsEqual(double a, double b, double Tolerance) {
  return a - b >= -Tolerance && a - b <= Tolerance;
}

bool ValuesNear(double a, double b) {
  return std::abs(a - b) < kNearDistance;
}

bool PointsNear(GeoPointType p, GeoPointType q) {
  return ValuesNear(p.x, q.x) && ValuesNear(p.y, q.y);
}

double CoordDistance(double x1, double y1, double x2, double y2) {
  return PointDistance({x1, y1}, {x2, y2});
}

TCoord ManhattanDistance(TCoord x1, TCoord y1, TCoord x2, TCoord y2) {
  return WrapToCoord(std::abs(std::int64_t{x1} - x2) + std::abs(std::int64_t{y1} - y2));
}

void UnitVector(GeoPointType& p) {
  UnitVector(p, p);
}

double DegToRad(double a) {
  return a * 0.017453292519943295;
}

double RadToDeg(double a) {
  return a * 57.29577951308232;
}

double CosDeg(double a) {
  return std::cos(DegToRad(a));
}

double SinDeg(double a) {
  return std::sin(DegToRad(a));
}

void SinCosDeg(double a, double& Sin, double& Cos) {
  Sin = SinDeg(a);
  Cos = CosDeg(a);
}

void NormalizeAngle(double& a) {
  if (std::abs(a) >= 2147483646.0) {
    a = 0;
    return;
  }
  if (std::abs(a) > 720) {
    const double whole = std::trunc(a);
    a = std::fmod(whole, 360.0) + (a - whole);
  }
  while (a > 360) a -= 360;
  while (a < 0) a += 360;
}

int AngleQuadrant(double a) {
  NormalizeAngle(a);
  return a >= 270 ? 4 : a >= 180 ? 3 : a >= 90 ? 2 : 1;
}

double PointAngle(double px, double py, double cx, double cy) {
  const double dx = px - cx;
  const double dy = py - cy;
  return AngleInQuadrant(dx, dy, RadToDeg(std::atan(dy / (dx == 0 ? 1 : dx))), 360);
}

double AngleInQuadrant(double dx, double dy, double acute, double full_turn) {
  if (dx == 0) return dy > 0 ? full_turn / 4 : full_turn * 3 / 4;
  acute = std::abs(acute);
  if (dx < 0) return dy >= 0 ? full_turn / 2 - acute : full_turn / 2 + acute;
  if (dy >= 0) return acute;
  const double angle = full_turn - acute;
  return angle < full_turn ? angle : 0;  // a tiny angle is lost in the turn
}

bool IsAngleInSweep(double a1, double a2, double t) {
  if (t == a1 || t == a2) return true;
  const bool high = a2 + kSweepTolerance >= t;
  const bool low = t >= a1 - kSweepTolerance;
  return a1 > a2 ? high || low : high && low;
}

double AngleAtVertex(GeoPointType p1, GeoPointType vertex, GeoPointType p2) {
  const GeoPointType way1 = SubtractPoints(p1, vertex);
  const GeoPointType way2 = SubtractPoints(p2, vertex);
  const double length1 = PointLength(way1);
  const double length2 = PointLength(way2);
  if (length1 < kZeroLength || length2 < kZeroLength) return 0;
  const double cosine = DotProduct(way1, way2) / (length1 * length2);
  const double angle = RadToDeg(std::acos(std::clamp(cosine, -1.0, 1.0)));
  return p1.y > p2.y ? 360 - angle : angle;
}

void RotateVector(double a, double x, double y, double& outX, double& outY) {
  double sine, cosine;
  SinCosDeg(a, sine, cosine);
  outX = x * cosine - y * sine;
  outY = y * cosine + x * sine;
}

void RotateCoord(TCoord& x, TCoord& y, double Angle, bool Mirror) {
  const auto negated = [](TCoord c) { return WrapToCoord(-std::int64_t{c}); };
  if (Mirror) x = negated(x);
  const TCoordPoint p = {x, y};
  if (Angle == 0) return;
  if (Angle == 90) {
    x = negated(p.y);
    y = p.x;
  } else if (Angle == 180) {
    x = negated(p.x);
    y = negated(p.y);
  } else if (Angle == 270) {
    x = p.y;
    y = negated(p.x);
  } else {
    double turned_x, turned_y;
    RotateVector(Angle, p.x, p.y, turned_x, turned_y);
    x = Round(turned_x);
    y = Round(turned_y);
  }
}

void RotateCoordAbout(TCoord& x, TCoord& y, TCoord cx, TCoord cy, double Angle) {
  NormalizeAngle(Angle);
  TCoord dx = WrapToCoord(std::int64_t{x} - cx);
  TCoord dy = WrapToCoord(std::int64_t{y} - cy);
  RotateCoord(dx, dy, Angle, false);
  x = WrapToCoord(std::int64_t{dx} + cx);
  y = WrapToCoord(std::int64_t{dy} + cy);
}

void MirrorCoord(TCoord& x, TCoord& y, TCoord Axis, int Mode) {
  if (Mode == 0) x = WrapToCoord(2 * std::int64_t{Axis} - x);
  if (Mode == 1) y = WrapToCoord(2 * std::int64_t{Axis} - y);
}

}  // namespace Ketril::Tools
