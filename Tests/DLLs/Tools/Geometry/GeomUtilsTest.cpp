#include "DLLs/Tools/Geometry/GeomUtils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <numbers>
#include <random>
#include <string>

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
  const struct {
    TCoordPoint From, To;
    TCoord Distance;
  } rows[] = {{{0, 0}, {0, -7}, 7}, {{3, 0}, {-4, 0}, 7},   {{0, 0}, {5, -5}, 7},     {{0, 0}, {3, 4}, 5},
              {{0, 0}, {1, 2}, 2},  {{lo, 5}, {-1, 5}, hi}, {{lo, lo}, {hi, hi}, hi}, {{lo, 0}, {0, 0}, hi}};
  for (const auto& row : rows)
    EXPECT_EQ(TGeomUtils::Distance(row.From, row.To), row.Distance) << Text(row.From);
}

TEST(GeomUtils, RectToRectDistance) {
  const struct {
    TCoordRect Other;
    TCoord Distance;
  } rows[] = {{{5, 5, 20, 20}, 0},       {{2, 2, 3, 3}, 0},      {{10, 0, 20, 10}, 0},  {{10, 10, 20, 20}, 0},
              {{17, 5, 20, 20}, 7},      {{-5, -20, 20, -9}, 9}, {{13, 14, 20, 20}, 5}, {{-9, -9, -5, -5}, 7},
              {{hi, 0, hi, 0}, hi - 10}, {{lo, lo, lo, lo}, hi}};
  for (const auto& row : rows) {
    EXPECT_EQ(TGeomUtils::RectToRectDistance({0, 0, 10, 10}, row.Other), row.Distance)
        << Text(row.Other.Location1());
  }
}

TEST(GeomUtils, Angles) {
  const struct {
    TCoordPoint To;
    double Eighths;
  } rows[] = {{{9, 0}, 0},  {{9, 9}, 1},   {{0, 9}, 2},  {{-9, 9}, 3},
              {{-9, 0}, 4}, {{-9, -9}, 5}, {{0, -9}, 6}, {{9, -9}, 7}};
  for (const auto& row : rows) {
    const TCoordPoint to = TPointUtils::Add({7, -3}, row.To);
    EXPECT_DOUBLE_EQ(TGeomUtils::Angle({7, -3}, to), row.Eighths * 45) << Text(row.To);
    EXPECT_NEAR(TGeomUtils::CartesianAngle({7, -3}, to), row.Eighths * pi / 4, 1e-7) << Text(row.To);
    EXPECT_EQ(TGeomUtils::VectorAngle(row.To.y, row.To.x), row.Eighths * pi / 4) << Text(row.To);
  }
  EXPECT_LT(TGeomUtils::CartesianAngle({lo, 0}, {hi, -1}), 2 * pi);
  EXPECT_EQ(TGeomUtils::CartesianAngle({0, 0}, {3, 1}), double{std::atan(1 / 3.0f)});
  EXPECT_EQ(TGeomUtils::VectorAngle(0, 0), 0);
  EXPECT_LT(TGeomUtils::VectorAngle(-1e-30, 1), 2 * pi);
  EXPECT_DOUBLE_EQ(TGeomUtils::VectorAngle(-1, 2), std::atan2(-1, 2) + 2 * pi);
}

TEST(GeomUtils, Clockwise) {
  const struct {
    const char* Name;
    TCoordPoint P0, P1, P2;
    int Turn;
  } rows[] = {
      {"on the line", {0, 0}, {10, 0}, {20, 0}, 0},
      {"left is 1", {0, 0}, {10, 0}, {5, 5}, 1},
      {"going left", {10, 0}, {0, 0}, {5, 5}, -1},
      {"going up", {0, 0}, {0, 10}, {5, 5}, -1},
      {"going down", {0, 10}, {0, 0}, {5, 5}, 1},
      {"oblique, right", {0, 0}, {3, 5}, {6, 9}, -1},
      {"equal points, above", {5, 5}, {5, 5}, {0, 6}, 1},
      {"equal points, beside", {5, 5}, {5, 5}, {9, 5}, 0},
      {"full range", {lo, lo}, {hi, hi}, {lo, hi}, 1},
      {"too fine for doubles", {lo, lo}, {hi, hi - 1}, {hi - 1, hi - 2}, 0},
  };
  for (const auto& row : rows) EXPECT_EQ(TGeomUtils::Clockwise(row.P0, row.P1, row.P2), row.Turn) << row.Name;
}

