// The fence of via shielding: rows of vias along both sides and around the ends of what is shielded.
#pragma once

#include "Editor/Vias/ViaPlacer.h"

namespace Ketril::Editor {

// Where the vias of a fence go. A row runs at the same distance all along the shielded copper, the projection
// of all its layers, round its corners and ends. Each via stands as far from the one before as the even pitch
// of its row allows, which is at most the pitch that was asked for; where there is no room, the next place
// back to the one before, else the next one on. `run` tells the largest gap that was left in the innermost
// row.
void FenceWithVias(Board& board, const ShieldSettings& settings, ViaPlacer& placer, ViaRun& run);

// Copper for the fence: on each layer of what is shielded the strip that holds the rows, at the distance from
// the shielded copper and at the clearances from what else is there. A piece that holds none of the places of
// the fence's vias goes: nothing would connect it. On no board.
std::vector<Ref<Primitive>> ShieldingCopper(Board& board, const ShieldSettings& settings,
                                            const std::vector<TCoordPoint>& vias);

}  // namespace Ketril::Editor
