// The server "PCB": new objects for the tools.
#pragma once

#include <functional>

#include "Editor/HostObject.h"
#include "Interfaces/Client.h"

namespace Ketril::Editor {

// Lets the user change the options; false when he cancels.
using TeardropDialog = std::function<bool(TTeardropOptionsEx& options)>;

class PcbServer final : public HostObject<IPCB_ServerInterface> {
 public:
  // Without a dialog every question counts as cancelled.
  explicit PcbServer(TeardropDialog teardrop_dialog = {}) : teardrop_dialog_(std::move(teardrop_dialog)) {}
  Status PCBObjectFactory(TObjectId kind, std::int32_t reserved1, std::int32_t reserved2,
                          Ref<IPCB_Primitive>& primitive) noexcept override;
  // Always empty: the layer sets of the tools are the library's own.
  Status GetState_LayerSetUtils(Ref<IPCB_LayerSetUtils>& value) noexcept override;
  Status CreateGeometricPolygon(Ref<IPCB_GeometricPolygon>& area) noexcept override;
  Status CreateContourMaker(Ref<IPCB_ContourMaker>& maker) noexcept override;
  Status EditTeardropOptions(TTeardropOptionsEx& options, bool& accepted) noexcept override;

 private:
  const TeardropDialog teardrop_dialog_;
};

}  // namespace Ketril::Editor
