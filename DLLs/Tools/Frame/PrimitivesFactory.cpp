#include "DLLs/Tools/Frame/PrimitivesFactory.h"

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesLines.h"
#include "DLLs/Tools/Frame/PrimitivesStack.h"
#include "DLLs/Tools/Frame/Rule_Clearance.h"
#include "DLLs/Tools/Frame/Rule_ComponentClearance.h"
#include "DLLs/Tools/Frame/Rule_Confinement.h"
#include "DLLs/Tools/Frame/Rule_FanoutControl.h"
#include "DLLs/Tools/Frame/Rule_RoutingViaStyle.h"
#include "DLLs/Tools/Geometry/AbstractContainer.h"

namespace Ketril::Tools {

namespace {

// A host interface and what wraps an object that offers it.
template <class Interface, auto MakeWrapper>
struct Case {
  static TPrimitive* Try(Ref<IPCB_Primitive>& primitive) {
    return Probe<Interface>(primitive) ? MakeWrapper(std::move(primitive)) : nullptr;
  }
};

template <class Wrapper>
TPrimitive* Make(Ref<IPCB_Primitive> primitive) {
  return Wrapper::Create(std::move(primitive));
}

// The first of the cases that fits; null when none does, and `primitive` is then as it was.
template <class... Cases>
TPrimitive* FirstOf(Ref<IPCB_Primitive>& primitive) {
  TPrimitive* wrapper = nullptr;
  (void)((wrapper = Cases::Try(primitive)) || ...);
  return wrapper;
}

}  // namespace

TPrimitive* CreatePrimitiveWrapper(Ref<IPCB_Primitive> primitive) {
  if (!primitive) return nullptr;
  TPrimitive* const wrapper =
      FirstOf<Case<IPCB_Rule, CreateRuleWrapper>, Case<IPCB_Connection, Make<TConnection>>,
              Case<IPCB_Region, Make<TPolyRegion>>, Case<IPCB_Polygon, Make<TPolygon>>,
              Case<IPCB_Component, Make<TComp>>, Case<IPCB_Net, Make<TNet>>, Case<IPCB_Board, Make<TBoard>>,
              Case<IPCB_Via, Make<TVia>>, Case<IPCB_Pad, Make<TPad>>, Case<IPCB_Arc, Make<TArc>>,
              Case<IPCB_Track, Make<TTrack>>, Case<IPCB_Fill, Make<TFill>>, Case<IPCB_Text, Make<TText>>,
              Case<IPCB_Group, Make<TGroup>>, Case<IPCB_RectangularPrimitive, Make<TRectangularPrimitive>>,
              Case<IPCB_ObjectClass, Make<TObjectClassBase>>>(primitive);
  return wrapper ? wrapper : TPrimitive::Create(std::move(primitive));
}

TPrimitive* CreateRuleWrapper(Ref<IPCB_Primitive> rule) {
  TPrimitive* const wrapper =
      FirstOf<Case<IPCB_FanoutControlRule, Make<TFanoutControlRule>>,
              Case<IPCB_RoutingViaStyleRule, Make<TRoutingViaStyleRule>>,
              Case<IPCB_ConfinementConstraint, Make<TConfinementConstraint>>,
              Case<IPCB_ComponentClearanceConstraint, Make<TComponentClearanceConstraint>>,
              Case<IPCB_ClearanceConstraint, Make<TClearanceConstraint>>>(rule);
  return wrapper ? wrapper : TRule::Create(std::move(rule));
}

bool SamePrimitive(const TPrimitive* a, const TPrimitive* b) {
  if (a == b) return true;
  if (!a || !b) return false;
  const Ref<IPCB_Primitive> host_a = a->IPrimitive();
  const Ref<IPCB_Primitive> host_b = b->IPrimitive();
  if (host_a == host_b) return true;
  return host_a && host_b &&
         On(host_a).Read(&IPCB_Primitive::GetState_ObjectAddress) ==
             On(host_b).Read(&IPCB_Primitive::GetState_ObjectAddress);
}

std::int32_t TPrimitive::FindInContainer(const TContainer& AContainer) const {
  for (std::int32_t i = 0; i < AContainer.Count(); ++i) {
    if (SamePrimitive(this, dynamic_cast<const TPrimitive*>(AContainer.At(i)))) return i;
  }
  return -1;
}

bool SameLogicalNet(const TPrimitive* a, const TPrimitive* b) {
  if (!a || !b) return false;
  if (a == b) return true;
  const TTemporary<TNet> net_a(a->GetLogicalNet());
  const TTemporary<TNet> net_b(b->GetLogicalNet());
  return net_a && net_b ? SamePrimitive(net_a.get(), net_b.get()) : net_a == net_b;
}

}  // namespace Ketril::Tools
