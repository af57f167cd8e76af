#include "Editor/Client/Views.h"

#include <algorithm>
#include <utility>

#include "Editor/Client/Workspace.h"
#include "Editor/HostCall.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/HitTest.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

Status View::GetState_ViewName(std::u16string& value) noexcept {
  return HostCall("IServerDocumentView.GetState_ViewName", [&] { value = u"PCB"; });
}

Status View::GetState_OwnerDocument(Ref<IServerDocument>& value) noexcept {
  return HostCall("IServerDocumentView.GetState_OwnerDocument", [&] {
    const bool has_file = board_ && !board_->file.path.empty();
    value = has_file ? Ref<IServerDocument>(
                           MakeHost<ServerDocument>(Platform::ToUtf16(board_->file.path), u"PCB", this))
                     : nullptr;
  });
}

Status View::UpdateWindows() noexcept {
  return HostCall("IPCBGraphicalViewInterface.UpdateWindows", [&] { Update(); });
}

Status View::SetCurrentMode(TDisplay mode) noexcept {
  return HostCall("IPCBGraphicalViewInterface.SetCurrentMode", [&] { SetMode(mode); });
}

Status View::HitTest(TCoordPoint point, TObjectSet objects, IPCB_LayerSet* layers, TIterationMethod method,
                     IPCB_HitFilter* filter, bool only_selected, Ref<IPCB_Primitive>& primitive) noexcept {
  return HostCall("IPCBGraphicalViewInterface.HitTest", [&] {
    HitOptions options{objects, LayerFilter(layers), method, filter, only_selected};
    Primitive* const hit = board_ ? HitObject(*board_, point, options) : nullptr;
    primitive = hit ? hit->AsInterface() : nullptr;
  });
}

void View::Invalidate(const TCoordRect& area) {
  ++invalidations_;
  if (!damage_) damage_ = area;
  damage_ = TCoordRect{std::min(damage_->x1, area.x1), std::min(damage_->y1, area.y1),
                       std::max(damage_->x2, area.x2), std::max(damage_->y2, area.y2)};
}

std::optional<TCoordRect> View::TakeDamage() {
  return std::exchange(damage_, std::nullopt);
}

Status ViewState::GetState_CurrentLayer(TV7_Layer& value) noexcept {
  return HostCall("IPCBGraphicalViewStateInterface.GetState_CurrentLayer", [&] { value = current_layer_; });
}

Status ViewState::SetState_CurrentLayer(TV7_Layer value) noexcept {
  return HostCall("IPCBGraphicalViewStateInterface.SetState_CurrentLayer", [&] { current_layer_ = value; });
}

}  // namespace Ketril::Editor
