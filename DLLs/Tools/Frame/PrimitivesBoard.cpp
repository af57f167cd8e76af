#include "DLLs/Tools/Frame/PrimitivesBoard.h"

#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/Rule_Abstract.h"

namespace Ketril::Tools {

namespace {

// What is handed to the host for a wrapper; null stays null, which the host refuses.
IPCB_Primitive* HostObject(const TPrimitive* primitive) {
  return primitive ? primitive->IPrimitive().Get() : nullptr;
}

}  // namespace

void TViewManager::GraphicallyInvalidatePrimitive(TPrimitive* primitive) {
  On(FOwnerBoard->IBoard()).Call(&IPCB_Board::GraphicallyInvalidatePrimitive, HostObject(primitive));
}

void TViewManager::UpdateWindows() {
  On(FOwnerBoard->IBoard()).Call(&IPCB_Board::UpdateWindows);
}

void TViewManager::SetCurrentMode(TDisplay mode) {
  On(FOwnerBoard->IBoard()).Call(&IPCB_Board::SetCurrentMode, mode);
}

Ref<IPCBGraphicalViewInterface> TBoard::GraphicalView() const {
  return CheckedCast<IPCBGraphicalViewInterface>(On(IBoard()).Read(&IPCB_Board::GetState_View));
}

Ref<IPCB_LayerObject> TBoard::GetLayerObject(TV7_Layer layer) const {
  return On(LayerStack()).Read(&IPCB_LayerStack::GetState_LayerObject, layer);
}

TBoardOutline* TBoard::BoardOutline() const {
  const Ref<IPCB_BoardOutline> outline = On(IBoard()).Read(&IPCB_Board::GetState_BoardOutline);
  return outline ? TBoardOutline::Create(outline) : nullptr;
}

bool TBoard::GetBoardOutlineRectangle(TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) const {
  const Ref<IPCB_BoardOutline> outline = On(IBoard()).Read(&IPCB_Board::GetState_BoardOutline);
  if (!outline) return false;
  const TCoordRect box = On(outline).Read(&IPCB_BoardOutline::GetState_BoundingRectangle);
  x1 = box.x1;
  y1 = box.y1;
  x2 = box.x2;
  y2 = box.y2;
  return true;
}

bool TBoard::GetState_BoundingRectangleBoard(TCoord& low_x, TCoord& low_y, TCoord& high_x, TCoord& high_y,
                                             TObjectSet objects, TLayerPartitionSet layers,
                                             bool only_selected) const {
  return GetState_BoundingRectangleBoard(low_x, low_y, high_x, high_y, objects,
                                         TPCBFactory::CreateLayerSet(layers), only_selected);
}

bool TBoard::GetState_BoundingRectangleBoard(TCoord& low_x, TCoord& low_y, TCoord& high_x, TCoord& high_y,
                                             TObjectSet objects, const Ref<IPCB_LayerSet>& layers,
                                             bool only_selected) const {
  TCoordRect box;
  const bool found = On(IBoard()).Read(&IPCB_Board::GetState_BoundingRectangleBoard, objects, layers.Get(),
                                       only_selected, box);
  if (!found) return false;
  low_x = box.x1;
  low_y = box.y1;
  high_x = box.x2;
  high_y = box.y2;
  return true;
}

void TBoard::RegisterWithPrimaryWarehouse(TPrimitive* primitive) {
  On(IBoard()).Call(&IPCB_Board::RegisterWithPrimaryWarehouse, HostObject(primitive));
}

void TBoard::CancelPrimaryWarehouseRegistration(TPrimitive* primitive) {
  On(IBoard()).Call(&IPCB_Board::CancelPrimaryWarehouseRegistration, HostObject(primitive));
}

void TBoard::SetState_DocumentHasChanged() {
  On(IBoard()).Call(&IPCB_Board::SetState_DocumentHasChanged);
}

std::int32_t TBoard::GetPrimitiveCount(TObjectSet objects, TLayerPartitionSet layers,
                                       TIterationMethod method) const {
  return GetPrimitiveCount(objects, TPCBFactory::CreateLayerSet(layers), method);
}

std::int32_t TBoard::GetPrimitiveCount(TObjectSet objects, const Ref<IPCB_LayerSet>& layers,
                                       TIterationMethod method) const {
  return On(IBoard()).Read(&IPCB_Board::GetPrimitiveCount, objects, layers.Get(), method);
}

TPrimitive* TBoard::GetState_RuleByRuleName(const std::u16string& name) const {
  return CreatePrimitiveWrapper(On(IBoard()).Read(&IPCB_Board3::GetState_RuleByName, name));
}

std::vector<TRule*>& TBoard::GetState_SortedRules(TRuleKind kind) {
  std::vector<TRule*>& sorted = FSortedRules[kind];
  sorted.clear();
  const Ref<IPCB_RuleList> rules = On(IBoard()).Read(&IPCB_Board3::GetState_RulesOfKind, kind);
  if (!rules) return sorted;
  const std::int32_t count = On(rules).Read(&IPCB_RuleList::GetState_Count);
  sorted.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (std::int32_t i = 0; i < count; ++i) {
    const Ref<IPCB_Rule> rule = Probe<IPCB_Rule>(On(rules).Read(&IPCB_RuleList::GetState_At, i));
    if (rule) sorted.push_back(CheckedCast<TRule>(CreatePrimitiveWrapper(rule)));
  }
  return sorted;
}

double TBoard::GetState_Area() const {
  const Ref<IPCB_BoardMeasure> measure = Probe<IPCB_BoardMeasure>(FPrimitive);
  return measure ? On(measure).Read(&IPCB_BoardMeasure::GetState_Area) : 0;
}

Ref<IPCB_CopperBodyList> TBoard::GetState_CopperBodyList() const {
  const Ref<IPCB_BoardMeasure> measure = Probe<IPCB_BoardMeasure>(FPrimitive);
  return measure ? On(measure).Read(&IPCB_BoardMeasure::GetState_CopperBodyList) : nullptr;
}

double TBoard::GetState_LayerArea(const Ref<IPCB_CopperBodyList>& bodies, TV7_Layer layer) const {
  const Ref<IPCB_BoardMeasure> measure = Probe<IPCB_BoardMeasure>(FPrimitive);
  return measure ? On(measure).Read(&IPCB_BoardMeasure::GetState_LayerArea, bodies.Get(), layer) : 0;
}

}  // namespace Ketril::Tools
