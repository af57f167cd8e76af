// `TListContainer`: an ordered list of pointers, and its walks.
#pragma once

#include <memory>
#include <vector>

#include "DLLs/Tools/Geometry/AbstractContainer.h"

namespace Ketril::Tools {

// Null entries and duplicates are allowed. Positions that are not there are null to read and nothing to
// write. A full list grows by a quarter from 65 entries on, by 16 from 9 on, else by 4.
//
// Compare, the rebuild operations, Search and AcceptDuplicates are refused, as by TContainerBase.
class TListContainer final : public TContainerBase {
 public:
  TListContainer() = default;
  ~TListContainer() override = default;

  void Insert(TItem P) override;  // at the end
  TItem At(std::int32_t i) const override;
  void AtPut(std::int32_t i, TItem P) override;
  void AtInsert(std::int32_t i, TItem P) override;  // before i; at the end for the count
  void Delete(TItem P) override;                    // the first entry equal to P
  void DeleteAll() override;
  std::int32_t Count() const override { return FCount; }
  std::int32_t IndexOf(TItem P) const override;  // -1 when it is not there
  TItem GetFirst() const override { return At(0); }
  TItem GetLast() const override { return At(FCount - 1); }
  void Pack() override;     // takes the null entries out
  void FreeAll() override;  // frees what the entries point to
  std::size_t MemoryUsed() const override;
  std::unique_ptr<TListContainer> Replicate() const;
  // Frees what is there; then `Size` null entries, for AtPut to fill. Raises as SetCapacity does.
  void SetStorageToFixedArray(std::int32_t Size);
  void ProcessItems(TItemProcedure Proc) override;
  void ProcessItemsAllowAbort(TItemFunction Func) override;
  TContainerIterator* CreateIterator() override;

  std::int32_t Capacity() const { return FCapacity; }
  // Raises EListError "List capacity out of bounds (%d)" for one below the count or of 134217728 and more.
  void SetCapacity(std::int32_t Value);
  // Cuts the list, or adds null entries. Raises EListError "List count out of bounds (%d)" below 0 and from
  // 134217728 on.
  void SetCount(std::int32_t Value);

 private:
  void GrowIfFull();
  void RemoveAt(std::int32_t i);

  std::vector<TItem> FList;  // as long as the capacity
  std::int32_t FCount = 0;
  std::int32_t FCapacity = 0;
};

// What all walks have. Deletions are carried out when the iterator is freed; a new owner drops them.
class TContainerIteratorBase : public TContainerIterator {
 public:
  explicit TContainerIteratorBase(TContainer* aContainer) : FOwnerContainer(aContainer) {}
  ~TContainerIteratorBase() override;
  void SetState_FilterArea(TCoord ax1, TCoord ay1, TCoord ax2, TCoord ay2) override;
  void Delete(TItem P) override { FDeletedItems.Insert(P); }
  void ChangeOwnerContainer(TContainer* NewOwner) override;
  void ProcessItems(TItemProcedure Proc) override;
  // The area as it is kept, within 999990000 to either side.
  TCoordRect FilterArea() const { return FArea; }

 protected:
  bool Passes(TItem item) const;

  TContainer* FOwnerContainer;
  TListContainer FDeletedItems;
  bool FSpatialFilterIsSet = false;

 private:
  static constexpr TCoordRect kEverywhere = {-1073741822, -1073741822, 1073741822, 1073741822};
  TCoordRect FArea = kEverywhere;
};

class TListContainerIterator final : public TContainerIteratorBase {
 public:
  using TContainerIteratorBase::TContainerIteratorBase;
  TItem First() override;
  TItem Next() override;

 private:
  std::int32_t FCurrentIndex = -1;
};

}  // namespace Ketril::Tools
