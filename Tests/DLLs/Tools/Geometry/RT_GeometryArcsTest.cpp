#include "DLLs/Tools/Geometry/RT_GeometryArcs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/RT_GeometryLines.h"

namespace Ketril::Tools {
namespace {

using Points = std::vector<GeoPointType>;

void ExpectPoints(int count, GeoPointType p1, GeoPointType p2, const Points& expected, const char* name) {
  ASSERT_EQ(count, static_cast<int>(expected.size())) << name;
  const GeoPointType hits[] = {p1, p2};
  for (int i = 0; i < count; ++i) {
    EXPECT_NEAR(PointDistance(hits[i], expected[i]), 0, 1e-9)
        << name << ": " << hits[i].x << ' ' << hits[i].y;
  }
}

TEST(GeometryCircles, MeetALine) {
  const CircleType circle = {0, 0, 1000};
  const std::tuple<const char*, LineType, Points, Points> rows[] = {
      {"P1 is nearer line's end", {-2000, 0, 2000, 0}, {{1000, 0}, {-1000, 0}}, {{1000, 0}, {-1000, 0}}},
      {"both ends near, as they are", {-1000, 0, 0, 1050}, {{-1000, 0}, {0, 1050}}, {{-1000, 0}, {0, 1050}}},
      {"one end near gives way", {1050, 0, 2000, 0}, {{1000, 0}, {-1000, 0}}, {{1000, 0}}},
      {"one end near, line misses", {0, 1050, 2000, 1050}, {{0, 1050}}, {{0, 1050}}},
      {"an end at 100 is not near", {1100, 0, 2000, 0}, {{1000, 0}, {-1000, 0}}, {{1000, 0}}},
      {"only P2 within the line", {-2000, 0, -500, 0}, {{1000, 0}, {-1000, 0}}, {{-1000, 0}}},
      {"near tangent", {-2000, 999.96, 2000, 999.96}, {{0, 999.96}}, {{0, 999.96}}},
      {"tangent beside the line", {500, 1000, 2000, 1000}, {{0, 1000}}, {}},
      {"inside", {-500, 0, 500, 0}, {{1000, 0}, {-1000, 0}}, {}},
      {"a point on the circle", {1000, 0, 1000, 0}, {}, {}},
  };
  for (const auto& [name, line, unbounded, bounded] : rows) {
    int count;
    GeoPointType p1, p2;
    IntersectCircleLine(circle, line, count, p1, p2, false);
    ExpectPoints(count, p1, p2, unbounded, name);
    IntersectCircleLine(circle, line, count, p1, p2, true);
    ExpectPoints(count, p1, p2, bounded, name);
  }
}

TEST(GeometryCircles, MeetEachOther) {
  const std::tuple<const char*, CircleType, CircleType, Points> rows[] = {
      {"right of the way first", {0, 0, 5}, {8, 0, 5}, {{4, -3}, {4, 3}}},
      {"distance rounded down", {0, 0, 5}, {8.9, 0, 5}, {{4.45, -3.3375}, {4.45, 3.3375}}},
      {"touching", {0, 0, 5}, {8, 0, 3}, {{5, 0}}},
      {"touching after rounding down", {0, 0, 5}, {10.9, 0, 5}, {{5.45, 0}}},
      {"touching, rounded past it", {0, 0, 0.1}, {2, 0, 1.9}, {{0.1, 0}}},
      {"inside", {0, 0, 5}, {1, 0, 3}, {}},
      {"equal, half a unit apart", {0, 0, 5}, {0.5, 0, 5}, {}},
      {"unequal, half a unit apart", {0, 0, 5}, {0.5, 0, 5.2}, {}},
  };
  for (const auto& [name, c1, c2, hits] : rows) {
    int count;
    GeoPointType p1, p2;
    IntersectCircles(c1, c2, p1, p2, count);
    ExpectPoints(count, p1, p2, hits, name);
  }
}

TEST(GeometryCircles, HoldPoints) {
  EXPECT_TRUE(IsPointInCircle({0, 0, 1000}, {0, 1100}));
  EXPECT_FALSE(IsPointInCircle({0, 0, 1000}, {0, 1100.5}));
  EXPECT_TRUE(IsPointInCircle({0, 0, 0}, {100, -100}));  // the box round the centre
  EXPECT_FALSE(IsPointInCircle({0, 0, 0}, {100.5, 0}));
}

ThinArcType Arc(double angle1, double angle2) {
  return {.Cx = 0, .Cy = 0, .Radius = 1000, .Angle1 = angle1, .Angle2 = angle2};
}

TEST(GeometryArcs, BoundsAreThoseOfTheArcsPoints) {
  constexpr unsigned kSeed = 20252;
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> some(0, 360);
  for (int i = 0; i < 3000; ++i) {
    const double angle1 = some(random), angle2 = some(random);
    LineType box, sampled = {1e9, 1e9, -1e9, -1e9};
    ArcBounds(Arc(angle1, angle2), box);
    for (double a = angle1; a <= (angle2 >= angle1 ? angle2 : angle2 + 360); a += 1) {
      sampled = {std::min(sampled.x1, 1000 * CosDeg(a)), std::min(sampled.y1, 1000 * SinDeg(a)),
                 std::max(sampled.x2, 1000 * CosDeg(a)), std::max(sampled.y2, 1000 * SinDeg(a))};
    }
    ASSERT_NEAR(PointDistance(box.P1(), sampled.P1()) + PointDistance(box.P2(), sampled.P2()), 0, 1e-6)
        << angle1 << " to " << angle2 << " seed " << kSeed;
  }
}

TEST(GeometryArcs, MeetALineWithinTheSweep) {
  const LineType across = {-2000, 0, 2000, 0};
  const LineType part = {-2000, 0, 500, 0};
  const std::tuple<const char*, ThinArcType, LineType, bool, Points> rows[] = {
      {"the left half", Arc(90, 270), across, true, {{-1000, 0}}},
      {"the right half", Arc(270, 90), across, true, {{1000, 0}}},
      {"angles to be normalised", Arc(-90, 450), across, true, {{1000, 0}}},
      {"the right half beyond the line", Arc(270, 90), part, true, {}},
      {"unbounded", Arc(270, 90), part, false, {{1000, 0}}},
  };
  for (const auto& [name, the_arc, line, check_bounds, hits] : rows) {
    int count;
    GeoPointType p1, p2;
    IntersectArcLine(the_arc, line, p1, p2, count, check_bounds);
    ExpectPoints(count, p1, p2, hits, name);
  }
}

TEST(GeometryArcs, HoldPoints) {
  const ThinArcType arc = Arc(-10, 90);
  EXPECT_TRUE(IsPointOnArc(1150, 0, arc, 50));
  EXPECT_TRUE(IsPointOnArc(1150, 0, arc, -50));
  EXPECT_FALSE(IsPointOnArc(1150.5, 0, arc, 50));
  EXPECT_TRUE(IsPointOnArc(0, 850, arc, 50));
  EXPECT_FALSE(IsPointOnArc(-1000, 0, arc, 50));
  EXPECT_FALSE(IsPointOnArc(0, 0, arc, 2000));  // the centre is seen below
}

// Whatever comes in, from next to nothing to no number: everything ends, and a count is a count.
TEST(GeometryArcs, ExtremesEnd) {
  constexpr unsigned kSeed = 20257;
  std::mt19937 random(kSeed);
  const double ends[] = {0, -0.0, 5e-324, -1e-300, 1, -1e8, INT_MAX, 1e160, 1e300, -1e300, INFINITY, NAN};
  std::uniform_int_distribution<int> some(0, 11);
  const auto value = [&] { return ends[some(random)]; };
  for (int i = 0; i < 50000; ++i) {
    const LineType l1 = {value(), value(), value(), value()}, l2 = {value(), value(), value(), value()};
    const ThinArcType arc = {
        .Cx = value(), .Cy = value(), .Radius = value(), .Angle1 = value(), .Angle2 = value()};
    GeoPointType p1, p2;
    LineType box;
    int count;
    bool found;
    double x, y;
    IntersectLines(l1, l2, i % 2 == 0, p1, found);
    IntersectInfiniteLines(l1.x1, l1.y1, l1.x2, l1.y2, l2.x1, l2.y1, l2.x2, l2.y2, x, y);
    IntersectCircleLine(arc.Circle(), l1, count, p1, p2, i % 2 == 0);
    ASSERT_TRUE(count >= 0 && count <= 2);
    IntersectCircles(arc.Circle(), {l1.x1, l1.y1, l1.x2}, p1, p2, count);
    ASSERT_TRUE(count >= 0 && count <= 2);
    IntersectArcLine(arc, l1, p1, p2, count);
    ASSERT_TRUE(count >= 0 && count <= 2);
    ArcBounds(arc, box);
    IsPointOnArc(l1.x1, l1.y1, arc, l1.x2);
    AngleAtVertex(l1.P1(), l1.P2(), l2.P1());
    OffsetLine(box, arc.Radius, true);
  }
}

}  // namespace
}  // namespace Ketril::Tools
