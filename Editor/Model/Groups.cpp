#include "Editor/Model/Groups.h"

#include <algorithm>

#include "Editor/Model/LayerFacts.h"

namespace Ketril::Editor {

Polygon::Polygon() = default;
BoardOutline::BoardOutline() = default;
Dimension::Dimension() = default;
Coordinate::Coordinate() = default;
LibComponent::LibComponent() = default;

void Polygon::MirrorLayers() {
  Group::MirrorLayers();
  MirrorAll(data.layers, board);
}

Extent Dimension::OwnExtent() const {
  Extent extent;
  for (const TCoordPoint& point : data.points) extent.Add(point, std::max(data.width, 0) / 2.0);
  return extent;
}

Extent Coordinate::OwnExtent() const {
  Extent extent;
  extent.Add(data.location, std::max(data.size, 0) / 2.0);
  return extent;
}

}  // namespace Ketril::Editor
