#include "DLLs/Tools/Placement/AlignRooms.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <set>
#include <utility>

#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Geometry/PolyTools.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

constexpr double kArcStep = 4.0;

// Ends every edit that was begun, whatever fails; then raises what failed first.
void EndAll(const TPrimitiveList& begun) {
  std::exception_ptr first;
  for (TPrimitive* object : begun) {
    try {
      object->EndModify(nullptr);
    } catch (...) {
      if (!first) first = std::current_exception();
    }
  }
  if (first) std::rethrow_exception(first);
}

// The nets of objects and, in components, of their members; each once.
void UpdateNets(const TPrimitiveList& objects) {
  std::set<TNet*> known;
  std::vector<TNet*> nets;
  const auto add = [&](TPrimitive* object) {
    TNet* const net = object->Net();
    if (net && object->InNet() && known.insert(net).second) nets.push_back(net);
  };
  for (TPrimitive* object : objects) {
    add(object);
    if (auto* component = dynamic_cast<TComp*>(object)) component->ProcessItems(add, TObjectSet::All());
  }
  for (const TNet* net : nets) On(net->INet()).Call(&IPCB_Net2::UpdateNet);
}

}  // namespace

void TRoomNode::Build() {
  TNode::Build();
  TBoard* const board = BoardOf(Primitive);
  CollectObjects(board);
  const TCoordRect rectangle = Primitive->GetState_BoundingRectangle();
  Width = Difference(rectangle.x2, rectangle.x1);
  Height = Difference(rectangle.y2, rectangle.y1);
  Area = std::abs(PolygonalShapeArea(*Room()->Region()->Polyshape(), kArcStep));
  FindChannel(board);
  const TCoordPoint offset = GridOffset();
  GridOffsetX = offset.x;
  GridoffsetY = offset.y;
}

void TRoomNode::CollectObjects(TBoard* board) {
  const auto rooms = CheckedCast<IPCB_BoardRooms>(board->IPrimitive());
  RoomObjects = TGroup::Create(On(rooms).Read(&IPCB_BoardRooms::CreateGroup));
  TPrimitiveList components, others, free_objects, unions;
  GetRoomContents(board, false, true, Room(), components, others, free_objects, &unions, true, false);
  // True when it counts; what tunes a length moves also when it is locked.
  const auto take = [&](TPrimitive* object) {
    const bool moveable = object->Moveable();
    if (moveable || object->IsAccordion()) RoomObjects->RegisterWithGroupWarehouse(object);
    return moveable;
  };
  for (TPrimitive* component : components) CompCount += take(component) ? 1 : 0;
  for (const TPrimitiveList* list : {&free_objects, &unions}) {
    for (TPrimitive* object : *list) take(object);
  }
}

void TRoomNode::FindChannel(TBoard* board) {
  TBoardIterator iterator(board);
  iterator.SetState_FilterObject({eClassObject});
  iterator.SetState_FilterAllLayers();
  for (TPrimitive* p = iterator.First(); p && ChannelName.empty(); p = iterator.Next()) {
    auto* const channel = CheckedCast<TObjectClassBase>(p);
    if (channel->MemberKind() == eClassMemberKind_DesignChannel && channel->IsMember(Primitive))
      ChannelName = channel->Name();
  }
}

TCoordPoint TRoomNode::GridOffset() const {
  const TBoard* const board = BoardOf(Primitive);
  const TCoord x = Primitive->GetState_X(), y = Primitive->GetState_Y();
  return {Difference(x, TruncateToGrid(x, board->ComponentGridSizeX())),
          Difference(y, TruncateToGrid(y, board->ComponentGridSizeY()))};
}

TPrimitiveList TRoomNode::Members() const {
  TPrimitiveList members;
  RoomObjects->ProcessItems([&](TPrimitive* member) { members.push_back(member); }, TObjectSet::All());
  return members;
}

void TRoomNode::Release() {
  if (!RoomObjects) return;
  const TTemporary<TGroup> group(std::exchange(RoomObjects, nullptr));
  group->CleanBoardSide();
}

void TRoomNode::MoveWithObjects(TCoord dx, TCoord dy, bool update_nets) {
  const TPrimitiveList members = Members();
  TPrimitiveList begun;
  bool moved = false;
  const auto begin = [&](TPrimitive* object) {
    object->BeginModify(true);
    begun.push_back(object);
  };
  const auto move = [&] {
    for (TPrimitive* member : members) begin(member);
    begin(Primitive);
    Primitive->MoveToXY(Sum(Primitive->GetState_X(), dx), Sum(Primitive->GetState_Y(), dy));
    RoomObjects->MoveByXY(dx, dy);
    RoomObjects->SetState_XSizeYSize();
    std::rotate(begun.begin(), begun.end() - 1, begun.end());  // the room ends first
    moved = true;
  };
  Invalidate(Primitive);
  RunFinally(move, [&] {
    EndAll(begun);
    if (moved && update_nets) UpdateNets(members);
    Invalidate(Primitive);
    RoomObjects->ProcessItems(Invalidate, TObjectSet::All());
    BoardOf(Primitive)->SetState_DocumentHasChanged();
  });
}

void TRoomNode::ApplyPosition() {
  const TCoordRect now = Primitive->GetState_BoundingRectangleForSelection();
  MoveWithObjects(Difference(LowX, now.x1), Difference(LowY, now.y1), true);
}

void TRoomNode::MoveToGrid() {
  const TCoordPoint offset = GridOffset();
  MoveWithObjects(Difference(GridOffsetX, offset.x), Difference(GridoffsetY, offset.y), false);
}

}  // namespace Ketril::Tools
