// Which object of a board came from which place in the text that it was read from.
#pragma once

#include <cstdint>
#include <vector>

namespace Ketril::Editor {

class Primitive;

// Objects by the place of their expression in the text.
class SourceTable {
 public:
  SourceTable() = default;
  explicit SourceTable(const std::vector<Primitive*>& objects);
  // Null when the object is gone. What was found is known from then on.
  Primitive* Find(std::uint32_t begin);
  // Objects that were not found: those that the text does not have.
  std::vector<Primitive*> Missing() const;

 private:
  struct Entry {
    Primitive* object;
    bool found = false;
  };
  std::vector<Entry> entries_;
};

}  // namespace Ketril::Editor
