// The corner of a mitred bend, as points of the outline of one of its two tracks. The double half, but that
// points which are turned are cut to whole units, towards zero, as are centres, axes and angles.
#pragma once

#include <array>

#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

// Entries 0 to 4 are the points for the right end of a track, counter-clockwise, 5 to 9 the same ones
// reflected for the left end. They stand in the frame of the track: turned about its right end Q so that it
// comes from the left along y = Qy, with the partner leaving Q downwards.
//
//     ________________ 4        0, 1   the inner chamfer, from this track's edge to the partner's
//                     \         2      where the outline comes round at the bottom of the corner's square
//                   Q  \        3, 4   the line that cuts the outer corner off, 4 on the outer edge
//     ________ 0         2,3
//             \                 Shown for a cut of half the diagonal and more; below that 3 is on the
//              1                partner's outer edge, above 2.
using TMicrostripePoints = std::array<GeoPointType, 10>;

// A track as its frame needs it.
struct TMicrostripeFrame {
  TCoordPoint Left, Right;
  double Width = 0;

  // Of the right end seen from the left one, in whole degrees from 0 to 359; a part of one is cut off.
  int Angle() const;
  double HalfWidth() const;     // whole units, rounded down
  GeoPointType Turned() const;  // the left end turned into the frame; level with Q but for what was cut off
};

// Reflects y about `AxisY` when `Mirror`, then turns by the angle about the centre.
void TransformPoint(GeoPointType& Point, double CentreX, double CentreY, double Angle, bool Mirror,
                    double AxisY);
TCoord CutToCoord(double value);  // towards zero; 0 for what is no number

// The points of a bend. Fractions outside 0 to below 1 are taken as they are: from 1 on the outer cut takes
// the whole corner and more, below 0 corners stick out. What is no number gives points at 0.
TMicrostripePoints BendPoints(const TMicrostripeFrame& Track, double AOutsideMiter, double AInsideMiter);
// The points of an end that is cut square at the track's end point.
TMicrostripePoints SquarePoints(const TMicrostripeFrame& Track);

}  // namespace Ketril::Tools
