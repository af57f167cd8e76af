// Where the pads of a component are.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesGroups.h"

namespace Ketril::Tools {

// The middle of the box around the places of the pads, in units, towards 0: what a pick-and-place file calls
// Mid, to whoever writes it and to whoever reads it. (0, 0) without pads.
TCoordPoint MiddleOfPads(TComp* component);

}  // namespace Ketril::Tools
