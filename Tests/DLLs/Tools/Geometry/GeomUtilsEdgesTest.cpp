#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <set>
#include <tuple>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/PointUtils.h"

namespace Ketril::Tools {
namespace {

TEST(GeomUtilsEdges, IntersectionCase) {
  const TLEdgeType flat = {{5, 5}, {15, 5}};
  const TLEdgeType wide = {{-2000000002, -1000000001}, {2000000002, 1000000001}};
  const std::tuple<const char*, TLEdgeType, TLEdgeType, int, TDPPoint> rows[] = {
      {"through both", flat, {{10, 0}, {11, 10}}, 0, {10.5, 5}},
      {"polygon's left", flat, {{10, 5}, {11, 10}}, 1, {10, 5}},
      {"polygon's right in fixed left", flat, {{6, 6}, {5, 5}}, 6, {5, 5}},
      {"fixed right", flat, {{14, 4}, {16, 6}}, 8, {15, 5}},
      {"polygon's left in fixed right", flat, {{15, 5}, {16, 6}}, 9, {15, 5}},
      {"both right", flat, {{16, 6}, {15, 5}}, 10, {15, 5}},
      {"parallel", flat, {{0, 7}, {5, 7}}, 4, {5, 5}},
      {"collinear, right end shared", flat, {{15, 5}, {25, 5}}, 9, {15, 5}},
      {"the same edge", flat, {{5, 5}, {15, 5}}, 5, {5, 5}},
      {"a point as the fixed edge", {{5, 5}, {5, 5}}, flat, 13, {5, 5}},
      {"exact far out", wide, {{1111111110, 555555555}, {INT_MIN, INT_MAX}}, 1, {1111111110, 555555555}},
      {"off the line by 1 far out",
       wide,
       {{1111111110, 555555556}, {1111111110, 9}},
       0,
       {1111111110, 555555555}},
  };
  for (const auto& [name, fixed, poly, sum, expected_place] : rows) {
    TDPPoint place;
    EXPECT_EQ(TGeomUtils::IntersectionCase(fixed, poly, place), sum) << name;
    EXPECT_EQ(place, expected_place) << name << ' ' << place.x << ' ' << place.y;
  }
}

// Chain 1 comes from the left along the x axis and goes on to the right; with the place in its middle or in
// one of its vertices, the code is the same.
TEST(GeomUtilsEdges, IntersectionCode) {
  const std::tuple<const char*, TCoordPoint, TCoordPoint, int> rows[] = {
      {"crosses upwards", {0, -9}, {0, 9}, 1 + 8 * 0 + 64 * 2},
      {"crosses downwards", {0, 9}, {0, -9}, 2 + 8 * 0 + 64 * 1},
      {"touches from above", {5, 9}, {0, 9}, 0 + 8 * 1 + 64 * 2},
      {"touches from below", {0, -9}, {5, -9}, 1 + 8 * 2 + 64 * 0},
      {"comes along the reference, goes up", {-5, 0}, {0, 9}, 3 + 8 * 0 + 64 * 2},
      {"comes along the reference, goes down", {-5, 0}, {0, -9}, 3 + 8 * 2 + 64 * 0},
      {"goes off along the reference", {0, 9}, {-5, 0}, 4 + 8 * 0 + 64 * 1},
      {"comes along the right ray, goes up", {7, 0}, {0, 9}, 5 + 8 * 0 + 64 * 2},
      {"comes from below, goes along the right ray", {0, -9}, {7, 0}, 1 + 8 * 6 + 64 * 0},
      {"comes from above, goes along the right ray", {0, 9}, {7, 0}, 6 + 8 * 0 + 64 * 1},
      {"goes along", {-5, 0}, {7, 0}, 7},
      {"comes along", {7, 0}, {-5, 0}, 8 * 7},
      {"turns back above", {3, 9}, {1, 3}, 0 + 8 * 5 + 64 * 0},
  };
  const TCoordPoint o = {0, 0}, left = {-4, 0}, right = {4, 0}, none = {77, -33};
  for (const auto& [name, from, to, expected_code] : rows) {
    TCoordPoint place;
    const auto code = [&](TLEdgeType e1, TCoordPoint prev1, TCoordPoint next1, TLEdgeType e2,
                          TCoordPoint prev2, TCoordPoint next2) {
      return TGeomUtils::IntersectionCode(e1, e2, prev1, next1, prev2, next2, place);
    };
    EXPECT_EQ(code({o, right}, left, none, {o, to}, from, none), expected_code) << name << ", both left ends";
    EXPECT_EQ(place, o) << name;
    EXPECT_EQ(code({left, o}, none, right, {o, to}, from, none), expected_code) << name << ", right and left";
    EXPECT_EQ(code({left, o}, none, right, {from, o}, none, to), expected_code)
        << name << ", both right ends";
    if (to.y != 0) {
      EXPECT_EQ(code({left, right}, none, none, {o, to}, from, none), expected_code) << name << ", inside";
    }
  }
  TCoordPoint place;
  const auto lone = [&](TLEdgeType e1, TLEdgeType e2) {
    return TGeomUtils::IntersectionCode(e1, e2, {9, 0}, none, {0, 5}, none, place);
  };
  EXPECT_EQ(lone({{1, 0}, {4, 0}}, {{0, -4}, {0, 4}}), 0 + 8 * 2 + 64 * 1) << "before the left end";
  EXPECT_EQ(lone({{-4, 0}, {-1, 0}}, {{0, -4}, {0, 4}}), 0 + 8 * 1 + 64 * 2) << "beyond the right end";
  EXPECT_EQ(lone({left, right}, {{0, 1}, {0, 9}}), 0 + 8 * 5 + 64 * 0) << "before the other's left end";
  EXPECT_EQ(lone({left, right}, {{0, 9}, {0, 1}}), 0 + 8 * 5 + 64 * 0) << "beyond the other's right end";
  EXPECT_EQ(lone({o, o}, {o, {1, 5}}), -1) << "an edge without length";
  EXPECT_EQ(lone({o, right}, {o, {0, 9}}), -1) << "both chains turn back";
}

// Quarter turns keep the code, and edges that cross within both have one of two codes.
TEST(GeomUtilsEdges, CodesTurnWithTheEdges) {
  constexpr unsigned kSeed = 20255;
  std::mt19937 random(kSeed);
  for (int i = 0; i < 40000; ++i) {
    const int reach = i % 2 == 0 ? 3 : 1 << 30;
    std::uniform_int_distribution<int> some(-reach, reach);
    TCoordPoint p[8];
    for (TCoordPoint& q : p) q = {some(random), some(random)};
    if (p[4] == p[0] || p[5] == p[1] || p[6] == p[2] || p[7] == p[3]) continue;  // has no direction
    const auto code = [&] {
      TCoordPoint place;
      return TGeomUtils::IntersectionCode({p[0], p[1]}, {p[2], p[3]}, p[4], p[5], p[6], p[7], place);
    };
    const int before = code();
    if (TGeomUtils::DoLinesCross(p[0], p[1], p[2], p[3]) == LinesCross) {
      ASSERT_EQ(before, TGeomUtils::Clockwise(p[0], p[1], p[3]) > 0 ? 129 : 66)
          << "seed " << kSeed << " case " << i;
    }
    ASSERT_TRUE(before >= -1 && before < 8 * 8 * 8);
    for (TCoordPoint& q : p) q = {-q.y, q.x};
    ASSERT_EQ(code(), before) << "seed " << kSeed << " case " << i;
  }
}

// The lowest and highest coordinates: the answer is one of those there are, and nothing overflows.
TEST(GeomUtilsEdges, ExtremesHaveAnswers) {
  constexpr unsigned kSeed = 20256;
  std::mt19937 random(kSeed);
  const TCoord ends[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX};
  std::uniform_int_distribution<int> some(0, 6);
  const std::set<int> cases = {0, 1, 2, 4, 5, 6, 8, 9, 10};
  for (int i = 0; i < 20000; ++i) {
    TCoordPoint p[8];
    for (TCoordPoint& q : p) q = {ends[some(random)], ends[some(random)]};
    TDPPoint place;
    TCoordPoint rounded, foot;
    double distance;
    const int meeting = TGeomUtils::IntersectionCase({p[0], p[1]}, {p[2], p[3]}, place);
    const int code =
        TGeomUtils::IntersectionCode({p[0], p[1]}, {p[2], p[3]}, p[4], p[5], p[6], p[7], rounded);
    ASSERT_TRUE(code >= -1 && code < 8 * 8 * 8) << "seed " << kSeed << " case " << i;
    ASSERT_TRUE(cases.count(meeting) != 0 || code == -1) << "seed " << kSeed << " case " << i;
    TGeomUtils::Intersection(p[0], p[1], p[2], p[3], rounded);
    ASSERT_TRUE(TGeomUtils::DoLinesCross(p[0], p[1], p[2], p[3]) == LinesDontCross ||
                TGeomUtils::Intersect(p[0], p[1], p[2], p[3]))
        << "seed " << kSeed << " case " << i;
    ASSERT_GE(TGeomUtils::Distance(p[0], p[1]), 0);
    ASSERT_GE(TGeomUtils::PointToSegmentDistanceInt(p[0], p[1], p[2]), 0);
    const bool found = TGeomUtils::ProjectPointOntoSegment(p[0], p[1], p[2], foot, distance);
    ASSERT_EQ(found, distance >= 0);
    TGeomUtils::ArcCenterPoint(p[0], p[1], p[2].x);
    TGeomUtils::CreateArcTangentLine(p[0].x, p[0].y, p[1].x, p[2], p[3], i % 2 == 0, p[1].y, rounded, foot);
    TPointUtils::TranslateAboutPt(p[0], p[1].x % 2 == 0 ? 90 : p[1].x, p[2]);
    TPointUtils::Negate(p[3]);
    TPointUtils::AreCollinear(p[0], p[1], p[2]);
  }
}

}  // namespace
}  // namespace Ketril::Tools
