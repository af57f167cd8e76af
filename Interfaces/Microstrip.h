// The settings of the microstrip tool, as they cross the boundary.
#pragma once

#include <cstddef>

namespace Ketril {

// Fractions, from 0 to below 1.
struct TMicrostripeSettings {
  double InsideMiter = 0;   // how far the inner chamfer of a bend reaches along either track, in track widths
  double OutsideMiter = 0;  // the share of the bend's diagonal that is cut off at the outer corner
};
static_assert(sizeof(TMicrostripeSettings) == 16);
static_assert(offsetof(TMicrostripeSettings, OutsideMiter) == 8);

}  // namespace Ketril
