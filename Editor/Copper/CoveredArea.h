// How large an area is that many rings cover together, without making its outline.
#pragma once

#include <vector>

#include "Editor/Model/GeometricPolygon.h"

namespace Ketril::Editor {

// In square units, of what the rings cover, less what the others cover: a place counts as covered by a list
// when its rings wind about it, each the way round it is. The time grows with the number of vertices, as long
// as not ever more of them lie on each other.
double CoveredArea(const std::vector<Ring>& rings, const std::vector<Ring>& less);

}  // namespace Ketril::Editor
