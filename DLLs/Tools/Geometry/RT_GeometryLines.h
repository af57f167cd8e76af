// The double half: segments, lines and boxes.
//
// Nothing here raises. "Within 100" includes 100. Points that are handed back are not rounded.
#pragma once

#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

// The low and the high corner of the two points, exactly; of equal points a box without size.
void LineBounds(const LineType& line, LineType& box);
// The ray that starts in the line's first point. Its direction is the unit vector from the second point to
// the first; of a line without length, zero.
void LineToRay(const LineType& line, LineType& ray);

// (dx, dy) is `Dist` long, at right angles to the segment, to the left or the right of its way. False, and
// (0, 0), for a segment without length.
bool PerpendicularOffset(double x1, double y1, double x2, double y2, double Dist, double& dx, double& dy,
                         bool ToLeft);
// Moves both points by that offset; a segment without length stays.
void OffsetLine(double& x1, double& y1, double& x2, double& y2, double Dist, bool ToLeft);
void OffsetLine(LineType& line, double Dist, bool ToLeft);

// 1 when the point is left of the way from the first point to the second, -1 right, 0 on the line. The
// computed value is compared with 0, without tolerance; a line without length gives 0.
int SideOfLine(double x1, double y1, double x2, double y2, double px, double py);
int SideOfLine(const LineType& line, GeoPointType p);
// Is the dot product of the directions, which are not normalised, within plus or minus `Tolerance`. A line
// without length is at right angles to any.
bool ArePerpendicular(const LineType& line1, const LineType& line2, double Tolerance);

// From a point to a segment, without tolerance; to the point that a segment without length is.
double PointToSegmentDistance(double px, double py, double x1, double y1, double x2, double y2);
double PointToSegmentDistance(GeoPointType p, const LineType& segment);

// Where two lines meet. An end within 100 of the other line's segment is such a place, and is handed back
// unmoved; the ends are tried in the order line2 first, line2 second, line1 first, line1 second. Otherwise it
// is where the infinite lines meet, with `CheckBounds` only if that is within 100 of both segments. Lines
// that are parallel, exactly, or without length meet in their ends alone. When nothing is found, `Point` is
// (0, 0), or the place outside the bounds.
void IntersectLines(const LineType& line1, const LineType& line2, bool CheckBounds, GeoPointType& Point,
                    bool& Found);
void IntersectLines(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4,
                    bool CheckBounds, GeoPointType& Point, bool& Found);
// Where the infinite lines meet: 1, or 0 and (0, 0) when they are parallel. A line whose delta-x is at most
// 1e-8 is vertical, so one without length is, too; slopes that differ by at most 1e-8 are parallel.
int IntersectInfiniteLines(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                           double y4, double& x, double& y);

// Is the point within 100 of the box, across each side; the corners reach out squarely.
bool IsPointInBox(const LineType& box, GeoPointType p);
// The same of the box of a segment.
bool IsPointInSegmentBox(double px, double py, double x1, double y1, double x2, double y2);
// Are two boxes at most 100 apart along either axis.
bool DoBoxesTouch(const LineType& a, const LineType& b);
// Is the point within `Width` + 100 of the segment; `Width` is half the stroke's. A horizontal or vertical
// segment has square ends, others, and one without length, round ones.
bool IsPointNearSegment(double px, double py, double x1, double y1, double x2, double y2, double Width);

}  // namespace Ketril::Tools
