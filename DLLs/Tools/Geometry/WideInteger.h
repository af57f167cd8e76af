// The integer half: exact products of differences of coordinates. A difference has 33 bits, a product of two
// 66, so a determinant needs more than 64.
#pragma once

#include <cstdint>

#include "Interfaces/Types.h"

namespace Ketril::Tools {

__extension__ typedef __int128 TWide;

// The way from one coordinate point to another.
struct TCoordDelta {
  std::int64_t x = 0;
  std::int64_t y = 0;
  constexpr TCoordDelta operator-() const { return {-x, -y}; }
};

constexpr TCoordDelta Delta(TCoordPoint from, TCoordPoint to) {
  return {std::int64_t{to.x} - from.x, std::int64_t{to.y} - from.y};
}

constexpr TWide ExactCross(TCoordDelta v, TCoordDelta w) {
  return TWide{v.x} * w.y - TWide{v.y} * w.x;
}

constexpr TWide ExactDot(TCoordDelta v, TCoordDelta w) {
  return TWide{v.x} * w.x + TWide{v.y} * w.y;
}

constexpr int SignOf(TWide value) {
  return value > 0 ? 1 : value < 0 ? -1 : 0;
}

}  // namespace Ketril::Tools
