#include "Editor/Model/Via.h"

#include <algorithm>
#include <utility>

#include "Editor/Model/Board.h"
#include "Editor/Model/LayerIterator.h"
#include "Editor/Vias/UnusedCopper.h"

namespace Ketril::Editor {

Via::Via() {
  state.layer = eV6_MultiLayer;
}

TCoordRect Via::Bounds() const {
  TCoord size = std::max({data.size, data.hole, 0});
  for (const LayerSize& entry : data.sizes) size = std::max(size, entry.size);
  Extent extent;
  extent.Add(data.center, size / 2.0);
  return extent.Rect();
}

void Via::MirrorLayers() {
  Primitive::MirrorLayers();
  const TV7_Layer low = MirroredLayer(data.high, board);
  data.high = MirroredLayer(data.low, board);
  data.low = low;
  for (LayerSize& entry : data.sizes) entry.layer = MirroredLayer(entry.layer, board);
  MirrorAll(data.removed, board);
  MirrorAll(data.straddling, board);
}

std::u16string Via::LayerText() const {
  return LayerName(data.low, board) + u" - " + LayerName(data.high, board);
}

// Vias are covered unless they say otherwise.
bool Via::OpensMask(TV7_Layer layer) const {
  return data.mask.solder_mode == eMaskExpansion_Manual &&
         ((layer == eV6_TopSolder && Spans(eV6_TopLayer)) ||
          (layer == eV6_BottomSolder && Spans(eV6_BottomLayer)));
}

TCoord Via::SizeOn(TV7_Layer layer) const {
  if (data.mode == ePadMode_Simple) return data.size;
  const auto own = std::find_if(data.sizes.begin(), data.sizes.end(),
                                [&](const LayerSize& entry) { return entry.layer == layer; });
  return own == data.sizes.end() ? data.size : own->size;
}

void Via::SetSizeOn(TV7_Layer layer, TCoord size) {
  if (data.mode == ePadMode_Simple || layer == eV6_MultiLayer) {
    data.size = size;
    return;
  }
  if (layer == data.low) {
    // Its own size is the one on the layer where it begins; the others keep what they had.
    for (const TV7_Layer other : SpannedLayers(board, data.low, data.high)) {
      if (other != layer && SizeOn(other) == data.size) data.sizes.push_back({other, data.size});
    }
    data.size = size;
    std::erase_if(data.sizes, [&](const LayerSize& entry) { return entry.size == size; });
    return;
  }
  std::erase_if(data.sizes, [&](const LayerSize& entry) { return entry.layer == layer; });
  if (size != data.size) data.sizes.push_back({layer, size});
}

void Via::SetMode(TPadMode mode) {
  if (mode == ePadMode_Simple) {
    data.size = SizeOn(data.low);
    data.sizes.clear();
  }
  data.mode = mode;
}

bool Via::Spans(TV7_Layer layer) const {
  if (layer == eV6_MultiLayer) return true;
  if (!IsCopper(layer)) return false;
  if (data.low == eV6_TopLayer && data.high == eV6_BottomLayer) return true;
  return Contains(SpannedLayers(board, data.low, data.high), layer);
}

bool Via::IsHoleSizeValid() const {
  const auto holds = [&](TCoord size) { return size == 0 || size > data.hole; };
  return data.hole > 0 && holds(data.size) &&
         std::all_of(data.sizes.begin(), data.sizes.end(), [&](const LayerSize& e) { return holds(e.size); });
}

Ref<IPCB_LayerIterator> Via::DefinitionLayers() const {
  return MakeHost<LayerIterator>(data.mode == ePadMode_Simple ? std::vector{data.low}
                                                              : SpannedLayers(board, data.low, data.high));
}

Status Via::StackLayers(IPCB_Board* on, Ref<IPCB_LayerIterator>& iterator) const {
  const Board* stack = on ? As<Board>(FromInterface(on)) : board;
  if (on && !stack) return Status::InvalidArgument;
  iterator = MakeHost<LayerIterator>(SpannedLayers(stack, data.low, data.high));
  return Status::Ok;
}

Status Via::RemoveUnusedPads(bool preserve_start_end) noexcept {
  return HostCall("IPCB_Via2.RemoveUnusedPads",
                  [&] { Write([&] { RemoveUnusedCopper(*this, preserve_start_end); }); });
}

Status Via::RestoreUnusedPads() noexcept {
  return HostCall("IPCB_Via2.RestoreUnusedPads", [&] { Write([&] { RestoreUnusedCopper(*this); }); });
}

}  // namespace Ketril::Editor
