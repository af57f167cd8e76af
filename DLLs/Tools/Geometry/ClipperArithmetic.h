// Numbers of the polygon clipper. Points lie on a grid: both coordinates are whole numbers of magnitude up to
// 2^50, held in doubles, so that differences are exact and the sign of a cross product can be had exactly: a
// rounded product decides when it is clear of its error (J. R. Shewchuk, "Adaptive Precision Floating-Point
// Arithmetic and Fast Robust Geometric Predicates", 1997), a 128-bit integer otherwise.
#pragma once

#include <cmath>
#include <cstdint>

#include "DLLs/Tools/Geometry/WideInteger.h"

namespace Ketril::Tools {

struct TClipPoint {
  double x = 0;
  double y = 0;
  bool operator==(const TClipPoint&) const = default;
};

// The order in which the sweep meets points: from the bottom up, on one level from left to right. A
// horizontal edge therefore has a lower end, the left one, like any other.
inline bool IsSweptBefore(TClipPoint p, TClipPoint q) {
  return p.y < q.y || (p.y == q.y && p.x < q.x);
}

inline TWide ExactCross(double vx, double vy, double wx, double wy) {
  return ExactCross(TCoordDelta{static_cast<std::int64_t>(vx), static_cast<std::int64_t>(vy)},
                    TCoordDelta{static_cast<std::int64_t>(wx), static_cast<std::int64_t>(wy)});
}

// The sign of vx * wy - vy * wx: 1 if w points to the left of v, -1 if to the right.
inline int SignOfCross(double vx, double vy, double wx, double wy) {
  const double plus = vx * wy;
  const double minus = vy * wx;
  const double cross = plus - minus;
  const double error = 4e-16 * (std::fabs(plus) + std::fabs(minus));
  if (cross > error) return 1;
  if (cross < -error) return -1;
  return SignOf(ExactCross(vx, vy, wx, wy));
}

// To the nearest whole number; exact for magnitudes up to 2^51.
inline double RoundToGrid(double value) {
  constexpr double kShift = 0x1.8p52;
  return (value + kShift) - kShift;
}

}  // namespace Ketril::Tools
