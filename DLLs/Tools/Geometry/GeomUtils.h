// The integer half: distances, angles, side tests and meetings of points and edges of whole coordinates.
//
// Coordinates compare exactly, and there is no tolerance but what an operation names. Differences never
// overflow; where a product decides in `Intersection`, `DoLinesCross`, `IsPointOnLine`, `IntersectionCase`
// or `IntersectionCode` it is exact for all coordinates. What is rounded to a coordinate goes half away from
// zero (`Nearest`) and is kept in range. Nothing here raises. The operations on vectors are plain arithmetic
// in doubles, not rounded; a vector without length stays one.
#pragma once

#include <cstdint>

#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

class TGeomUtils {
 public:
  TGeomUtils() = delete;

  static int Sign(std::int64_t X);
  // Half away from zero. Beyond the range of a coordinate, the end of the range; no number gives 0.
  static TCoord Nearest(double D);

  // Rounded. A distance that no coordinate holds is the highest one.
  static TCoord Distance(TCoordPoint P1, TCoordPoint P2);
  static double Distance(TDPPoint Pt1, TDPPoint Pt2);
  // Rounded; 0 for rectangles that overlap or touch. Both are ordered.
  static TCoord RectToRectDistance(const TCoordRect& Rect1, const TCoordRect& Rect2);
  // From P to the segment, unrounded. Beyond B it is worked out in single precision; on the segment it is
  // exactly 0. The distance to A when A = B.
  static double PointToSegmentDistanceInt(TCoordPoint P, TCoordPoint A, TCoordPoint B);

  // Degrees of Pt2 seen from Pt1: at least 0, below 360. A vertical pair gives exactly 90 or 270, equal
  // points 270.
  static double Angle(TCoordPoint Pt1, TCoordPoint Pt2);
  // The same in radians, with the arc tangent taken in single precision.
  static double CartesianAngle(TCoordPoint Pt1, TCoordPoint Pt2);
  // Radians of a direction: at least 0, below 2 pi. The axes and the diagonals are the exact multiples of
  // pi / 4; equal directions of whole components compare equal, whatever their lengths, and so may different
  // ones that are less than 1e-15 apart. 0 for no direction.
  static double VectorAngle(double Dy, double Dx);

  // 1 when Pt2 is left of the way from Pt0 to Pt1, -1 right, 0 on its line. An edge along an axis is decided
  // exactly, others by two products in doubles. Equal Pt0 and Pt1 count as an edge along +x.
  static int Clockwise(TCoordPoint Pt0, TCoordPoint Pt1, TCoordPoint Pt2);
  // Where the point is outside of an ordered rectangle: 1 above, 2 below, 4 right, 8 left; 0 inside or on it.
  static std::uint32_t ClipCode(TCoordPoint Pt, const TCoordRect& Rc);
  // Do the closed segments meet, by `Clockwise`. Touching counts. Segments that it takes for collinear meet
  // unless both ends of the second lie beyond one side of the first's rectangle. A segment may be a point.
  static bool Intersect(TCoordPoint PtA, TCoordPoint PtB, TCoordPoint PtC, TCoordPoint PtD);
  // Exact. Collinear segments: `LinesColinear` when they share more than a point, `LinesTee` when they meet
  // end to end. A point on a segment is `LinesTee`.
  static TLineCrossType DoLinesCross(TCoordPoint OneEnd1, TCoordPoint OtherEnd1, TCoordPoint OneEnd2,
                                     TCoordPoint OtherEnd2);
  // Is the point at most `FuzzFactor` from the segment, and in its rectangle grown by FuzzFactor + 0.5
  // rounded half to even. With 0, exactly on the segment; of a segment without length, equal to its point.
  static bool IsPointOnLine(TCoordPoint LineOnePt, TCoordPoint LineOtherPt, TCoordPoint TestPt,
                            double FuzzFactor);
  // In the counter-clockwise sector from `SweepStart` to `SweepTerm` about `Fulcrum`, which may pass 0: 1
  // inside, 0 outside, 2 on an edge or the fulcrum; -1 when there is no sector, the two directions being
  // equal or one of them missing. Compares `VectorAngle`s.
  static int GetPointSectorCode(TCoordPoint Fulcrum, TCoordPoint SweepStart, TCoordPoint SweepTerm,
                                TCoordPoint PointTest);
  // The foot of the point on the segment, ends included, its way from SegEnd0 rounded; the distance is not
  // rounded. False, (-1, -1) and -1 when there is none or the ends are equal.
  static bool ProjectPointOntoSegment(TCoordPoint SegEnd0, TCoordPoint SegEnd1, TCoordPoint ProjPoint,
                                      TCoordPoint& ResultPoint, double& ProjDist);
  // Where the infinite lines meet, exactly rounded relative to Pt11. Parallel lines, one without length among
  // them, give an end that they share, Pt11 before Pt12, or else Pt11.
  static void Intersection(TCoordPoint Pt11, TCoordPoint Pt12, TCoordPoint Pt21, TCoordPoint Pt22,
                           TCoordPoint& Ipt);
  // The same of lines through a position along a direction, unrounded. A direction whose x is below 1e-10 is
  // vertical, so no direction is, too. False, and the point left alone, when both are vertical or the slopes
  // are equal.
  static bool Intersection(TDPPoint PositionPt0, TVector2D DirVector0, TDPPoint PositionPt1,
                           TVector2D DirVector1, TDPPoint& InterxPt);

