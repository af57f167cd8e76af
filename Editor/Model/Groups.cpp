#include "Editor/Model/Groups.h"

#include <algorithm>

#include "Editor/Model/LayerFacts.h"

namespace Ketril::Editor {

Polygon::Polygon() = default;
BoardOutline::BoardOutline() = default;
Coordinate::Coordinate() = default;
LibComponent::LibComponent() = default;

void Polygon::MirrorLayers() {
  Group::MirrorLayers();
  MirrorAll(data.layers, board);
}

Extent Coordinate::OwnExtent() const {
  Extent extent;
  extent.Add(data.location, std::max(data.size, 0) / 2.0);
  return extent;
}

}  // namespace Ketril::Editor
