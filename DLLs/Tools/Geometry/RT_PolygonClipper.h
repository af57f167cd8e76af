// Boolean operations on polygons of any number of contours. A point is inside of a polygon if an odd number
// of its contours goes round it, so contours may cross themselves and one another, share edges and vertices,
// run over themselves, and turn either way.
#pragma once

#include <cstdint>

#include "DLLs/Tools/Geometry/VertexList.h"

namespace Ketril::Tools {

enum TClipOperation : std::uint8_t {
  eClipDifference = 0,  // Subject without Clip
  eClipIntersection = 1,
  eClipExclusiveOr = 2,
  eClipUnion = 3,
};

// Replaces what Result holds by the contours of the outcome; nil for Result does nothing. Neither input
// changes, and Result may be one of them. An operation beyond these four gives nothing.
//
// Of the contours given none crosses itself or another by more than rounding; outer contours run
// anticlockwise (y upwards) and have the hole flag 0, holes run clockwise and have 1. Where two pieces meet
// in a point, one contour goes through it twice, and a hole that meets the outline in a point remains a hole;
// pieces that share a stretch of an edge are one. No vertex lies in the middle of a straight run, also where
// the input had one there. Contours of no area vanish.
//
// Coordinates that are whole numbers up to 2^31 are taken exactly: what touches, touches.
// Points of intersection are rounded to 2^-16, and what is thinner than that may vanish. If there are
// fractions or greater numbers, all coordinates are first rounded to 2^-50 of the power of two above the
// largest magnitude, to 2^-52 at the finest. A vertex with a coordinate that is infinite or not a number is
// left out, as if its neighbours were joined.
//
// Takes time in proportion to (n + k) log n for n vertices and k crossings, a vertex in the middle of an edge
// of m that run along each other being m crossings. Uses only its own memory, so calls on different data may
// run side by side. When memory runs out, raises Exception "contributing Subject Contours table creation",
// "contributing Clip Contours table creation", "memory allocation in GPC_MALLOC" (edges), "sbt creation"
// (what the sweep keeps), "memory allocation in GPC_REALLOC" (more vertices than were reckoned with), "vertex
// creation", "hole flag table creation" or "contour creation"; Result is then as it was.
void ClipPolygons(std::uint8_t Operation, const Tgpc_polygon* Subject, const Tgpc_polygon* Clip,
                  Tgpc_polygon* Result);

}  // namespace Ketril::Tools
