// Arithmetic on the component grid, which is in units and need be no whole number.
//
// A result beyond 32 bits becomes 2147483647 when it is above that; one below them, and what is no number,
// becomes -2147483647.
#pragma once

#include "Interfaces/Types.h"

namespace Ketril::Tools {

// To the nearest whole number, a half to the even neighbour; towards zero.
TCoord SafeRound(double value);
TCoord SafeTrunc(double value);

// The multiple of the grid next to a coordinate towards zero.
TCoord GridCorrectDown(TCoord coordinate, double grid);
// A coordinate that is a multiple of the grid stays. Another one goes from the multiple next to it towards
// zero one step up, or as many as it takes not to be below it: 15 goes to 20 on a grid of 10, -15 to 0. On a
// grid that has no step up, such as 0, it stays.
TCoord GridCorrectUp(TCoord coordinate, double grid);
// The nearer of the two corrections, on a grid that is anchored at `origin`; the lower correction of two that
// are equally near.
TCoord SnapToGrid(TCoord position, TCoord origin, double grid);

}  // namespace Ketril::Tools
