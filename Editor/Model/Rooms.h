// Rooms: what they hold, how they are laid out, and the group that moves what they hold.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "Editor/Copper/CopperShape.h"
#include "Editor/Model/Group.h"
#include "Editor/Rules/Rule.h"
#include "Interfaces/Placement.h"

namespace Ketril::Editor {

// The inside of a room; empty for what is no room.
CopperShape ShapeOfRoom(const Rule& rule);

struct RoomContents {
  std::vector<Primitive*> components, others, free_objects, unions;
};
// As IPCB_BoardRooms tells it, without the zone that draws the room. A thing lies in a room when the corners
// of its box do. The lines of the board's edge and of the rats' nest never belong to one.
RoomContents ContentsOf(const Board& board, const Rule& room, bool by_scope, bool only_selected);

// Asks the board and fills the lists that are there.
Status TellRoomContents(const Board& board, IPCB_ConfinementConstraint* room, bool by_scope,
                        bool only_selected, bool unions_apart, IInterfaceList* components,
                        IInterfaceList* others, IInterfaceList* free_objects, IInterfaceList* unions);

// Lists objects without owning them: they stay in the groups that they are in, and nothing of that is an
// edit. Moving it moves them.
class LooseGroup final : public GroupObject<LooseGroup, IPCB_Group2> {
 public:
  static constexpr TObjectId kKind = eNoObject;
  struct Data {};
  Data data;

  LooseGroup();
  const std::vector<Ref<Primitive>>* MemberList() const override { return &listed_; }
  std::vector<Primitive*> ListMembers() const override;
  Primitive* MemberAt(std::int32_t index) const override;
  bool HasMember(const Primitive& primitive) const override;
  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override { return Bounds().Location1(); }
  void Transform(const PlaneMap& map) override;

 private:
  Status Register(Primitive* member) override;
  void UnregisterAll() override {
    listed_.clear();
    known_.clear();
  }

  std::vector<Ref<Primitive>> listed_;
  std::unordered_set<const Primitive*> known_;  // those of the list
};

class RoomArrangeOptions final : public HostObject<IPCB_RoomArrangeOptions> {
 public:
#define KETRIL_OPTION(Type, Name, Field) \
  KETRIL_HOST_PAIR(IPCB_RoomArrangeOptions, Type, Name, Field, void(Field = value))
  KETRIL_OPTION(std::int32_t, RowCount, rows_)
  KETRIL_OPTION(std::int32_t, ColCount, columns_)
  KETRIL_OPTION(TCoord, OriginX, origin_.x)
  KETRIL_OPTION(TCoord, OriginY, origin_.y)
  KETRIL_OPTION(bool, AutoSpacing, auto_spacing_)
  KETRIL_OPTION(TCoord, SpacingX, spacing_x_)
  KETRIL_OPTION(TCoord, SpacingY, spacing_y_)
  KETRIL_OPTION(bool, MoveToGrid, move_to_grid_)
  KETRIL_OPTION(std::u16string, SortName, sort_name_)
  KETRIL_OPTION(bool, Ascending, ascending_)
#undef KETRIL_OPTION

 private:
  std::int32_t rows_ = 1, columns_ = 4;
  TCoordPoint origin_{-1, -1};
  bool auto_spacing_ = true;
  TCoord spacing_x_ = 0, spacing_y_ = 0;
  bool move_to_grid_ = false;
  std::u16string sort_name_ = u"Channel Name";
  bool ascending_ = true;
};

}  // namespace Ketril::Editor
