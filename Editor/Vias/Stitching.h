// The flood of via stitching: vias on a grid wherever copper of the net covers them.
#pragma once

#include "Editor/Vias/ViaPlacer.h"

namespace Ketril::Editor {

// Where the vias of a flood go, in rows from low y to high. Regions and fills count as copper that covers. A
// piece of copper that gets no via from the grid, and that no via or plated pad of the net goes through, is
// an island: a place for one via is looked for in it on a grid four times finer. The settings name a net by
// their reference via; `run` tells what came of it. Raises nothing but what is out of memory.
//
// The cost is linear in the places of the grid within the copper's box.
void FloodWithVias(Board& board, const StitchSettings& settings, ViaPlacer& placer, ViaRun& run);

}  // namespace Ketril::Editor
