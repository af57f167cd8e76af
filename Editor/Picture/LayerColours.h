// The customary colours of layers, and the order in which a picture lays them over one another.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// "#c83434" for the top copper layer, and so on.
std::string LayerColour(const Board& board, TV7_Layer layer);

// All layers of the board, lowest in the picture first: the bottom's drawings, copper from bottom to top, the
// top's drawings, the board's edge.
std::vector<TV7_Layer> DrawingOrder(const Board& board);

// What a picture shows when nobody chose: copper, silkscreen and the board's edge.
bool IsShownByDefault(const Board& board, TV7_Layer layer);

}  // namespace Ketril::Editor
