#include "DLLs/Tools/Geometry/ClipperSweep.h"

namespace Ketril::Tools {
namespace {

// The sign of a * b + c * d, where b and d have up to 107 bits, too many for a product in 128.
int SignOfSum(double a, TWide b, double c, TWide d) {
  constexpr int kLowBits = 53;
  constexpr TWide kLow = (TWide{1} << kLowBits) - 1;
  const auto whole_a = static_cast<std::int64_t>(a), whole_c = static_cast<std::int64_t>(c);
  const TWide low = whole_a * (b & kLow) + whole_c * (d & kLow);
  const TWide high = whole_a * (b >> kLowBits) + whole_c * (d >> kLowBits) + (low >> kLowBits);
  return high != 0 ? SignOf(high) : SignOf(low & kLow);
}

}  // namespace

bool CrossLines(const TClipEdge& a, const TClipEdge& b, TClipCrossing& crossing) {
  const double ax = a.Dx(), ay = a.Dy(), bx = b.Dx(), by = b.Dy();
  const double wx = b.bottom.x - a.bottom.x, wy = b.bottom.y - a.bottom.y;
  // The crossing is a.bottom + along / across of the way along a.
  const double along_plus = wx * by, along_minus = wy * bx;
  const double across_plus = ax * by, across_minus = ay * bx;
  const double across = across_plus - across_minus;
  const double t = (along_plus - along_minus) / across;
  const double t_error = 8e-16 * (std::fabs(along_plus) + std::fabs(along_minus) +
                                  std::fabs(t) * (std::fabs(across_plus) + std::fabs(across_minus)));
  double climb = t * ay;
  // Well below a step of the grid, all edges through one point give the same rounded point.
  const double error = t_error * (std::fabs(ax) + ay) / std::fabs(across);
  const bool is_sharp = error < 0x1p-8;
  if (is_sharp) {
    crossing.place = {a.bottom.x + RoundToGrid(t * ax), a.bottom.y + RoundToGrid(climb)};
    climb -= RoundToGrid(climb);
    if (std::fabs(climb) > error) {
      crossing.above = climb > 0 ? 1 : -1;
      return true;
    }
  }
  const TWide exact_across = ExactCross(ax, ay, bx, by);
  if (exact_across == 0) return false;
  const TWide exact_along = ExactCross(wx, wy, bx, by);
  if (!is_sharp) {
    const long double sharp_t =
        static_cast<long double>(exact_along) / static_cast<long double>(exact_across);
    crossing.place = {a.bottom.x + static_cast<double>(std::nearbyint(sharp_t * ax)),
                      a.bottom.y + static_cast<double>(std::nearbyint(sharp_t * ay))};
  }
  const int sign = exact_across > 0 ? 1 : -1;
  const double up_to = a.bottom.y - crossing.place.y;
  crossing.above = std::fabs(up_to) < 0x1p53 ? sign * SignOfSum(up_to, exact_across, ay, exact_along) : 0;
  return true;
}

}  // namespace Ketril::Tools