  // How the infinite lines through two edges meet: the sum of 1 in PolyEdge.Left, 2 in PolyEdge.Right, 4 in
  // FixedEdge.Left and 8 in FixedEdge.Right, each decided exactly. The place is unrounded, but exact in an
  // end. Parallel lines, one without length among them, meet in an end that they share, FixedEdge.Left before
  // FixedEdge.Right, or else in FixedEdge.Left.
  static int IntersectionCase(const TLEdgeType& FixedEdge, const TLEdgeType& PolyEdge, TDPPoint& IntPnt);
  // How two edges of polygons meet, given the vertices before and after each. Four rays leave the meeting
  // place, two along each chain; where that is the edge's own end, towards the neighbour. The ray to the left
  // of chain 1 is the reference; the others are chain 1's right ray, label 0, and chain 2's left and right
  // ones, labels 1 and 2. In counter-clockwise order from the reference, their labels are the octal digits of
  // the result, the first the lowest. Rays that coincide are told by 3 or 4 (label 1 or 2 with the
  // reference), 5 or 6 (1 or 2 with the next ray, whose digit is 0) and 7 (one with the reference, one with
  // label 0). -1 when the place is both ends of an edge, or when each chain turns back on itself there. A
  // neighbour in the place counts as to the right of it. `IntPnt` is rounded.
  static int IntersectionCode(const TLEdgeType& Edge1, const TLEdgeType& edge2, TCoordPoint Prev1,
                              TCoordPoint Next1, TCoordPoint Prev2, TCoordPoint Next2, TCoordPoint& IntPnt);

  // The centre of the arc that runs from Pt1 to Pt2 through `Angle` degrees, counter-clockwise when positive;
  // rounded relative to Pt1. An absolute angle that rounds to 180 gives the middle of the chord. Pt1 when the
  // points are equal, the absolute angle rounds to 360 or the angle is another whole number of turns.
  static TCoordPoint ArcCenterPoint(TCoordPoint Pt1, TCoordPoint Pt2, double Angle);
  // The line of `lineLength` from the end point (`atTermination`) or the start point of the arc about (X, Y),
  // going on where the arc ends there; the far end is rounded. It is a point when that end is the centre. The
  // radius follows from the points and is not read.
  static void CreateArcTangentLine(TCoord X, TCoord Y, TCoord Radius, TCoordPoint StartPoint,
                                   TCoordPoint EndPoint, bool atTermination, double lineLength,
                                   TCoordPoint& TangentLineP1, TCoordPoint& TangentLineP2);

  // x1 y2 - y1 x2 in doubles, signed.
  static double CrossProductMagnitude(TCoordPoint Vector1, TCoordPoint Vector2);
  static TVector2D SubtractVectors(TVector2D V0, TVector2D V1);
  static TVector2D AddVectors(TVector2D V0, TVector2D V1);
  static TVector2D ScaleVector(TVector2D V, double Scale);
  static double DotProduct(TVector2D V0, TVector2D V1);
  static double VectorSquared(TVector2D V);
  static double VectorMagnitude(TVector2D V);
  // Turned by a quarter to the left or the right.
  static TVector2D NormalVector(TVector2D V, bool ToLeftSide);
  // Takes V0 apart along V1, which must not be zero: then nothing in `Proj` is a number.
  static void ProjectAndResolve(TVector2D V0, TVector2D V1, TVectorProjection& Proj);
  static TVector2D ConvertPointsToVector2D(TCoordPoint Pt0, TCoordPoint Pt1);  // from Pt0 to Pt1
  static TVector2D ConvertRadAngleToVector2D(double RadAngle);
  // The rounded vector, then `OffsetPt` added; kept in range.
  static TCoordPoint ConvertVectorToPoint(TVector2D Vector, TCoordPoint OffsetPt);
};

}  // namespace Ketril::Tools
