#include <algorithm>

#include "Editor/Model/Board.h"
#include "Editor/Model/LayerFilter.h"
#include "Editor/Model/LayerStack.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

Net* Board::FindNet(const std::u16string& name) const {
  for (Warehouse::Walk walk(objects, {eNetObject}); Primitive* net = walk.Next();) {
    if (As<Net>(net)->data.name == name) return As<Net>(net);
  }
  return nullptr;
}

const BoardLayer* Board::FindLayer(TV7_Layer id) const {
  const auto it = std::ranges::find(layers, id, &BoardLayer::id);
  return it == layers.end() ? nullptr : &*it;
}

const BoardLayer* Board::FindLayer(std::string_view file_name) const {
  const auto it = std::ranges::find(layers, file_name, &BoardLayer::file_name);
  return it == layers.end() ? nullptr : &*it;
}

std::vector<TV7_Layer> Board::CopperLayers() const {
  std::vector<TV7_Layer> copper;
  for (const BoardLayer& layer : layers) {
    if (IsSignalLayer(layer.id) || IsInternalPlaneLayer(layer.id)) copper.push_back(layer.id);
  }
  return copper;
}

const ObjectClass* Board::ClassOf(const Net* net) const {
  const ObjectClass* default_class = nullptr;
  for (Warehouse::Walk walk(objects, {eClassObject}); Primitive* object = walk.Next();) {
    const ObjectClass* net_class = As<ObjectClass>(object);
    if (net_class->data.member_kind != eClassMemberKind_Net) continue;
    if (net && net_class->HasMember(net->data.name)) return net_class;
    if (!default_class && net_class->data.name == u"Default") default_class = net_class;
  }
  return default_class;
}

TCoordRect Board::Extents() const {
  if (const Ref<BoardOutline> outline = Outline()) return outline->Bounds();
  Extent extent;
  objects.ForEach(TObjectSet::All(), [&](const Primitive& object) {
    if (HasPlace(object.kind)) extent.Add(Ordered(object.Bounds()));
  });
  return extent.Rect();
}

const std::vector<Primitive*>& Board::Selected() const {
  if (!selection_known_) {
    selected_.clear();
    objects.ForEach(TObjectSet::All(), [this](Primitive& object) {
      if (object.Has(kFlag_Selected)) selected_.push_back(&object);
    });
    selection_known_ = true;
  }
  return selected_;
}

Status Board::GetState_SelectedObject(std::int32_t index, Ref<IPCB_Primitive>& primitive) noexcept {
  return HostCall("IPCB_Board.GetState_SelectedObject", [&] {
    const std::vector<Primitive*>& selected = Selected();
    const bool found = index >= 0 && static_cast<std::size_t>(index) < selected.size();
    primitive = found ? selected[static_cast<std::size_t>(index)]->AsInterface() : nullptr;
  });
}

Status Board::DeselectAll() noexcept {
  return HostCall("IPCB_Board.DeselectAll", [&] {
    for (Primitive* object : Selected()) object->Set(kFlag_Selected, false);
    SelectionChanged();
  });
}

Status Board::GetPrimitiveCount(TObjectSet kinds, IPCB_LayerSet* layer_set, TIterationMethod method,
                                std::int32_t& count) noexcept {
  return HostCall("IPCB_Board.GetPrimitiveCount", [&] {
    LayerFilter filter(layer_set);
    filter.Restart();
    std::size_t total = 0;
    if (filter.PassesAll() && method == eProcessAll) {
      for (int kind = 0; kind < kObjectIdCount; ++kind) {
        const auto id = static_cast<TObjectId>(kind);
        if (kinds.Contains(id)) total += objects.Count(id);
      }
    } else {
      objects.ForEach(kinds, [&](const Primitive& object) {
        if (PassesMethod(object, method) && filter.Passes(object.state.layer)) ++total;
      });
    }
    count = static_cast<std::int32_t>(total);
  });
}

Status Board::GetState_BoundingRectangleBoard(TObjectSet kinds, IPCB_LayerSet* layer_set, bool only_selected,
                                              TCoordRect& rectangle, bool& found) noexcept {
  return HostCall("IPCB_Board.GetState_BoundingRectangleBoard", [&] {
    LayerFilter filter(layer_set);
    filter.Restart();
    Extent extent;
    objects.ForEach(kinds, [&](const Primitive& object) {
      if (!HasPlace(object.kind) || (only_selected && !object.Has(kFlag_Selected))) return;
      if (filter.Passes(object.state.layer)) extent.Add(Ordered(object.Bounds()));
    });
    found = !extent.IsEmpty();
    if (found) rectangle = extent.Rect();
  });
}

Status Board::GetState_FileName(std::u16string& value) noexcept {
  return HostCall("IPCB_Board.GetState_FileName", [&] { value = Platform::ToUtf16(file.path); });
}

Status Board::GetState_LayerStack(Ref<IPCB_LayerStack>& value) noexcept {
  return HostCall("IPCB_Board2.GetState_LayerStack", [&] { value = MakeLayerStack(*this); });
}

Status Board::ProcessLayers(IPCB_LayerProcessInterface* callback) {
  std::vector<Ref<IPCB_LayerObject>> stack;
  const Status status = HostCall("IPCB_Board2.ProcessLayers", [&] {
    if (!callback) return Status::InvalidArgument;
    for (const TV7_Layer layer : CopperLayers()) stack.push_back(MakeLayerObject(*this, layer));
    return Status::Ok;
  });
  if (Failed(status)) return status;
  // Outside the gate, which lets no exception through.
  for (const Ref<IPCB_LayerObject>& layer : stack) callback->ProcessLayer(layer.Get());
  return Status::Ok;
}

Status Board::PutIntoUnion(std::int32_t union_index, Primitive* object) {
  if (!object || union_index < 0) return Status::InvalidArgument;
  if (object->board != this || !object->on_board) return Status::NotOnBoard;
  object->Write([&] { object->state.union_index = union_index; });
  return Status::Ok;
}

}  // namespace Ketril::Editor
