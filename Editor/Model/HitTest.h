// What is at a place of the board.
#pragma once

#include "Editor/Copper/CopperShape.h"
#include "Editor/Model/LayerFilter.h"

namespace Ketril::Editor {

// What a hit test passes, as IPCBGraphicalViewInterface has it.
struct HitOptions {
  TObjectSet kinds = TObjectSet::All();
  LayerFilter layers;
  TIterationMethod method = eProcessAll;
  IPCB_HitFilter* filter = nullptr;
  bool only_selected = false;
};

// The object with the smallest box whose shape is at the place, the oldest of equal ones; null when there is
// none. Copper and ink count by their shapes, rooms by their region, groups and the rest by their boxes. Of
// what is hidden nothing is hit. Raises std::runtime_error when the filter fails.
Primitive* HitObject(Board& board, TCoordPoint place, HitOptions& options);

// True when the place is on the shape, or less than a unit away.
bool Covers(const CopperShape& shape, TCoordPoint place);

}  // namespace Ketril::Editor
