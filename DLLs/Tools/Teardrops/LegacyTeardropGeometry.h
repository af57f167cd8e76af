// The plane geometry of the older teardrop builder: a pad's box and where tracks and arcs cross it, chords in
// the place of arcs, elongated pads as spines. Records of the plane kit, in coordinate units; angles in
// degrees. Nothing here raises, and nothing is rounded but where it says so, a half to the even neighbour.
#pragma once

#include <array>
#include <variant>
#include <vector>

#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

// From the point at right angles to the line, to its left, 1000 units long. A point for a line without
// length.
LineType NormalThroughPoint(const LineType& Line, GeoPointType Point);
// F is the foot of the point on the infinite line. False when there is none, or when it is further than 200
// from the segment.
bool FootOnSegment(GeoPointType Pt, const LineType& Line, GeoPointType& F);

// The rectangle around a pad's copper, as it stands when the pad is not turned.
struct TPadBox {
  GeoPointType bl, tl, tr, br;
  // In the order in which they are tried: left, top, right, bottom.
  std::array<LineType, 4> Sides() const;
};
// W wide, H high, turned counter-clockwise about its centre by `Rotation`; the corners are rounded.
TPadBox MakePadBox(GeoPointType Center, TCoord W, TCoord H, double Rotation);
// Where the way crosses the first side that it crosses; false for none.
bool FindBoxCrossing(const TPadBox& Box, const LineType& Way, GeoPointType& Pnt);
// Where the arc crosses the box, rounded, each place once. None at all when it crosses one side twice. Of
// several places those within 10 of the arc's ends do not count.
std::vector<TCoordPoint> ArcHitsOnBox(const ThinArcType& Arc, const TPadBox& Box);

// Normalised and without tolerance; 360 is not 0.
bool IsAngleBetween(double a1, double a2, double t);
// The angle in the middle between two points of the arc, which are put in its order.
double ArcMiddleAngle(const ThinArcType& Arc, TCoordPoint& p0, TCoordPoint& p1);

struct TChord {
  TCoordPoint First, Second;
};
// What stands for an arc of the given line width at a pad that it crosses in one or two places: a chord of at
// most 30 degrees from the end that is nearer the pad's centre, or two of at most 90 degrees from the middle
// between the places. Each reaches three line widths further than its place, and ends with the arc. None for
// any other number. Turning rounds.
std::vector<TChord> ArcToChords(const ThinArcType& Arc, TCoord Width, std::vector<TCoordPoint> Hits,
                                TCoordPoint PadCenter);

// The middle line of an elongated round pad: the pad is what a track of `Width` covers there. The ends are
// rounded.
struct TPadSpine {
  TCoordPoint First, Second;
  TCoord Width = 0;
  LineType Line() const;
};
TPadSpine MakePadSpine(TCoordPoint Center, TCoord W, TCoord H, double Rotation);
// Where a track or an arc reaches the spine: 0 to 2 places. What crosses the straight sides is taken back
// onto the spine at right angles; only what crosses none of them is looked for at the ends.
int ElongatedPadCrossings(const TPadSpine& Spine, const std::variant<LineType, ThinArcType>& T,
                          GeoPointType& p1, GeoPointType& p2);
// Is the point on the copper of the elongated round pad, its border included.
bool IsPointInElongatedPad(TCoordPoint Point, TCoordPoint Center, TCoord W, TCoord H, double Rotation);

}  // namespace Ketril::Tools
