#include "Editor/Client/PcbServer.h"

#include "Editor/HostCall.h"
#include "Editor/Model/ObjectFactory.h"

namespace Ketril::Editor {

Status PcbServer::PCBObjectFactory(TObjectId kind, std::int32_t, std::int32_t,
                                   Ref<IPCB_Primitive>& primitive) noexcept {
  return HostCall("IPCB_ServerInterface.PCBObjectFactory", [&] {
    const Ref<Primitive> object = MakeObject(kind);
    primitive = object ? object->AsInterface() : nullptr;
  });
}

Status PcbServer::GetState_LayerSetUtils(Ref<IPCB_LayerSetUtils>& value) noexcept {
  return HostCall("IPCB_ServerInterface.GetState_LayerSetUtils", [&] { value = nullptr; });
}

}  // namespace Ketril::Editor
