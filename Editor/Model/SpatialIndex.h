// Finds the objects of a board by area: an R-tree over bounding rectangles (Guttman 1984, packed loading and
// R* insertion of Boost.Geometry), built at the first search and kept current from then on.
#pragma once

#include <memory>
#include <vector>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

class SpatialIndex {
 public:
  // Objects whose bounds touch the area, oldest first.
  std::vector<Primitive*> Find(const TCoordRect& area);
};

}  // namespace Ketril::Editor
