// Lines and arcs of tracks, and the ways along them, as the teardrop outlines need them. Doubles in the unit
// of a coordinate; nothing is rounded but where it says so. Nothing raises but the reads of wrappers.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Geometry/RT_Geometry.h"

namespace Ketril::Tools {

// The centre line of a track, each end moved outwards by `Extension` times the width if that is positive; all
// zero for anything else.
LineType TrackToLine(const TPrimitive* ATrack, double Extension);
// All zero for anything but an arc.
ThinArcType ArcToThinArc(const TPrimitive* AArc);
// 0 for anything but a track or an arc.
std::int32_t TrackOrArcWidth(const TPrimitive* APrimitive);

GeoPointType Midpoint(GeoPointType A, GeoPointType B);
GeoPointType LeftNormal(GeoPointType P);  // turned by 90 degrees, as long as P

// Slides Pt along the line, away from Ref, by Shift, but not past the line's end on that side. Stays where
// Ref is square to it.
void MoveAlongLine(GeoPointType& Pt, const LineType& Line, GeoPointType Ref, double Shift);
// The same on an arc, not past its ends. Pt comes out whole: it and the centre are rounded, then Pt is
// turned. Nothing for a radius of 0.
void MoveAlongArc(GeoPointType& Pt, const ThinArcType& Arc, GeoPointType Ref, double Shift);
// A moves towards B by Distance, with Clamp at most to B.
void MovePointToward(GeoPointType& A, GeoPointType B, double Distance, bool Clamp);

// The line moved so that it passes through P, which within 100 of it counts as on it.
LineType LineThroughPoint(const LineType& Line, GeoPointType P);
// The points Width / 2 to the left and to the right of P, looking along the line; or outside and inside of P,
// seen from the arc's centre.
void LineEdgePoints(const LineType& Line, double Width, GeoPointType P, GeoPointType& E1, GeoPointType& E2);
void ArcEdgePoints(const ThinArcType& Arc, double Width, GeoPointType P, GeoPointType& E1, GeoPointType& E2);
double ArcLengthBetween(GeoPointType A, GeoPointType B, const ThinArcType& Arc);
// Swaps the points unless O lies to the left of the way from A to B, or on it.
void OrderAroundCentre(GeoPointType& A, GeoPointType& B, GeoPointType O);

// Where an arc and a circle meet, within `Width` + 100 of the arc: how many of the given hits are left.
int KeepHitsOnArc(const ThinArcType& Arc, double Width, int Count, GeoPointType& Q1, GeoPointType& Q2);
// Where a line meets an arc: 0 to 2 hits.
int LineArcHits(const LineType& Line, const ThinArcType& Arc, GeoPointType& Q1, GeoPointType& Q2);

}  // namespace Ketril::Tools
