// Area and containment of vertex lists. Of neither half: in doubles, but without tolerance, and exact on
// those that are whole numbers of 32 bits, up to the rounding of sums of their products. Nothing here raises;
// below 3 vertices there is no area, and nothing is contained.
#pragma once

#include <cstdint>

#include "Interfaces/PolygonRecords.h"

namespace Ketril::Tools {

// In square units, rounded to the nearest whole number, a half to the even one; positive when
// counter-clockwise, 0 below 3 vertices. What is beyond 64 bits becomes the end of the range, what is no
// number 0.
std::int64_t ContourArea(const Tgpc_vertex_list& Contour);
std::int64_t ContourAbsoluteArea(const Tgpc_vertex_list& Contour);

// Is the point inside by the even-odd rule, with a ray towards -x. A point on the boundary gets no answer of
// its own: it counts by the strict comparisons of the crossing test. `BoundsFirst` looks at the bounding box
// before; the answer is the same.
bool ContourContainsPoint(const Tgpc_vertex_list& Contour, double x, double y, bool BoundsFirst);
// True when an odd number of the contours, holes included, contain the point.
bool PolygonContainsPoint(const Tgpc_polygon& Polygon, double x, double y, bool BoundsFirst);

}  // namespace Ketril::Tools
