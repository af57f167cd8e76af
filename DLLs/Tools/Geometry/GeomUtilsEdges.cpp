// How edges of polygons meet.
#include <algorithm>
#include <array>
#include <numbers>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/WideInteger.h"

namespace Ketril::Tools {

namespace {

constexpr int kPolyLeft = 1;
constexpr int kPolyRight = 2;
constexpr int kFixedLeft = 4;
constexpr int kFixedRight = 8;

// Where the lines of two edges meet. Unless they are parallel, the place divides the way along each edge,
// from left to right, in the proportion of `on_fixed` or `on_poly` to `cross`, which is positive.
struct Meeting {
  TWide cross = 0;
  TWide on_fixed = 0;
  TWide on_poly = 0;
  int ends = 0;  // the sum of the constants above
  TDPPoint place;
};

TDPPoint ToDPPoint(TCoordPoint p) {
  return {static_cast<double>(p.x), static_cast<double>(p.y)};
}

Meeting MeetParallel(const TLEdgeType& fixed, const TLEdgeType& poly) {
  const bool left_shared = fixed.Left == poly.Left || fixed.Left == poly.Right;
  const bool right_shared = fixed.Right == poly.Left || fixed.Right == poly.Right;
  const TCoordPoint p = right_shared && !left_shared ? fixed.Right : fixed.Left;
  Meeting meeting;
  meeting.place = ToDPPoint(p);
  meeting.ends = (p == poly.Left ? kPolyLeft : 0) + (p == poly.Right ? kPolyRight : 0) +
                 (p == fixed.Left ? kFixedLeft : 0) + (p == fixed.Right ? kFixedRight : 0);
  return meeting;
}

Meeting Meet(const TLEdgeType& fixed, const TLEdgeType& poly) {
  const TCoordDelta way1 = Delta(fixed.Left, fixed.Right);
  const TCoordDelta way2 = Delta(poly.Left, poly.Right);
  const TCoordDelta offset = Delta(fixed.Left, poly.Left);
  Meeting meeting;
  meeting.cross = ExactCross(way1, way2);
  if (meeting.cross == 0) return MeetParallel(fixed, poly);
  const int sign = SignOf(meeting.cross);
  meeting.cross *= sign;
  meeting.on_fixed = ExactCross(offset, way2) * sign;
  meeting.on_poly = ExactCross(offset, way1) * sign;
  const auto end = [&](TWide part, int left, int right) {
    return part == 0 ? left : part == meeting.cross ? right : 0;
  };
  const int poly_end = end(meeting.on_poly, kPolyLeft, kPolyRight);
  const int fixed_end = end(meeting.on_fixed, kFixedLeft, kFixedRight);
  meeting.ends = poly_end + fixed_end;
  if (poly_end != 0) {
    meeting.place = ToDPPoint(poly_end == kPolyLeft ? poly.Left : poly.Right);
  } else if (fixed_end != 0) {
    meeting.place = ToDPPoint(fixed_end == kFixedLeft ? fixed.Left : fixed.Right);
  } else {
    const auto along = [&](TCoord left, std::int64_t length) {
      const TWide way = length * meeting.on_fixed;
      const TWide whole = left + way / meeting.cross;
      const TWide rest = way % meeting.cross;
      return static_cast<double>(whole) + static_cast<double>(rest) / static_cast<double>(meeting.cross);
    };
    meeting.place = {along(fixed.Left.x, way1.x), along(fixed.Left.y, way1.y)};
  }
  return meeting;
}

double DirectionAngle(TCoordDelta way) {
  return TGeomUtils::VectorAngle(static_cast<double>(way.y), static_cast<double>(way.x));
}

struct ChainAngles {
  double left;
  double right;
};

// The directions from a place on the line of an edge, which is not an end, to its ends.
ChainAngles AnglesInside(const TLEdgeType& edge, TWide part, TWide whole) {
  const TCoordDelta way = Delta(edge.Left, edge.Right);
  return {DirectionAngle(part > 0 ? -way : way), DirectionAngle(part < whole ? way : -way)};
}

ChainAngles AnglesFrom(TCoordPoint place, TCoordPoint left, TCoordPoint right) {
  return {DirectionAngle(Delta(place, left)), DirectionAngle(Delta(place, right))};
}

struct Ray {
  double angle;
  int label;
};

// The labels of the rays, which are in order, as one number, those of coinciding rays compressed.
int CodeOf(const std::array<Ray, 3>& rays) {
  const auto [a1, c0] = rays[0];
  const auto [a2, c1] = rays[1];
  const auto [a3, c2] = rays[2];
  const auto octal = [](int d0, int d1, int d2) { return d0 + 8 * d1 + 64 * d2; };
  const auto pair = [](int d, int e) { return d == 1 || e == 1 ? 5 : 6; };
  if (a1 == 0 && a2 == a3) return c0 == 1 ? octal(7, 0, 0) : c0 == 2 ? octal(0, 7, 0) : -1;
  if (a1 == 0) return octal(c0 == 0 ? 0 : c0 + 2, c1, c2);
  if (a1 == a2) return octal(pair(c0, c1), 0, c2);
  if (a2 == a3) return octal(c0, pair(c1, c2), 0);
  return octal(c0, c1, c2);
}

}  // namespace

int TGeomUtils::IntersectionCase(const TLEdgeType& FixedEdge, const TLEdgeType& PolyEdge, TDPPoint& IntPnt) {
  const Meeting meeting = Meet(FixedEdge, PolyEdge);
  IntPnt = meeting.place;
  return meeting.ends;
}

int TGeomUtils::IntersectionCode(const TLEdgeType& Edge1, const TLEdgeType& edge2, TCoordPoint Prev1,
                                 TCoordPoint Next1, TCoordPoint Prev2, TCoordPoint Next2,
                                 TCoordPoint& IntPnt) {
  const Meeting meeting = Meet(Edge1, edge2);
  IntPnt = {Nearest(meeting.place.x), Nearest(meeting.place.y)};
  const bool left1 = (meeting.ends & kFixedLeft) != 0;
  const bool right1 = (meeting.ends & kFixedRight) != 0;
  const bool left2 = (meeting.ends & kPolyLeft) != 0;
  const bool right2 = (meeting.ends & kPolyRight) != 0;
  if ((left1 && right1) || (left2 && right2)) return -1;

  ChainAngles chain1, chain2;
  if (meeting.ends == 0) {
    chain1 = AnglesInside(Edge1, meeting.on_fixed, meeting.cross);
    chain2 = AnglesInside(edge2, meeting.on_poly, meeting.cross);
  } else {  // in an end, so the place is whole
    chain1 = AnglesFrom(IntPnt, left1 ? Prev1 : Edge1.Left, right1 ? Next1 : Edge1.Right);
    chain2 = AnglesFrom(IntPnt, left2 ? Prev2 : edge2.Left, right2 ? Next2 : edge2.Right);
  }
  const auto from_reference = [&](double angle) {
    return angle < chain1.left ? angle - chain1.left + 2 * std::numbers::pi : angle - chain1.left;
  };
  std::array<Ray, 3> rays = {{{from_reference(chain1.right), 0},
                              {from_reference(chain2.left), 1},
                              {from_reference(chain2.right), 2}}};
  std::stable_sort(rays.begin(), rays.end(), [](const Ray& r, const Ray& s) { return r.angle < s.angle; });
  return CodeOf(rays);
}

}  // namespace Ketril::Tools
