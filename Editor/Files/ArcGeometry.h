// Arcs and curves as the board file draws them.
#pragma once

#include <vector>

#include "Editor/Model/Copper.h"

namespace Ketril::Editor {

inline TCoordPoint Shifted(TCoordPoint point, TCoordPoint from, TCoordPoint to) {
  return {ToCoord(std::int64_t{point.x} + to.x - from.x), ToCoord(std::int64_t{point.y} + to.y - from.y)};
}
inline TCoordPoint Midpoint(TCoordPoint a, TCoordPoint b) {
  return {ToCoord((std::int64_t{a.x} + b.x) / 2), ToCoord((std::int64_t{a.y} + b.y) / 2)};
}

// The arc from `start` over `mid` to `end`; a full circle when the ends are the same. False when the points
// are on a line, or so nearly that the centre is out of range. Moving the points moves the result exactly.
// `clockwise`: the arc's second angle is at `start`. Leaves the width as it is.
bool ArcThrough(TCoordPoint start, TCoordPoint mid, TCoordPoint end, ArcData& arc, bool& clockwise);
// The arc from `start` about `center` over `sweep` degrees, counter-clockwise when positive.
bool ArcAround(TCoordPoint center, TCoordPoint start, double sweep, ArcData& arc);
double SweepOf(const ArcData& arc);  // degrees, 0 to 360
bool IsFullCircle(const ArcData& arc);
// True when one arc is the other, moved.
bool IsSameShape(const ArcData& a, const ArcData& b);
// On the arc, at `part` of its sweep: 0 at the first angle, 1 at the second one.
TCoordPoint PointOnArc(const ArcData& arc, double part);

// Points along the curve, the first one left out; chords are off it by less than 1 micrometre, or there are
// 256 of them.
void AddArcPoints(TCoordPoint start, TCoordPoint mid, TCoordPoint end, std::vector<TCoordPoint>& points);
void AddCurvePoints(const TCoordPoint (&controls)[4], std::vector<TCoordPoint>& points);
std::vector<TCoordPoint> PointsOnArc(const ArcData& arc);  // both ends included
// A line with round ends as a polygon.
std::vector<TCoordPoint> LineAsPolygon(TCoordPoint p1, TCoordPoint p2, TCoord width);

}  // namespace Ketril::Editor
