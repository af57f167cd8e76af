// The integer half: points, and vectors of whole coordinates. Exact but for `TranslateAboutPt` and
// `Magnitude`; sums, differences and negations wrap to 32 bits.
#pragma once

#include "Interfaces/Types.h"

namespace Ketril::Tools {

class TPointUtils {
 public:
  TPointUtils() = delete;

  static TCoordPoint SetPoint(TCoord X, TCoord Y);
  static void SetPoint(TCoordPoint& Pt, TCoord X, TCoord Y);
  static void Translate(TCoordPoint& Pt, TCoord DeltaX, TCoord DeltaY);
  // Turns by degrees, which are not normalised: 90, 180 and 270 are exact and wrap, others are rounded half
  // away from zero relative to the pivot and kept in range. Nothing for 0.
  static void TranslateAboutPt(TCoordPoint& Pt, double Angle, TCoordPoint Pivot);
  static void Negate(TCoordPoint& Pt);
  static TCoordPoint Add(TCoordPoint Pt1, TCoordPoint Pt2);
  static TCoordPoint Subtract(TCoordPoint Pt1, TCoordPoint Pt2);
  static void Swap(TCoordPoint& P1, TCoordPoint& P2);

  static bool PointsEqual(TCoordPoint P1, TCoordPoint P2);
  // Both axis differences at most `Tolerance`.
  static bool PointsNearEqual(TCoordPoint P1, TCoordPoint P2, TCoord Tolerance);
  static bool IsCohorizontal(TCoordPoint P1, TCoordPoint P2);
  // Of two vectors: x1 y2 equals x2 y1, as doubles. A zero vector is collinear with any.
  static bool AreCollinear(TCoordPoint Pt1, TCoordPoint Pt2);
  // The same of the ways from Pt2 to the other two.
  static bool AreCollinear(TCoordPoint Pt1, TCoordPoint Pt2, TCoordPoint Pt3);

  // The sum of the absolute differences, wrapped to 32 bits.
  static TCoord Manhattan(TCoordPoint Pt1, TCoordPoint Pt2);
  // The length of a vector, unrounded; whole for one along an axis.
  static double Magnitude(TCoordPoint Pt);
};

}  // namespace Ketril::Tools
