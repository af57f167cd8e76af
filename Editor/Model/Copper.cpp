#include "Editor/Model/Copper.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Ketril::Editor {

Track::Track() = default;

TCoordRect Track::Bounds() const {
  const double radius = std::max(data.width, 0) / 2.0;
  Extent extent;
  extent.Add(data.p1, radius);
  extent.Add(data.p2, radius);
  return extent.Rect();
}

void Track::Transform(const PlaneMap& map) {
  data.p1 = map(data.p1);
  data.p2 = map(data.p2);
}

std::u16string Track::PlaceText() const {
  return PointText(data.p1, board) + PointText(data.p2, board);
}

double Track::Length() const {
  return std::hypot(double{1} * data.p2.x - data.p1.x, double{1} * data.p2.y - data.p1.y);
}

Arc::Arc() = default;

double Arc::Sweep() const {
  const double turn = data.angle2 - data.angle1;
  if (turn == 0 || !std::isfinite(turn)) return 0;
  const double sweep = std::fmod(turn, 360);
  return sweep <= 0 ? sweep + 360 : sweep;
}

double Arc::Length() const {
  return std::max(data.radius, 0) * (Sweep() * std::numbers::pi / 180);
}

TCoordPoint Arc::PointAt(double degrees) const {
  const Direction direction = DirectionOf(degrees);
  return {ToCoord(data.center.x + data.radius * direction.cos),
          ToCoord(data.center.y + data.radius * direction.sin)};
}

TCoordRect Arc::Bounds() const {
  const double radius = std::max(data.radius, 0), pen = std::max(data.width, 0) / 2.0, sweep = Sweep();
  Extent extent;
  const auto add = [&](double degrees) {
    const Direction direction = DirectionOf(degrees);
    extent.Add(data.center.x + radius * direction.cos, data.center.y + radius * direction.sin, pen);
  };
  add(data.angle1);
  add(data.angle1 + sweep);
  // The arc reaches furthest where it crosses an axis.
  for (double quadrant = 0; quadrant < 360; quadrant += 90) {
    double behind = std::fmod(quadrant - data.angle1, 360);
    if (behind < 0) behind += 360;
    if (behind <= sweep) add(quadrant);
  }
  return extent.Rect();
}

void Arc::Transform(const PlaneMap& map) {
  data.center = map(data.center);
  if (map.Mirrors()) {
    const double start = CleanAngle(180 - data.angle2);
    data.angle2 = CleanAngle(180 - data.angle1);
    data.angle1 = start;
  } else {
    const double turn = data.angle2 - data.angle1;
    const double start = map.Angle(data.angle1);
    data.angle2 = start == data.angle1 ? data.angle2 : CleanAngle(start + turn);
    data.angle1 = start;
  }
}

}  // namespace Ketril::Editor
