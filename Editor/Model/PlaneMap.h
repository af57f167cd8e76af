// Moves, turns and mirrorings of the plane of coordinates, and bounding boxes, without overflow: results are
// clamped to the range of a coordinate.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "Interfaces/Types.h"

namespace Ketril::Editor {

// The nearest coordinate, halves away from zero; 0 for what is no number.
TCoord ToCoord(double value);
inline TCoord ToCoord(std::int64_t value) {
  constexpr std::int64_t kLow = std::numeric_limits<TCoord>::min(),
                         kHigh = std::numeric_limits<TCoord>::max();
  return static_cast<TCoord>(value < kLow ? kLow : value > kHigh ? kHigh : value);
}

struct Direction {
  double cos = 1;
  double sin = 0;
};
// Exact at multiples of 90 degrees; an angle that is no finite number counts as 0.
Direction DirectionOf(double degrees);
// Rounded to 1e-9 degrees, so that angles written with few decimals survive being added to and taken back.
double CleanAngle(double degrees);

class PlaneMap {
 public:
  static PlaneMap Translation(std::int64_t dx, std::int64_t dy);
  static PlaneMap Rotation(TCoordPoint center, double degrees);
  // About the vertical line through `x`: what turning the board over does to it.
  static PlaneMap Mirror(TCoord x);

  TCoordPoint operator()(TCoordPoint point) const;
  void Apply(std::vector<TCoordPoint>& points) const;
  // True when boxes along the axes stay such boxes.
  bool KeepsBoxes() const { return right_angles_; }
  // A box that stays along the axes, as `KeepsBoxes` promises.
  TCoordRect Box(const TCoordRect& box) const;
  bool Mirrors() const { return mirrors_; }
  double Degrees() const { return degrees_; }  // of a turn, else 0
  // The direction at `degrees` after the map: turned, from 0 up to 360, or mirrored to 180 - degrees.
  double Angle(double degrees) const;
  // The rotation of a shape that is itself drawn mirrored (left to right) once the map mirrors.
  double MirroredShapeAngle(double degrees) const;

 private:
  std::int64_t cx_ = 0, cy_ = 0;  // the centre, or the way of a translation
  double degrees_ = 0;
  Direction direction_;
  bool right_angles_ = true;
  bool mirrors_ = false;
  bool translates_ = false;
};

// Grows around what is added to it. Doubles hold sums and products of coordinates exactly enough.
class Extent {
 public:
  void Add(double x, double y, double radius = 0);
  void Add(TCoordPoint point, double radius = 0) { Add(point.x, point.y, radius); }
  void Add(const TCoordRect& box);
  bool IsEmpty() const { return x1_ > x2_; }
  // The smallest box of whole units around it all; `otherwise` as a point when there is nothing.
  TCoordRect Rect(TCoordPoint otherwise = {}) const;

 private:
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double x1_ = kInfinity, y1_ = kInfinity, x2_ = -kInfinity, y2_ = -kInfinity;
};

}  // namespace Ketril::Editor
