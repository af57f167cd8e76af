// The teardrop tools of the table of exports.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "Interfaces/ParameterList.h"
#include "Interfaces/Teardrops.h"

namespace Ketril::Tools {

// The teardrop command, as one edit of the board.
void TearDrops(TBoard* board, IParameterList* parameters);
TTeardropOptionsEx GetCurrentTeardropOptions(TBoard* board);
// Without progress, and not to be cancelled.
void RemoveTearDropsOnSelected(TBoard* board);
void RemoveDropsViolation(TBoard* board);

// The same of the older builder.
void LegacyTearDrops(TBoard* board, IParameterList* parameters);
// With an empty net nothing happens.
void ShowTearDropsForNet(TBoard* board, IPCB_Net* net, bool show);
// Nothing on a library.
void RemoveTearDropsFromPadVia(TBoard* board, IPCB_Primitive* primitive);
void RemoveTearDropsFromComponent(TBoard* board, IPCB_Primitive* primitive);
void RemoveTearDropsFromConnectedTracks(TBoard* board, IPCB_Primitive* primitive);
// As the first for a pad or via, as the last for a track or arc; nothing for anything else.
void RemoveTearDropsFromTouch(TBoard* board, IPCB_Primitive* primitive);

}  // namespace Ketril::Tools
