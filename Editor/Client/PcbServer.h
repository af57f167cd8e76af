// The server "PCB": new objects for the tools.
#pragma once

#include <functional>

#include "Editor/HostObject.h"
#include "Editor/Model/HostProperty.h"
#include "Interfaces/Client.h"

namespace Ketril::Editor {

// Lets the user change the options; false when he cancels.
using TeardropDialog = std::function<bool(TTeardropOptionsEx& options)>;
using LegacyTeardropDialog = std::function<bool(TTearDropOptions& options)>;

class SystemOptions final : public HostObject<IPCB_SystemOptions> {
 public:
  static constexpr std::int32_t kShovePasses = 10;
  explicit SystemOptions(std::int32_t shove_passes) : shove_passes_(shove_passes) {}
  KETRIL_HOST_READ(IPCB_SystemOptions, std::int32_t, ShovePassLimit, shove_passes_)

 private:
  const std::int32_t shove_passes_;
};

class PcbServer final : public HostObject<IPCB_ServerInterface> {
 public:
  // Without a dialog every question counts as cancelled.
  explicit PcbServer(TeardropDialog teardrop_dialog = {},
                     std::int32_t shove_passes = SystemOptions::kShovePasses,
                     LegacyTeardropDialog legacy_dialog = {})
      : teardrop_dialog_(std::move(teardrop_dialog)),
        legacy_dialog_(std::move(legacy_dialog)),
        options_(MakeHost<SystemOptions>(shove_passes)) {}
  Status PCBObjectFactory(TObjectId kind, std::int32_t reserved1, std::int32_t reserved2,
                          Ref<IPCB_Primitive>& primitive) noexcept override;
  // Always empty: the layer sets of the tools are the library's own.
  Status GetState_LayerSetUtils(Ref<IPCB_LayerSetUtils>& value) noexcept override;
  Status CreateGeometricPolygon(Ref<IPCB_GeometricPolygon>& area) noexcept override;
  Status CreateContourMaker(Ref<IPCB_ContourMaker>& maker) noexcept override;
  Status EditTeardropOptions(TTeardropOptionsEx& options, bool& accepted) noexcept override;
  Status EditLegacyTeardropOptions(TTearDropOptions& options, bool& accepted) noexcept override;
  KETRIL_HOST_READ(IPCB_ServerInterface, Ref<IPCB_SystemOptions>, SystemOptions, options_)

 private:
  const TeardropDialog teardrop_dialog_;
  const LegacyTeardropDialog legacy_dialog_;
  const Ref<IPCB_SystemOptions> options_;
};

}  // namespace Ketril::Editor
