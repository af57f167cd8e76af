// How the board is walked from end to end, and the lists that such walks give.
#include <algorithm>
#include <utility>

#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Geometry/PointUtils.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

// Calls `each` with every matching object of the host.
template <class Each>
void WalkHost(const Ref<IPCB_Board>& board, TObjectSet objects, IPCB_LayerSet* layers,
              TIterationMethod method, Each each) {
  if (!board) RaiseEmptyReference(ClassName<IPCB_Board>(), "a walk");
  const THostBoardIterator walk(board);
  const Ref<IPCB_BoardIterator>& iterator = walk.HostIterator();
  On(iterator).Call(&IPCB_BoardIterator::FilterObjects, objects);
  On(iterator).Call(&IPCB_BoardIterator::FilterLayers, layers);
  On(iterator).Call(&IPCB_BoardIterator::FilterMethod, method);
  Ref<IPCB_Primitive> object = On(iterator).Read(&IPCB_BoardIterator::First);
  for (; object; object = On(iterator).Read(&IPCB_BoardIterator::Next)) each(object);
}

TCoordPoint ReferencePoint(const TComp* component) {
  return {component->GetState_X(), component->GetState_Y()};
}

// Reads the text from the host: `Name` would leave a wrapper in the scope for every component of every
// search.
bool HasDesignator(const TComp& component, const std::u16string& name) {
  const Ref<IPCB_Text> text = On(component.IComp()).Read(&IPCB_Component2::GetState_NameText);
  return text && Platform::EqualsIgnoringAsciiCase(On(text).Read(&IPCB_Text::GetState_Text), name);
}

}  // namespace

void TBoard::xProcessItems(TPrimMethod proc, TObjectSet objects, TLayerPartitionSet layers,
                           TIterationMethod method) {
  xProcessItems(proc, objects, TPCBFactory::CreateLayerSet(layers), method);
}

void TBoard::xProcessItems(TPrimMethod proc, TObjectSet objects, const Ref<IPCB_LayerSet>& layers,
                           TIterationMethod method) {
  if (!proc) return;
  WalkHost(IBoard(), objects, layers.Get(), method,
           [&](const Ref<IPCB_Primitive>& object) { proc(CreatePrimitiveWrapper(object)); });
}

std::vector<TNet*> TBoard::GetSortedNetList() const {
  std::vector<std::pair<std::u16string, TNet*>> named;
  WalkHost(IBoard(), {eNetObject}, nullptr, eProcessAll, [&](const Ref<IPCB_Primitive>& object) {
    TNet* net = TNet::Create(object);
    named.emplace_back(net->Name(), net);
  });
  std::ranges::stable_sort(named, {}, &std::pair<std::u16string, TNet*>::first);
  std::vector<TNet*> nets;
  nets.reserve(named.size());
  for (const auto& [name, net] : named) nets.push_back(net);
  return nets;
}

std::vector<TComp*> TBoard::GetSpatialSortedComponents() const {
  std::vector<TComp*> components;
  // Read once: the walk below looks at each of them once for every component.
  std::vector<TCoordPoint> places;
  WalkHost(IBoard(), {eComponentObject}, nullptr, eProcessAll, [&](const Ref<IPCB_Primitive>& object) {
    components.push_back(TComp::Create(object));
    places.push_back(ReferencePoint(components.back()));
  });
  TCoordPoint previous;
  for (std::size_t i = 0; i < components.size(); ++i) {
    std::size_t nearest = i;
    TCoord best = TPointUtils::Manhattan(previous, places[i]);
    for (std::size_t j = i + 1; j < components.size(); ++j) {
      const TCoord distance = TPointUtils::Manhattan(previous, places[j]);
      if (distance >= best) continue;
      best = distance;
      nearest = j;
    }
    std::swap(components[i], components[nearest]);
    std::swap(places[i], places[nearest]);
    previous = places[i];
  }
  return components;
}

TComp* TBoard::Getstate_ComponentByName(const std::u16string& name) {
  TBoardIterator iterator(this);
  iterator.SetState_FilterObject({eComponentObject});
  iterator.SetState_FilterAllLayers();
  for (TPrimitive* p = iterator.First(); p; p = iterator.Next()) {
    TTemporary<TPrimitive> candidate(p);
    auto* component = dynamic_cast<TComp*>(p);
    if (!component || !HasDesignator(*component, name)) continue;
    (void)candidate.release();
    return component;
  }
  return nullptr;
}

}  // namespace Ketril::Tools