TEST(GeomUtils, MeetingSegments) {
  const struct {
    const char* Name;
    TCoordPoint A, B, C, D;
    TLineCrossType Cross;
    bool Intersect;
  } rows[] = {
      {"end to end", {0, 0}, {10, 0}, {10, 0}, {20, 0}, LinesTee, true},
      {"overlap", {0, 0}, {10, 0}, {5, 0}, {20, 0}, LinesColinear, true},
      {"apart on an axis", {0, 0}, {10, 0}, {11, 0}, {20, 0}, LinesDontCross, false},
      {"apart, but not on either side", {0, 0}, {0, 0}, {-5, 5}, {5, -5}, LinesTee, true},
      {"a point on a segment", {4, 4}, {4, 4}, {0, 0}, {10, 10}, LinesTee, true},
      {"a point beside a segment", {4, 5}, {4, 5}, {0, 0}, {10, 10}, LinesDontCross, false},
      {"too fine for doubles", {lo, lo}, {hi, hi - 1}, {hi - 1, hi - 2}, {hi, lo}, LinesDontCross, true},
      {"full range", {lo, lo}, {hi, hi}, {lo, hi}, {hi, lo}, LinesCross, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(TGeomUtils::DoLinesCross(row.A, row.B, row.C, row.D), row.Cross) << row.Name;
    EXPECT_EQ(TGeomUtils::Intersect(row.A, row.B, row.C, row.D), row.Intersect) << row.Name;
  }
  EXPECT_EQ(TGeomUtils::ClipCode({10, 0}, {0, 0, 10, 10}), 0u);
  EXPECT_EQ(TGeomUtils::ClipCode({11, 11}, {0, 0, 10, 10}), 5u);
  EXPECT_EQ(TGeomUtils::ClipCode({-1, -1}, {0, 0, 10, 10}), 10u);
}

// How many places two segments of whole coordinates from 0 to 2 share, two standing for more: they meet in
// multiples of 1/840 of their lengths.
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
  const struct {
    TCoordPoint A, B, P;
    double Fuzz;
    bool On;
  } rows[] = {
      {{0, 0}, {10, 0}, {5, 1}, 0, false},    {{0, 0}, {10, 0}, {5, 1}, 1, true},
      {{0, 0}, {10, 0}, {5, 1}, 0.99, false}, {{0, 0}, {10, 0}, {11, 1}, 1.5, true},
      {{0, 0}, {10, 7}, {5, 3}, 0, false},    {{0, 0}, {10, 7}, {5, 3}, std::numbers::sqrt2 / 2, true},
      {{0, 0}, {0, 0}, {3, 4}, 5, true},      {{0, 0}, {10, 0}, {5, 0}, -1, false},
      {{lo, lo}, {hi, hi}, {0, 1}, 0, false}, {{lo, lo}, {hi, hi}, {lo, hi}, 4e9, true}};
  for (const auto& row : rows) {
    EXPECT_EQ(TGeomUtils::IsPointOnLine(row.A, row.B, row.P, row.Fuzz), row.On)
        << Text(row.B, row.P) << row.Fuzz;
  }
}

TEST(GeomUtils, PointSectorCode) {
  const struct {
    const char* Name;
    TCoordPoint Start, Term, Test;
    int Code;
  } rows[] = {
      {"inside", {10, 0}, {0, 10}, {5, 5}, 1},
      {"outside", {10, 0}, {0, 10}, {-5, 5}, 0},
      {"on the start, far out", {10, 0}, {0, 10}, {2000, 0}, 2},
      {"on the end", {10, 0}, {0, 10}, {0, 1}, 2},
      {"fulcrum", {10, 0}, {0, 10}, {0, 0}, 2},
      {"passing 0", {0, -10}, {10, 10}, {5, 0}, 1},
      {"not in what passes 0", {0, -10}, {10, 10}, {-5, 0}, 0},
      {"no start", {0, 0}, {0, 10}, {5, 5}, -1},
      {"no end, on the fulcrum", {10, 0}, {0, 0}, {0, 0}, -1},
      {"no sector, equal directions", {1, 3}, {700000001, 2100000003}, {5, 5}, -1},
      {"on an oblique edge", {1, 3}, {0, 10}, {700000001, 2100000003}, 2},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(TGeomUtils::GetPointSectorCode({0, 0}, row.Start, row.Term, row.Test), row.Code) << row.Name;
  }
}

