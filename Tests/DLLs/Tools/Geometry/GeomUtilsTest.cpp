#include "DLLs/Tools/Geometry/GeomUtils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <tuple>

#include "DLLs/Tools/Geometry/PointUtils.h"
#include "DLLs/Tools/Geometry/RectUtils.h"

namespace Ketril::Tools {
namespace {

using std::numbers::pi;

constexpr TCoord lo = INT_MIN;
constexpr TCoord hi = INT_MAX;

template <class... Points>
std::string Text(const Points&... points) {
  std::string text;
  ((text += '(' + std::to_string(points.x) + ' ' + std::to_string(points.y) + ')'), ...);
  return text;
}

TEST(GeomUtils, Distance) {
  const std::tuple<TCoordPoint, TCoordPoint, TCoord> rows[] = {
      {{0, 0}, {0, -7}, 7}, {{3, 0}, {-4, 0}, 7},   {{0, 0}, {5, -5}, 7},     {{0, 0}, {3, 4}, 5},
      {{0, 0}, {1, 2}, 2},  {{lo, 5}, {-1, 5}, hi}, {{lo, lo}, {hi, hi}, hi}, {{lo, 0}, {0, 0}, hi}};
  for (const auto& [from, to, distance] : rows)
    EXPECT_EQ(TGeomUtils::Distance(from, to), distance) << Text(from);
}

TEST(GeomUtils, RectToRectDistance) {
  const std::tuple<TCoordRect, TCoord> rows[] = {
      {{5, 5, 20, 20}, 0},       {{2, 2, 3, 3}, 0},      {{10, 0, 20, 10}, 0},  {{10, 10, 20, 20}, 0},
      {{17, 5, 20, 20}, 7},      {{-5, -20, 20, -9}, 9}, {{13, 14, 20, 20}, 5}, {{-9, -9, -5, -5}, 7},
      {{hi, 0, hi, 0}, hi - 10}, {{lo, lo, lo, lo}, hi}};
  for (const auto& [other, distance] : rows) {
    EXPECT_EQ(TGeomUtils::RectToRectDistance({0, 0, 10, 10}, other), distance) << Text(other.Location1());
  }
}

TEST(GeomUtils, Angles) {
  const std::tuple<TCoordPoint, double> rows[] = {{{9, 0}, 0},  {{9, 9}, 1},   {{0, 9}, 2},  {{-9, 9}, 3},
                                                  {{-9, 0}, 4}, {{-9, -9}, 5}, {{0, -9}, 6}, {{9, -9}, 7}};
  for (const auto& [way, eighths] : rows) {
    const TCoordPoint to = TPointUtils::Add({7, -3}, way);
    EXPECT_DOUBLE_EQ(TGeomUtils::Angle({7, -3}, to), eighths * 45) << Text(way);
    EXPECT_NEAR(TGeomUtils::CartesianAngle({7, -3}, to), eighths * pi / 4, 1e-7) << Text(way);
    EXPECT_EQ(TGeomUtils::VectorAngle(way.y, way.x), eighths * pi / 4) << Text(way);
  }
  EXPECT_LT(TGeomUtils::CartesianAngle({lo, 0}, {hi, -1}), 2 * pi);
  EXPECT_EQ(TGeomUtils::CartesianAngle({0, 0}, {3, 1}), double{std::atan(1 / 3.0f)});
  EXPECT_EQ(TGeomUtils::VectorAngle(0, 0), 0);
  EXPECT_LT(TGeomUtils::VectorAngle(-1e-30, 1), 2 * pi);
  EXPECT_DOUBLE_EQ(TGeomUtils::VectorAngle(-1, 2), std::atan2(-1, 2) + 2 * pi);
}

TEST(GeomUtils, Clockwise) {
  const std::tuple<const char*, TCoordPoint, TCoordPoint, TCoordPoint, int> rows[] = {
      {"on the line", {0, 0}, {10, 0}, {20, 0}, 0},
      {"going up", {0, 0}, {0, 10}, {5, 5}, -1},
      {"going down", {0, 10}, {0, 0}, {5, 5}, 1},
      {"equal points, above", {5, 5}, {5, 5}, {0, 6}, 1},
      {"equal points, beside", {5, 5}, {5, 5}, {9, 5}, 0},
      {"full range", {lo, lo}, {hi, hi}, {lo, hi}, 1},
      {"too fine for doubles", {lo, lo}, {hi, hi - 1}, {hi - 1, hi - 2}, 0},
  };
  for (const auto& [name, p0, p1, p2, turn] : rows)
    EXPECT_EQ(TGeomUtils::Clockwise(p0, p1, p2), turn) << name;
}

TEST(GeomUtils, MeetingSegments) {
  const std::tuple<const char*, TCoordPoint, TCoordPoint, TCoordPoint, TCoordPoint, TLineCrossType, bool>
      rows[] = {
          {"a point beside an oblique segment", {0, 0}, {0, 0}, {-5, 5}, {6, -5}, LinesDontCross, false},
          {"too fine for doubles", {lo, lo}, {hi, hi - 1}, {hi - 1, hi - 2}, {hi, lo}, LinesDontCross, true},
          {"full range", {lo, lo}, {hi, hi}, {lo, hi}, {hi, lo}, LinesCross, true},
      };
  for (const auto& [name, a, b, c, d, cross, intersect] : rows) {
    EXPECT_EQ(TGeomUtils::DoLinesCross(a, b, c, d), cross) << name;
    EXPECT_EQ(TGeomUtils::Intersect(a, b, c, d), intersect) << name;
  }
  EXPECT_EQ(TGeomUtils::ClipCode({10, 0}, {0, 0, 10, 10}), 0u);
  EXPECT_EQ(TGeomUtils::ClipCode({11, 11}, {0, 0, 10, 10}), 5u);
  EXPECT_EQ(TGeomUtils::ClipCode({-1, -1}, {0, 0, 10, 10}), 10u);
}

// By trying places: segments of whole coordinates from 0 to 2 that meet in one place do so in a multiple of
// 1/840 of the first.
TLineCrossType CrossTypeBySampling(TCoordPoint a, TCoordPoint b, TCoordPoint c, TCoordPoint d) {
  const auto between = [](int v, int e, int f) {
    return std::min(e, f) * 840 <= v && v <= std::max(e, f) * 840;
  };
  int shared = 0;
  bool in_end = false;
  for (int k = 0; k <= (a == b ? 0 : 840); ++k) {
    const int x = a.x * 840 + (b.x - a.x) * k, y = a.y * 840 + (b.y - a.y) * k;
    const int cross = (d.x - c.x) * (y - c.y * 840) - (d.y - c.y) * (x - c.x * 840);
    if (cross != 0 || !between(x, c.x, d.x) || !between(y, c.y, d.y)) continue;
    ++shared;
    in_end = k % 840 == 0 || (x == c.x * 840 && y == c.y * 840) || (x == d.x * 840 && y == d.y * 840);
  }
  if (shared == 0) return LinesDontCross;
  return shared > 1 ? LinesColinear : in_end ? LinesTee : LinesCross;
}

// All pairs of segments of a grid of 3 by 3, and the same grid blown up to the whole range of coordinates.
TEST(GeomUtils, MeetingsOfAllSegmentsOfAGrid) {
  const auto blown_up = [](TCoordPoint p) {
    const auto c = [](int k) { return static_cast<TCoord>(lo + k * std::int64_t{hi}); };
    return TCoordPoint{c(p.x), c(p.y)};
  };
  for (int i = 0; i < 9 * 9 * 9 * 9; ++i) {
    TCoordPoint p[4], q[4];
    for (int k = 0, rest = i; k < 4; ++k, rest /= 9) {
      p[k] = {rest % 3, rest / 3 % 3};
      q[k] = blown_up(p[k]);
    }
    const TLineCrossType expected = CrossTypeBySampling(p[0], p[1], p[2], p[3]);
    for (const TCoordPoint* r : {p, q}) {
      ASSERT_EQ(TGeomUtils::DoLinesCross(r[0], r[1], r[2], r[3]), expected) << Text(r[0], r[1], r[2], r[3]);
      ASSERT_TRUE(expected == LinesDontCross || TGeomUtils::Intersect(r[0], r[1], r[2], r[3]))
          << Text(r[0], r[1], r[2], r[3]);
      if (p[0] != p[1]) continue;
      ASSERT_EQ(TGeomUtils::IsPointOnLine(r[2], r[3], r[0], 0), expected != LinesDontCross)
          << Text(r[0], r[2], r[3]);
    }
  }
}

TEST(GeomUtils, IsPointOnLineWithFuzz) {
  const std::tuple<TCoordPoint, TCoordPoint, TCoordPoint, double, bool> rows[] = {
      {{0, 0}, {10, 0}, {5, 1}, 0, false},    {{0, 0}, {10, 0}, {5, 1}, 1, true},
      {{0, 0}, {10, 0}, {5, 1}, 0.99, false}, {{0, 0}, {10, 0}, {11, 1}, 1.5, true},
      {{0, 0}, {10, 7}, {5, 3}, 0, false},    {{0, 0}, {10, 7}, {5, 3}, std::numbers::sqrt2 / 2, true},
      {{0, 0}, {0, 0}, {3, 4}, 5, true},      {{0, 0}, {10, 0}, {5, 0}, -1, false},
      {{lo, lo}, {hi, hi}, {0, 1}, 0, false}, {{lo, lo}, {hi, hi}, {lo, hi}, 4e9, true}};
  for (const auto& [a, b, p, fuzz, on] : rows) {
    EXPECT_EQ(TGeomUtils::IsPointOnLine(a, b, p, fuzz), on) << Text(b, p) << fuzz;
  }
}

TEST(GeomUtils, PointSectorCode) {
  const std::tuple<const char*, TCoordPoint, TCoordPoint, TCoordPoint, int> rows[] = {
      {"inside", {10, 0}, {0, 10}, {5, 5}, 1},
      {"on the start, far out", {10, 0}, {0, 10}, {2000, 0}, 2},
      {"fulcrum", {10, 0}, {0, 10}, {0, 0}, 2},
      {"passing 0", {0, -10}, {10, 10}, {5, 0}, 1},
      {"not in what passes 0", {0, -10}, {10, 10}, {-5, 0}, 0},
      {"no end, on the fulcrum", {10, 0}, {0, 0}, {0, 0}, -1},
      {"no sector, equal directions", {1, 3}, {700000001, 2100000003}, {5, 5}, -1},
      {"on an oblique edge", {1, 3}, {0, 10}, {700000001, 2100000003}, 2},
  };
  for (const auto& [name, start, term, test, code] : rows) {
    EXPECT_EQ(TGeomUtils::GetPointSectorCode({0, 0}, start, term, test), code) << name;
  }
}

TEST(GeomUtils, ProjectPointOntoSegment) {
  const std::tuple<const char*, TCoordPoint, TCoordPoint, TCoordPoint, bool, TCoordPoint, double> rows[] = {
      {"at the first end", {10, 10}, {20, 10}, {10, 14}, true, {10, 10}, 4},
      {"at the second end", {10, 10}, {20, 10}, {20, 6}, true, {20, 10}, 4},
      {"before", {10, 10}, {20, 10}, {9, 10}, false, {-1, -1}, -1},
      {"beyond", {10, 10}, {20, 10}, {21, 10}, false, {-1, -1}, -1},
      {"a point", {10, 10}, {10, 10}, {10, 10}, false, {-1, -1}, -1},
      {"half away from zero of the way", {1, 1}, {4, 4}, {2, 3}, true, {3, 3}, std::sqrt(0.5)},
      {"the same backwards", {4, 4}, {1, 1}, {2, 3}, true, {2, 2}, std::sqrt(0.5)},
  };
  for (const auto& [name, end0, end1, p, found, expected_foot, expected_distance] : rows) {
    TCoordPoint foot;
    double distance;
    EXPECT_EQ(TGeomUtils::ProjectPointOntoSegment(end0, end1, p, foot, distance), found) << name;
    EXPECT_EQ(foot, expected_foot) << name << Text(foot);
    EXPECT_DOUBLE_EQ(distance, expected_distance) << name;
  }
}

TEST(GeomUtils, IntersectionOfLinesThroughPoints) {
  const std::tuple<const char*, TCoordPoint, TCoordPoint, TCoordPoint, TCoordPoint, TCoordPoint> rows[] = {
      {"beyond both, in halves", {0, 0}, {1, 1}, {9, 0}, {8, 1}, {5, 5}},
      {"a negative half", {0, 0}, {-1, -1}, {0, -1}, {-1, 0}, {-1, -1}},
      {"half away from the first point", {5, 5}, {4, 4}, {5, 4}, {4, 5}, {4, 4}},
      {"parallel", {1, 2}, {5, 2}, {0, 0}, {4, 0}, {1, 2}},
      {"parallel, one end shared", {1, 2}, {5, 2}, {9, 2}, {5, 2}, {5, 2}},
      {"parallel, both ends shared", {1, 2}, {5, 2}, {5, 2}, {1, 2}, {1, 2}},
      {"out of range", {0, 0}, {hi, 0}, {0, 2}, {hi, 1}, {hi, 0}},
      {"exact at full range", {lo, lo}, {hi, hi}, {hi - 1, hi}, {hi, hi - 1}, {hi, hi}},
  };
  for (const auto& [name, p11, p12, p21, p22, meeting] : rows) {
    TCoordPoint p;
    TGeomUtils::Intersection(p11, p12, p21, p22, p);
    EXPECT_EQ(p, meeting) << name << Text(p);
  }
}

TEST(GeomUtils, IntersectionOfLinesAlongDirections) {
  const std::tuple<const char*, TDPPoint, TVector2D, TDPPoint, TVector2D, bool, TDPPoint> rows[] = {
      {"oblique", {0, 0}, {2, 2}, {0, 4}, {1, -1}, true, {2, 2}},
      {"first vertical", {1, 7}, {0, 3}, {0, 3}, {2, 2}, true, {1, 4}},
      {"second vertical", {0, 3}, {2, 2}, {1, 7}, {9e-11, 3}, true, {1, 4}},
      {"equal slopes", {0, 0}, {1, 3}, {5, 0}, {-2, -6}, false, {}},
  };
  for (const auto& [name, p0, d0, p1, d1, found, meeting] : rows) {
    TDPPoint p;
    EXPECT_EQ(TGeomUtils::Intersection(p0, d0, p1, d1, p), found) << name;
    EXPECT_EQ(p, meeting) << name;
  }
}

TEST(GeomUtils, ArcCenterPoint) {
  const std::tuple<TCoordPoint, TCoordPoint, double, TCoordPoint> rows[] = {
      {{0, 0}, {100, 0}, 90, {50, 50}},   {{0, 0}, {100, 0}, -90, {50, -50}},
      {{0, 0}, {100, 0}, 270, {50, -50}}, {{0, 0}, {100, 0}, 120, {50, 29}},
      {{0, 0}, {100, 0}, 180, {50, 0}},   {{0, 0}, {100, 0}, -179.6, {50, 0}},
      {{3, 4}, {100, 0}, 359.7, {3, 4}},  {{3, 4}, {100, 0}, 0, {3, 4}},
      {{3, 4}, {100, 0}, 720, {3, 4}},    {{3, 4}, {3, 4}, 90, {3, 4}},
      {{7, 107}, {7, 7}, 90, {57, 57}},   {{lo, 0}, {0, 0}, 1, {-(1 << 30), hi}}};
  for (const auto& [p1, p2, angle, expected_center] : rows) {
    const TCoordPoint center = TGeomUtils::ArcCenterPoint(p1, p2, angle);
    EXPECT_EQ(center, expected_center) << angle << Text(center);
  }
}

TEST(GeomUtils, ArcTangentsLeaveTheArc) {
  const auto far_end = [](bool at_termination, TCoordPoint end) {
    TCoordPoint p1, p2;
    TGeomUtils::CreateArcTangentLine(5, 5, 100, {105, 5}, end, at_termination, 50, p1, p2);
    EXPECT_EQ(p1, (at_termination ? end : TCoordPoint{105, 5}));
    return p2;
  };
  EXPECT_EQ(far_end(true, {5, 105}), (TCoordPoint{-45, 105}));
  EXPECT_EQ(far_end(false, {5, 105}), (TCoordPoint{105, -45}));
  EXPECT_EQ(far_end(true, {5, 5}), (TCoordPoint{5, 5}));
}

TEST(GeomUtils, Vectors) {
  EXPECT_EQ(TGeomUtils::NormalVector({3, 4}, true), (TVector2D{-4, 3}));
  EXPECT_EQ(TGeomUtils::NormalVector({3, 4}, false), (TVector2D{4, -3}));
  EXPECT_EQ(TGeomUtils::CrossProductMagnitude({lo, 1}, {1, lo}), 0x1p62 - 1);
  EXPECT_EQ(TGeomUtils::ConvertPointsToVector2D({hi, 1}, {lo, 0}), (TVector2D{-4294967295.0, -1}));
  EXPECT_EQ(TGeomUtils::ConvertVectorToPoint({-0.5, 2.5}, {-7, 7}), (TCoordPoint{-8, 10}));
  EXPECT_EQ(TGeomUtils::ConvertVectorToPoint({1e20, -1e20}, {-7, 7}), (TCoordPoint{hi, lo}));
}

// Answers about turned, mirrored or exchanged points follow from those about the points themselves.
TEST(GeomUtils, FollowsSymmetries) {
  constexpr unsigned kSeed = 20254;
  std::mt19937 random(kSeed);
  for (int i = 0; i < 40000; ++i) {
    const int reach = i % 3 == 0 ? 4 : i % 3 == 1 ? 1000 : 1 << 30;
    std::uniform_int_distribution<int> some(-reach, reach);
    TCoordPoint p[4];
    for (TCoordPoint& q : p) q = {some(random), some(random)};
    const auto& [a, b, c, d] = p;
    const auto gap = [&p] {
      return TGeomUtils::RectToRectDistance(TRectUtils::SetRect(p[0], p[1]), TRectUtils::SetRect(p[2], p[3]));
    };
    const int turn = TGeomUtils::Clockwise(a, b, c), sector = TGeomUtils::GetPointSectorCode(a, b, c, d);
    const TLineCrossType cross = TGeomUtils::DoLinesCross(a, b, c, d);
    const TCoord gap_before = gap();
    ASSERT_EQ(TGeomUtils::DoLinesCross(d, c, b, a), cross) << Text(a, b, c, d) << " seed " << kSeed;
    ASSERT_TRUE(cross == LinesDontCross || TGeomUtils::Intersect(a, b, c, d))
        << Text(a, b, c, d) << " seed " << kSeed;

    const bool mirror = i % 2 == 0;
    for (TCoordPoint& q : p) q = mirror ? TCoordPoint{-q.x, q.y} : TCoordPoint{-q.y, q.x};
    ASSERT_TRUE(a == b || TGeomUtils::Clockwise(a, b, c) == (mirror ? -turn : turn))
        << Text(a, b, c) << " seed " << kSeed;
    ASSERT_EQ(TGeomUtils::GetPointSectorCode(a, mirror ? c : b, mirror ? b : c, d), sector)
        << Text(a, b, c, d) << " seed " << kSeed;
    ASSERT_EQ(TGeomUtils::DoLinesCross(a, b, c, d), cross) << Text(a, b, c, d) << " seed " << kSeed;
    ASSERT_EQ(gap(), gap_before) << Text(a, b, c, d) << " seed " << kSeed;
  }
}

}  // namespace
}  // namespace Ketril::Tools
