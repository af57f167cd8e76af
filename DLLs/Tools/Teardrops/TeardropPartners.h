// What both builders of teardrops do to find out where a teardrop may go, and which old ones are there: where
// a track leaves a wider one, a via or such a place as a pad, the teardrops between two objects.
//
// The builders differ in what they make of it. TTeardropBuilder asks for one logical net and queues what is
// to go; TTearDroper asks for one net and takes it off at once.
#pragma once

#include <vector>

#include "DLLs/Tools/Frame/FunctionRef.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesStack.h"
#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"
#include "DLLs/Tools/Teardrops/TeardropTouch.h"

namespace Ketril::Tools {

// Each raises EHostError when the host fails.

bool IsTrackOrArc(const TPrimitive* P);

// Where a narrower track or arc T leaves the wider track P: 0 to 2 places. None for any other P.
std::vector<GeoPointType> FindCrossings(const TPrimitive* P, const TPrimitive* T);

// The via's copper on one layer, as a pad that knows the board and is not on it.
TTemporary<TPad> MakeViaPad(const TVia* via, TV7_Layer layer, TBoard* board);
// A circle within copper from which a narrower track leaves, likewise.
TTemporary<TPad> MakeVirtualPad(GeoPointType point, TCoord width, TV7_Layer layer, TBoard* board);

// Calls `visit(list, index)` with each teardrop between the two objects: it touches both, ends on one of
// them, and runs along the other. That is the narrower of two tracks or arcs, P when they are of one width,
// or the only one. The last found comes first. `visit` may take the entry out of the list, or the teardrop
// off the board.
void ForEachDropBetween(TPrimitive* P, TPrimitive* T, FunctionRef<void(TTouchList&, std::int32_t)> visit);

}  // namespace Ketril::Tools
