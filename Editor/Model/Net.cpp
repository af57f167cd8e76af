#include "Editor/Model/Net.h"

#include <algorithm>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

Net::Net() {
  state.layer = eV6_MultiLayer;
}

void Net::Join(Primitive* primitive) {
  if (primitive->net_slot_ != kUnlisted) return;
  primitive->net_slot_ = static_cast<std::uint32_t>(listed_.size());
  listed_.push_back(primitive);
}

void Net::Leave(Primitive* primitive) {
  if (primitive->net_slot_ == kUnlisted) return;
  listed_[primitive->net_slot_] = nullptr;
  primitive->net_slot_ = kUnlisted;
  ++gaps_;
  if (walks_ == 0 && gaps_ > listed_.size() / 2) CloseGaps();
}

void Net::CloseGaps() const {
  std::erase(listed_, nullptr);
  gaps_ = 0;
  for (std::size_t i = 0; i < listed_.size(); ++i) listed_[i]->net_slot_ = static_cast<std::uint32_t>(i);
}

void Net::RestoreOrder(const std::vector<Primitive*>& order) {
  std::vector<Primitive*> restored;
  for (Primitive* primitive : order) {
    if (!HasMember(*primitive)) continue;
    restored.push_back(primitive);
    Leave(primitive);
  }
  for (Primitive* primitive : ListMembers()) {
    restored.push_back(primitive);
    Leave(primitive);
  }
  for (Primitive* primitive : restored) Join(primitive);
}

std::vector<Primitive*> Net::ListMembers() const {
  std::vector<Primitive*> members;
  members.reserve(Count());
  ForEach([&](Primitive& primitive) { members.push_back(&primitive); });
  return members;
}

Primitive* Net::MemberAt(std::int32_t index) const {
  if (gaps_ > 0 && walks_ == 0) CloseGaps();
  auto left = static_cast<std::size_t>(index);
  if (gaps_ == 0) return left < listed_.size() ? listed_[left] : nullptr;
  if (left >= Count()) return nullptr;
  for (Primitive* primitive : listed_) {
    if (primitive && left-- == 0) return primitive;
  }
  return nullptr;
}

bool Net::HasMember(const Primitive& primitive) const {
  return primitive.net_.Get() == this && primitive.net_slot_ != kUnlisted;
}

TCoordRect Net::Bounds() const {
  Extent extent;
  ForEach([&](const Primitive& primitive) { extent.Add(primitive.Bounds()); });
  return extent.Rect();
}

double Net::RoutedLength() const {
  double length = 0;
  ForEach([&](const Primitive& primitive) {
    if (!IsCopper(primitive.state.layer)) return;
    if (const Track* track = As<Track>(&primitive)) length += track->Length();
    if (const Arc* arc = As<Arc>(&primitive)) length += arc->Length();
  });
  return length;
}

Status Net::Register(Primitive* member) {
  return member ? member->AssignNet(this) : Status::InvalidArgument;
}

// A part of a component leaves the component with it.
void Net::TakeMembersOffBoard() {
  for (Primitive* member : ListMembers()) {
    const Ref<Primitive> keep(member);
    if (member->on_board) member->board->Remove(member);
  }
}

void Net::UnregisterAll() {
  for (Primitive* member : ListMembers()) {
    const Ref<Primitive> keep(member);
    member->AssignNet(nullptr);
  }
}

}  // namespace Ketril::Editor
