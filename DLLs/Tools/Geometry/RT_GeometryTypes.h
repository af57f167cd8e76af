// The records of the plane: points, lines, circles and arcs in doubles, and edges of whole coordinates.
//
// The geometry has two halves that do not mix. The double half (RT_Geometry*.h) works on the records of
// doubles and forgives: what is within 0.01 mil of each other counts as meeting. The integer half
// (GeomUtils.h, PointUtils.h, RectUtils.h) works on TCoordPoint and TCoordRect and is exact. Both count in
// the unit of a coordinate (10000 to the mil); angles are degrees, counter-clockwise, 0 along +x; y grows
// upwards.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "Interfaces/Types.h"

namespace Ketril::Tools {

struct GeoPointType {
  double x = 0;
  double y = 0;
  friend constexpr bool operator==(const GeoPointType&, const GeoPointType&) = default;
};
static_assert(sizeof(GeoPointType) == 16);

using GeoPointTypePair = std::array<GeoPointType, 2>;

// A segment, or the infinite line through two points. As a box its first point is the low corner and its
// second the high one; as a ray its first point is the base and (x2, y2) the direction.
struct LineType {
  double x1 = 0;
  double y1 = 0;
  double x2 = 0;
  double y2 = 0;

  constexpr GeoPointTypePair Points() const { return std::bit_cast<GeoPointTypePair>(*this); }
  constexpr GeoPointType P1() const { return {x1, y1}; }
  constexpr GeoPointType P2() const { return {x2, y2}; }
  constexpr void SetP1(GeoPointType p) { *this = {p.x, p.y, x2, y2}; }
  constexpr void SetP2(GeoPointType p) { *this = {x1, y1, p.x, p.y}; }
  friend constexpr bool operator==(const LineType&, const LineType&) = default;
};
static_assert(sizeof(LineType) == sizeof(GeoPointTypePair));

constexpr LineType MakeLine(GeoPointType p1, GeoPointType p2) {
  return {p1.x, p1.y, p2.x, p2.y};
}

struct CircleType {
  double Cx = 0;
  double Cy = 0;
  double Radius = 0;

  constexpr GeoPointType Center() const { return {Cx, Cy}; }
};
static_assert(sizeof(CircleType) == 24);

// Runs counter-clockwise from `Angle1` to `Angle2`. (Sx, Sy) is the point at `Angle1` and (Ex, Ey) the point
// at `Angle2`, as `UpdateArcEnds` last computed them.
struct ThinArcType {
  double Cx = 0;
  double Cy = 0;
  double Radius = 0;
  double Angle1 = 0;
  double Angle2 = 0;
  double Sx = 0;
  double Sy = 0;
  double Ex = 0;
  double Ey = 0;

  constexpr GeoPointType Center() const { return {Cx, Cy}; }
  constexpr CircleType Circle() const { return {Cx, Cy, Radius}; }
};
static_assert(sizeof(ThinArcType) == 72);

// An unrounded point of the integer half.
struct TDPPoint {
  double x = 0;
  double y = 0;
  friend constexpr bool operator==(const TDPPoint&, const TDPPoint&) = default;
};
static_assert(sizeof(TDPPoint) == 16);

struct TVector2D {
  double x = 0;
  double y = 0;
  friend constexpr bool operator==(const TVector2D&, const TVector2D&) = default;
};
static_assert(sizeof(TVector2D) == 16);

struct TLEdgeType {
  TCoordPoint Left;
  TCoordPoint Right;
};
static_assert(sizeof(TLEdgeType) == 16);

// A vector taken apart into its part along another vector and the part at right angles to that.
struct TVectorProjection {
  TVector2D Projection;
  TVector2D PerpProjection;
  double LenProjection = 0;
  double LenPerpProjection = 0;
};
static_assert(sizeof(TVectorProjection) == 48);

// How two segments meet: not at all, through each other, at an end of at least one of them, along a stretch.
enum TLineCrossType : std::uint8_t { LinesDontCross, LinesCross, LinesTee, LinesColinear };

}  // namespace Ketril::Tools
