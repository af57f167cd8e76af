#include "DLLs/Tools/Convertors/UnGroup.h"

#include <algorithm>
#include <vector>

#include "DLLs/Tools/Frame/ConfirmNoYes.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "Interfaces/Picks.h"

namespace Ketril::Tools {

namespace {

using TGroups = std::vector<TGroup*>;

// A set has 32 places, a host may know more kinds.
bool IsOfKinds(const Ref<IPCB_Primitive>& object, TObjectSet kinds) {
  const TObjectId kind = On(object).Read(&IPCB_Primitive::GetState_ObjectID);
  return kind < 32 && kinds.Contains(kind);
}

Ref<IPCB_BoardPicks> Picks(const TBoard* board) {
  return CheckedCast<IPCB_BoardPicks>(board->IPrimitive());
}

TGroups SelectedGroups(const TBoard* board, TObjectSet kinds) {
  TGroups groups;
  const auto add = [&](const Ref<IPCB_Primitive>& object) {
    if (object && IsOfKinds(object, kinds)) groups.push_back(TGroup::Create(object));
  };
  const std::int32_t count = On(board->IBoard()).Read(&IPCB_Board::GetState_SelectedObjectsCount);
  for (std::int32_t i = 0; i < count; ++i)
    add(On(board->IBoard()).Read(&IPCB_Board::GetState_SelectedObject, i));
  if (count == 0) add(On(Picks(board)).Read(&IPCB_BoardPicks::GetState_ObjectAtCursor, kinds));
  return groups;
}

void UnGroupSelected(TBoard* board, TObjectSet kinds, std::u16string question) {
  const TGroups groups = SelectedGroups(board, kinds);
  if (groups.empty()) return;
  if (!InTestMode()) {
    if (!std::ranges::all_of(groups, &TGroup::Moveable)) question += u"\r\n(There are locked primitives.)";
    if (!ConfirmNoYes(question)) return;
  }
  board->SetState_DocumentHasChanged();
  for (TGroup* group : groups) UnGroupOne(board, group);
}

void UnGroupPicked(TBoard* board, TObjectSet kinds, const std::u16string& question) {
  const Ref<IPCB_BoardPicks> picks = Picks(board);
  TCoordPoint place;
  while (On(picks).Read(&IPCB_BoardPicks::ChooseLocation, u"Select Object", place)) {
    const Ref<IPCB_Primitive> object =
        On(picks).Read(&IPCB_BoardPicks::ChooseObjectAt, place, kinds, nullptr);
    if (!object || !IsOfKinds(object, kinds)) continue;
    TGroup* const group = TGroup::Create(object);
    if (!group->Moveable() && !ConfirmNoYes(u"This primitive is locked. Continue?")) return;
    board->SetState_DocumentHasChanged();
    if (ConfirmNoYes(question)) UnGroupOne(board, group);
  }
}

// Takes from a copy what it has of the group that its original is a member of.
void ClearOwnership(TPrimitive* copy) {
  copy->SetInPolygon(false);
  copy->SetVPolygon(nullptr);
  copy->SetInComponent(false);
  copy->SetVComponent(nullptr);
  copy->SetInCoordinate(false);
  copy->SetVCoordinate(nullptr);
  copy->SetInDimension(false);
  copy->SetVDimension(nullptr);
  copy->SetInNet(false);
  copy->SetVNet(nullptr);
}

void PutFreeCopy(TBoard* board, const TGroup* group, const TPrimitive* member) {
  TPrimitive* const copy = member->Replicate(eFullCopy);
  ClearOwnership(copy);
  const TObjectId kind = group->ObjectID();
  if (kind == eComponentObject) copy->SetVNet(member->vNet());
  if (kind == ePolyObject) copy->SetVNet(group->vNet());
  if (copy->ObjectID() == eRegionObject)
    TPolyRegion::Create(copy->IPrimitive())->SynchronizeShapeFromGPCPoly();
  board->RegisterWithPrimaryWarehouse(copy);
  board->ViewManager()->GraphicallyInvalidatePrimitive(copy);
}

}  // namespace

void UnGroupOne(TBoard* board, TGroup* group) {
  board->ViewManager()->GraphicallyInvalidatePrimitive(group);
  {
    TGroupIterator members(group);
    for (const TPrimitive* member = members.First(); member; member = members.Next())
      PutFreeCopy(board, group, member);
  }
  board->CancelPrimaryWarehouseRegistration(group);
}

void UnGroup(TBoard* board, bool selected, TObjectSet kinds, const std::u16string& question) {
  if (selected) {
    UnGroupSelected(board, kinds, question);
  } else {
    UnGroupPicked(board, kinds, question);
  }
}

}  // namespace Ketril::Tools
