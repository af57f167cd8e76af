// What the placement tools and the editor's dialogs and rooms know of each other.
#pragma once

#include "Interfaces/Groups.h"
#include "Interfaces/Rules.h"

namespace Ketril {

// How a selection is arranged. The editor's dialogs answer in these numbers.
enum TArrangerMethod : std::uint8_t {
  eArrangeRectangle,
  eArrangeNoChangeX,
  eArrangeNoChangeY,
  eArrangeMoveToGrid,
  eArrangeLeft,
  eArrangeRight,
  eArrangeHorCenter,
  eArrangeExpandX,
  eArrangeContractX,
  eArrangeSpreadX,
  eArrangeTop,
  eArrangeBottom,
  eArrangeVertCenter,
  eArrangeExpandY,
  eArrangeContractY,
  eArrangeSpreadY,
  eArrangeLeftSideBySide,
  eArrangeRightSideBySide,
  eArrangeTopSideBySide,
  eArrangeBottomSideBySide,
};
static_assert(eArrangeBottomSideBySide == 19);

// How rooms are laid out in rows and columns.
class IPCB_RoomArrangeOptions : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_RoomArrangeOptions"};
  KETRIL_PROPERTY(std::int32_t, RowCount);
  KETRIL_PROPERTY(std::int32_t, ColCount);  // at least 1
  KETRIL_PROPERTY(TCoord, OriginX);         // low corner of the first room, -1 when it is not chosen yet
  KETRIL_PROPERTY(TCoord, OriginY);
  KETRIL_PROPERTY(bool, AutoSpacing);  // gaps are those of the clearance rules
  KETRIL_PROPERTY(TCoord, SpacingX);   // the gaps otherwise
  KETRIL_PROPERTY(TCoord, SpacingY);
  KETRIL_PROPERTY(bool, MoveToGrid);  // rooms go back to the offset from the grid that they had
  // "Channel Name", "Room Width", "Room Height", "Room Component Count" or "Room Area".
  KETRIL_PROPERTY(std::u16string, SortName);
  KETRIL_PROPERTY(bool, Ascending);
};

// A list that the library hands over for the host to fill.
class IInterfaceList : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IInterfaceList"};
  KETRIL_READ(std::int32_t, Count);
  // Empty beyond the end.
  virtual Status GetState_At(std::int32_t index, Ref<IInterface>& item) noexcept = 0;
  virtual Status Add(IInterface* item) noexcept = 0;
  virtual Status Clear() noexcept = 0;
};

// Offered beside its own chain by a board that has rooms and makes groups.
class IPCB_BoardRooms : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_BoardRooms"};
  // A new empty group that is on no board. It only lists what joins it: its members stay in the groups that
  // they are in, and moving it moves them.
  virtual Status CreateGroup(Ref<IPCB_Group2>& group) noexcept = 0;
  // What a room holds. Objects join the ends of the lists: `components` those that belong to the room, as the
  // scope of its rule says when `by_scope`, else as they lie in it; `others` the components that lie in it
  // without belonging to it; `free_objects` what lies wholly in it and is a member of nothing; `unions` the
  // unions among these when `unions_apart`, else they are in `free_objects`. With `only_selected` the rest is
  // passed over. A null list is not asked for. `reserved` is not read.
  virtual Status GetState_RoomContents(bool only_selected, bool by_scope, IPCB_ConfinementConstraint* room,
                                       IInterfaceList* components, IInterfaceList* others,
                                       IInterfaceList* free_objects, IInterfaceList* unions,
                                       bool unions_apart, bool reserved) noexcept = 0;
  // The board's own, kept between commands.
  KETRIL_READ(Ref<IPCB_RoomArrangeOptions>, RoomArrangeOptions);
};

// What became of a component that a pick-and-place file names.
enum TPlacementOutcome : std::uint8_t {
  ePlacement_Placed,
  ePlacement_Unknown,       // the board has no component of that name
  ePlacement_Locked,        // it is not moveable
  ePlacement_WrongColumns,  // the line has more columns than the file's header, or less
  ePlacement_InvalidData,   // a value is missing, or is none
};

// Offered beside its own chain by a client that keeps a record of placements from a file.
class IPlacementRecorder : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPlacementRecorder"};
  // Called once for a line of data, when it is done with; not for one that names no component where that is
  // no mistake. `line` counts from 1, the file's first line included.
  virtual Status RecordPlacement(std::int32_t line, const std::u16string& designator,
                                 TPlacementOutcome outcome) noexcept = 0;
};

// Further entries of the module "Ketril.dll": the user picks a place on the current board. False when he
// cancels; the coordinates are then as they were. A rectangle is given low corner first.
using PcbApi_GetCurrentBoardHandle = void* (*)();
using PcbApi_ChooseLocation = bool (*)(void* board, const std::u16string& prompt, TCoord& x, TCoord& y);
using PcbApi_ChooseRectangleByCorners = bool (*)(void* board, const std::u16string& first_prompt,
                                                 const std::u16string& second_prompt, TCoord& x1, TCoord& y1,
                                                 TCoord& x2, TCoord& y2);
inline constexpr const char* kEntry_GetCurrentBoardHandle = "PcbApi_GetCurrentBoardHandle";
inline constexpr const char* kEntry_ChooseLocation = "PcbApi_ChooseLocation";
inline constexpr const char* kEntry_ChooseRectangleByCorners = "PcbApi_ChooseRectangleByCorners";

}  // namespace Ketril
