// Pads into vias and vias into pads: the new object takes the place, the net and the hole of the old one and
// is selected, the old one leaves the board.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesStack.h"

namespace Ketril::Tools {

class TBoard;

// The tools: all free pads of the board, all its vias. Objects that are not selected stay. What was replaced
// before a failing host call stays replaced.
void ReplaceSelectedPadsWithVias(TBoard* board);
void ReplaceSelectedViasWithPads(TBoard* board);

// The steps for one object, which is left alone unless it is selected; a pad also unless it goes through all
// layers. Raise EInvalidCast when it is no pad, no via.
void ReplacePadByVia(TPrimitive* P);
void ReplaceViaByPad(TPrimitive* V);

// The diameter of a via that covers the pad on the layer; 0 on a layer that carries no signals.
TCoord PadStackSizeForVia(const TPad* P, TV7_Layer L);

// The diameter of a round that covers a shape with sides `x` and `y`, in units: the larger side of a round
// shape, the diagonal of a rectangle, rounded corners or not; of an octagon the diagonal less what it loses
// with the corners, measured on a regular octagon as wide as the smaller side. Rounded to nearest, ties to
// even; the largest coordinate where that is not enough. 0 for a side that is not above 0 and for any other
// shape.
TCoord CoveringDiameter(TShape shape, TCoord x, TCoord y);

}  // namespace Ketril::Tools
