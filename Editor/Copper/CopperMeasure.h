// Areas of a board and of the copper on it, in square units.
#pragma once

#include <map>

#include "Editor/HostObject.h"
#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// What the copper on a layer covers, each place once, less what is drilled away. Arcs count as chords that
// run inside them by no more than 0.02 mil.
double CopperArea(const Board& board, TV7_Layer layer);

// Inside the board's outline, its cut-outs taken off; 0 without an outline.
double BoardArea(const Board& board);

// The part of a list of bodies that the editor knows its own by: the copper areas of a board, by layer, as
// they were when it was made.
class LayerAreas : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"Ketril::Editor::LayerAreas"};
  std::map<TV7_Layer, double> areas;
};

class CopperBodies final : public HostObject<IPCB_CopperBodyList, LayerAreas> {
 public:
  explicit CopperBodies(const Board& board);
};

}  // namespace Ketril::Editor
