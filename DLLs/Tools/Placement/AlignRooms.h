// A room among the things that are arranged: it moves with what it holds.
#pragma once

#include <string>

#include "DLLs/Tools/Placement/AlignNodes.h"
#include "DLLs/Tools/Placement/RoomContents.h"

namespace Ketril::Tools {

// `Primitive` is a `TConfinementConstraint`. The rectangle is the room's own, without a clearance.
class TRoomNode : public TNode {
 public:
  using TNode::TNode;
  void ExpandByClearance() override {}
  // Moves the room with what it holds and brings the nets of all that up to date.
  void ApplyPosition() override;
  // Back to the offset from the grid that the room had when the node was built, with what it holds.
  void MoveToGrid() override;
  void Release() override;

  TConfinementConstraint* Room() const { return CheckedCast<TConfinementConstraint>(Primitive); }
  virtual std::u16string RoomName() const { return Room()->Name(); }

  // What moves with the room; the group is the node's, its members are the board's.
  TGroup* RoomObjects = nullptr;
  TCoord Width = 0, Height = 0;  // of the room's rectangle
  double Area = 0;               // of its shape, arcs in steps of 4 degrees, in square units
  std::int32_t CompCount = 0;
  std::u16string ChannelName;  // of the design channel that holds the room; may be empty
  TCoord GridOffsetX = 0, GridoffsetY = 0;

 protected:
  void Build() override;

 private:
  void CollectObjects(TBoard* board);
  void FindChannel(TBoard* board);
  TCoordPoint GridOffset() const;
  TPrimitiveList Members() const;
  void MoveWithObjects(TCoord dx, TCoord dy, bool update_nets);
};

}  // namespace Ketril::Tools
