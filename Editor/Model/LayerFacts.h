// What the objects know about layers: names, the other side of the board, spans of the copper stack.
#pragma once

#include <string>
#include <vector>

#include "Interfaces/LayerTypes.h"

namespace Ketril::Editor {

class Board;

inline bool IsCopper(TV7_Layer layer) {
  return IsSignalLayer(layer) || IsInternalPlaneLayer(layer);
}
bool IsBottomSide(TV7_Layer layer);  // bottom copper, overlay, paste or solder
// The name that the board's user gave the layer, else "Top Layer", "Mid Layer 1" and so on; `board` may be
// null.
std::u16string LayerName(TV7_Layer layer, const Board* board);
// Where the layer is after the board was turned over: top becomes bottom, inner copper layers change their
// order, and of the board's others those that the board file names as two sides. `board` may be null: then
// inner copper and layers without an own side stay.
TV7_Layer MirroredLayer(TV7_Layer layer, const Board* board);
void MirrorAll(std::vector<TV7_Layer>& layers, const Board* board);
// The board's copper layers from `low` to `high`, from top to bottom; with a null board all signal layers of
// the old numbering between the two.
std::vector<TV7_Layer> SpannedLayers(const Board* board, TV7_Layer low, TV7_Layer high);

// A list of layers as a set.
bool Contains(const std::vector<TV7_Layer>& layers, TV7_Layer layer);
void Include(std::vector<TV7_Layer>& layers, TV7_Layer layer, bool included);

}  // namespace Ketril::Editor
