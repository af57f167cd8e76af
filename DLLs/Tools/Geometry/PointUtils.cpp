#include "DLLs/Tools/Geometry/PointUtils.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

TCoordPoint TPointUtils::SetPoint(TCoord X, TCoord Y) {
  return {X, Y};
}

void TPointUtils::SetPoint(TCoordPoint& Pt, TCoord X, TCoord Y) {
  Pt = {X, Y};
}

void TPointUtils::Translate(TCoordPoint& Pt, TCoord DeltaX, TCoord DeltaY) {
  Pt = Add(Pt, {DeltaX, DeltaY});
}

void TPointUtils::TranslateAboutPt(TCoordPoint& Pt, double Angle, TCoordPoint Pivot) {
  if (Angle == 0 || Pt == Pivot) return;
  if (Angle == 90 || Angle == 180 || Angle == 270) {
    RotateCoordAbout(Pt.x, Pt.y, Pivot.x, Pivot.y, Angle);
    return;
  }
  const TVector2D way = TGeomUtils::ConvertPointsToVector2D(Pivot, Pt);
  TVector2D turned;
  RotateVector(Angle, way.x, way.y, turned.x, turned.y);
  Pt = TGeomUtils::ConvertVectorToPoint(turned, Pivot);
}

void TPointUtils::Negate(TCoordPoint& Pt) {
  Pt = Subtract({}, Pt);
}

TCoordPoint TPointUtils::Add(TCoordPoint Pt1, TCoordPoint Pt2) {
  return {WrapToCoord(std::int64_t{Pt1.x} + Pt2.x), WrapToCoord(std::int64_t{Pt1.y} + Pt2.y)};
}

TCoordPoint TPointUtils::Subtract(TCoordPoint Pt1, TCoordPoint Pt2) {
  return {WrapToCoord(std::int64_t{Pt1.x} - Pt2.x), WrapToCoord(std::int64_t{Pt1.y} - Pt2.y)};
}

void TPointUtils::Swap(TCoordPoint& P1, TCoordPoint& P2) {
  std::swap(P1, P2);
}

bool TPointUtils::PointsEqual(TCoordPoint P1, TCoordPoint P2) {
  return P1 == P2;
}

bool TPointUtils::PointsNearEqual(TCoordPoint P1, TCoordPoint P2, TCoord Tolerance) {
  return std::abs(std::int64_t{P1.x} - P2.x) <= Tolerance && std::abs(std::int64_t{P1.y} - P2.y) <= Tolerance;
}

bool TPointUtils::IsCohorizontal(TCoordPoint P1, TCoordPoint P2) {
  return P1.y == P2.y;
}

bool TPointUtils::AreCollinear(TCoordPoint Pt1, TCoordPoint Pt2) {
  return AreCollinear(Pt1, {}, Pt2);
}

bool TPointUtils::AreCollinear(TCoordPoint Pt1, TCoordPoint Pt2, TCoordPoint Pt3) {
  const TVector2D way1 = TGeomUtils::ConvertPointsToVector2D(Pt2, Pt1);
  const TVector2D way2 = TGeomUtils::ConvertPointsToVector2D(Pt2, Pt3);
  return way1.x * way2.y == way1.y * way2.x;
}

TCoord TPointUtils::Manhattan(TCoordPoint Pt1, TCoordPoint Pt2) {
  return ManhattanDistance(Pt1.x, Pt1.y, Pt2.x, Pt2.y);
}

double TPointUtils::Magnitude(TCoordPoint Pt) {
  const double x = std::abs(static_cast<double>(Pt.x));
  const double y = std::abs(static_cast<double>(Pt.y));
  if (x == 0 || y == 0) return x + y;
  return x == y ? x * std::numbers::sqrt2 : std::sqrt(x * x + y * y);
}

}  // namespace Ketril::Tools
