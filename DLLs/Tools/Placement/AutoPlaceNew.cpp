#include "DLLs/Tools/Placement/AutoPlaceNew.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Placement/AutoPlaceNewPlaces.h"
#include "DLLs/Tools/Placement/Utilities.h"

namespace Ketril::Tools {

namespace {

std::uintptr_t KeyOf(const TPrimitive* object) {
  return On(object->IPrimitive()).Read(&IPCB_Primitive::GetState_ObjectAddress);
}

std::int32_t PassLimit() {
  const auto options = On(PCBServer()).Read(&IPCB_ServerInterface::GetState_SystemOptions);
  return On(options).Read(&IPCB_SystemOptions::GetState_ShovePassLimit);
}

class TShove {
 public:
  explicit TShove(TBoard* board);
  void Run(TComp* start);

 private:
  void Step(TComp* c);
  std::vector<TComp*> OverlappedBy(TComp* c);
  TComp* ChooseNext(const std::vector<TComp*>& overlapped);
  void FreeChosen();

  TBoard* const FBoard;
  TPlaceFinder FPlaces;
  const Ref<IPCB_LayerSet> FLayers;
  std::vector<TComp*> FComponents;  // in the order of the board
  std::unordered_map<std::uintptr_t, std::size_t> FPlaceInOrder;
  std::vector<TComp*> FChosen;  // that got that mark in the last step
  std::vector<TComp*> FWave, FNextWave;
};

TShove::TShove(TBoard* board)
    : FBoard(board), FPlaces(board), FLayers(TPCBFactory::CreateLayerSet(kComponentLayers)) {
  FBoard->ProcessAllComponents([this](TPrimitive* component) {
    component->SetVIndex(eShoveUntouched);
    FPlaceInOrder.emplace(KeyOf(component), FComponents.size());
    FComponents.push_back(CheckedCast<TComp>(component));
  });
  FWave.reserve(FComponents.size() + 1);
  FNextWave.reserve(FComponents.size() + 1);
}

void TShove::Run(TComp* start) {
  FWave.assign(1, start);
  start->SetVIndex(eShoveFixed);
  for (std::int32_t passes = 0; passes < PassLimit() && !ToolAborted; ++passes) {
    for (TComp* c : FWave) {
      Step(c);
      c->SetVIndex(eShoveFixed);
    }
    if (!ToolAborted) FWave.swap(FNextWave);
    FNextWave.clear();
  }
}

void TShove::Step(TComp* c) {
  std::vector<TComp*> overlapped = OverlappedBy(c);
  FreeChosen();
  for (std::size_t left = overlapped.size(); left > 0; --left) {
    TComp* const o = ChooseNext(overlapped);
    if (!o || ToolAborted) return;
    CheckShoveAbort();
    const bool moved = FPlaces.PushAway(o, c);
    Invalidate(c);
    if (moved) FNextWave.push_back(o);
    // Anew: the editor's code ran meanwhile.
    if (left > 1) overlapped = OverlappedBy(c);
  }
}

// On the side of `c`, in the order of the board.
std::vector<TComp*> TShove::OverlappedBy(TComp* c) {
  const TV7_Layer side = c->Layer();
  const std::uintptr_t own_key = KeyOf(c);
  std::vector<std::size_t> found;
  const auto note = [&](const TPrimitive* object, const TCoordRect&) {
    const std::uintptr_t key = KeyOf(object);
    const auto place = FPlaceInOrder.find(key);
    if (key != own_key && place != FPlaceInOrder.end() && object->Layer() == side)
      found.push_back(place->second);
  };
  ForEachOverlapping(FBoard, c->GetState_BoundingRectangle(), {eComponentObject}, FLayers, note);
  std::ranges::sort(found);
  std::vector<TComp*> overlapped;
  overlapped.reserve(found.size());
  for (const std::size_t place : found) overlapped.push_back(FComponents[place]);
  return overlapped;
}

// The first that is untouched; null when there is none.
TComp* TShove::ChooseNext(const std::vector<TComp*>& overlapped) {
  const auto found = std::ranges::find(overlapped, eShoveUntouched, &TComp::vIndex);
  if (found == overlapped.end()) return nullptr;
  (*found)->SetVIndex(eShoveChosen);
  FChosen.push_back(*found);
  return *found;
}

// All others are untouched or fixed already.
void TShove::FreeChosen() {
  for (TComp* component : FChosen) {
    if (component->vIndex() != eShoveFixed) component->SetVIndex(eShoveUntouched);
  }
  FChosen.clear();
}

// The component that the user points at; null when he cancels.
TComp* PickComponent(const Ref<IPCBGraphicalViewInterface>& view) {
  TCoordPoint place;
  while (ChooseLocation(u"Select a Component", place.x, place.y)) {
    if (const Ref<IPCB_Primitive> hit = HitTest(view, place, {eComponentObject})) return TComp::Create(hit);
  }
  return nullptr;
}

}  // namespace

void ShoveFrom(TBoard* board, TComp* start) {
  const THourglass hourglass;
  ToolAborted = false;
  RunFinally([&] { TShove(board).Run(start); }, [] { ToolAborted = false; });
}

void ShoveComponents(TBoard* ABoard, IPCBGraphicalViewInterface* AView) {
  const Ref<IPCBGraphicalViewInterface> view(AView);
  while (TComp* const component = PickComponent(view)) {
    const Ref<IClient> client = Client();
    On(client).Call(&IClient::BeginShove);
    RunFinally([&] { ShoveFrom(ABoard, component); }, [&] { On(client).Call(&IClient::EndShove); });
  }
}

}  // namespace Ketril::Tools
