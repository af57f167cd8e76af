// What is at a place of the board.
#pragma once

#include <vector>

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

// The objects whose shape is at the place: that with the smallest box first, of equal ones the oldest. Copper
// and ink count by their shapes, rooms by their region, zones by their outlines, other groups and the rest by
// their boxes. Of what is hidden nothing is hit. Raises std::runtime_error when the filter fails.
std::vector<Primitive*> HitObjects(Board& board, TCoordPoint place, HitOptions& options);
// The first of them; null when there is none.
Primitive* HitObject(Board& board, TCoordPoint place, HitOptions& options);

// True when the place is on the shape, or less than a unit away.
bool Covers(const CopperShape& shape, TCoordPoint place);

}  // namespace Ketril::Editor
