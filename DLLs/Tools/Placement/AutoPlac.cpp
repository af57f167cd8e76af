#include "DLLs/Tools/Placement/AutoPlac.h"

#include <cmath>
#include <cstdlib>

#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

constexpr double kHighest = 2147483647.0;

TCoord SafeWhole(double whole) {
  if (whole >= double{kLowestCoord} && whole <= kHighest) return static_cast<TCoord>(whole);
  return whole > kHighest ? kHighestCoord : -kHighestCoord;
}

}  // namespace

TCoord SafeRound(double value) {
  return SafeWhole(std::nearbyint(value));
}

TCoord SafeTrunc(double value) {
  return SafeWhole(std::trunc(value));
}

TCoord GridCorrectDown(TCoord coordinate, double grid) {
  return SafeRound(SafeTrunc(coordinate / grid) * grid);
}

TCoord GridCorrectUp(TCoord coordinate, double grid) {
  TCoord corrected = GridCorrectDown(coordinate, grid);
  if (corrected == coordinate) return coordinate;
  do {
    const TCoord above = SafeRound(corrected + grid);
    if (above <= corrected) return coordinate;
    corrected = above;
  } while (corrected < coordinate);
  return corrected;
}

TCoord SnapToGrid(TCoord position, TCoord origin, double grid) {
  const TCoord relative = WrapToCoord(std::int64_t{position} - origin);
  const TCoord up = GridCorrectUp(relative, grid), down = GridCorrectDown(relative, grid);
  const bool up_is_nearer = std::abs(std::int64_t{up} - relative) < std::abs(std::int64_t{down} - relative);
  return WrapToCoord(std::int64_t{up_is_nearer ? up : down} + origin);
}

}  // namespace Ketril::Tools
