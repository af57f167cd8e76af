#include "DLLs/Tools/Frame/PrimitivesLibrary.h"

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"

namespace Ketril::Tools {

namespace {

TLibComponent* Wrap(const Ref<IPCB_LibComponent>& component) {
  return component ? TLibComponent::Create(component) : nullptr;
}

}  // namespace

std::int32_t TLibraryComponentList::Count() const {
  return On(FOwner->IPCBCompLib()).Read(&IPCB_Library2::GetState_ComponentCount);
}

TLibComponent* TLibraryComponentList::At(std::int32_t index) const {
  return Wrap(On(FOwner->IPCBCompLib()).Read(&IPCB_Library2::GetState_ComponentAt, index));
}

TPCBComponentLibrary::TPCBComponentLibrary(Ref<IPCB_Library> library) : FLibrary(std::move(library)) {
  RecordIn(LibraryRegistry, this);
}

TPCBComponentLibrary::~TPCBComponentLibrary() {
  ForgetIn(LibraryRegistry, this);
}

Ref<IPCB_Library2> TPCBComponentLibrary::IPCBCompLib() const {
  Ref<IPCB_Library2> library = Probe<IPCB_Library2>(FLibrary);
  if (!library) throw Exception("IPCB_Library2 is not supported");
  return library;
}

TLibComponent* TPCBComponentLibrary::CurrentComponent() const {
  return Wrap(On(IPCBCompLib()).Read(&IPCB_Library2::GetState_CurrentComponent));
}

}  // namespace Ketril::Tools
