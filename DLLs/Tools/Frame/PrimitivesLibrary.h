// The wrapper of a footprint library and the list of its components.
#pragma once

#include "DLLs/Tools/Frame/HostLink.h"
#include "Interfaces/Groups.h"

namespace Ketril::Tools {

class TLibComponent;
class TPCBComponentLibrary;

// The components of a library in the host's order.
class TLibraryComponentList {
 public:
  explicit TLibraryComponentList(TPCBComponentLibrary* owner) : FOwner(owner) {}
  std::int32_t Count() const;
  // A new wrapper at each call, of the object scope; null when the host gives none.
  TLibComponent* At(std::int32_t index) const;

 private:
  TPCBComponentLibrary* FOwner;
};

// Belongs to the object scope that was open when it was made, else to its maker; deleting it early is
// allowed.
class TPCBComponentLibrary {
 public:
  explicit TPCBComponentLibrary(Ref<IPCB_Library> library);
  ~TPCBComponentLibrary();
  TPCBComponentLibrary(const TPCBComponentLibrary&) = delete;
  TPCBComponentLibrary& operator=(const TPCBComponentLibrary&) = delete;

  // Raises Exception when the library does not offer the interface.
  Ref<IPCB_Library2> IPCBCompLib() const;
  // A new wrapper at each read, of the object scope; null when the host has none.
  TLibComponent* CurrentComponent() const;
  TLibraryComponentList* ComponentList() { return &FComponentList; }

 private:
  Ref<IPCB_Library> FLibrary;
  TLibraryComponentList FComponentList{this};
};

}  // namespace Ketril::Tools
