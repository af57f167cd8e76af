// From doubles and wide integers to coordinates, for both halves of the geometry. What is beyond the range of
// a coordinate becomes the end of the range, what is no number becomes 0. Sums and differences of coordinates
// wrap, as 32-bit arithmetic does. `Round` takes a half to the even neighbour, `TGeomUtils::Nearest` away
// from zero; each operation says which it uses.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "Interfaces/Types.h"

namespace Ketril::Tools {

constexpr TCoord kLowestCoord = std::numeric_limits<TCoord>::min();
constexpr TCoord kHighestCoord = std::numeric_limits<TCoord>::max();

constexpr TCoord SaturateToCoord(std::int64_t value) {
  return static_cast<TCoord>(std::clamp(value, std::int64_t{kLowestCoord}, std::int64_t{kHighestCoord}));
}

// Of a whole number or an infinity.
constexpr TCoord SaturateToCoord(double whole) {
  if (whole != whole) return 0;
  return static_cast<TCoord>(std::clamp(whole, double{kLowestCoord}, double{kHighestCoord}));
}

// To the nearest whole number, a half to the even neighbour.
inline TCoord Round(double value) {
  return SaturateToCoord(std::nearbyint(value));
}

// The low 32 bits.
constexpr TCoord WrapToCoord(std::int64_t value) {
  return static_cast<TCoord>(static_cast<std::uint32_t>(value));
}

constexpr TCoord Sum(TCoord a, TCoord b) {
  return WrapToCoord(std::int64_t{a} + b);
}

constexpr TCoord Difference(TCoord a, TCoord b) {
  return WrapToCoord(std::int64_t{a} - b);
}

}  // namespace Ketril::Tools
