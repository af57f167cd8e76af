// How the user points at objects of a board.
#pragma once

#include "Interfaces/Layers.h"
#include "Interfaces/Primitives.h"

namespace Ketril {

// Offered beside its own chain by a board that the user can point at. A component stands for what belongs to
// it, where components are asked for.
class IPCB_BoardPicks : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_BoardPicks"};
  // The user picks a place. When he cancels `chosen` is false, and the place untouched.
  virtual Status ChooseLocation(const std::u16string& prompt, TCoordPoint& place, bool& chosen) noexcept = 0;
  // The object of these kinds under the cursor, of several the smallest; empty when there is none.
  virtual Status GetState_ObjectAtCursor(TObjectSet objects, Ref<IPCB_Primitive>& primitive) noexcept = 0;
  // The object of these kinds at a place; `layers` may be empty: all. Of several the user chooses one. Empty
  // when there is none, and when he chooses none.
  virtual Status ChooseObjectAt(TCoordPoint place, TObjectSet objects, IPCB_LayerSet* layers,
                                Ref<IPCB_Primitive>& primitive) noexcept = 0;
};

}  // namespace Ketril
