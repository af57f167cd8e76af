// Two components exchange their places.
#pragma once

#include "Interfaces/Board.h"

namespace Ketril::Tools {

// The two exchange position, layer and rotation, the places of their names and comments, and their unions.
// They are the two selected objects, when the board has just two and both are components; otherwise the user
// picks pair after pair, until he cancels a pick. A pick that meets no component is asked for again. What is
// picked is selected until its swap is done; once picking has begun, what else is selected does not count. A
// locked component ends the command with a warning, and its pair stays.
//
// A text that only one of the two has stays where its component takes it.
//
// It works on the host's objects as they are: no wrappers, no object scope. Raises EHostError; the edits of
// both components are then ended. Raises EEmptyReference without a board, and on a pick without a view.
void SwapComponents(const Ref<IPCB_Board>& ABoard, const Ref<IPCBGraphicalViewInterface>& AView);

}  // namespace Ketril::Tools
