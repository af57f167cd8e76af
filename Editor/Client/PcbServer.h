// The server "PCB": new objects for the tools.
#pragma once

#include "Editor/HostObject.h"
#include "Interfaces/Client.h"

namespace Ketril::Editor {

class PcbServer final : public HostObject<IPCB_ServerInterface> {
 public:
  Status PCBObjectFactory(TObjectId kind, std::int32_t reserved1, std::int32_t reserved2,
                          Ref<IPCB_Primitive>& primitive) noexcept override;
  // Always empty: the layer sets of the tools are the library's own.
  Status GetState_LayerSetUtils(Ref<IPCB_LayerSetUtils>& value) noexcept override;
};

}  // namespace Ketril::Editor
