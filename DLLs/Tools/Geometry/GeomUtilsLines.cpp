// The operations of TGeomUtils on segments and lines.
#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/RT_GeometryTolerances.h"
#include "DLLs/Tools/Geometry/RectUtils.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Geometry/WideInteger.h"

namespace Ketril::Tools {

namespace {

std::int64_t Extent(const TCoordRect& rect) {
  return (std::int64_t{rect.right()} - rect.left()) + (std::int64_t{rect.top()} - rect.bottom());
}

double Length(TCoordDelta way) {
  return std::sqrt(static_cast<double>(ExactDot(way, way)));
}

// offset + numerator / denominator, the quotient rounded half away from zero, the sum kept in range.
TCoord OffsetByQuotient(TCoord offset, TWide numerator, TWide denominator) {
  const TWide half = denominator / 2;
  const TWide away = (numerator < 0) == (denominator < 0) ? half : -half;
  const TWide sum = (numerator + away) / denominator + offset;
  return static_cast<TCoord>(std::clamp(sum, TWide{kLowestCoord}, TWide{kHighestCoord}));
}

}  // namespace

double TGeomUtils::PointToSegmentDistanceInt(TCoordPoint P, TCoordPoint A, TCoordPoint B) {
  const TCoordDelta way = Delta(A, P);
  if (A == B) return Length(way);
  const TCoordDelta segment = Delta(A, B);
  const double length = Length(segment);
  const double along = static_cast<double>(ExactDot(way, segment)) / length;
  if (along < 0) return Length(way);
  if (along > length) {
    const TCoordDelta beyond = Delta(B, P);
    const float x = static_cast<float>(beyond.x);
    const float y = static_cast<float>(beyond.y);
    return std::sqrt(x * x + y * y);
  }
  return std::abs(static_cast<double>(ExactCross(way, segment))) / length;
}

int TGeomUtils::Clockwise(TCoordPoint Pt0, TCoordPoint Pt1, TCoordPoint Pt2) {
  const TCoordDelta edge = Delta(Pt0, Pt1);
  const TCoordDelta way = Delta(Pt0, Pt2);
  if (edge.y == 0) return Sign(edge.x >= 0 ? way.y : -way.y);
  if (edge.x == 0) return Sign(edge.y > 0 ? -way.x : way.x);
  const double left = static_cast<double>(edge.x) * static_cast<double>(way.y);
  const double right = static_cast<double>(edge.y) * static_cast<double>(way.x);
  return left > right ? 1 : left < right ? -1 : 0;
}

std::uint32_t TGeomUtils::ClipCode(TCoordPoint Pt, const TCoordRect& Rc) {
  return (Pt.y > Rc.top() ? 1u : 0u) | (Pt.y < Rc.bottom() ? 2u : 0u) | (Pt.x > Rc.right() ? 4u : 0u) |
         (Pt.x < Rc.left() ? 8u : 0u);
}

bool TGeomUtils::Intersect(TCoordPoint PtA, TCoordPoint PtB, TCoordPoint PtC, TCoordPoint PtD) {
  const TCoordRect rect = TRectUtils::SetRect(PtA, PtB);
  if ((ClipCode(PtC, rect) & ClipCode(PtD, rect)) != 0) return false;
  const int c = Clockwise(PtA, PtB, PtC);
  if (c != 0 && c == Clockwise(PtA, PtB, PtD)) return false;
  const int b = Clockwise(PtC, PtD, PtB);
  return b == 0 || b != Clockwise(PtC, PtD, PtA);
}

TLineCrossType TGeomUtils::DoLinesCross(TCoordPoint OneEnd1, TCoordPoint OtherEnd1, TCoordPoint OneEnd2,
                                        TCoordPoint OtherEnd2) {
  const TCoordRect rect1 = TRectUtils::SetRect(OneEnd1, OtherEnd1);
  const TCoordRect rect2 = TRectUtils::SetRect(OneEnd2, OtherEnd2);
  if (!TRectUtils::DoRectsIntersect(rect1, rect2)) return LinesDontCross;
  const TCoordDelta way1 = Delta(OneEnd1, OtherEnd1);
  const TCoordDelta way2 = Delta(OneEnd2, OtherEnd2);
  const int r1 = SignOf(ExactCross(way2, Delta(OneEnd2, OneEnd1)));
  const int r2 = SignOf(ExactCross(way2, Delta(OneEnd2, OtherEnd1)));
  const int r3 = SignOf(ExactCross(way1, Delta(OneEnd1, OneEnd2)));
  const int r4 = SignOf(ExactCross(way1, Delta(OneEnd1, OtherEnd2)));
  if (r1 == 0 && r2 == 0 && r3 == 0 && r4 == 0) {
    const std::int64_t parts = Extent(rect1) + Extent(rect2);
    const std::int64_t whole = Extent(TRectUtils::Union(rect1, rect2));
    return parts > whole ? LinesColinear : parts == whole ? LinesTee : LinesDontCross;
  }
  if (r1 * r2 > 0 || r3 * r4 > 0) return LinesDontCross;
  return r1 * r2 < 0 && r3 * r4 < 0 ? LinesCross : LinesTee;
}

bool TGeomUtils::IsPointOnLine(TCoordPoint LineOnePt, TCoordPoint LineOtherPt, TCoordPoint TestPt,
                               double FuzzFactor) {
  const TCoordRect rect = TRectUtils::SetRect(LineOnePt, LineOtherPt);
  if (!TRectUtils::IsPointOnOrIn(rect, TestPt, Round(FuzzFactor + 0.5))) return false;
  return FuzzFactor >= PointToSegmentDistanceInt(TestPt, LineOnePt, LineOtherPt);
}

void TGeomUtils::Intersection(TCoordPoint Pt11, TCoordPoint Pt12, TCoordPoint Pt21, TCoordPoint Pt22,
                              TCoordPoint& Ipt) {
  const TCoordDelta way1 = Delta(Pt11, Pt12);
  const TCoordDelta way2 = Delta(Pt21, Pt22);
  const TWide cross = ExactCross(way1, way2);
  if (cross == 0) {
    const bool first = Pt11 == Pt21 || Pt11 == Pt22;
    const bool second = Pt12 == Pt21 || Pt12 == Pt22;
    Ipt = second && !first ? Pt12 : Pt11;
    return;
  }
  const TWide along = ExactCross(Delta(Pt11, Pt21), way2);
  Ipt = {OffsetByQuotient(Pt11.x, way1.x * along, cross), OffsetByQuotient(Pt11.y, way1.y * along, cross)};
}

bool TGeomUtils::Intersection(TDPPoint PositionPt0, TVector2D DirVector0, TDPPoint PositionPt1,
                              TVector2D DirVector1, TDPPoint& InterxPt) {
  const bool vertical0 = std::abs(DirVector0.x) < kVerticalDirection;
  const bool vertical1 = std::abs(DirVector1.x) < kVerticalDirection;
  if (vertical0 && vertical1) return false;
  const double slope0 = vertical0 ? 0 : DirVector0.y / DirVector0.x;
  const double slope1 = vertical1 ? 0 : DirVector1.y / DirVector1.x;
  const double dx = PositionPt1.x - PositionPt0.x;
  const double dy = PositionPt1.y - PositionPt0.y;
  if (vertical0) {
    InterxPt = {PositionPt0.x, PositionPt1.y - slope1 * dx};
  } else if (vertical1) {
    InterxPt = {PositionPt1.x, PositionPt0.y + slope0 * dx};
  } else {
    if (slope0 == slope1) return false;
    const double along = (dy - slope1 * dx) / (slope0 - slope1);
    InterxPt = {PositionPt0.x + along, PositionPt0.y + slope0 * along};
  }
  return true;
}

}  // namespace Ketril::Tools
