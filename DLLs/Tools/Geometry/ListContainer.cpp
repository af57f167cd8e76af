#include "DLLs/Tools/Geometry/ListContainer.h"

#include <algorithm>
#include <string>

#include "DLLs/Tools/Geometry/RectUtils.h"

namespace Ketril::Tools {

namespace {

constexpr std::int32_t kMostEntries = 134217728;

[[noreturn]] void OutOfBounds(const char* what, std::int32_t value) {
  throw EListError(std::string("List ") + what + " out of bounds (" + std::to_string(value) + ")");
}

}  // namespace

void TListContainer::SetCapacity(std::int32_t Value) {
  if (Value < FCount || Value >= kMostEntries) OutOfBounds("capacity", Value);
  FList.resize(static_cast<std::size_t>(Value));
  FList.shrink_to_fit();
  FCapacity = Value;
}

void TListContainer::SetCount(std::int32_t Value) {
  if (Value < 0 || Value >= kMostEntries) OutOfBounds("count", Value);
  if (Value > FCapacity) SetCapacity(Value);
  for (; FCount < Value; ++FCount) FList[static_cast<std::size_t>(FCount)] = nullptr;
  FCount = Value;
}

void TListContainer::GrowIfFull() {
  if (FCount < FCapacity) return;
  SetCapacity(FCapacity + (FCapacity > 64 ? FCapacity / 4 : FCapacity > 8 ? 16 : 4));
}

void TListContainer::Insert(TItem P) {
  GrowIfFull();
  FList[static_cast<std::size_t>(FCount++)] = P;
}

TItem TListContainer::At(std::int32_t i) const {
  return i >= 0 && i < FCount ? FList[static_cast<std::size_t>(i)] : nullptr;
}

void TListContainer::AtPut(std::int32_t i, TItem P) {
  if (i >= 0 && i < FCount) FList[static_cast<std::size_t>(i)] = P;
}

void TListContainer::AtInsert(std::int32_t i, TItem P) {
  if (i < 0 || i > FCount) return;
  GrowIfFull();
  std::copy_backward(FList.data() + i, FList.data() + FCount, FList.data() + FCount + 1);
  FList[static_cast<std::size_t>(i)] = P;
  ++FCount;
}

void TListContainer::RemoveAt(std::int32_t i) {
  if (i < 0 || i >= FCount) OutOfBounds("index", i);
  std::copy(FList.data() + i + 1, FList.data() + FCount, FList.data() + i);
  --FCount;
}

void TListContainer::Delete(TItem P) {
  if (const std::int32_t i = IndexOf(P); i >= 0) RemoveAt(i);
}

void TListContainer::DeleteAll() {
  FCount = 0;
  SetCapacity(0);
}

std::int32_t TListContainer::IndexOf(TItem P) const {
  const TItem* const found = std::find(FList.data(), FList.data() + FCount, P);
  return found == FList.data() + FCount ? -1 : static_cast<std::int32_t>(found - FList.data());
}

void TListContainer::Pack() {
  FCount =
      static_cast<std::int32_t>(std::remove(FList.data(), FList.data() + FCount, nullptr) - FList.data());
}

void TListContainer::FreeAll() {
  for (std::int32_t i = 0; i < FCount; ++i) {
    TItem item = At(i);
    AtPut(i, nullptr);
    if (item) item->Free();
  }
  Pack();
}

std::size_t TListContainer::MemoryUsed() const {
  return sizeof(TListContainer) + std::size_t{8} * static_cast<std::size_t>(FCount);
}

std::unique_ptr<TListContainer> TListContainer::Replicate() const {
  auto replica = std::make_unique<TListContainer>();
  for (std::int32_t i = 0; i < FCount; ++i) replica->Insert(At(i));
  return replica;
}

void TListContainer::SetStorageToFixedArray(std::int32_t Size) {
  FreeAll();
  SetCapacity(Size);
  SetCount(Size);
}

void TListContainer::ProcessItems(TItemProcedure Proc) {
  TListContainerIterator(this).ProcessItems(Proc);
}

void TListContainer::ProcessItemsAllowAbort(TItemFunction Func) {
  TListContainerIterator iterator(this);
  for (TItem item = iterator.First(); item && !Func(item); item = iterator.Next()) {
  }
}

TContainerIterator* TListContainer::CreateIterator() {
  return new TListContainerIterator(this);
}

TContainerIteratorBase::~TContainerIteratorBase() {
  for (std::int32_t i = 0; FOwnerContainer && i < FDeletedItems.Count(); ++i) {
    FOwnerContainer->Delete(FDeletedItems.At(i));
  }
}

void TContainerIteratorBase::SetState_FilterArea(TCoord ax1, TCoord ay1, TCoord ax2, TCoord ay2) {
  constexpr TCoord kFarthest = 999990000;
  const auto clamp = [&](TCoord value) { return std::clamp(value, -kFarthest, kFarthest); };
  FArea = {clamp(ax1), clamp(ay1), clamp(ax2), clamp(ay2)};
  FSpatialFilterIsSet = true;
}

void TContainerIteratorBase::ChangeOwnerContainer(TContainer* NewOwner) {
  FOwnerContainer = NewOwner;
  FArea = kEverywhere;
  FSpatialFilterIsSet = false;
  FDeletedItems.DeleteAll();
}

void TContainerIteratorBase::ProcessItems(TItemProcedure Proc) {
  for (TItem item = First(); item; item = Next()) Proc(item);
}

bool TContainerIteratorBase::Passes(TItem item) const {
  if (!item || !FSpatialFilterIsSet) return item != nullptr;
  TCoordRect area = FArea, rectangle = item->GetState_BoundingRectangle();
  TRectUtils::CorrectPoints(area);
  TRectUtils::CorrectPoints(rectangle);
  return TRectUtils::DoRectsIntersect(area, rectangle);
}

TItem TListContainerIterator::First() {
  if (!FOwnerContainer || FOwnerContainer->Count() == 0) return nullptr;
  FCurrentIndex = -1;
  return Next();
}

TItem TListContainerIterator::Next() {
  if (!FOwnerContainer) return nullptr;
  while (FCurrentIndex < FOwnerContainer->Count()) {
    if (TItem item = FOwnerContainer->At(++FCurrentIndex); Passes(item)) return item;
  }
  return nullptr;
}

}  // namespace Ketril::Tools
