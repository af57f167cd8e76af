#include "Editor/Model/PlaneMap.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Ketril::Editor {

namespace {

constexpr double kLow = std::numeric_limits<TCoord>::min();
constexpr double kHigh = std::numeric_limits<TCoord>::max();
// What trigonometry may be off by, in units, before a box is widened to the next unit.
constexpr double kNoise = 1e-4;

// From 0 up to but without 360.
double Wrapped(double degrees) {
  const double turn = std::isfinite(degrees) ? std::fmod(degrees, 360) : 0;
  const double clean = CleanAngle(turn < 0 ? turn + 360 : turn);
  return clean == 360 ? 0 : clean;
}

}  // namespace

TCoord ToCoord(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<TCoord>(std::round(std::clamp(value, kLow, kHigh)));
}

Direction DirectionOf(double degrees) {
  if (!std::isfinite(degrees)) return {};
  const double turn = std::fmod(degrees, 360);
  if (turn == 0) return {1, 0};
  if (turn == 90 || turn == -270) return {0, 1};
  if (turn == 180 || turn == -180) return {-1, 0};
  if (turn == 270 || turn == -90) return {0, -1};
  const double radians = turn * std::numbers::pi / 180;
  return {std::cos(radians), std::sin(radians)};
}

double CleanAngle(double degrees) {
  constexpr double kStep = 1e9;
  if (!std::isfinite(degrees)) return 0;
  return std::abs(degrees) < 1e6 ? std::round(degrees * kStep) / kStep + 0.0 : degrees;  // no -0
}

PlaneMap PlaneMap::Translation(std::int64_t dx, std::int64_t dy) {
  PlaneMap map;
  map.translates_ = true;
  map.cx_ = dx;
  map.cy_ = dy;
  return map;
}

PlaneMap PlaneMap::Rotation(TCoordPoint center, double degrees) {
  PlaneMap map;
  map.cx_ = center.x;
  map.cy_ = center.y;
  map.degrees_ = std::isfinite(degrees) ? degrees : 0;
  map.direction_ = DirectionOf(degrees);
  map.right_angles_ = map.direction_.cos == 0 || map.direction_.sin == 0;
  return map;
}

PlaneMap PlaneMap::Mirror(TCoord x) {
  PlaneMap map;
  map.mirrors_ = true;
  map.cx_ = x;
  return map;
}

TCoordPoint PlaneMap::operator()(TCoordPoint point) const {
  if (translates_) return {ToCoord(point.x + cx_), ToCoord(point.y + cy_)};
  if (mirrors_) return {ToCoord(2 * cx_ - point.x), point.y};
  const std::int64_t dx = point.x - cx_, dy = point.y - cy_;
  if (right_angles_) {
    const auto c = static_cast<std::int64_t>(direction_.cos), s = static_cast<std::int64_t>(direction_.sin);
    return {ToCoord(cx_ + c * dx - s * dy), ToCoord(cy_ + s * dx + c * dy)};
  }
  const auto x = static_cast<double>(dx), y = static_cast<double>(dy);
  return {ToCoord(static_cast<double>(cx_) + (direction_.cos * x - direction_.sin * y)),
          ToCoord(static_cast<double>(cy_) + (direction_.sin * x + direction_.cos * y))};
}

void PlaneMap::Apply(std::vector<TCoordPoint>& points) const {
  for (TCoordPoint& point : points) point = (*this)(point);
}

TCoordRect PlaneMap::Box(const TCoordRect& box) const {
  const TCoordPoint a = (*this)(box.Location1()), b = (*this)(box.Location2());
  if (mirrors_) return {b.x, a.y, a.x, b.y};
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

double PlaneMap::Angle(double degrees) const {
  if (mirrors_) {
    // From -180 to 360 is closed under mirroring: there a second one gives the same angle back.
    const double mirrored = CleanAngle(180 - degrees);
    return mirrored < -180 || mirrored > 360 ? Wrapped(mirrored) : mirrored;
  }
  return degrees_ == 0 ? degrees : Wrapped(degrees + degrees_);
}

double PlaneMap::MirroredShapeAngle(double degrees) const {
  return mirrors_ ? 0 - degrees : Angle(degrees);
}

void Extent::Add(double x, double y, double radius) {
  x1_ = std::min(x1_, x - radius);
  y1_ = std::min(y1_, y - radius);
  x2_ = std::max(x2_, x + radius);
  y2_ = std::max(y2_, y + radius);
}

void Extent::Add(const TCoordRect& box) {
  Add(box.Location1());
  Add(box.Location2());
}

TCoordRect Extent::Rect(TCoordPoint otherwise) const {
  if (IsEmpty()) return {otherwise.x, otherwise.y, otherwise.x, otherwise.y};
  return {ToCoord(std::floor(x1_ + kNoise)), ToCoord(std::floor(y1_ + kNoise)),
          ToCoord(std::ceil(x2_ - kNoise)), ToCoord(std::ceil(y2_ - kNoise))};
}

}  // namespace Ketril::Editor
