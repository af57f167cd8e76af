#include "DLLs/Tools/Placement/Utilities.h"

#include <algorithm>

#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/Rule_Clearance.h"
#include "DLLs/Tools/Frame/Rule_ComponentClearance.h"
#include "Platform/Modules.h"

namespace Ketril::Tools {

namespace {

void* CurrentBoardHandle() {
  const auto entry =
      Platform::FindModuleEntry<PcbApi_GetCurrentBoardHandle>(kModule_Ketril, kEntry_GetCurrentBoardHandle);
  return entry ? entry() : nullptr;
}

// The largest value of the enabled rules of a kind.
template <class Rule, class Gap>
TCoord LargestGap(TBoard* board, TRuleKind kind, Gap gap) {
  TCoord largest = 0;
  for (TRule* candidate : board->SortedRules(kind)) {
    const auto* rule = dynamic_cast<Rule*>(candidate);
    if (rule && rule->DRCEnabled()) largest = std::max(largest, gap(rule));
  }
  return largest;
}

}  // namespace

bool ChooseLocation(const std::u16string& prompt, TCoord& x, TCoord& y) {
  const auto choose = Platform::FindModuleEntry<PcbApi_ChooseLocation>(kModule_Ketril, kEntry_ChooseLocation);
  return choose && choose(CurrentBoardHandle(), prompt, x, y);
}

bool ChooseRectangleByCorners(const std::u16string& first_prompt, const std::u16string& second_prompt,
                              TCoordRect& rectangle) {
  const auto choose = Platform::FindModuleEntry<PcbApi_ChooseRectangleByCorners>(
      kModule_Ketril, kEntry_ChooseRectangleByCorners);
  return choose && choose(CurrentBoardHandle(), first_prompt, second_prompt, rectangle.x1, rectangle.y1,
                          rectangle.x2, rectangle.y2);
}

Ref<IPCB_Primitive> HitTest(const Ref<IPCBGraphicalViewInterface>& view, TCoordPoint point,
                            TObjectSet objects) {
  const Ref<IPCB_LayerSet> layers = TPCBFactory::CreateLayerSet(kHitLayers);
  return On(view).Read(&IPCBGraphicalViewInterface::HitTest, point, objects, layers.Get(), eProcessComponent,
                       nullptr, false);
}

TBoard* BoardOf(TPrimitive* primitive) {
  return CheckedCast<TBoard>(primitive->OwnerBoard());
}

void Invalidate(TPrimitive* primitive) {
  BoardOf(primitive)->ViewManager()->GraphicallyInvalidatePrimitive(primitive);
}

TCoord GetClearance(TPrimitive* primitive) {
  if (!primitive || !primitive->IPrimitive()) return 0;
  TBoard* const board = BoardOf(primitive);
  if (primitive->ObjectID() == eComponentObject) {
    return LargestGap<TComponentClearanceConstraint>(
        board, eRule_ComponentClearance,
        [](const TComponentClearanceConstraint* rule) { return rule->HorizontalGap(); });
  }
  return LargestGap<TClearanceConstraint>(board, eRule_Clearance,
                                          [](const TClearanceConstraint* rule) { return rule->MaxGap(); });
}

}  // namespace Ketril::Tools
