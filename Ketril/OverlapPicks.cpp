#include "Ketril/OverlapPicks.h"

#include <algorithm>

namespace Ketril::Command {

std::size_t OverlapPicks::OverlapsOf(const Editor::Primitive& component) const {
  const TCoordRect box = component.Bounds();
  return static_cast<std::size_t>(
      std::ranges::count_if(board_->index.Find(box), [&](const Editor::Primitive* other) {
        if (other->kind != eComponentObject || other == &component) return false;
        if (other->state.layer != component.state.layer) return false;
        if (other->Has(Editor::kFlag_Locked) && component.Has(Editor::kFlag_Locked)) return false;
        const TCoordRect its = other->Bounds();
        return its.x1 < box.x2 && box.x1 < its.x2 && its.y1 < box.y2 && box.y1 < its.y2;
      }));
}

TCoordPoint OverlapPicks::PlaceOn(const Editor::Primitive& component) const {
  const TCoordRect box = component.Bounds();
  const TCoordPoint middle = {box.x1 + (box.x2 - box.x1) / 2, box.y1 + (box.y2 - box.y1) / 2};
  const auto is_its_alone = [&](TCoordPoint place) {
    return std::ranges::none_of(board_->index.Find({place.x, place.y, place.x, place.y}),
                                [&](const Editor::Primitive* other) {
                                  return other->kind == eComponentObject && other != &component;
                                });
  };
  for (const TCoordPoint place :
       {middle, {box.x1, box.y1}, {box.x2, box.y1}, {box.x2, box.y2}, {box.x1, box.y2}}) {
    if (is_its_alone(place)) return place;
  }
  return middle;
}

void OverlapPicks::StartRound() {
  const auto before = overlaps_;
  std::size_t overlaps = 0;
  round_.clear();
  next_ = 0;
  board_->objects.ForEach({eComponentObject}, [&](Editor::Primitive& component) {
    const std::size_t of_it = OverlapsOf(component);
    overlaps += of_it;
    if (of_it > 0) round_.emplace_back(&component);
  });
  overlaps_ = overlaps;
  if (before && overlaps >= *before) round_.clear();
}

std::optional<TCoordPoint> OverlapPicks::operator()() {
  for (;;) {
    if (next_ == round_.size()) StartRound();
    if (round_.empty()) return std::nullopt;
    while (next_ < round_.size()) {
      const Editor::Primitive& component = *round_[next_++].Get();
      if (OverlapsOf(component) == 0) continue;
      return PlaceOn(component);
    }
  }
}

}  // namespace Ketril::Command
