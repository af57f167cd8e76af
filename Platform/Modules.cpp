#include "Platform/Modules.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace Ketril::Platform {

namespace {

using EntryKey = std::pair<std::string, std::string>;

struct EntryTable {
  std::mutex lock;
  std::map<EntryKey, void*> entries;
};

EntryTable& Table() {
  static EntryTable table;
  return table;
}

}  // namespace

void RegisterModuleEntry(std::string_view module, std::string_view name, void* entry) {
  EntryKey key(module, name);
  const std::lock_guard guard(Table().lock);
  if (entry) {
    Table().entries.insert_or_assign(std::move(key), entry);
  } else {
    Table().entries.erase(key);
  }
}

void* FindModuleEntry(std::string_view module, std::string_view name) {
  const EntryKey key(module, name);
  const std::lock_guard guard(Table().lock);
  const auto it = Table().entries.find(key);
  return it == Table().entries.end() ? nullptr : it->second;
}

}  // namespace Ketril::Platform
