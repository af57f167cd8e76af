#include "DLLs/Tools/Frame/PrimitivesStack.h"

namespace Ketril::Tools {

namespace {

Ref<IPCB_Board> HostBoard(TPrimitive* board) {
  return board ? CheckedCast<IPCB_Board>(board->IPrimitive()) : nullptr;
}

}  // namespace

// --- TStackObject ---

TBoardRegion* TStackObject::BoardRegion() const {
  Ref<IPCB_BoardRegion> region;
  if (const auto pad = Probe<IPCB_Pad3>(FPrimitive))
    region = On(pad).Read(&IPCB_Pad3::GetState_BoardRegion);
  else if (const auto via = Probe<IPCB_Via2>(FPrimitive))
    region = On(via).Read(&IPCB_Via2::GetState_BoardRegion);
  return region ? TBoardRegion::Create(region) : nullptr;
}

TLayerToBoolean& TStackObject::RemovedPads() {
  if (!FRemovedPads) FRemovedPads = std::make_unique<TLayerToBoolean>();
  FRemovedPads->Clear();
  if (const auto pad = Probe<IPCB_Pad3>(FPrimitive)) {
    // All layers have no bound; a pad can be missing only where its stack has a layer.
    ForEachLayer(On(pad).Read(&IPCB_Pad3::StackLayerIterator, nullptr), [&](TV7_Layer layer) {
      FRemovedPads->SetData(layer, On(pad, "RemovedPads").Read(&IPCB_Pad3::GetState_IsPadRemoved, layer));
    });
  }
  return *FRemovedPads;
}

bool TStackObject::IsHoleStraddling(TV7_Layer layer) const {
  if (const auto pad = Probe<IPCB_Pad3>(FPrimitive))
    return On(pad).Read(&IPCB_Pad3::GetState_IsHoleStraddling, layer);
  return On(CheckedCast<IPCB_Via2>(FPrimitive)).Read(&IPCB_Via2::GetState_IsHoleStraddling, layer);
}

void TStackObject::SetIsHoleStraddling(TV7_Layer layer, bool value) {
  if (const auto pad = Probe<IPCB_Pad3>(FPrimitive))
    On(pad).Call(&IPCB_Pad3::SetState_IsHoleStraddling, layer, value);
  else
    On(CheckedCast<IPCB_Via2>(FPrimitive)).Call(&IPCB_Via2::SetState_IsHoleStraddling, layer, value);
}

// --- TPad ---

TCoordRect TPad::GetState_BoundingRectangle_OnLayer(TV7_Layer layer, TCoord& x1, TCoord& y1, TCoord& x2,
                                                    TCoord& y2) const {
  return Spread(On(IPad()).Read(&IPCB_Pad3::GetState_BoundingRectangleOnLayer, layer), x1, y1, x2, y2);
}

TCoord TPad::XPadOffset(TV7_Layer layer) const {
  return On(IPad()).Read(&IPCB_Pad3::GetState_XPadOffsetOnLayer, ToV6(layer));
}

TCoord TPad::YPadOffset(TV7_Layer layer) const {
  return On(IPad()).Read(&IPCB_Pad3::GetState_YPadOffsetOnLayer, ToV6(layer));
}

void TPad::SetXPadOffset(TV7_Layer layer, TCoord value) {
  On(IPad()).Call(&IPCB_Pad3::SetState_XPadOffsetOnLayer, ToV6(layer), value);
}

void TPad::SetYPadOffset(TV7_Layer layer, TCoord value) {
  On(IPad()).Call(&IPCB_Pad3::SetState_YPadOffsetOnLayer, ToV6(layer), value);
}

Ref<IPCB_LayerIterator> TPad::StackLayerIterator(TPrimitive* board) const {
  return On(IPad()).Read(&IPCB_Pad3::StackLayerIterator, HostBoard(board).Get());
}

void TPad::RemoveUnusedPads(bool preserve_start_end) {
  On(IPad()).Call(&IPCB_Pad3::RemoveUnusedPads, preserve_start_end);
}

// --- TVia ---

bool TVia::IntersectLayer(TV7_Layer layer) const {
  return On(IVia()).Read(&IPCB_Via2::IntersectLayer, layer);
}

Ref<IPCB_LayerIterator> TVia::StackLayerIterator(TPrimitive* board) const {
  return On(IVia()).Read(&IPCB_Via2::StackLayerIterator, HostBoard(board).Get());
}

void TVia::RemoveUnusedPads(bool preserve_start_end) {
  On(IVia()).Call(&IPCB_Via2::RemoveUnusedPads, preserve_start_end);
}

}  // namespace Ketril::Tools
