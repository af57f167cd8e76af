// What the files of TPolygonUtils share.
#pragma once

#include <vector>

#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

// A corner as whole vertices: rounded half away from zero, or, where it has a fraction and the first line
// runs at exactly 45 degrees and the second at right angles to it, two of them, each pulled back along its
// line against that one's direction.
std::vector<TCoordPoint> WholeCorner(TDPPoint corner, const LineType& line1, const LineType& line2);

}  // namespace Ketril::Tools
