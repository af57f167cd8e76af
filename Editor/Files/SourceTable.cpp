#include "Editor/Files/SourceTable.h"

#include <algorithm>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

SourceTable::SourceTable(const std::vector<Primitive*>& objects) {
  entries_.reserve(objects.size());
  for (Primitive* object : objects) entries_.push_back({object});
  std::ranges::stable_sort(entries_, {}, [](const Entry& entry) { return entry.object->source.begin; });
}

Primitive* SourceTable::Find(std::uint32_t begin) {
  const auto entry =
      std::ranges::lower_bound(entries_, begin, {}, [](const Entry& e) { return e.object->source.begin; });
  if (entry == entries_.end() || entry->object->source.begin != begin || entry->object->source.IsEmpty()) {
    return nullptr;
  }
  entry->found = true;
  return entry->object;
}

std::vector<Primitive*> SourceTable::Missing() const {
  std::vector<Primitive*> missing;
  for (const Entry& entry : entries_) {
    if (!entry.found) missing.push_back(entry.object);
  }
  std::ranges::stable_sort(missing, {}, &Primitive::order);
  return missing;
}

}  // namespace Ketril::Editor
