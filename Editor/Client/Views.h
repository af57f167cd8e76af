// The window on a board, as far as an editor without a screen has one: it notes what a tool wants redrawn.
#pragma once

#include <cstdint>
#include <optional>

#include "Editor/HostObject.h"
#include "Interfaces/Board.h"

namespace Ketril::Editor {

class Board;

class View final : public HostObject<IPCBGraphicalViewInterface> {
 public:
  explicit View(Board* board = nullptr) : board_(board) {}
  void LoseBoard() { board_ = nullptr; }

  Status GetState_ViewName(std::u16string& value) noexcept override;
  Status GetState_OwnerDocument(Ref<IServerDocument>& value) noexcept override;
  Status UpdateWindows() noexcept override;
  Status SetCurrentMode(TDisplay mode) noexcept override;
  Status HitTest(TCoordPoint point, TObjectSet objects, IPCB_LayerSet* layers, TIterationMethod method,
                 IPCB_HitFilter* filter, bool only_selected,
                 Ref<IPCB_Primitive>& primitive) noexcept override;

  // An ordered area is to be drawn again.
  void Invalidate(const TCoordRect& area);
  void Update() { ++updates_; }
  void SetMode(TDisplay mode) { mode_ = mode; }
  // The box around all that was invalidated since the last call; empty when nothing was.
  std::optional<TCoordRect> TakeDamage();

  std::int64_t Invalidations() const { return invalidations_; }
  std::int64_t Updates() const { return updates_; }
  TDisplay Mode() const { return mode_; }

 private:
  Board* board_;
  std::optional<TCoordRect> damage_;
  std::int64_t invalidations_ = 0;
  std::int64_t updates_ = 0;
  TDisplay mode_ = eOverWrite;
};

class ViewState final : public HostObject<IPCBGraphicalViewStateInterface> {
 public:
  Status GetState_CurrentLayer(TV7_Layer& value) noexcept override;
  Status SetState_CurrentLayer(TV7_Layer value) noexcept override;

 private:
  TV7_Layer current_layer_ = eV6_TopLayer;
};

}  // namespace Ketril::Editor
