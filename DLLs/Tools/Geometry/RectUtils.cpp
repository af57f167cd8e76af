#include "DLLs/Tools/Geometry/RectUtils.h"

#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

TCoord Plus(TCoord a, TCoord b) {
  return WrapToCoord(std::int64_t{a} + b);
}

TCoord Minus(TCoord a, TCoord b) {
  return WrapToCoord(std::int64_t{a} - b);
}

TCoord Middle(TCoord a, TCoord b) {
  return static_cast<TCoord>((std::int64_t{a} + b) / 2);
}

}  // namespace

TCoordRect TRectUtils::SetRect(TCoord Left, TCoord Bottom, TCoord Right, TCoord Top) {
  return {std::min(Left, Right), std::min(Bottom, Top), std::max(Left, Right), std::max(Bottom, Top)};
}

TCoordRect TRectUtils::SetRect(TCoordPoint Pt1, TCoordPoint Pt2) {
  return SetRect(Pt1.x, Pt1.y, Pt2.x, Pt2.y);
}

TCoordRect TRectUtils::SetRectWithCenterDim(TCoord CenterPtX, TCoord CenterPtY, TCoord Width, TCoord Height) {
  return {Minus(CenterPtX, Width / 2), Minus(CenterPtY, Height / 2), Plus(CenterPtX, Width / 2),
          Plus(CenterPtY, Height / 2)};
}

TCoordRect TRectUtils::SetRectWithCornerDim(TCoord Left, TCoord Bottom, TCoord Width, TCoord Height) {
  return {Left, Bottom, Plus(Left, Width), Plus(Bottom, Height)};
}

TCoord TRectUtils::GetWidth(const TCoordRect& Rect) {
  return Minus(Rect.right(), Rect.left());
}

TCoord TRectUtils::GetHeight(const TCoordRect& Rect) {
  return Minus(Rect.top(), Rect.bottom());
}

TCoordPoint TRectUtils::GetCenterPoint(const TCoordRect& Rect) {
  return {Middle(Rect.left(), Rect.right()), Middle(Rect.bottom(), Rect.top())};
}

TCoordPoint TRectUtils::GetLowerLeftCorner(const TCoordRect& Rect) {
  return Rect.BottomLeft();
}

TCoord TRectUtils::Area(const TCoordRect& Rect) {
  return WrapToCoord(std::int64_t{GetWidth(Rect)} * GetHeight(Rect));
}

bool TRectUtils::IsZero(const TCoordRect& Rect) {
  return Rect == TCoordRect{};
}

bool TRectUtils::RectsEqual(const TCoordRect& Rect1, const TCoordRect& Rect2) {
  return Rect1 == Rect2;
}

bool TRectUtils::DoRectsIntersect(const TCoordRect& Rect1, const TCoordRect& Rect2) {
  return Rect1.left() <= Rect2.right() && Rect2.left() <= Rect1.right() && Rect1.bottom() <= Rect2.top() &&
         Rect2.bottom() <= Rect1.top();
}

bool TRectUtils::IsRectOutsideRect(const TCoordRect& TestRect, const TCoordRect& Region) {
  return !IsRectOnOrIn(TestRect, Region);
}

bool TRectUtils::IsRectOnOrIn(const TCoordRect& SourceRect, const TCoordRect& TargetRect) {
  return SourceRect.left() >= TargetRect.left() && SourceRect.right() <= TargetRect.right() &&
         SourceRect.bottom() >= TargetRect.bottom() && SourceRect.top() <= TargetRect.top();
}

bool TRectUtils::IsPointIn(const TCoordRect& Rect, TCoordPoint Pt) {
  return Pt.x > Rect.left() && Pt.x < Rect.right() && Pt.y > Rect.bottom() && Pt.y < Rect.top();
}

bool TRectUtils::IsPointOnOrIn(const TCoordRect& Rect, TCoordPoint Pt) {
  return IsPointOnOrIn(Rect, Pt, 0);
}

bool TRectUtils::IsPointOnOrIn(const TCoordRect& Rect, TCoordPoint Point, TCoord HitSize) {
  const std::int64_t reach = HitSize;
  return Point.x >= Rect.left() - reach && Point.x <= Rect.right() + reach &&
         Point.y >= Rect.bottom() - reach && Point.y <= Rect.top() + reach;
}

void TRectUtils::CorrectPoints(TCoordRect& Rect) {
  Rect = SetRect(Rect.Location1(), Rect.Location2());
}

void TRectUtils::RotateBy90(TCoordRect& Rect, TCoordPoint PivotPt, double Angle) {
  if (Angle == 0) return;
  const double quarters = 90 * std::fmod(std::trunc(Angle / 90), 4.0);
  RotateCoordAbout(Rect.x1, Rect.y1, PivotPt.x, PivotPt.y, quarters);
  RotateCoordAbout(Rect.x2, Rect.y2, PivotPt.x, PivotPt.y, quarters);
  CorrectPoints(Rect);
}

void TRectUtils::Resize(TCoordRect& Rect, TCoord DeltaLeft, TCoord DeltaBottom, TCoord DeltaRight,
                        TCoord DeltaTop) {
  Rect = SetRect(Plus(Rect.left(), DeltaLeft), Plus(Rect.bottom(), DeltaBottom),
                 Plus(Rect.right(), DeltaRight), Plus(Rect.top(), DeltaTop));
}

void TRectUtils::Inflate(TCoordRect& ARect, TCoord ADelta) {
  Resize(ARect, Minus(0, ADelta), Minus(0, ADelta), ADelta, ADelta);
}

void TRectUtils::Translate(TCoordRect& Rect, TCoord DeltaX, TCoord DeltaY) {
  Rect = {Plus(Rect.x1, DeltaX), Plus(Rect.y1, DeltaY), Plus(Rect.x2, DeltaX), Plus(Rect.y2, DeltaY)};
}

TCoordRect TRectUtils::Union(const TCoordRect& Rect1, const TCoordRect& Rect2) {
  return {std::min(Rect1.left(), Rect2.left()), std::min(Rect1.bottom(), Rect2.bottom()),
          std::max(Rect1.right(), Rect2.right()), std::max(Rect1.top(), Rect2.top())};
}

bool TRectUtils::Intersect(TCoordRect& Rect1, const TCoordRect& Rect2) {
  if (!DoRectsIntersect(Rect1, Rect2)) return false;
  Rect1 = {std::max(Rect1.left(), Rect2.left()), std::max(Rect1.bottom(), Rect2.bottom()),
           std::min(Rect1.right(), Rect2.right()), std::min(Rect1.top(), Rect2.top())};
  return true;
}

void TRectUtils::ClipRectToMinMaxCoord(TCoord MinX, TCoord MinY, TCoord MaxX, TCoord MaxY, TCoordRect& Rect) {
  const auto clip = [](TCoord& field, TCoord low, TCoord high) {
    field = std::min(std::max(field, low), high);
  };
  clip(Rect.x1, MinX, MaxX);
  clip(Rect.x2, MinX, MaxX);
  clip(Rect.y1, MinY, MaxY);
  clip(Rect.y2, MinY, MaxY);
}

}  // namespace Ketril::Tools
