// What `ketril shove --all` picks: components that overlap others of their side, one after the other.
#pragma once

#include <optional>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Command {

// Each call gives a place on a component that still overlaps another by its box, in the board's order, and
// starts again from the first while the last round left fewer overlaps than there were. A pair of locked
// components does not count. Nothing when none is left, or a round did not help. The board outlives it.
class OverlapPicks {
 public:
  explicit OverlapPicks(Editor::Board& board) : board_(&board) {}
  std::optional<TCoordPoint> operator()();

 private:
  std::size_t OverlapsOf(const Editor::Primitive& component) const;
  void StartRound();
  // The middle of its box or a corner, where that is on no other component.
  TCoordPoint PlaceOn(const Editor::Primitive& component) const;

  Editor::Board* board_;
  std::vector<Ref<Editor::Primitive>> round_;
  std::size_t next_ = 0;
  std::optional<std::size_t> overlaps_;  // at the begin of the round
};

}  // namespace Ketril::Command
