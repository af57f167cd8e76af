// Entries of loaded modules, found by module and name: how the tools find the editor's functions.
#pragma once

#include <string_view>

namespace Ketril::Platform {

// Makes `entry` known under a module and a name; null takes it away. Names compare exactly.
void RegisterModuleEntry(std::string_view module, std::string_view name, void* entry);

// Null when there is no such entry.
void* FindModuleEntry(std::string_view module, std::string_view name);

// The same as a pointer of the type that the entry is known to have.
template <class Entry>
Entry FindModuleEntry(std::string_view module, std::string_view name) {
  return reinterpret_cast<Entry>(FindModuleEntry(module, name));
}

}  // namespace Ketril::Platform
