#include "Editor/Vias/ViaUnions.h"

#include <algorithm>

#include "Editor/Vias/Shielding.h"
#include "Editor/Vias/Stitching.h"

namespace Ketril::Editor {

namespace {

ViaUnion* AsUnion(Primitive* object) {
  if (auto* stitching = dynamic_cast<Stitching*>(object)) return stitching;
  return dynamic_cast<Shielding*>(object);
}

}  // namespace

std::vector<Primitive*> ViaUnion::Parts() const {
  std::vector<Primitive*> parts;
  if (!self_.board) return parts;
  if (self_.state.union_index == 0) {
    for (const Ref<Primitive>& part : built) parts.push_back(part.Get());
    return parts;
  }
  self_.board->objects.ForEach({eViaObject, eRegionObject}, [&](Primitive& object) {
    if (object.state.union_index == self_.state.union_index) parts.push_back(&object);
  });
  return parts;
}

TCoordRect ViaUnion::PartsBounds() const {
  TCoordRect box;
  bool is_first = true;
  for (const Primitive* part : Parts()) {
    const TCoordRect other = part->Bounds();
    box = std::exchange(is_first, false) ? other
                                         : TCoordRect{std::min(box.x1, other.x1), std::min(box.y1, other.y1),
                                                      std::max(box.x2, other.x2), std::max(box.y2, other.y2)};
  }
  return box;
}

Ref<IPCB_Board> ViaUnion::OwnerBoard() const {
  return self_.board;
}

Status ViaUnion::SetOwnerBoard(IPCB_Board* board) {
  Board* const own = As<Board>(FromInterface(board));
  if (!own) return Status::InvalidArgument;
  own->TryOn(self_);
  return Status::Ok;
}

ViaUnions::ViaUnions(Board& board) : board_(board) {}

ViaUnion* ViaUnions::Own(IPCB_SmartUnionObject* object) const {
  Primitive* const own = FromInterface(object);
  return own && own->board == &board_ ? AsUnion(own) : nullptr;
}

Ref<Via> ViaUnions::NewReferenceVia() const {
  const Ref<Via> via = MakeHost<Via>();
  const ObjectClass* const net_class = board_.ClassOf(nullptr);
  if (net_class && net_class->data.sizes.via_size > 0) via->data.size = net_class->data.sizes.via_size;
  if (net_class && net_class->data.sizes.via_hole > 0) via->data.hole = net_class->data.sizes.via_hole;
  return via;
}

const Ref<StitchOptions>& ViaUnions::StitchDefaults() {
  if (!stitch_) {
    stitch_ = MakeHost<StitchOptions>(board_.Iterators(), StitchSettings{});
    stitch_->settings.reference = NewReferenceVia();
  }
  return stitch_;
}

const Ref<ShieldOptions>& ViaUnions::ShieldDefaults() {
  if (!shield_) shield_ = MakeHost<ShieldOptions>(board_.Iterators(), ShieldSettings{});
  // Whom the last one shielded says nothing of the next.
  shield_->settings.primitives.clear();
  shield_->settings.net = nullptr;
  if (!shield_->settings.reference) shield_->settings.reference = NewReferenceVia();
  return shield_;
}

Status ViaUnions::CreateStitching(IPCB_ViaStitchFloodOptions* options, Ref<IPCB_SmartUnionObject>& made) {
  auto* const own = dynamic_cast<StitchOptions*>(options);
  if (!own) return Status::InvalidArgument;
  const Ref<Stitching> stitching = MakeHost<Stitching>();
  stitching->data.options = MakeHost<StitchOptions>(own->Owner(), own->Copy());
  made = Ref<IPCB_SmartUnionObject>(stitching.Get());
  return Status::Ok;
}

Status ViaUnions::CreateShielding(IPCB_ViaShieldingOptions* options, Ref<IPCB_ViaShieldingSU>& made) {
  auto* const own = dynamic_cast<ShieldOptions*>(options);
  if (!own) return Status::InvalidArgument;
  const Ref<Shielding> shielding = MakeHost<Shielding>();
  shielding->data.options = MakeHost<ShieldOptions>(own->Owner(), own->Copy());
  made = Ref<IPCB_ViaShieldingSU>(shielding.Get());
  return Status::Ok;
}

void ViaUnions::BuildStitching(Stitching& stitching) {
  const StitchSettings& settings = stitching.data.options->settings;
  ViaPlacer placer(board_, settings, last_run_);
  FloodWithVias(board_, settings, placer, last_run_);
  stitching.built = placer.Build();
}

void ViaUnions::BuildShielding(Shielding& shielding) {
  const ShieldSettings& settings = shielding.data.options->settings;
  std::vector<Ref<Primitive>> copper;
  {
    ViaPlacer placer(board_, settings, last_run_);
    FenceWithVias(board_, settings, placer, last_run_);
    if (settings.copper && !placer.Places().empty())
      copper = ShieldingCopper(board_, settings, placer.Places());
    shielding.built = placer.Build();
  }
  for (const Ref<Primitive>& region : copper) {
    board_.Add(region.Get());
    shielding.built.push_back(region);
  }
}

Status ViaUnions::Build(IPCB_SmartUnionObject* object, bool& built) {
  ViaUnion* const own = Own(object);
  if (!own) return Status::InvalidArgument;
  last_run_ = {};
  if (auto* stitching = dynamic_cast<Stitching*>(&own->Self())) BuildStitching(*stitching);
  if (auto* shielding = dynamic_cast<Shielding*>(&own->Self())) BuildShielding(*shielding);
  built = !own->built.empty();
  return Status::Ok;
}

std::int32_t ViaUnions::NextIndex() const {
  // Also of those whose parts are gone: an undo may bring them back.
  std::int32_t last = 0;
  for (const Ref<Primitive>& object : objects_) last = std::max(last, object->state.union_index);
  board_.objects.ForEach(TObjectSet::All(),
                         [&](const Primitive& object) { last = std::max(last, object.state.union_index); });
  return last + 1;
}

Status ViaUnions::AssignIndex(IPCB_SmartUnionObject* object, std::int32_t& index) {
  ViaUnion* const own = Own(object);
  if (!own) return Status::InvalidArgument;
  index = NextIndex();
  for (const Ref<Primitive>& part : own->built) part->Write([&] { part->state.union_index = index; });
  own->Self().state.union_index = index;
  const auto* stitching = dynamic_cast<Stitching*>(&own->Self());
  const auto* shielding = dynamic_cast<Shielding*>(&own->Self());
  Via& reference = stitching ? *stitching->data.options->settings.reference.Get()
                             : *shielding->data.options->settings.reference.Get();
  reference.state.union_index = index;
  return Status::Ok;
}

Status ViaUnions::Register(IPCB_SmartUnionObject* object) {
  ViaUnion* const own = Own(object);
  if (!own) return Status::InvalidArgument;
  if (!std::exchange(own->listed, true)) objects_.emplace_back(&own->Self());
  board_.document_changed = true;
  return Status::Ok;
}

void ViaUnions::Load(const Ref<Primitive>& object) {
  board_.TryOn(*object.Get());
  AsUnion(object.Get())->listed = true;
  objects_.push_back(object);
}

bool ViaUnions::HasParts(std::int32_t union_index) const {
  if (const std::uint64_t now = board_.index.Revision(); revision_ != now) {
    carried_.clear();
    board_.objects.ForEach({eViaObject, eRegionObject}, [&](const Primitive& object) {
      if (object.state.union_index != 0) carried_.insert(object.state.union_index);
    });
    revision_ = now;
  }
  return carried_.contains(union_index);
}

std::vector<ViaUnion*> ViaUnions::List() const {
  std::vector<ViaUnion*> unions;
  for (const Ref<Primitive>& object : objects_) {
    ViaUnion* const own = AsUnion(object.Get());
    if (own->listed && HasParts(own->Self().state.union_index)) unions.push_back(own);
  }
  return unions;
}

Ref<IPCB_SmartUnionObject> ViaUnions::At(std::int32_t index) const {
  const std::vector<ViaUnion*> unions = List();
  if (index < 0 || static_cast<std::size_t>(index) >= unions.size()) return {};
  return Probe<IPCB_SmartUnionObject>(unions[static_cast<std::size_t>(index)]->Self().AsInterface());
}

void ViaUnions::TakeOff(ViaUnion& object) {
  for (Primitive* part : object.Parts()) board_.Remove(part);
  board_.document_changed = true;
}

void ViaUnions::Remove(TUnionKind kind) {
  std::vector<ViaUnion*> unions = List();
  std::erase_if(unions, [&](const ViaUnion* object) { return object->union_kind != kind; });
  const auto is_selected = [](ViaUnion* object) {
    return object->Self().Has(kFlag_Selected) ||
           std::ranges::any_of(object->Parts(),
                               [](const Primitive* part) { return part->Has(kFlag_Selected); });
  };
  const bool only_selected = std::ranges::any_of(unions, is_selected);
  for (ViaUnion* object : unions) {
    if (!only_selected || is_selected(object)) TakeOff(*object);
  }
}

void ViaUnions::RemoveByIndex(TUnionKind kind, std::int32_t index) {
  for (ViaUnion* object : List()) {
    if (object->union_kind == kind && object->Self().state.union_index == index) TakeOff(*object);
  }
}

Status ViaUnions::Redraw(IPCB_SmartUnionObject* object) const {
  return Own(object) ? Status::Ok : Status::InvalidArgument;
}

}  // namespace Ketril::Editor
