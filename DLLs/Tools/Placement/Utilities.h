// What the placement tools share: asking the user for a place, finding what is there, moving it.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/EditBracket.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "Interfaces/Board.h"

namespace Ketril::Tools {

// The user picks a place, or two corners of which the low one is given first, on the board that the editor
// shows. False when he cancels, and when the editor has no such pick; the coordinates then stay.
bool ChooseLocation(const std::u16string& prompt, TCoord& x, TCoord& y);
bool ChooseRectangleByCorners(const std::u16string& first_prompt, const std::u16string& second_prompt,
                              TCoordRect& rectangle);

// The layers that components stand on.
constexpr TLayerPartitionSet kComponentLayers{eV7_TopLayer, eV7_BottomLayer};
static_assert(kComponentLayers.Bits() == 10);

// What a pick is meant for: all layers that objects stand on.
constexpr TLayerPartitionSet kHitLayers(131070);
// The object at a place, where a component stands for its members; empty when there is none. Raises
// EHostError, and EEmptyReference without a view.
Ref<IPCB_Primitive> HitTest(const Ref<IPCBGraphicalViewInterface>& view, TCoordPoint point,
                            TObjectSet objects);

// The board that an object is on, in a wrapper of the object's own.
TBoard* BoardOf(TPrimitive* primitive);

// Draws the place of an object anew.
void Invalidate(TPrimitive* primitive);

// Erases an object, begins its edit, runs `move`, ends the edit, draws the object and marks the document as
// changed, also when `move` raises: what it did until then stays.
template <class Move>
void MoveInBracket(TPrimitive* primitive, Move&& move) {
  Invalidate(primitive);
  EditInBracket(primitive, move, [&] {
    Invalidate(primitive);
    BoardOf(primitive)->SetState_DocumentHasChanged();
  });
}

// The clearance to keep from an object whatever is beside it: of a component the largest horizontal gap of
// the enabled component clearance rules, of another object the largest gap of the enabled clearance rules,
// whatever their scopes; 0 without such a rule and for null.
TCoord GetClearance(TPrimitive* primitive);

}  // namespace Ketril::Tools
