#include "DLLs/Tools/Frame/PrimitivesIterators.h"

#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"

namespace Ketril::Tools {

namespace {

Ref<IPCB_Board> BoardToWalk(const TBoard* board, const char* failure) {
  Ref<IPCB_Board> host = board ? Probe<IPCB_Board>(board->IPrimitive()) : nullptr;
  if (!host) throw Exception(failure);
  return host;
}

}  // namespace

TPrimitive* TAbstractIterator::First() {
  if (!FIterator) return nullptr;
  return CreatePrimitiveWrapper(On(FIterator).Read(&IPCB_AbstractIterator::First));
}

TPrimitive* TAbstractIterator::Next() {
  if (!FIterator) return nullptr;
  return CreatePrimitiveWrapper(On(FIterator).Read(&IPCB_AbstractIterator::Next));
}

void TAbstractIterator::SetState_FilterAll() {
  if (FIterator) On(FIterator).Call(&IPCB_AbstractIterator::FilterAll);
}

void TAbstractIterator::SetState_FilterAllLayers() {
  if (FIterator) On(FIterator).Call(&IPCB_AbstractIterator::FilterAllLayers);
}

void TAbstractIterator::SetState_FilterObject(TObjectSet objects) {
  if (FIterator) On(FIterator).Call(&IPCB_AbstractIterator::FilterObjects, objects);
}

void TAbstractIterator::SetState_FilterLayers(TLayerPartitionSet layers) {
  SetState_FilterLayers(TPCBFactory::CreateLayerSet(layers));
}

void TAbstractIterator::SetState_FilterLayers(const Ref<IPCB_LayerSet>& layers) {
  if (FIterator) On(FIterator).Call(&IPCB_AbstractIterator::FilterLayers, layers.Get());
}

void TAbstractIterator::SetState_FilterArea(TCoord x1, TCoord y1, TCoord x2, TCoord y2) {
  if (FIterator) On(FIterator).Call(&IPCB_AbstractIterator::FilterArea, x1, y1, x2, y2);
}

void TAbstractIterator::SetState_Filter(TCoord x1, TCoord y1, TCoord x2, TCoord y2, TLayerPartitionSet layers,
                                        TObjectSet objects) {
  SetState_Filter(x1, y1, x2, y2, TPCBFactory::CreateLayerSet(layers), objects);
}

void TAbstractIterator::SetState_Filter(TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                                        const TV6_LayerSet& layers, TObjectSet objects) {
  SetState_Filter(x1, y1, x2, y2, TPCBFactory::CreateLayerSet(layers), objects);
}

void TAbstractIterator::SetState_Filter(TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                                        const Ref<IPCB_LayerSet>& layers, TObjectSet objects) {
  SetState_FilterArea(x1, y1, x2, y2);
  SetState_FilterLayers(layers);
  SetState_FilterObject(objects);
}

void TAbstractIterator::SetState_FilterA(TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                                         std::span<const TV7_Layer> layers, TObjectSet objects) {
  SetState_Filter(x1, y1, x2, y2, TPCBFactory::CreateLayerSet(layers), objects);
}

TBoardIterator::TBoardIterator(TBoard* board)
    : THostBoardIterator(BoardToWalk(board, "Cannot create board iterator")),
      TAbstractIterator(HostIterator()) {
  SetState_FilterAll();
}

void TBoardIterator::SetState_FilterMethod(TIterationMethod method) {
  On(HostIterator()).Call(&IPCB_BoardIterator::FilterMethod, method);
}

TSpatialIterator::TSpatialIterator(TBoard* board)
    : THostSpatialIterator(BoardToWalk(board, "Cannot create spatial iterator")),
      TAbstractIterator(HostIterator()) {
  SetState_FilterAll();
}

void TSpatialIterator::InitFilter(TBoard*, TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                                  TLayerPartitionSet layers, TObjectSet objects) {
  SetState_Filter(x1, y1, x2, y2, layers, objects);
}

void TSpatialIterator::InitFilter(TBoard*, TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                                  const Ref<IPCB_LayerSet>& layers, TObjectSet objects) {
  SetState_Filter(x1, y1, x2, y2, layers, objects);
}

void TSpatialIterator::InitFilter(TBoard*, TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                                  std::span<const TV7_Layer> layers, TObjectSet objects) {
  SetState_FilterA(x1, y1, x2, y2, layers, objects);
}

void TSpatialIterator::InitFilterA(TBoard*, TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                                   std::span<const TV7_Layer> layers, TObjectSet objects) {
  SetState_FilterA(x1, y1, x2, y2, layers, objects);
}

TGroupIterator::TGroupIterator(TGroup* group)
    : THostGroupIterator(group ? Probe<IPCB_Group>(group->IPrimitive()) : nullptr),
      TAbstractIterator(HostIterator()) {}

void TGroupIterator::InitFilter(TGroup*, TObjectSet objects) {
  SetState_FilterObject(objects);
}

}  // namespace Ketril::Tools
