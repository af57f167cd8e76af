// The run of the older teardrop command: options, walks over the board, removing, the report.
#include "DLLs/Tools/Teardrops/LegacyTeardropBuilder.h"

#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Teardrops/TeardropPartners.h"
#include "DLLs/Tools/Teardrops/TeardropReport.h"

namespace Ketril::Tools {

namespace {

constexpr TObjectSet kPads = {ePadObject};
constexpr TObjectSet kVias = {eViaObject};
constexpr TObjectSet kTracks = {eTrackObject};
constexpr TObjectSet kTracksAndArcs = {eArcObject, eTrackObject};

bool IsStack(const TPrimitive* P) {
  const TObjectId kind = P->ObjectID();
  return kind == ePadObject || kind == eViaObject;
}

// Written only where it changes something: the editor tells what was written.
void ForgetHighLayers(TPrimitive* P) {
  const auto forget = [](auto* stack) {
    if (stack && stack->MultiLayerHighBits() != 0) stack->SetMultiLayerHighBits(0);
  };
  forget(dynamic_cast<TPad*>(P));
  forget(dynamic_cast<TVia*>(P));
}

bool IsOnOverlay(const TPrimitive* P) {
  const TV7_Layer layer = P->Layer();
  return layer == TV7_Layer(eV6_TopOverlay) || layer == TV7_Layer(eV6_BottomOverlay);
}

}  // namespace

bool TeardropSelectedOnly = false;

TTearDroper::TTearDroper(TBoard* ABoard, IParameterList* AParameters)
    : Board(ABoard),
      Parameters(AParameters),
      ViolationReport(
          On(ABoard->IBoard()).Read(&IPCB_Board3::CreateViolationReport, TRuleKindSet{eRule_Clearance})) {}

void TTearDroper::Execute() {
  if (!GetState_Parameter()) {
    LoadLegacyTeardropOptions(Options);
    if (!Import_FromUser()) return;
    SaveLegacyTeardropOptions(Options);
  }
  const bool adds = Options.Action != eRemoveTearDrop;
  {
    TProgress progress(Board,
                       adds ? u"Adding Teardrops (ESC to cancel)" : u"Removing Teardrops (ESC to cancel)");
    const THourglass hourglass;
    const auto count = [&](bool wanted, TObjectSet kinds) {
      constexpr TLayerPartitionSet kLayers = {eV7_TopLayer, eMidLayers, eV7_BottomLayer, eV7_KeepOutLayer,
                                              eV7_MultiLayer};
      return wanted ? Board->GetPrimitiveCount(kinds, kLayers, eProcessAll) : 0;
    };
    progress.SetMaximum(count(Options.AllVias, kVias) + count(Options.AllPads, kPads));
    if (Options.AllPads) MarkObjects(kPads);
    if (Options.AllVias) MarkObjects(kVias);
    if (Options.AllTracks) MarkObjects(kTracksAndArcs);
    if (TeardropSelectedOnly) ResetSelected();
    progress_ = &progress;
    adds ? Execute_AddDrops() : Execute_RemoveDrops();
    progress_ = nullptr;
  }
  if (Options.Report && adds) Report();
}

void TTearDroper::Execute_AddDrops() {
  if (Options.AllPads) AddDropsOnSelected(kPads);
  if (Options.AllVias) AddDropsOnSelected(kVias);
  if (Options.AllTracks) AddDropsOnSelected(kTracksAndArcs);
}

void TTearDroper::Execute_RemoveDrops() {
  if (Options.AllPads) RemoveDropsOnSelected(kPads);
  if (Options.AllVias) RemoveDropsOnSelected(kVias);
  if (Options.AllTracks) RemoveDropsOnSelected(kTracks);
}

bool TTearDroper::GetState_Parameter() {
  const bool any = ReadLegacyTeardropParameters(Parameters.Get(), Options);
  TeardropSelectedOnly = Options.Selected;
  return any;
}

bool TTearDroper::Import_FromUser() {
  bool accepted = false;
  On(PCBServer()).Call(&IPCB_ServerInterface::EditLegacyTeardropOptions, Options, accepted);
  TeardropSelectedOnly = Options.Selected;
  return accepted;
}

// The board's objects of the kinds. A wrapper is gone after its `visit`, which gives false to end the walk.
void TTearDroper::ForEachObject(TObjectSet kinds, FunctionRef<bool(TPrimitive*)> visit) {
  TBoardIterator iterator(Board);
  iterator.SetState_FilterObject(kinds);
  iterator.SetState_FilterAllLayers();
  iterator.SetState_FilterMethod(eProcessAll);
  for (TPrimitive* P = iterator.First(); P; P = iterator.Next()) {
    const TTemporary<TPrimitive> owned(P);
    if (!visit(P)) return;
  }
}

// Notes which objects are to be served. The selection has done its work then.
void TTearDroper::MarkObjects(TObjectSet kinds) {
  ForEachObject(kinds, [](TPrimitive* P) {
    const bool selected = TeardropSelectedOnly && P->Selected();
    P->SetMiscFlag2(selected || !TeardropSelectedOnly);
    if (selected) P->SetSelected(false);
    P->SetMiscFlag1(false);
    P->SetMiscFlag3(false);
    return true;
  });
}

void TTearDroper::ResetSelected() {
  ForEachObject(kTracksAndArcs, [](TPrimitive* P) {
    P->SetSelected(false);
    return true;
  });
  On(Board->IBoard()).Call(&IPCB_Board::DeselectAll);
}

// With ESC and progress, which goes on with the tracks although only pads and vias are counted.
void TTearDroper::Walk(TObjectSet kinds, FunctionRef<void(TPrimitive*)> visit) {
  ForEachObject(kinds, [&](TPrimitive* P) {
    if (CheckAbort(TearDropAborted)) return false;
    if (progress_) progress_->Step();
    visit(P);
    return true;
  });
}

void TTearDroper::AddDropsOnSelected(TObjectSet kinds) {
  Walk(kinds, [&](TPrimitive* P) {
    if (!P->MiscFlag2()) return;
    ForgetHighLayers(P);
    if (TeardropSelectedOnly) P->SetSelected(false);
    AddDropsOnTouchingTracks(P);
  });
}

void TTearDroper::RemoveDropsOnSelected(TObjectSet kinds) {
  Walk(kinds, [&](TPrimitive* P) {
    if (TeardropSelectedOnly && !P->MiscFlag2()) return;
    ForgetHighLayers(P);
    RemoveDropsFromTouchingObjects(P);
  });
}

void TTearDroper::RemoveDropsFromTouchingObjects(TPrimitive* APrimitive) {
  if (!TTemporary<TGroup>(APrimitive->vComponent())) RemoveTouchingDrops(APrimitive);
}

void TTearDroper::RemoveTouchingDrops(TPrimitive* P) {
  if (Board->IsLibrary()) return;
  TTouchList touching;
  CollectTouchingPrimitives(P, touching);
  for (std::int32_t i = 0; i < touching.Count(); ++i) {
    TPrimitive* T = touching.At(i);
    if (!IsTrackOrArc(T) && T->ObjectID() != eRegionObject) continue;
    if (T->TearDrop() && !IsOnOverlay(T)) RemoveTearDrop(T);
  }
}

void TTearDroper::RemoveDropsFromConnectedTracks(TPrimitive* APrimitive) {
  if (APrimitive->ObjectID() == eTrackObject) RemoveDropsFromTouchingObjects(APrimitive);
  TTouchList touching;
  CollectTouchingPrimitives(APrimitive, touching);
  for (std::int32_t i = 0; i < touching.Count(); ++i) {
    if (touching.At(i)->ObjectID() == eTrackObject) RemoveDropsFromTouchingObjects(touching.At(i));
  }
}

void TTearDroper::RemoveDropsFromComponent(TPrimitive* APrimitive) {
  if (APrimitive->ObjectID() != eComponentObject) return;
  const TTemporary<TComp> component(TComp::Create(APrimitive->IPrimitive()));
  TGroupIterator members(component.get());
  members.SetState_FilterObject(kPads);
  for (TPrimitive* pad = members.First(); pad; pad = members.Next()) {
    const TTemporary<TPrimitive> owned(pad);
    RemoveTouchingDrops(pad);
  }
}

void TTearDroper::RemoveDropsBetweenObjects(TPrimitive* APrimitive1, TPrimitive* APrimitive2) {
  if (APrimitive1->vNet() != APrimitive2->vNet()) return;
  ForEachDropBetween(APrimitive1, APrimitive2,
                     [&](TTouchList& list, std::int32_t index) { RemoveTearDrop(list.At(index)); });
}

void TTearDroper::RemoveTearDrop(TPrimitive* ATouchingObject) {
  if (ATouchingObject->PrimUsed()) return;
  Board->SetState_DocumentHasChanged();
  Board->CancelPrimaryWarehouseRegistration(ATouchingObject);
}

void TTearDroper::ShowDropsForNet(TGroup* ANet, bool AShow) {
  if (!ANet) return;
  TGroupIterator members(ANet);
  for (TPrimitive* member = members.First(); member; member = members.Next()) {
    const TTemporary<TPrimitive> owned(member);
    if (member->TearDrop() && !IsStack(member)) member->SetEnableDraw(AShow);
  }
}

bool TTearDroper::TestObject(TPrimitive* P) {
  P->SetOwnerBoard(Board);
  On(Board->IBoard()).Call(&IPCB_Board3::CheckPrimitive, P->IPrimitive().Get(), ViolationReport.Get());
  const bool keeps_clear = On(ViolationReport).Read(&IPCB_ViolationReport::GetState_Count) == 0;
  On(ViolationReport).Call(&IPCB_ViolationReport::Clear);
  return keeps_clear;
}

// Lists the pads and vias where a teardrop failed.
void TTearDroper::Report() {
  const auto part = [&](bool told, TObjectSet kinds) {
    TTeardropReportPart part{.Told = told};
    if (!told) return part;
    ForEachObject(kinds, [&](TPrimitive* P) {
      part.Visited += P->MiscFlag3() ? 1 : 0;
      part.Failed += P->MiscFlag1() ? 1 : 0;
      return true;
    });
    return part;
  };
  WriteTeardropReport(Board, part(Options.AllPads, kPads), part(Options.AllVias, kVias),
                      [](const TPrimitive* P) { return P->MiscFlag1(); });
}

}  // namespace Ketril::Tools
