// The double half: circles and arcs.
//
// Nothing here raises. Points that are handed back are not rounded; those past `Count` mean nothing.
#pragma once

#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

// Normalises both angles and computes the ends from them.
void UpdateArcEnds(ThinArcType& arc);
// The box of the arc after `UpdateArcEnds`. Equal angles give the point there; an arc that begins and ends in
// one quadrant and runs round the others gives the circle's box.
void ArcBounds(ThinArcType arc, LineType& box);

// Is the point within 100 of the disc, or both its coordinates within 100 of the centre's, whatever the
// radius.
bool IsPointInCircle(const CircleType& circle, GeoPointType p);
// Is the point within |Width| + 100 of the circle and, seen from the centre, in the sweep of the normalised
// angles (by 0.001 degrees). `Width` is half the stroke's. The centre is seen at 270 degrees.
bool IsPointOnArc(double px, double py, const ThinArcType& arc, double Width);

// Where a line meets a circle. P1 is nearer the line's second point than P2 when there are two; a tangent,
// whose distance squared from the centre differs from the radius squared by less than 100, has one. Both ends
// less than 100 from the circle are the answer themselves; a single such end is the answer only when the
// infinite line misses the circle. These ends are not checked; with `CheckBounds` the other places are given
// only within 100 of the line's box and not more than 100 outside the circle. A line without length meets
// nothing.
void IntersectCircleLine(const CircleType& circle, const LineType& line, int& Count, GeoPointType& P1,
                         GeoPointType& P2, bool CheckBounds);
// Where two circles meet. Their distance is rounded down to a whole number first, so circles whose centres
// are less than 1 apart have no contact, and the points are that much off. P1 lies to the right of the way
// from c1 to c2. A circle that just touches gives one point, as far as the two come out equal.
void IntersectCircles(const CircleType& c1, const CircleType& c2, GeoPointType& P1, GeoPointType& P2,
                      int& Count);
// The places of `IntersectCircleLine` that the arc's sweep holds, in that order.
void IntersectArcLine(ThinArcType arc, const LineType& line, GeoPointType& P1, GeoPointType& P2, int& Count,
                      bool CheckBounds = true);

}  // namespace Ketril::Tools
