// The list of a board's objects, by kind and in the order in which they came.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

// Removal leaves a gap, so that a walk in progress keeps its place; gaps are closed when no walk is.
class Warehouse {
 public:
  void Add(Primitive* primitive);
  void Remove(Primitive* primitive);
  std::size_t Count(TObjectId kind) const;
  std::size_t Count() const;

  // Calls `visit(Primitive&)` for each object of the kinds, oldest first; sees what is there at the start.
  template <class Visit>
  void ForEach(TObjectSet kinds, Visit&& visit);

  std::int64_t LiveIterators() const;
};

}  // namespace Ketril::Editor
