#include "DLLs/Tools/Frame/PrimitivesGroups.h"

#include "DLLs/Tools/Frame/PrimitivesIterators.h"

namespace Ketril::Tools {

// --- TGroupContainer, TGroup ---

std::int32_t TGroupContainer::Count() const {
  return FParentGroup->GetPrimitiveCount(TObjectSet::All());
}

TPrimitive* TGroupContainer::At(std::int32_t index) const {
  Ref<IPCB_Primitive> member = On(FParentGroup->IGroup()).Read(&IPCB_Group::GetPrimitiveAt, index);
  return member ? TPrimitive::Create(std::move(member)) : nullptr;
}

TGroupContainer* TGroup::Container() {
  if (!FContainer) FContainer = std::make_unique<TGroupContainer>(this);
  return FContainer.get();
}

void TGroup::RegisterWithGroupWarehouse(TPrimitive* primitive) {
  On(IGroup()).Call(&IPCB_Group::RegisterWithGroupWarehouse,
                    primitive ? primitive->IPrimitive().Get() : nullptr);
}

void TGroup::CancelAllPrimitivePrimaryWarehouseRegistrations() {
  On(IGroup()).Call(&IPCB_Group::CancelAllPrimitivePrimaryWarehouseRegistrations);
}

void TGroup::CancelAllPrimitiveRegistrations() {
  On(IGroup()).Call(&IPCB_Group::CancelAllPrimitiveRegistrations);
}

std::int32_t TGroup::GetPrimitiveCount(TObjectSet objects) const {
  return On(IGroup()).Read(&IPCB_Group::GetPrimitiveCount, objects);
}

void TGroup::ProcessItems(TItemMethod proc, TObjectSet objects) {
  TGroupIterator iterator(this);
  iterator.InitFilter(this, objects);
  for (TPrimitive* member = iterator.First(); member; member = iterator.Next()) proc(member);
}

// --- TComp ---

namespace {

// Frees the wrapper that was handed out before and makes one of the text that the host has now.
TText* RenewText(TText*& text, const TComp& component,
                 Status (IPCB_Component::*get)(Ref<IPCB_Text>&) noexcept,
                 const char* operation = __builtin_FUNCTION()) {
  if (text) std::exchange(text, nullptr)->Free();
  const Ref<IPCB_Text> host_text = On(component.IComp(), operation).Read(get);
  if (host_text) text = TText::Create(host_text);
  return text;
}

}  // namespace

TText* TComp::Name() {
  return RenewText(FName, *this, &IPCB_Component::GetState_NameText);
}

TText* TComp::Comment() {
  return RenewText(FComment, *this, &IPCB_Component::GetState_CommentText);
}

void TComp::ProcessItems(TItemMethod proc, TObjectSet objects) {
  if (objects.Contains(eTextObject)) {
    if (TText* const name = Name()) proc(name);
    if (TText* const comment = Comment()) proc(comment);
  }
  TGroup::ProcessItems(proc, objects);
}

void TComp::SetLayer(TV7_Layer layer, bool fix_layer) {
  On(IComp()).Call(&IPCB_Component2::SetLayer, layer, fix_layer);
}

void TComp::SetState_RotateAroundXY(TCoord x, TCoord y, double degrees) {
  On(IComp()).Call(&IPCB_Component2::RotateAroundXY, x, y, degrees);
}

bool TComp::SetState_PlaceNameAutoposition(TTextAutoposition position) {
  return On(IComp()).Read(&IPCB_Component2::PlaceNameAutoposition, position);
}

bool TComp::SetState_PlaceCommentAutoposition(TTextAutoposition position) {
  return On(IComp()).Read(&IPCB_Component2::PlaceCommentAutoposition, position);
}

// --- other groups ---

std::int32_t TPolygon::PointCount() const {
  return On(CheckedCast<IPCB_Polygon>(FPrimitive)).Read(&IPCB_Polygon::GetState_PointCount);
}

bool TObjectClassBase::IsMember(const std::u16string& name) const {
  return On(IObjectClassBase()).Read(&IPCB_ObjectClass::IsMemberByName, name);
}

bool TObjectClassBase::IsMember(TPrimitive* primitive) const {
  return On(IObjectClassBase())
      .Read(&IPCB_ObjectClass::IsMember, primitive ? primitive->IPrimitive().Get() : nullptr);
}

}  // namespace Ketril::Tools
