// The library's containers of pointers: what any of them can do, and the refusal of what a kind of container
// cannot.
#pragma once

#include <cstdint>

#include "DLLs/Tools/Frame/ContainedObject.h"
#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Frame/FunctionRef.h"

namespace Ketril::Tools {

class EMethodCallNotAllowedException : public Exception {
 public:
  using Exception::Exception;
};

// Entries are plain pointers, which may be null and are not owned: only FreeAll frees them. Pointers that are
// kept as keys only are never followed.
using TItem = TContainedObject*;

// A plain procedure, a function object or a lambda.
using TItemProcedure = FunctionRef<void(TItem)>;
using TItemFunction = FunctionRef<bool(TItem)>;  // true to stop

class TContainer;
using TContainerSortCompare = FunctionRef<std::int32_t(TItem, TItem)>;
enum TContainerKind : std::uint8_t { eContainerKind_None };

// A walk over a container. It belongs to who made it.
class TContainerIterator {
 public:
  TContainerIterator() = default;
  TContainerIterator(const TContainerIterator&) = delete;
  TContainerIterator& operator=(const TContainerIterator&) = delete;
  virtual ~TContainerIterator() = default;

  virtual TItem First() = 0;  // null at the end, here and in Next
  virtual TItem Next() = 0;
  virtual void ProcessItems(TItemProcedure Proc) = 0;
  // Limits the walk to entries whose bounding rectangle overlaps the area or touches it.
  virtual void SetState_FilterArea(TCoord ax1, TCoord ay1, TCoord ax2, TCoord ay2) = 0;
  // The entry leaves the container when the iterator is freed.
  virtual void Delete(TItem P) = 0;
  virtual void ChangeOwnerContainer(TContainer* NewOwner) = 0;
};

class TContainer : public TAbstractObject {
 public:
  virtual std::int32_t Compare(TItem A, TItem B) = 0;
  virtual std::int32_t GetRebuilThreshold() const = 0;
  virtual void SetRebuilThreshold(std::int32_t Value) = 0;
  virtual TContainerKind ContainerKind() const = 0;
  virtual TItem GetFirst() const = 0;
  virtual TItem GetLast() const = 0;
  virtual TContainerSortCompare OnCompare() const { return FOnCompare; }
  virtual void SetOnCompare(TContainerSortCompare Value) { FOnCompare = Value; }
  virtual void Insert(TItem P) = 0;
  virtual void Delete(TItem P) = 0;
  virtual void DeleteAll() = 0;
  virtual TItem At(std::int32_t i) const = 0;
  virtual void AtPut(std::int32_t i, TItem P) = 0;
  virtual void AtInsert(std::int32_t i, TItem P) = 0;
  virtual std::int32_t IndexOf(TItem P) const = 0;
  virtual std::int32_t Count() const = 0;
  virtual void ProcessItems(TItemProcedure Proc) = 0;
  virtual void ProcessItemsAllowAbort(TItemFunction Func) = 0;
  virtual void Rebuild() = 0;
  virtual bool RequiresRebuild() const = 0;
  virtual std::size_t MemoryUsed() const = 0;
  virtual void Pack() = 0;
  virtual void FreeAll() = 0;
  virtual TItem KeyOf(TItem Item) const = 0;
  virtual bool Search(TItem Key, std::int32_t& Index) const = 0;
  virtual void AcceptDuplicates(bool B) = 0;
  virtual bool Exists(TItem Item) const = 0;
  virtual void CopyTo(TContainer* aContainer) = 0;
  virtual void Add(TContainer* aContainer) = 0;
  virtual void Subtract(TContainer* aContainer) = 0;
  virtual void Intersect(TContainer* aContainer) = 0;
  virtual TContainerIterator* CreateIterator() = 0;

 protected:
  TContainerSortCompare FOnCompare;
};

// Refuses, with EMethodCallNotAllowedException "Container doesn't support [At] method.", what a kind of
// container does not override. The operations on two containers stand on the others; null is nothing to them,
// and so are null entries.
class TContainerBase : public TContainer {
 public:
  std::int32_t Compare(TItem A, TItem B) override;
  std::int32_t GetRebuilThreshold() const override;
  void SetRebuilThreshold(std::int32_t Value) override;
  TContainerKind ContainerKind() const override { return FContainerKind; }
  TItem GetFirst() const override;
  TItem GetLast() const override;
  void Insert(TItem P) override;
  void Delete(TItem P) override;
  void DeleteAll() override;
  TItem At(std::int32_t i) const override;
  void AtPut(std::int32_t i, TItem P) override;
  void AtInsert(std::int32_t i, TItem P) override;
  std::int32_t IndexOf(TItem P) const override;
  std::int32_t Count() const override;
  void ProcessItems(TItemProcedure Proc) override;
  void ProcessItemsAllowAbort(TItemFunction Func) override;
  void Rebuild() override;
  bool RequiresRebuild() const override { return false; }
  std::size_t MemoryUsed() const override;
  void Pack() override;
  void FreeAll() override;
  TItem KeyOf(TItem Item) const override { return Item; }
  bool Search(TItem Key, std::int32_t& Index) const override;
  void AcceptDuplicates(bool B) override;
  bool Exists(TItem Item) const override { return IndexOf(Item) > -1; }
  // Inserts each entry into the other container.
  void CopyTo(TContainer* aContainer) override;
  // Take over, take away, and keep only what the other one has.
  void Add(TContainer* aContainer) override;
  void Subtract(TContainer* aContainer) override;
  void Intersect(TContainer* aContainer) override;
  TContainerIterator* CreateIterator() override;

 protected:
  TContainerKind FContainerKind = eContainerKind_None;
};

}  // namespace Ketril::Tools
