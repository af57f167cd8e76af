// Growable lists of points, integers and doubles. No index is checked: callers keep theirs in range.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "Interfaces/Types.h"

namespace Ketril::Tools {

// Grows by half when it is full, to 16 the first time.
template <class T>
class TValueList {
 public:
  std::int32_t Count() const { return FCount; }
  std::int32_t Capacity() const { return static_cast<std::int32_t>(FList.size()); }
  T Get(std::int32_t Index) const { return FList[static_cast<std::size_t>(Index)]; }
  void Put(std::int32_t Index, T Item) { FList[static_cast<std::size_t>(Index)] = Item; }
  T First() const { return Get(0); }
  T Last() const { return Get(FCount - 1); }
  void Add(T Item) { Insert(FCount, Item); }
  void Insert(std::int32_t Index, T Item) {
    if (FCount == Capacity()) FList.resize(FList.empty() ? 16 : FList.size() + FList.size() / 2);
    std::copy_backward(At(Index), At(FCount), At(FCount + 1));
    ++FCount;
    Put(Index, Item);
  }
  void Delete(std::int32_t Index) {
    std::copy(At(Index + 1), At(FCount), At(Index));
    --FCount;
  }
  void Clear() {  // gives the storage back
    FList = {};
    FCount = 0;
  }

  auto begin() const { return FList.begin(); }
  auto end() const { return FList.begin() + FCount; }

 protected:
  auto At(std::int32_t Index) { return FList.begin() + Index; }

  std::vector<T> FList;  // as long as the capacity
  std::int32_t FCount = 0;
};

using TIntegerList = TValueList<std::int32_t>;
using TDoubleList = TValueList<double>;

class TPointList : public TValueList<TCoordPoint> {
 public:
  void Assign(const TPointList& Source) { *this = Source; }
  void Exchange(std::int32_t Index1, std::int32_t Index2) { std::swap(*At(Index1), *At(Index2)); }
  void Reverse() { std::reverse(At(0), At(FCount)); }
  // Item AnchorIndex becomes item 0, in cyclic order. The two do the same; they differ in how much each
  // copies.
  void RotateLeft(std::int32_t AnchorIndex) { std::rotate(At(0), At(AnchorIndex), At(FCount)); }
  void RotateRight(std::int32_t AnchorIndex) { RotateLeft(AnchorIndex); }
};

}  // namespace Ketril::Tools
