#include "Editor/Vias/UnusedCopper.h"

#include <algorithm>
#include <utility>

#include "Editor/Copper/Distance.h"

namespace Ketril::Editor {

namespace {

bool IsConnectedOn(const Primitive& object, TV7_Layer layer, const std::vector<Primitive*>& near) {
  return std::ranges::any_of(near, [&](const Primitive* other) {
    return other != &object && kCopperKinds.Contains(other->kind) && other->GetNet() == object.GetNet() &&
           !other->Has(kFlag_KeepOut) && Gap(object, *other, layer, kTouchGap) < kTouchGap;
  });
}

// `whole` is the object with all its copper.
std::vector<TV7_Layer> Unused(const Primitive& object, const Primitive& whole, bool keep_ends) {
  std::vector<TV7_Layer> layers;
  if (!object.on_board) return layers;
  std::vector<Primitive*> near = object.board->index.Find(whole.Bounds());
  std::erase(near, &object);
  const std::vector<TV7_Layer> span = SpannedLayers(object.board, eV6_TopLayer, eV6_BottomLayer);
  for (const TV7_Layer layer : span) {
    if (!HasCopperOn(whole, layer)) continue;
    if (!IsConnectedOn(whole, layer, near)) layers.push_back(layer);
  }
  if (keep_ends) {
    std::erase_if(layers, [&](TV7_Layer layer) { return layer == span.front() || layer == span.back(); });
  }
  return layers;
}

template <class Object>
std::vector<TV7_Layer> UnusedOf(const Object& object, bool keep_ends) {
  const Ref<Primitive> whole = object.Copy();
  static_cast<Object*>(whole.Get())->data.removed.clear();
  return Unused(object, *whole.Get(), keep_ends);
}

}  // namespace

bool GoesThrough(const Pad& pad) {
  return pad.data.hole > 0 && pad.data.plated && pad.state.layer == TV7_Layer(eV6_MultiLayer);
}

bool GoesThrough(const Via& via) {
  return via.data.hole > 0;
}

std::vector<TV7_Layer> UnusedLayers(const Pad& pad, bool keep_ends) {
  return GoesThrough(pad) ? UnusedOf(pad, keep_ends) : std::vector<TV7_Layer>{};
}

std::vector<TV7_Layer> UnusedLayers(const Via& via, bool keep_ends) {
  return GoesThrough(via) ? UnusedOf(via, keep_ends) : std::vector<TV7_Layer>{};
}

void ApplyUnusedCopper(Board& board) {
  // By the copper as it is before any is taken away: what two pads share they both keep.
  std::vector<std::pair<std::vector<TV7_Layer>*, std::vector<TV7_Layer>>> removed;
  board.objects.ForEach({ePadObject, eViaObject}, [&](Primitive& object) {
    const auto note = [&](auto& stack) {
      if (stack.data.remove_unused)
        removed.emplace_back(&stack.data.removed, UnusedLayers(stack, stack.data.keep_end_layers));
    };
    if (Pad* pad = As<Pad>(&object)) note(*pad);
    if (Via* via = As<Via>(&object)) note(*via);
  });
  for (auto& [layers, values] : removed) *layers = std::move(values);
}

}  // namespace Ketril::Editor
