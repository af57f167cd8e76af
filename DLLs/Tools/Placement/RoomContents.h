// What a room holds, asked from the board.
#pragma once

#include <vector>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/Rule_Confinement.h"

namespace Ketril::Tools {

using TPrimitiveList = std::vector<TPrimitive*>;

// The query of IPCB_BoardRooms, with the same arguments; `unions` may be null. What the lists hold is handed
// over; afterwards they hold a plain `TPrimitive` for each object that the board left in them. Raises
// EHostError, and EIntfCastError when the board knows no rooms.
void GetRoomContents(TBoard* board, bool only_selected, bool by_scope, TConfinementConstraint* room,
                     TPrimitiveList& components, TPrimitiveList& others, TPrimitiveList& free_objects,
                     TPrimitiveList* unions, bool unions_apart, bool reserved);

}  // namespace Ketril::Tools
