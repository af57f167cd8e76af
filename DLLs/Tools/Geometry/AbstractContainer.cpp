#include "DLLs/Tools/Geometry/AbstractContainer.h"

#include <memory>
#include <string>
#include <vector>

namespace Ketril::Tools {

namespace {

[[noreturn]] void Refuse(const char* method, const char* advice = "") {
  throw EMethodCallNotAllowedException(std::string("Container doesn't support [") + method + "] method" +
                                       advice + ".");
}

void Walk(TContainer& container, TItemProcedure proc) {
  const std::unique_ptr<TContainerIterator> iterator(container.CreateIterator());
  iterator->ProcessItems(proc);
}

}  // namespace

std::int32_t TContainerBase::Compare(TItem, TItem) {
  Refuse("Compare", " (Make sure this is a sorted container)");
}
std::int32_t TContainerBase::GetRebuilThreshold() const {
  Refuse("GetRebuilThreshold");
}
void TContainerBase::SetRebuilThreshold(std::int32_t) {
  Refuse("SetRebuilThreshold");
}
TItem TContainerBase::GetFirst() const {
  Refuse("GetFirst");
}
TItem TContainerBase::GetLast() const {
  Refuse("GetLast");
}
void TContainerBase::Insert(TItem) {
  Refuse("Insert");
}
void TContainerBase::Delete(TItem) {
  Refuse("Delete");
}
void TContainerBase::DeleteAll() {
  Refuse("DeleteAll");
}
TItem TContainerBase::At(std::int32_t) const {
  Refuse("At");
}
void TContainerBase::AtPut(std::int32_t, TItem) {
  Refuse("AtPut");
}
void TContainerBase::AtInsert(std::int32_t, TItem) {
  Refuse("AtInsert");
}
std::int32_t TContainerBase::IndexOf(TItem) const {
  Refuse("IndexOf");
}
std::int32_t TContainerBase::Count() const {
  Refuse("Count");
}
void TContainerBase::ProcessItems(TItemProcedure) {
  Refuse("ProcessItems");
}
void TContainerBase::ProcessItemsAllowAbort(TItemFunction) {
  Refuse("ProcessItemsAllowAbort");
}
void TContainerBase::Rebuild() {
  Refuse("Rebuild");
}
std::size_t TContainerBase::MemoryUsed() const {
  Refuse("MemoryUsed");
}
void TContainerBase::Pack() {
  Refuse("Pack");
}
void TContainerBase::FreeAll() {
  Refuse("FreeAll");
}
bool TContainerBase::Search(TItem, std::int32_t&) const {
  Refuse("Search");
}
void TContainerBase::AcceptDuplicates(bool) {
  Refuse("AcceptDuplicates");
}
TContainerIterator* TContainerBase::CreateIterator() {
  Refuse("CreateIterator");
}

void TContainerBase::CopyTo(TContainer* aContainer) {
  if (!aContainer) return;
  // All at once, because a container that is copied to itself grows under a walk.
  std::vector<TItem> items;
  Walk(*this, [&](TItem item) { items.push_back(item); });
  for (TItem item : items) aContainer->Insert(item);
}

void TContainerBase::Add(TContainer* aContainer) {
  if (!aContainer) return;
  Walk(*aContainer, [&](TItem item) {
    if (!Exists(item)) Insert(item);
  });
}

void TContainerBase::Subtract(TContainer* aContainer) {
  if (!aContainer) return;
  // A container that is taken from itself shrinks under the walk.
  const std::unique_ptr<TContainerIterator> iterator(aContainer->CreateIterator());
  for (TItem item = iterator->First(); item;
       item = aContainer == this ? iterator->First() : iterator->Next()) {
    if (Exists(item)) Delete(item);
  }
}

void TContainerBase::Intersect(TContainer* aContainer) {
  if (!aContainer) return;
  const std::unique_ptr<TContainerIterator> iterator(CreateIterator());
  for (TItem item = iterator->First(); item; item = iterator->Next()) {
    if (!aContainer->Exists(item)) iterator->Delete(item);
  }
}

}  // namespace Ketril::Tools
