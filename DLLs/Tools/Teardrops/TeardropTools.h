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

}  // namespace Ketril::Tools
