#include "DLLs/Tools/Geometry/GeomUtils.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Geometry/WideInteger.h"

namespace Ketril::Tools {

namespace {

using std::numbers::pi;

TCoord RoundedLength(TCoordDelta way) {
  const std::int64_t width = std::abs(way.x);
  const std::int64_t height = std::abs(way.y);
  if (width == 0 || height == 0) return SaturateToCoord(width + height);
  const double x = static_cast<double>(width);
  const double y = static_cast<double>(height);
  return TGeomUtils::Nearest(width == height ? x * std::numbers::sqrt2 : std::sqrt(x * x + y * y));
}

// Between the spans from low1 to high1 and from low2 to high2.
std::int64_t Gap(TCoord low1, TCoord high1, TCoord low2, TCoord high2) {
  return std::max({std::int64_t{0}, std::int64_t{low2} - high1, std::int64_t{low1} - high2});
}

}  // namespace

int TGeomUtils::Sign(std::int64_t X) {
  return X > 0 ? 1 : X < 0 ? -1 : 0;
}

TCoord TGeomUtils::Nearest(double D) {
  return SaturateToCoord(std::round(D));
}

TCoord TGeomUtils::Distance(TCoordPoint P1, TCoordPoint P2) {
  return RoundedLength(Delta(P1, P2));
}

double TGeomUtils::Distance(TDPPoint Pt1, TDPPoint Pt2) {
  return VectorMagnitude({Pt2.x - Pt1.x, Pt2.y - Pt1.y});
}

TCoord TGeomUtils::RectToRectDistance(const TCoordRect& Rect1, const TCoordRect& Rect2) {
  return RoundedLength({Gap(Rect1.left(), Rect1.right(), Rect2.left(), Rect2.right()),
                        Gap(Rect1.bottom(), Rect1.top(), Rect2.bottom(), Rect2.top())});
}

double TGeomUtils::Angle(TCoordPoint Pt1, TCoordPoint Pt2) {
  return PointAngle(Pt2.x, Pt2.y, Pt1.x, Pt1.y);
}

double TGeomUtils::CartesianAngle(TCoordPoint Pt1, TCoordPoint Pt2) {
  const TVector2D way = ConvertPointsToVector2D(Pt1, Pt2);
  const double slope = way.y / (way.x == 0 ? 1 : way.x);
  return AngleInQuadrant(way.x, way.y, std::atan(static_cast<float>(slope)), 2 * pi);
}

double TGeomUtils::VectorAngle(double Dy, double Dx) {
  if (Dy == 0) return Dx < 0 ? pi : 0;
  if (Dx == 0) return Dy > 0 ? pi / 2 : 3 * pi / 2;
  if (std::abs(Dx) == std::abs(Dy)) {
    if (Dy > 0) return Dx > 0 ? pi / 4 : 3 * pi / 4;
    return Dx > 0 ? 7 * pi / 4 : 5 * pi / 4;
  }
  // Equal directions have equal quotients, so the arc tangent sees the same pair whatever their lengths.
  const double longest = std::max(std::abs(Dx), std::abs(Dy));
  const double angle = std::atan2(Dy / longest, Dx / longest);
  if (angle > 0) return angle;
  return angle + 2 * pi < 2 * pi ? angle + 2 * pi : 0;  // a tiny angle is lost in the turn
}

int TGeomUtils::GetPointSectorCode(TCoordPoint Fulcrum, TCoordPoint SweepStart, TCoordPoint SweepTerm,
                                   TCoordPoint PointTest) {
  if (SweepStart == Fulcrum || SweepTerm == Fulcrum || SweepStart == SweepTerm) return -1;
  if (PointTest == Fulcrum) return 2;
  const auto direction = [&](TCoordPoint p) {
    const TVector2D way = ConvertPointsToVector2D(Fulcrum, p);
    return VectorAngle(way.y, way.x);
  };
  const double start = direction(SweepStart);
  const double term = direction(SweepTerm);
  const double test = direction(PointTest);
  if (start == term) return -1;
  if (test == start || test == term) return 2;
  const bool inside = start < term ? start < test && test < term : test > start || test < term;
  return inside ? 1 : 0;
}

bool TGeomUtils::ProjectPointOntoSegment(TCoordPoint SegEnd0, TCoordPoint SegEnd1, TCoordPoint ProjPoint,
                                         TCoordPoint& ResultPoint, double& ProjDist) {
  ResultPoint = {-1, -1};
  ProjDist = -1;
  if (SegEnd0 == SegEnd1) return false;
  const TVector2D segment = ConvertPointsToVector2D(SegEnd0, SegEnd1);
  TVectorProjection foot;
  ProjectAndResolve(ConvertPointsToVector2D(SegEnd0, ProjPoint), segment, foot);
  const double length = VectorMagnitude(segment);
  const double sum = VectorMagnitude(AddVectors(segment, foot.Projection));
  if (!(length >= foot.LenProjection && sum >= length && sum >= foot.LenProjection)) return false;
  ResultPoint = ConvertVectorToPoint(foot.Projection, SegEnd0);
  ProjDist = foot.LenPerpProjection;
  return true;
}

TCoordPoint TGeomUtils::ArcCenterPoint(TCoordPoint Pt1, TCoordPoint Pt2, double Angle) {
  const TCoord sweep = Nearest(std::abs(Angle));
  const double half_tangent = std::tan(DegToRad(std::fmod(Angle, 360)) / 2);
  if (Pt1 == Pt2 || sweep == 360 || half_tangent == 0) return Pt1;
  TVector2D way = ScaleVector(ConvertPointsToVector2D(Pt1, Pt2), 0.5);
  if (sweep != 180) {
    // Rays from both ends, half the sweep off the normal, meet on the normal through the middle.
    way = AddVectors(way, ScaleVector(NormalVector(way, true), 1 / half_tangent));
  }
  return ConvertVectorToPoint(way, Pt1);
}

void TGeomUtils::CreateArcTangentLine(TCoord X, TCoord Y, TCoord /*Radius*/, TCoordPoint StartPoint,
                                      TCoordPoint EndPoint, bool atTermination, double lineLength,
                                      TCoordPoint& TangentLineP1, TCoordPoint& TangentLineP2) {
  const TCoordPoint touch = atTermination ? EndPoint : StartPoint;
  const TVector2D tangent = NormalVector(ConvertPointsToVector2D({X, Y}, touch), atTermination);
  const double length = VectorMagnitude(tangent);
  TangentLineP1 = touch;
  TangentLineP2 = length > 0 ? ConvertVectorToPoint(ScaleVector(tangent, lineLength / length), touch) : touch;
}

double TGeomUtils::CrossProductMagnitude(TCoordPoint Vector1, TCoordPoint Vector2) {
  const TVector2D v = ConvertPointsToVector2D({}, Vector1);
  const TVector2D w = ConvertPointsToVector2D({}, Vector2);
  return v.x * w.y - v.y * w.x;
}

TVector2D TGeomUtils::SubtractVectors(TVector2D V0, TVector2D V1) {
  return {V0.x - V1.x, V0.y - V1.y};
}

TVector2D TGeomUtils::AddVectors(TVector2D V0, TVector2D V1) {
  return {V0.x + V1.x, V0.y + V1.y};
}

TVector2D TGeomUtils::ScaleVector(TVector2D V, double Scale) {
  return {V.x * Scale, V.y * Scale};
}

double TGeomUtils::DotProduct(TVector2D V0, TVector2D V1) {
  return V0.x * V1.x + V0.y * V1.y;
}

double TGeomUtils::VectorSquared(TVector2D V) {
  return DotProduct(V, V);
}

double TGeomUtils::VectorMagnitude(TVector2D V) {
  return std::sqrt(VectorSquared(V));
}

TVector2D TGeomUtils::NormalVector(TVector2D V, bool ToLeftSide) {
  return ToLeftSide ? TVector2D{-V.y, V.x} : TVector2D{V.y, -V.x};
}

void TGeomUtils::ProjectAndResolve(TVector2D V0, TVector2D V1, TVectorProjection& Proj) {
  Proj.Projection = ScaleVector(V1, DotProduct(V0, V1) / VectorSquared(V1));
  Proj.PerpProjection = SubtractVectors(V0, Proj.Projection);
  Proj.LenProjection = VectorMagnitude(Proj.Projection);
  Proj.LenPerpProjection = VectorMagnitude(Proj.PerpProjection);
}

TVector2D TGeomUtils::ConvertPointsToVector2D(TCoordPoint Pt0, TCoordPoint Pt1) {
  const TCoordDelta way = Delta(Pt0, Pt1);
  return {static_cast<double>(way.x), static_cast<double>(way.y)};
}

TVector2D TGeomUtils::ConvertRadAngleToVector2D(double RadAngle) {
  return {std::cos(RadAngle), std::sin(RadAngle)};
}

TCoordPoint TGeomUtils::ConvertVectorToPoint(TVector2D Vector, TCoordPoint OffsetPt) {
  return {SaturateToCoord(std::round(Vector.x) + OffsetPt.x),
          SaturateToCoord(std::round(Vector.y) + OffsetPt.y)};
}

}  // namespace Ketril::Tools
