// The run of the teardrop command: options, passes over the board, the flush and what follows it.
#include "DLLs/Tools/Teardrops/TeardropBuilder.h"

#include "DLLs/Tools/Frame/EditBracket.h"
#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Teardrops/TeardropReport.h"

namespace Ketril::Tools {

TTeardropBuilder::TTeardropBuilder(TBoard* ABoard, IParameterList* Parameters)
    : FBoard(ABoard),
      FParameters(Parameters),
      FViolationReport(
          On(ABoard->IBoard()).Read(&IPCB_Board3::CreateViolationReport, TRuleKindSet{eRule_Clearance})) {}

void TTeardropBuilder::Execute() {
  if (!ReadTeardropParameters(FParameters.Get(), FOptions)) {
    LoadTeardropOptions(FOptions);
    if (!EditOptions()) return;
    SaveTeardropOptions(FOptions);
  }
  {
    TProgress progress(FBoard, Has(TeardropFlag_Add) ? u"Adding Teardrops (ESC to cancel)"
                                                     : u"Removing Teardrops (ESC to cancel)");
    const THourglass hourglass;
    progress.SetMaximum(CountObjects());
    if (Has(TeardropFlag_Add)) {
      AddPass(progress);
    } else {
      RemovePass(ObjectsFilter(), &progress);
    }
    FlushFilletList();
  }
  NotifyRuleCheck();
  if (!Has(TeardropFlag_Force)) RemoveDropsViolation();
  if (Has(TeardropFlag_Report) && Has(TeardropFlag_Add)) ReportFile();
}

TTeardropOptionsEx TTeardropBuilder::GetTeardropOptions() {
  LoadTeardropOptions(FOptions);
  return FOptions;
}

bool TTeardropBuilder::EditOptions() {
  bool accepted = false;
  On(PCBServer()).Call(&IPCB_ServerInterface::EditTeardropOptions, FOptions, accepted);
  return accepted;
}

// Through-hole pads are served as vias are, so vias bring pads along.
TObjectSet TTeardropBuilder::ObjectsFilter() const {
  std::uint32_t kinds = 0;
  if (Has(TeardropFlag_Pad)) kinds |= TObjectSet{ePadObject}.Bits();
  if (Has(TeardropFlag_Via)) kinds |= TObjectSet{ePadObject, eViaObject}.Bits();
  if (Has(TeardropFlag_Track | TeardropFlag_TJunction)) kinds |= TObjectSet{eArcObject, eTrackObject}.Bits();
  return TObjectSet(kinds);
}

// Poured copper and keep-outs get no teardrops.
bool TTeardropBuilder::IsServed(const TPrimitive* P) const {
  if (On(P->IPrimitive()).Read(&IPCB_Primitive::GetState_Polygon) || P->IsKeepOut()) return false;
  return !Has(TeardropFlag_Selected) || P->Selected();
}

// When only one of the flags is set, the pad's layer decides which of them it comes under.
bool TTeardropBuilder::IsPadServed(const TPrimitive* P) const {
  if (Has(TeardropFlag_Pad) == Has(TeardropFlag_Via)) return true;
  return (P->Layer() == TV7_Layer(eV6_MultiLayer)) == Has(TeardropFlag_Via);
}

// Walks the objects of the kinds on signal layers and the multi-layer; nothing for no kinds. `visit` gives
// false to end the walk.
template <class Visit>
void TTeardropBuilder::ForEachObject(TObjectSet filter, Visit visit) {
  if (filter == TObjectSet()) return;
  TBoardIterator iterator(FBoard);
  iterator.SetState_FilterObject(filter);
  iterator.SetState_FilterLayers(
      TLayerPartitionSet{eV7_TopLayer, eMidLayers, eV7_BottomLayer, eV7_MultiLayer});
  iterator.SetState_FilterMethod(eProcessAll);
  for (TPrimitive* P = iterator.First(); P && visit(P); P = iterator.Next()) {
  }
}

std::int32_t TTeardropBuilder::CountObjects() {
  std::int32_t count = 0;
  ForEachObject(ObjectsFilter(), [&](TPrimitive* P) {
    const TTemporary<TPrimitive> owned(P);
    if (IsServed(P)) ++count;
    return true;
  });
  return count;
}

void TTeardropBuilder::AddPass(TProgress& progress) {
  const TObjectSet filter = ObjectsFilter();
  if (filter == TObjectSet()) return;
  if (Has(TeardropFlag_TJunction)) FTJunctionNodes.Clear();
  ReportPadVisited = ReportViaVisited = ReportPadFailed = ReportViaFailed = 0;
  ForEachObject(filter, [&](TPrimitive* P) {
    if (CheckAbort(FTearDropAborted)) return false;
    progress.Step();
    if (!IsServed(P)) return true;
    if (P->ObjectID() == ePadObject) ++ReportPadVisited;
    if (P->ObjectID() == eViaObject) ++ReportViaVisited;
    AddDropsForObject(P);
    return true;
  });
  if (Has(TeardropFlag_TJunction) && !FTearDropAborted) AddJunctionDrops();
}

void TTeardropBuilder::RemoveDropsOnSelected(TObjectSet Filter) {
  if (SilentMode) {
    RemovePass(Filter, nullptr);
  } else {
    TProgress progress(FBoard, u"Removing Teardrops (ESC to cancel)");
    RemovePass(Filter, &progress);
  }
}

void TTeardropBuilder::RemovePass(TObjectSet filter, TProgress* progress) {
  ForEachObject(filter, [&](TPrimitive* P) {
    if (progress) {
      if (CheckAbort(FTearDropAborted)) return false;
      progress->Step();
    }
    if (Has(TeardropFlag_Selected) && !P->Selected()) return true;
    if (P->ObjectID() == ePadObject && !IsPadServed(P)) return true;
    RemoveDropsFromTouchingObjects(P);
    return true;
  });
}

void TTeardropBuilder::NotifyRuleCheck() {
  constexpr std::int32_t kViolationsWanted = 10;
  if (const Ref<IPCB_BoardMessages> messages = Probe<IPCB_BoardMessages>(FBoard->IPrimitive()))
    On(messages).Call(&IPCB_BoardMessages::SendMessage, 0, 0, kViolationsWanted, nullptr);
}

void TTeardropBuilder::RemoveDropsFromTouchingObjects(TPrimitive* APrimitive) {
  TTouchList touching;
  CollectTouchingPrimitives(APrimitive, touching);
  for (std::int32_t i = 0; i < touching.Count(); ++i) {
    const TObjectId kind = touching.At(i)->ObjectID();
    if (kind != eTrackObject && kind != eArcObject && kind != eRegionObject) continue;
    if (touching.At(i)->TearDrop()) QueueDropRemoval(touching.Take(i));
  }
}

void TTeardropBuilder::RemoveDropsFromComponent(TPrimitive* APrimitive) {
  auto* component = dynamic_cast<TComp*>(APrimitive);
  if (!component) return;
  TGroupIterator members(component);
  members.SetState_FilterObject({ePadObject});
  for (TPrimitive* pad = members.First(); pad; pad = members.Next()) RemoveDropsFromTouchingObjects(pad);
}

void TTeardropBuilder::RemoveDropsFromConnectedTracks(TPrimitive* APrimitive) {
  TTouchList touching;
  CollectTouchingPrimitives(APrimitive, touching);
  for (std::int32_t i = 0; i < touching.Count(); ++i) {
    if (touching.At(i)->ObjectID() == eTrackObject) RemoveDropsFromTouchingObjects(touching.At(i));
  }
}

void TTeardropBuilder::RemoveDropsViolation() {
  std::vector<TPrimitive*> violating;
  {
    TBoardIterator iterator(FBoard);
    iterator.SetState_FilterObject({eRegionObject});
    iterator.SetState_FilterAllLayers();
    iterator.SetState_FilterMethod(eProcessAll);
    for (TPrimitive* region = iterator.First(); region; region = iterator.Next()) {
      if (!region->TearDrop() || region->ViolationCount() <= 0) continue;
      violating.push_back(region);
      if (region->MiscFlag1()) ++ReportPadFailed;
      if (region->MiscFlag2()) ++ReportViaFailed;
    }
  }
  for (TPrimitive* region : violating) QueueDropRemoval(region);
  FlushFilletList();
}

void TTeardropBuilder::ShowDropsForNet(TGroup* ANet, bool AShow) {
  if (!ANet) return;
  TGroupIterator members(ANet);
  for (TPrimitive* member = members.First(); member; member = members.Next()) {
    if (!member->TearDrop()) continue;
    EditInBracket(member, [&] { member->SetEnableDraw(AShow); });
  }
}

// Lists every pad and via that the run took in, whatever became of it.
void TTeardropBuilder::ReportFile() {
  WriteTeardropReport(FBoard, {Has(TeardropFlag_Pad), ReportPadVisited, ReportPadFailed},
                      {Has(TeardropFlag_Via), ReportViaVisited, ReportViaFailed},
                      [&](const TPrimitive* P) { return !Has(TeardropFlag_Selected) || P->Selected(); });
}

void TTeardropBuilder::FlushFilletList() {
  for (TPrimitive* drop : FilletList[0]) FBoard->CancelPrimaryWarehouseRegistration(drop);
  for (TPrimitive* drop : FilletList[1]) {
    FBoard->RegisterWithPrimaryWarehouse(drop);
    if (auto* region = dynamic_cast<TPolyRegion*>(drop)) region->SynchronizeShapeFromGPCPoly();
  }
  for (std::vector<TPrimitive*>& list : FilletList) list.clear();
  FBoard->SetState_DocumentHasChanged();
}

void TTeardropBuilder::QueueDropRemoval(TPrimitive* D) {
  if (!D->PrimUsed()) FilletList[0].push_back(D);
}

}  // namespace Ketril::Tools
