#include "Editor/Model/Warehouse.h"

#include <algorithm>
#include <utility>

#include "Editor/Model/Groups.h"

namespace Ketril::Editor {

namespace {

// Below this many, gaps cost less than moving what is behind them.
constexpr std::size_t kFewGaps = 64;

void Number(std::vector<Ref<Primitive>>& objects) {
  for (std::size_t slot = 0; slot < objects.size(); ++slot) {
    objects[slot]->slot = static_cast<std::uint32_t>(slot);
  }
}

}  // namespace

void Warehouse::Add(Primitive* primitive) {
  Shelf& shelf = shelves_[primitive->kind];
  shelf.objects.emplace_back(primitive);
  primitive->slot = static_cast<std::uint32_t>(shelf.objects.size() - 1);
  primitive->order = next_order_++;
}

void Warehouse::Remove(Primitive* primitive) {
  Shelf& shelf = shelves_[primitive->kind];
  const std::size_t slot = primitive->slot;
  if (slot >= shelf.objects.size() || shelf.objects[slot].Get() != primitive) return;
  // The list is in order before the object may die.
  const Ref<Primitive> last_reference = std::exchange(shelf.objects[slot], {});
  if (++shelf.gaps > kFewGaps && shelf.gaps > shelf.objects.size() / 2) CloseGaps(shelf);
}

void Warehouse::CloseGaps(Shelf& shelf) {
  std::erase(shelf.objects, nullptr);
  shelf.gaps = 0;
  Number(shelf.objects);
  ++closings_;
}

void Warehouse::PutBack(const std::vector<Ref<Primitive>>& objects) {
  std::array<std::ptrdiff_t, kObjectIdCount> stayed;
  stayed.fill(-1);
  for (const Ref<Primitive>& object : objects) {
    Shelf& shelf = shelves_[object->kind];
    if (stayed[object->kind] < 0) {
      CloseGaps(shelf);
      stayed[object->kind] = std::ssize(shelf.objects);
    }
    shelf.objects.push_back(object);
  }
  const auto by_order = [](const Ref<Primitive>& a, const Ref<Primitive>& b) { return a->order < b->order; };
  for (int kind = 0; kind < kObjectIdCount; ++kind) {
    if (stayed[kind] < 0) continue;
    std::vector<Ref<Primitive>>& list = shelves_[kind].objects;
    const auto came_back = list.begin() + stayed[kind];
    std::sort(came_back, list.end(), by_order);
    std::inplace_merge(list.begin(), came_back, list.end(), by_order);
    Number(list);
  }
}

std::size_t Warehouse::Count(TObjectId kind) const {
  return shelves_[kind].objects.size() - shelves_[kind].gaps;
}

std::size_t Warehouse::Count() const {
  std::size_t count = 0;
  for (const Shelf& shelf : shelves_) count += shelf.objects.size() - shelf.gaps;
  return count;
}

Warehouse::Walk::Walk(const Warehouse& warehouse, TObjectSet kinds)
    : warehouse_(&warehouse), end_(warehouse.next_order_), closings_(warehouse.closings_) {
  for (int kind = 0; kind < kObjectIdCount; ++kind) {
    Head head{static_cast<TObjectId>(kind), 0, 0};
    if (kinds.Contains(head.kind) && Seek(head, 0)) heads_.push_back(head);
  }
  std::sort(heads_.begin(), heads_.end(), [](const Head& a, const Head& b) { return a.order > b.order; });
}

Primitive* Warehouse::Walk::Next() {
  if (warehouse_ && closings_ != warehouse_->closings_) FindPlacesAgain();
  while (!heads_.empty()) {
    Head& head = heads_.back();
    const std::vector<Ref<Primitive>>& objects = warehouse_->shelves_[head.kind].objects;
    Primitive* const object = head.slot < objects.size() ? objects[head.slot].Get() : nullptr;
    // The objects lie anywhere in memory: a walk that only counts would do nothing but wait for them.
    constexpr std::size_t kAhead = 8;
    if (head.slot + kAhead < objects.size()) {
      if (const Primitive* later = objects[head.slot + kAhead].Get()) __builtin_prefetch(&later->order);
    }
    if (Seek(head, head.order + 1)) {
      for (std::size_t i = heads_.size() - 1; i > 0 && heads_[i].order > heads_[i - 1].order; --i) {
        std::swap(heads_[i], heads_[i - 1]);
      }
    } else {
      heads_.pop_back();
    }
    if (object) return object;
  }
  return nullptr;
}

// To the first object from the head's slot on that has at least the number `order`; false when there is none.
bool Warehouse::Walk::Seek(Head& head, std::uint64_t order) const {
  const std::vector<Ref<Primitive>>& objects = warehouse_->shelves_[head.kind].objects;
  while (head.slot < objects.size() && (!objects[head.slot] || objects[head.slot]->order < order))
    ++head.slot;
  if (head.slot == objects.size() || objects[head.slot]->order >= end_) return false;
  head.order = objects[head.slot]->order;
  return true;
}

void Warehouse::Walk::FindPlacesAgain() {
  closings_ = warehouse_->closings_;
  std::erase_if(heads_, [this](Head& head) {
    head.slot = 0;
    return !Seek(head, head.order);
  });
  std::sort(heads_.begin(), heads_.end(), [](const Head& a, const Head& b) { return a.order > b.order; });
}

}  // namespace Ketril::Editor
