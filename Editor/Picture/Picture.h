// A picture of a board as SVG: layers in their customary colours, one group a layer, holes, texts, the edge.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// A thing that moved: the box where it was is drawn dashed, with an arrow to where it is.
struct Ghost {
  TCoordRect from, to;
};

struct PictureOptions {
  std::vector<TV7_Layer> layers;  // to show; empty: copper, silkscreen and the board's edge
  // The part of the board to show; without it the whole board with a margin. Units, y up.
  std::optional<TCoordRect> around;
  // Objects to show brightly, with everything else dimmed; none when empty.
  std::function<bool(const Primitive&, const Board&)> highlight;
  std::vector<Ghost> ghosts;  // the picture is as large as to show them
  bool fills_window = false;  // as large as what shows it, instead of the board's own size
};

// UTF-8. An empty board gives an empty picture of 10 by 10 mm.
std::string DrawSvg(Board& board, const PictureOptions& options);

// Two states of a board side by side, both showing the same places, with the name of its file under each.
std::string DrawBesideSvg(Board& left, Board& right, const PictureOptions& options);

}  // namespace Ketril::Editor