TEST(GeomUtils, ProjectPointOntoSegment) {
  const struct {
    const char* Name;
    TCoordPoint End0, End1, P;
    bool Found;
    TCoordPoint Foot;
    double Distance;
  } rows[] = {
      {"between", {10, 10}, {20, 10}, {13, 14}, true, {13, 10}, 4},
      {"at the first end", {10, 10}, {20, 10}, {10, 14}, true, {10, 10}, 4},
      {"at the second end", {10, 10}, {20, 10}, {20, 6}, true, {20, 10}, 4},
      {"before", {10, 10}, {20, 10}, {9, 10}, false, {-1, -1}, -1},
      {"beyond", {10, 10}, {20, 10}, {21, 10}, false, {-1, -1}, -1},
      {"a point", {10, 10}, {10, 10}, {10, 10}, false, {-1, -1}, -1},
      {"half away from zero of the way", {1, 1}, {4, 4}, {2, 3}, true, {3, 3}, std::sqrt(0.5)},
      {"the same backwards", {4, 4}, {1, 1}, {2, 3}, true, {2, 2}, std::sqrt(0.5)},
  };
  for (const auto& row : rows) {
    TCoordPoint foot;
    double distance;
    EXPECT_EQ(TGeomUtils::ProjectPointOntoSegment(row.End0, row.End1, row.P, foot, distance), row.Found)
        << row.Name;
    EXPECT_EQ(foot, row.Foot) << row.Name << Text(foot);
    EXPECT_DOUBLE_EQ(distance, row.Distance) << row.Name;
  }
}

TEST(GeomUtils, IntersectionOfLinesThroughPoints) {
  const struct {
    const char* Name;
    TCoordPoint P11, P12, P21, P22, Meeting;
  } rows[] = {
      {"beyond both, in halves", {0, 0}, {1, 1}, {9, 0}, {8, 1}, {5, 5}},
      {"a negative half", {0, 0}, {-1, -1}, {0, -1}, {-1, 0}, {-1, -1}},
      {"half away from the first point", {5, 5}, {4, 4}, {5, 4}, {4, 5}, {4, 4}},
      {"parallel", {1, 2}, {5, 2}, {0, 0}, {4, 0}, {1, 2}},
      {"parallel, one end shared", {1, 2}, {5, 2}, {9, 2}, {5, 2}, {5, 2}},
      {"parallel, both ends shared", {1, 2}, {5, 2}, {5, 2}, {1, 2}, {1, 2}},
      {"out of range", {0, 0}, {hi, 0}, {0, 2}, {hi, 1}, {hi, 0}},
      {"exact at full range", {lo, lo}, {hi, hi}, {hi - 1, hi}, {hi, hi - 1}, {hi, hi}},
  };
  for (const auto& row : rows) {
    TCoordPoint p;
    TGeomUtils::Intersection(row.P11, row.P12, row.P21, row.P22, p);
    EXPECT_EQ(p, row.Meeting) << row.Name << Text(p);
  }
}

TEST(GeomUtils, IntersectionOfLinesAlongDirections) {
  const struct {
    const char* Name;
    TDPPoint P0;
    TVector2D D0;
    TDPPoint P1;
    TVector2D D1;
    bool Found;
    TDPPoint Meeting;
  } rows[] = {
      {"oblique", {0, 0}, {2, 2}, {0, 4}, {1, -1}, true, {2, 2}},
      {"first vertical", {1, 7}, {0, 3}, {0, 3}, {2, 2}, true, {1, 4}},
      {"second vertical", {0, 3}, {2, 2}, {1, 7}, {9e-11, 3}, true, {1, 4}},
      {"both vertical", {1, 7}, {0, 3}, {2, 7}, {-9e-11, 3}, false, {}},
      {"equal slopes", {0, 0}, {1, 3}, {5, 0}, {-2, -6}, false, {}},
  };
  for (const auto& row : rows) {
    TDPPoint p;
    EXPECT_EQ(TGeomUtils::Intersection(row.P0, row.D0, row.P1, row.D1, p), row.Found) << row.Name;
    EXPECT_EQ(p, row.Meeting) << row.Name;
  }
}

TEST(GeomUtils, ArcCenterPoint) {
  const struct {
    TCoordPoint P1, P2;
    double Angle;
    TCoordPoint Center;
  } rows[] = {{{0, 0}, {100, 0}, 90, {50, 50}},   {{0, 0}, {100, 0}, -90, {50, -50}},
              {{0, 0}, {100, 0}, 270, {50, -50}}, {{0, 0}, {100, 0}, 120, {50, 29}},
              {{0, 0}, {100, 0}, 180, {50, 0}},   {{0, 0}, {100, 0}, -179.6, {50, 0}},
              {{3, 4}, {100, 0}, 359.7, {3, 4}},  {{3, 4}, {100, 0}, 0, {3, 4}},
              {{3, 4}, {100, 0}, 720, {3, 4}},    {{3, 4}, {3, 4}, 90, {3, 4}},
              {{7, 107}, {7, 7}, 90, {57, 57}},   {{lo, 0}, {0, 0}, 1, {-(1 << 30), hi}}};
  for (const auto& row : rows) {
    const TCoordPoint center = TGeomUtils::ArcCenterPoint(row.P1, row.P2, row.Angle);
    EXPECT_EQ(center, row.Center) << row.Angle << Text(center);
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
    const auto gap = [&] {
      return TGeomUtils::RectToRectDistance(TRectUtils::SetRect(a, b), TRectUtils::SetRect(c, d));
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
