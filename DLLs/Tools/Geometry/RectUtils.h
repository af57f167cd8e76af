// The integer half: rectangles. All exact. An ordered rectangle has left <= right and bottom <= top;
// operations that do not order one take theirs as ordered. Sums, differences and products wrap to 32 bits;
// halves are cut towards zero.
#pragma once

#include "Interfaces/Types.h"

namespace Ketril::Tools {

class TRectUtils {
 public:
  TRectUtils() = delete;

  static TCoordRect SetRect(TCoord Left, TCoord Bottom, TCoord Right, TCoord Top);  // ordered
  static TCoordRect SetRect(TCoordPoint Pt1, TCoordPoint Pt2);                      // ordered
  // Half of the width and of the height to either side. Not ordered, nor is the next.
  static TCoordRect SetRectWithCenterDim(TCoord CenterPtX, TCoord CenterPtY, TCoord Width, TCoord Height);
  static TCoordRect SetRectWithCornerDim(TCoord Left, TCoord Bottom, TCoord Width, TCoord Height);

  static TCoord GetWidth(const TCoordRect& Rect);
  static TCoord GetHeight(const TCoordRect& Rect);
  static TCoordPoint GetCenterPoint(const TCoordRect& Rect);
  static TCoordPoint GetLowerLeftCorner(const TCoordRect& Rect);
  static TCoord Area(const TCoordRect& Rect);
  static bool IsZero(const TCoordRect& Rect);  // all four fields are 0

  static bool RectsEqual(const TCoordRect& Rect1, const TCoordRect& Rect2);
  // Do they share a point; touching edges do.
  static bool DoRectsIntersect(const TCoordRect& Rect1, const TCoordRect& Rect2);
  // Does the first stick out of the region on any side.
  static bool IsRectOutsideRect(const TCoordRect& TestRect, const TCoordRect& Region);
  // Does the source lie in the target, edges allowed.
  static bool IsRectOnOrIn(const TCoordRect& SourceRect, const TCoordRect& TargetRect);
  static bool IsPointIn(const TCoordRect& Rect, TCoordPoint Pt);  // not on an edge
  static bool IsPointOnOrIn(const TCoordRect& Rect, TCoordPoint Pt);
  // The rectangle reaches out by `HitSize` on each side.
  static bool IsPointOnOrIn(const TCoordRect& Rect, TCoordPoint Point, TCoord HitSize);

  static void CorrectPoints(TCoordRect& Rect);  // orders it
  // Turns both corners about the pivot by the whole quarters in `Angle`, counter-clockwise when positive,
  // then orders. Less than a quarter only orders; exactly 0 does nothing.
  static void RotateBy90(TCoordRect& Rect, TCoordPoint PivotPt, double Angle);
  // Adds to each field, then orders.
  static void Resize(TCoordRect& Rect, TCoord DeltaLeft, TCoord DeltaBottom, TCoord DeltaRight,
                     TCoord DeltaTop);
  static void Inflate(TCoordRect& ARect, TCoord ADelta);  // out by `ADelta` on each side, then ordered
  static void Translate(TCoordRect& Rect, TCoord DeltaX, TCoord DeltaY);
  // The smallest one round both; an all-zero rectangle counts as the origin.
  static TCoordRect Union(const TCoordRect& Rect1, const TCoordRect& Rect2);
  // Rect1 becomes what both share, which may have no width or height. False, and Rect1 left alone, when they
  // share nothing.
  static bool Intersect(TCoordRect& Rect1, const TCoordRect& Rect2);
  // Takes each field into its range, the upper end last.
  static void ClipRectToMinMaxCoord(TCoord MinX, TCoord MinY, TCoord MaxX, TCoord MaxY, TCoordRect& Rect);
};

}  // namespace Ketril::Tools
