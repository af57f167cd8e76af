#include "Editor/Vias/ViaOptions.h"

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

template <class Interface, class Values>
Ref<IPCB_Board> ViaOptions<Interface, Values>::OwnerBoard() const {
  return owner_->board;
}

template class ViaOptions<IPCB_ViaStitchFloodOptions, StitchSettings>;
template class ViaOptions<IPCB_ViaShieldingOptions, ShieldSettings>;

Status ShieldOptions::SetOptionsNet(IPCB_Net* net) noexcept {
  return HostCall("IPCB_ViaShieldingOptions.SetOptionsNet", [&] {
    Net* const own = As<Net>(FromInterface(net));
    if (net && !own) return Status::InvalidArgument;
    settings.net = own;
    return Status::Ok;
  });
}

Status ShieldOptions::GetPrimitive(std::int32_t index, Ref<IPCB_Primitive>& primitive) noexcept {
  return HostCall("IPCB_ViaShieldingOptions.GetPrimitive", [&] {
    const auto at = static_cast<std::size_t>(index);
    const bool is_there = index >= 0 && at < settings.primitives.size();
    primitive = is_there ? settings.primitives[at]->AsInterface() : nullptr;
  });
}

Status ShieldOptions::AddPrimitive(IPCB_Primitive* primitive) noexcept {
  return HostCall("IPCB_ViaShieldingOptions.AddPrimitive", [&] {
    Primitive* const own = FromInterface(primitive);
    if (!own) return Status::InvalidArgument;
    settings.primitives.emplace_back(own);
    return Status::Ok;
  });
}

}  // namespace Ketril::Editor
