// The commands that put what is placed right, each on its own place: components and rooms to the component
// grid, designators and comments beside their component.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// One coordinate on the board's component grid, see AutoPlac.h.
TCoord CompGridCorrectUpX(TBoard* ABoard, TCoord ACoord);
TCoord CompGridCorrectDownX(TBoard* ABoard, TCoord ACoord);
TCoord CompGridCorrectUpY(TBoard* ABoard, TCoord ACoord);
TCoord CompGridCorrectDownY(TBoard* ABoard, TCoord ACoord);

// Moves the reference points of the selected components to the grid, which is anchored at the board's origin.
// When locked ones are among them the user is asked, and on Yes they move too. A grid of less than 100 units,
// or of more than 100000000, is set to that on the board. ESC leaves what has moved and what has not.
void MoveAllCompsToGrid(TBoard* ABoard);
// The same with the low corners of the selected rooms that are not locked, on a grid from 1 to 1000 mil; the
// user says whether what a room holds moves along. Nothing without a selected room.
void MoveAllRoomsToGrid(TBoard* ABoard);
// Puts the designators, the comments or both of the selected components where the positions say.
void AutopositionText(TBoard* ABoard, TTextAutoposition ANamePosition, TTextAutoposition ACommentPosition,
                      bool ASkipName, bool ASkipComment);

}  // namespace Ketril::Tools
