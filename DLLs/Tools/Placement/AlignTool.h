// The arrange commands: which objects of the board are arranged, and how.
//
// Locked objects are left out without a word. A command that finds nothing to do ends without a word too.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "Interfaces/ParameterList.h"
#include "Interfaces/Placement.h"

namespace Ketril::Tools {

class TRule;

struct TRoomAlignParameters {
  std::int32_t RowCount = 0;
  std::int32_t ColCount = 0;
  TCoord OriginX = 0, OriginY = 0;
  bool AutoSpacing = false;
  TCoord SpacingX = 0, SpacingY = 0;
  bool MoveToGrid = false;
  std::u16string SortName;
  bool Ascending = false;
};
// All zero for null.
TRoomAlignParameters ReadRoomAlignParameters(IPCB_RoomArrangeOptions* AOptions);

// Arranges the selection. A selected member of a component stands for its component, except where only texts
// are selected, which then move by themselves, and where the first object taken is a component.
void ArrangeSelection(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TArrangerMethod AMethod);
// Packs the selected components into a rectangle, from its top.
void ArrangeSelectionToRectangle(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TCoord ALowX,
                                 TCoord ALowY, TCoord AHighX, TCoord AHighY);
// Packs the components of a room, selected or not, into the room's bounding rectangle. False, and nothing is
// done, for null and for a rule that is no room.
bool ArrangeToRoom(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TRule* ARule);
void ArrangeToRoomByName(TBoard* ABoard, IPCBGraphicalViewInterface* AView, const std::u16string& AName);
// Packs the selected components, half of them above the board, the rest to its right. Without an outline the
// board is the box of the tracks on the keep-out layer.
void ArrangeOutsideBoard(TBoard* ABoard, IPCBGraphicalViewInterface* AView);
// Lays the selected rooms out in rows and columns.
void ArrangeRooms(TBoard* ABoard, IPCBGraphicalViewInterface* AView, const TRoomAlignParameters& AParameters);

// The commands that work with the user: his selection, his picks, the editor's dialogs.
// Under an hourglass, but where the user picks what to centre on.
void AutoPlaceSelection(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TArrangerMethod AMethod);
void AutoPlaceOutsideBoard(TBoard* ABoard, IPCBGraphicalViewInterface* AView);
// Each of the chosen ways after the other, along x, along y, to the grid.
void AutoPlaceRunDialog(TBoard* ABoard, IPCBGraphicalViewInterface* AView);
// Into the rectangle of the parameters "Location1.x", "Location1.y", "Location2.x" and "Location2.y", in
// units; where one is missing, into each that the user picks until he cancels.
void AutoPlaceToRectangle(TBoard* ABoard, IPCBGraphicalViewInterface* AView, IParameterList* AParameters);
// Into the room "RoomName"; else into the rooms "Room1", "Room2" … of which "RoomsToUpdateCount" is the
// count; else into each that the user points at until he cancels.
void AutoPlaceToRoom(TBoard* ABoard, IPCBGraphicalViewInterface* AView, IParameterList* AParameters);
// As the editor's dialog says; the user picks the origin where it is not chosen yet.
void AutoPlaceRooms(TBoard* ABoard, IPCBGraphicalViewInterface* AView);

}  // namespace Ketril::Tools
