#include "DLLs/Tools/Vias/PadToVia.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

void JoinNet(TGroup* net, TPrimitive* primitive) {
  if (net && net->IPrimitive()) net->RegisterWithGroupWarehouse(primitive);
}

template <class To, class From>
void CopyPlaceAndHole(To* to, const From* from) {
  to->SetX(from->X());
  to->SetY(from->Y());
  to->SetHoleSize(from->HoleSize());
  to->SetMode(from->Mode());
}

// Calls `proc` with each layer on which the pad or via has a size of its own.
template <class StackObject, class Procedure>
void ForEachDefinitionLayer(const StackObject* object, Procedure proc) {
  const Ref<IPCB_LayerIterator> layers = object->DefinitionLayerIterator();
  while (On(layers).Read(&IPCB_LayerIterator::Next)) proc(On(layers).Read(&IPCB_LayerIterator::Layer));
}

// The board is the wrapper that the old object gave while it was there: read again it would be empty.
void PutOnBoard(TBoard* board, TPrimitive* primitive) {
  board->RegisterWithPrimaryWarehouse(primitive);
  primitive->SetSelected(true);
  board->ViewManager()->GraphicallyInvalidatePrimitive(primitive);
}

}  // namespace

TCoord CoveringDiameter(TShape shape, TCoord x, TCoord y) {
  if (x <= 0 || y <= 0) return 0;
  const double width = x, height = y;
  const double diagonal = std::sqrt(width * width + height * height);
  switch (shape) {
    case eRounded:
      return std::max(x, y);
    case eRectangular:
    case eRoundedRectangular:
      return Round(diagonal);
    case eOctagonal: {
      const double radius = std::min(width, height) / 2;
      constexpr double kPi = std::numbers::pi;
      return Round(diagonal - 2 * (radius / std::cos(kPi / 4) - radius / std::cos(kPi / 8)));
    }
    default:
      return 0;
  }
}

TCoord PadStackSizeForVia(const TPad* P, TV7_Layer L) {
  if (!IsSignalLayer(L)) return 0;
  const TCoord x = P->StackSizeX(L), y = P->StackSizeY(L);
  return x > 0 && y > 0 ? CoveringDiameter(P->StackShape(L), x, y) : 0;
}

void ReplacePadByVia(TPrimitive* P) {
  if (!P->Selected() || P->Layer() != TV7_Layer(eV6_MultiLayer)) return;
  const TPad* pad = CheckedCast<TPad>(P);
  TGroup* net = pad->vNet();
  TBoard* board = CheckedCast<TBoard>(P->OwnerBoard());
  board->CancelPrimaryWarehouseRegistration(P);
  TVia* via = TVia::Create();
  if (!via->IPrimitive()) return;
  JoinNet(net, via);
  CopyPlaceAndHole(via, pad);
  ForEachDefinitionLayer(pad,
                         [&](TV7_Layer layer) { via->SetStackSize(layer, PadStackSizeForVia(pad, layer)); });
  PutOnBoard(board, via);
}

void ReplaceViaByPad(TPrimitive* V) {
  if (!V->Selected()) return;
  const TVia* via = CheckedCast<TVia>(V);
  TGroup* net = via->vNet();
  TBoard* board = CheckedCast<TBoard>(V->OwnerBoard());
  board->CancelPrimaryWarehouseRegistration(V);
  TPad* pad = TPad::Create();
  if (!pad->IPrimitive()) return;
  CopyPlaceAndHole(pad, via);
  ForEachDefinitionLayer(via, [&](TV7_Layer layer) {
    const TCoord size = via->StackSize(layer);
    pad->SetStackSizeX(layer, size);
    pad->SetStackSizeY(layer, size);
    pad->SetStackShape(layer, eRounded);
  });
  JoinNet(net, pad);
  PutOnBoard(board, pad);
}

void ReplaceSelectedPadsWithVias(TBoard* board) {
  board->ProcessFreePads(ReplacePadByVia);
}

void ReplaceSelectedViasWithPads(TBoard* board) {
  board->ProcessAllVias(ReplaceViaByPad);
}

}  // namespace Ketril::Tools
