#include "Editor/Model/Group.h"

#include <algorithm>
#include <utility>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

Group::~Group() {
  RemoveAllMembers();
  for (Primitive* primitive : noted_) primitive->owner_ = nullptr;
}

bool Group::CanOwn(const Primitive& primitive) const {
  if (primitive.kind == eNetObject || primitive.kind == eBoardObject) return false;
  for (const Primitive* within = this; within; within = within->owner_) {
    if (within == &primitive) return false;
  }
  return true;
}

bool Group::AddMember(Primitive* member) {
  if (!member || !CanOwn(*member)) return false;
  if (HasMember(*member)) return true;
  members_.emplace_back(member);
  if (member->owner_) member->owner_->Forget(member);
  member->owner_ = this;
  return true;
}

void Group::RemoveMember(Primitive* member) {
  if (member && member->owner_ == this) Forget(member);
}

void Group::RemoveAllMembers() {
  for (const Ref<Primitive>& member : members_) member->owner_ = nullptr;
  const auto last_references = std::exchange(members_, {});
}

void Group::RestoreMembers(const std::vector<Ref<Primitive>>& members) {
  const auto last_references = std::exchange(members_, {});
  for (const Ref<Primitive>& member : last_references) member->owner_ = nullptr;
  for (const Ref<Primitive>& member : members) {
    if (member->owner_) member->owner_->Forget(member.Get());
    member->owner_ = this;
  }
  members_ = members;
}

void Group::NoteOwned(Primitive* primitive) {
  noted_.push_back(primitive);
  primitive->owner_ = this;
}

void Group::Forget(Primitive* primitive) {
  primitive->owner_ = nullptr;
  if (std::erase(noted_, primitive) > 0) return;
  const auto found = std::find_if(members_.rbegin(), members_.rend(),
                                  [&](const Ref<Primitive>& member) { return member.Get() == primitive; });
  if (found == members_.rend()) return;
  const Ref<Primitive> last_reference = std::move(*found);
  members_.erase(std::next(found).base());
}

std::vector<Primitive*> Group::ListMembers() const {
  std::vector<Primitive*> members;
  members.reserve(members_.size());
  for (const Ref<Primitive>& member : members_) members.push_back(member.Get());
  return members;
}

Primitive* Group::MemberAt(std::int32_t index) const {
  const auto place = static_cast<std::size_t>(index);  // a negative one is beyond every end
  return place < members_.size() ? members_[place].Get() : nullptr;
}

bool Group::HasMember(const Primitive& primitive) const {
  return primitive.owner_ == this && std::find(noted_.begin(), noted_.end(), &primitive) == noted_.end();
}

TCoordRect Group::Bounds() const {
  Extent extent = OwnExtent();
  for (const Ref<Primitive>& member : members_) {
    const Text* text = As<Text>(member.Get());
    if (!member->Has(kFlag_Hidden) && (!text || text->data.role == TextRole::Free))
      extent.Add(member->Bounds());
  }
  return extent.Rect(Reference());
}

void Group::Transform(const PlaneMap& map) {
  TransformSelf(map);
  for (const Ref<Primitive>& member : members_) member->Transform(map);
}

void Group::MirrorLayers() {
  Primitive::MirrorLayers();
  for (const Ref<Primitive>& member : members_) member->MirrorLayers();
}

Group::Saved Group::SaveCore() const {
  return {Primitive::SaveCore(), members_};
}

void Group::RestoreCore(const Saved& saved) {
  Primitive::RestoreCore(saved);
  RestoreMembers(saved.members);
}

void Group::CopyCoreFrom(const Group& other) {
  Primitive::CopyCoreFrom(other);
  for (const Ref<Primitive>& member : other.members_) AddMember(member->Copy().Get());
}

Status Group::Register(Primitive* member) {
  if (!member || !CanOwn(*member)) return Status::InvalidArgument;
  if (HasMember(*member)) return Status::Ok;
  const Ref<Group> old_owner(member->owner_);
  if (old_owner) old_owner->BeforeWrite();
  BeforeWrite();
  member->BeforeWrite();
  AddMember(member);
  member->AfterWrite();
  AfterWrite();
  if (old_owner) old_owner->AfterWrite();
  return Status::Ok;
}

void Group::UnregisterAll() {
  WriteWithMembers([&] { RemoveAllMembers(); });
}

void Group::TakeMembersOffBoard() {
  for (Primitive* member : ListMembers()) {
    if (member->on_board) member->board->RemoveMembers(*this);
  }
}

std::int32_t Group::CountMembers(TObjectSet kinds) const {
  std::int32_t count = 0;
  for (const Primitive* member : ListMembers()) count += kinds.Contains(member->kind) ? 1 : 0;
  return count;
}

}  // namespace Ketril::Editor
