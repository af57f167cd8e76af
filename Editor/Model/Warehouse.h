// The list of a board's objects, by kind and in the order in which they came.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

// Each kind has a list of its own, so that a walk of one kind touches no other. An object that comes gets the
// next number, `Primitive::order`; lists ascend by it. Removal leaves a gap at once; when the gaps make up
// half of a list they are closed, and walks in progress find their places again by number.
//
// The warehouse holds a reference to each object, and keeps its `slot` and `order`.
class Warehouse {
  struct Shelf {
    std::vector<Ref<Primitive>> objects;  // empty where an object left
    std::size_t gaps = 0;
  };

 public:
  Warehouse() = default;
  Warehouse(const Warehouse&) = delete;
  Warehouse& operator=(const Warehouse&) = delete;

  // Of an object that is not there.
  void Add(Primitive* primitive);
  // Does nothing with an object that is not there.
  void Remove(Primitive* primitive);
  // Gives objects that left the places that their `order` tells. Linear in the lists of their kinds.
  void PutBack(const std::vector<Ref<Primitive>>& objects);

  std::size_t Count(TObjectId kind) const;
  std::size_t Count() const;

  // Gives the objects of some kinds, oldest first: those that were there when it was made and still are. An
  // object that left and came back is a new one. Must not outlive the warehouse.
  class Walk {
   public:
    Walk() = default;  // of nothing
    Walk(const Warehouse& warehouse, TObjectSet kinds);
    Primitive* Next();  // null at the end

   private:
    // Where the walk stands in one list: at the object that had the number `order`.
    struct Head {
      TObjectId kind;
      std::uint32_t slot;
      std::uint64_t order;
    };
    bool Seek(Head& head, std::uint64_t order) const;
    void FindPlacesAgain();

    const Warehouse* warehouse_ = nullptr;
    std::uint64_t end_ = 0;       // numbers from here on came later
    std::uint64_t closings_ = 0;  // of the warehouse, when the slots were right
    std::vector<Head> heads_;     // descending by order: the next object is at the last one
  };

  // Calls `visit(Primitive&)` for each object of the kinds, as a Walk gives them.
  template <class Visit>
  void ForEach(TObjectSet kinds, Visit&& visit) const {
    for (Walk walk(*this, kinds); Primitive* primitive = walk.Next();) visit(*primitive);
  }

 private:
  void CloseGaps(Shelf& shelf);

  std::array<Shelf, kObjectIdCount> shelves_;
  std::uint64_t next_order_ = 1;
  std::uint64_t closings_ = 0;  // how often slots moved
};

}  // namespace Ketril::Editor
