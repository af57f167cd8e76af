#include "DLLs/Tools/Frame/PrimitivesBase.h"

#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"

namespace Ketril::Tools {

namespace {

// The wrapper of a host net that stands in `NetMap`, made when the map does not have it; null for no net.
TNet* MappedNet(const Ref<IPCB_Net>& net) {
  if (!net) return nullptr;
  if (!NetMap) NetMap = new std::unordered_map<std::uintptr_t, TNet*>;
  const std::uintptr_t key = On(net).Read(&IPCB_Net::GetState_ObjectAddress);
  if (const auto found = NetMap->find(key); found != NetMap->end()) return found->second;
  TNet* wrapper = TNet::Create(net);
  NetMap->emplace(key, wrapper);
  return wrapper;
}

// The owner of one kind in a new wrapper.
template <class Wrapper, class Owner>
TGroup* ReadOwner(const Ref<IPCB_Primitive>& primitive, Status (IPCB_Primitive::*get)(Ref<Owner>&) noexcept,
                  const char* operation = __builtin_FUNCTION()) {
  const Ref<Owner> owner = On(primitive, operation).Read(get);
  return owner ? Wrapper::Create(owner) : nullptr;
}

template <class Owner>
void WriteOwner(const Ref<IPCB_Primitive>& primitive, TGroup* group,
                Status (IPCB_Primitive::*set)(Owner*) noexcept,
                const char* operation = __builtin_FUNCTION()) {
  Ref<Owner> owner;
  if (group) {
    owner = Probe<Owner>(group->IPrimitive());
    if (!owner) return;
  }
  On(primitive, operation).Call(set, owner.Get());
}

}  // namespace

// --- making and freeing ---

TPrimitive* TPrimitive::Create(Ref<IPCB_Primitive> primitive) {
  TPrimitive* wrapper = new TPrimitive(std::move(primitive));
  Enter(wrapper);
  return wrapper;
}

void TPrimitive::Enter(TPrimitive* wrapper) {
  try {
    RecordIn(PrimitiveRegistry, wrapper);
    wrapper->Init();
  } catch (...) {
    wrapper->Free();
    throw;
  }
}

void TPrimitive::Free() {
  ForgetIn(PrimitiveRegistry, this);
  Clean();
  delete this;
}

Ref<IPCB_Primitive> TPrimitive::NewHostObject(TObjectId kind) {
  if (kind == eNoObject) return {};
  return On(PCBServer()).Read(&IPCB_ServerInterface::PCBObjectFactory, kind, 0, 0);
}

Ref<IPCB_Primitive> TPrimitive::HostReplica() const {
  return On(FPrimitive).Read(&IPCB_Primitive::Replicate);
}

TPrimitive* TPrimitive::Replicate(TCopyMode) const {
  return Create(HostReplica());
}

TContainedObject* TPrimitive::Create(TCopyMode) const {
  return CreatePrimitiveWrapper(HostReplica());
}

void TPrimitive::CopyTo(TContainedObject* target, TCopyMode) const {
  auto* other = dynamic_cast<TPrimitive*>(target);
  if (!other) return;
  other->SetLayer(Layer());
  other->SetNet(Net());
  other->SetIsKeepOut(IsKeepOut());
  other->SetTearDrop(TearDrop());
}

void TPrimitive::PushSelfOnly() {
  FLastState = HostReplica();
}

bool TPrimitive::PopState() {
  if (!FLastState) return false;
  const TTemporary<TPrimitive> state(CreatePrimitiveWrapper(FLastState));
  ClearLastState();
  state->CopyTo(this, eFullCopy);
  return true;
}

bool TPrimitive::Moveable() const {
  return FPrimitive && On(FPrimitive).Read(&IPCB_Primitive::GetState_Moveable);
}

bool TPrimitive::Selected() const {
  return FPrimitive && On(FPrimitive).Read(&IPCB_Primitive::GetState_Selected);
}

void TPrimitive::SetSelected(bool value) {
  if (FPrimitive) On(FPrimitive).Call(&IPCB_Primitive::SetState_Selected, value);
}

TCoordRect TPrimitive::Spread(const TCoordRect& rectangle, TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) {
  x1 = rectangle.left();
  y1 = rectangle.bottom();
  x2 = rectangle.right();
  y2 = rectangle.top();
  return rectangle;
}

TCoordRect TPrimitive::GetState_BoundingRectangle(TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) const {
  return Spread(GetState_BoundingRectangle(), x1, y1, x2, y2);
}

TCoordRect TPrimitive::GetState_BoundingRectangle_OnLayer(TV7_Layer, TCoord& x1, TCoord& y1, TCoord& x2,
                                                          TCoord& y2) const {
  return GetState_BoundingRectangle(x1, y1, x2, y2);
}

bool TPrimitive::IsSaveable(TKetrilFileFormatVersion version) const {
  return On(FPrimitive).Read(&IPCB_Primitive::GetState_IsSaveable, version);
}

bool TPrimitive::IsRoom() const {
  return ObjectID() == eRuleObject &&
         On(CheckedCast<IPCB_Rule>(FPrimitive)).Read(&IPCB_Rule::GetState_RuleKind) ==
             eRule_ConfinementConstraint;
}

bool TPrimitive::IsAccordion() const {
  const auto smart_union = Probe<IPCB_SmartUnionObject>(FPrimitive);
  return smart_union &&
         On(smart_union).Read(&IPCB_SmartUnionObject::GetState_UnionKind) == eUnionKind_Accordion;
}

void TPrimitive::MoveByXY(TCoord dx, TCoord dy) {
  On(FPrimitive).Call(&IPCB_Primitive::MoveByXY, dx, dy);
}

void TPrimitive::MoveToXY(TCoord x, TCoord y) {
  On(FPrimitive).Call(&IPCB_Primitive::MoveToXY, x, y);
}

void TPrimitive::BeginModify(bool) {
  On(FPrimitive).Call(&IPCB_Primitive::BeginModify);
}

void TPrimitive::EndModify(const void*) {
  On(FPrimitive).Call(&IPCB_Primitive::EndModify);
}

void TPrimitive::CancelModify(bool) {
  On(FPrimitive).Call(&IPCB_Primitive::CancelModify);
}

void TPrimitive::SetState_XSizeYSize() {
  On(IPrimitive3()).Call(&IPCB_Primitive3::SetState_XSizeYSize);
}

// --- net, board and owners ---

TNet* TPrimitive::Net() const {
  return MappedNet(On(FPrimitive).Read(&IPCB_Primitive::GetState_Net));
}

TGroup* TPrimitive::vNet() const {
  return Net();
}

void TPrimitive::WriteNet(TPrimitive* net) {
  const auto host_net = net ? CheckedCast<IPCB_Net>(net->FPrimitive) : nullptr;
  On(FPrimitive).Call(&IPCB_Primitive::SetState_Net, host_net.Get());
  FNet = MappedNet(host_net);
}

void TPrimitive::SetNet(TNet* net) {
  WriteNet(net);
}

void TPrimitive::SetVNet(TGroup* net) {
  WriteNet(net);
}

TNet* TPrimitive::GetLogicalNet() const {
  const Ref<IPCB_Net> net = On(FPrimitive).Read(&IPCB_Primitive::GetState_LogicalNet);
  return net ? TNet::Create(net) : nullptr;
}

TPrimitive* TPrimitive::OwnerBoard() {
  const auto host_board = [this] {
    return On(FPrimitive, "OwnerBoard").Read(&IPCB_Primitive::GetState_Board);
  };
  if (!FOwnerBoard) FOwnerBoard = TBoard::Create(host_board());
  FOwnerBoard->FPrimitive = host_board();
  return FOwnerBoard;
}

void TPrimitive::SetState_Board(TPrimitive* board) {
  if (board)
    On(FPrimitive).Call(&IPCB_Primitive::SetState_Board, CheckedCast<IPCB_Board>(board->FPrimitive).Get());
  if (FOwnerBoard) std::exchange(FOwnerBoard, nullptr)->Free();
}

TGroup* TPrimitive::vPolygon() const {
  return ReadOwner<TPolygon>(FPrimitive, &IPCB_Primitive::GetState_Polygon);
}

TGroup* TPrimitive::vComponent() const {
  return ReadOwner<TComp>(FPrimitive, &IPCB_Primitive::GetState_Component);
}

TGroup* TPrimitive::vCoordinate() const {
  return ReadOwner<TCoordinate>(FPrimitive, &IPCB_Primitive::GetState_Coordinate);
}

TGroup* TPrimitive::vDimension() const {
  return ReadOwner<TDimension>(FPrimitive, &IPCB_Primitive::GetState_Dimension);
}

void TPrimitive::SetVPolygon(TGroup* owner) {
  WriteOwner(FPrimitive, owner, &IPCB_Primitive::SetState_Polygon);
}

void TPrimitive::SetVComponent(TGroup* owner) {
  WriteOwner(FPrimitive, owner, &IPCB_Primitive::SetState_Component);
}

void TPrimitive::SetVCoordinate(TGroup* owner) {
  WriteOwner(FPrimitive, owner, &IPCB_Primitive::SetState_Coordinate);
}

void TPrimitive::SetVDimension(TGroup* owner) {
  WriteOwner(FPrimitive, owner, &IPCB_Primitive::SetState_Dimension);
}

}  // namespace Ketril::Tools
