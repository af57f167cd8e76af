#include "DLLs/Tools/Geometry/RT_GeometryLines.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"

namespace Ketril::Tools {
namespace {

TEST(GeometryLines, RaysOffsetsAndSides) {
  LineType line;
  LineToRay({10, 20, 13, 24}, line);
  EXPECT_NEAR(PointDistance(line.P1(), {10, 20}) + PointDistance(line.P2(), {-0.6, -0.8}), 0, 1e-15);
  line = {0, 0, 30, 40};
  OffsetLine(line, 10, true);
  EXPECT_EQ(line, (LineType{-8, 6, 22, 46}));
  OffsetLine(line, 10, false);
  EXPECT_EQ(line, (LineType{0, 0, 30, 40}));
  line = {5, 5, 5, 5};
  OffsetLine(line, 10, true);
  EXPECT_EQ(line, (LineType{5, 5, 5, 5}));
  EXPECT_EQ(SideOfLine(0, 0, 10, 0, 5, 1e-9), 1);
  EXPECT_EQ(SideOfLine({0, 0, 10, 0}, {5, -1}), -1);
  EXPECT_EQ(SideOfLine(0, 0, 10, 10, 70, 70), 0);
  EXPECT_TRUE(ArePerpendicular({0, 0, 2, 1}, {5, 5, 4, 7}, 0));
  EXPECT_FALSE(ArePerpendicular({0, 0, 2, 1}, {5, 5, 6, 7}, 3.9));  // 4 off
}

TEST(GeometryLines, DistanceOfAPoint) {
  const std::tuple<const char*, GeoPointType, LineType, double> rows[] = {
      {"beside a vertical one", {7, 3}, {2, 5, 2, 0}, 5},
      {"beside the end of a vertical one", {7, 5}, {2, 5, 2, 0}, 5},
      {"above a horizontal one", {3, 7}, {5, 2, 0, 2}, 5},
      {"beside an oblique one", {0, 5}, {4, 3, 0, 0}, 4},
      {"beyond an oblique one", {7, 7}, {0, 0, 4, 3}, 5},
      {"from a point", {3, 4}, {0, 0, 0, 0}, 5},
  };
  for (const auto& [name, p, segment, distance] : rows)
    EXPECT_DOUBLE_EQ(PointToSegmentDistance(p, segment), distance) << name;
}

TEST(GeometryLines, Intersect) {
  const std::tuple<const char*, LineType, LineType, bool, bool, GeoPointType> rows[] = {
      {"line2's first end goes first", {0, 0, 1000, 0}, {1000, 50, 0, 50}, true, true, {1000, 50}},
      {"line2's second end", {0, 0, 1000, 0}, {500, 900, 500, -90}, true, true, {500, -90}},
      {"line1's first end", {0, 0, 1000, 0}, {-70, -500, -70, 500}, true, true, {0, 0}},
      {"line1's second end", {0, 0, 1000, 0}, {1070, -500, 1070, 500}, true, true, {1000, 0}},
      {"an end at 100 is not moved", {0, 0, 1000, 0}, {500, 100, 500, 900}, true, true, {500, 100}},
      {"past 100", {0, 0, 1000, 0}, {500, 100.001, 500, 900}, true, false, {500, 0}},
      {"past 100, unbounded", {0, 0, 1000, 0}, {500, 100.001, 500, 900}, false, true, {500, 0}},
      {"collinear and overlapping", {0, 0, 1000, 0}, {2000, 0, 500, 0}, true, true, {500, 0}},
      {"collinear and apart", {0, 0, 1000, 0}, {2000, 0, 3000, 0}, false, false, {0, 0}},
      {"parallel", {0, 0, 1000, 1000}, {0, 500, 1000, 1500}, false, false, {0, 0}},
      {"a point off the line", {0, 0, 1000, 0}, {500, 500, 500, 500}, false, false, {0, 0}},
      {"a point on the line", {500, 0, 500, 0}, {0, 0, 1000, 0}, true, true, {500, 0}},
  };
  for (const auto& [name, line1, line2, check_bounds, expected_found, expected_point] : rows) {
    GeoPointType point;
    bool found;
    IntersectLines(line1, line2, check_bounds, point, found);
    EXPECT_EQ(found, expected_found) << name;
    EXPECT_NEAR(PointDistance(point, expected_point), 0, 1e-9) << name;
  }
}

TEST(GeometryLines, IntersectInfinite) {
  const std::tuple<const char*, LineType, LineType, int, GeoPointType> rows[] = {
      {"first vertical", {1, 0, 1, 5}, {0, 3, 2, 5}, 1, {1, 4}},
      {"a point is vertical", {1, 8, 1, 8}, {0, 3, 2, 5}, 1, {1, 4}},
      {"oblique", {0, 0, 1, 1}, {0, 4, 1, 3}, 1, {2, 2}},
      {"as good as parallel", {0, 0, 1, 1e-9}, {0, 1, 1, 1}, 0, {0, 0}},
      {"steep, far out", {1e9, 1e9, 1e9 + 1, -1e9}, {1e9 - 5, 1e9, 1e9 + 5, 1e9}, 1, {1e9, 1e9}},
  };
  for (const auto& [name, l1, l2, result, point] : rows) {
    double x = 9, y = 9;
    EXPECT_EQ(IntersectInfiniteLines(l1.x1, l1.y1, l1.x2, l1.y2, l2.x1, l2.y1, l2.x2, l2.y2, x, y), result)
        << name;
    EXPECT_NEAR(CoordDistance(x, y, point.x, point.y), 0, 1e-6) << name;
  }
}

TEST(GeometryBoxes, ReachOutBy100) {
  const LineType box = {0, 0, 1000, 500};
  EXPECT_TRUE(IsPointInBox(box, {-100, 600}));
  EXPECT_FALSE(IsPointInBox(box, {-100.5, 0}));
  EXPECT_FALSE(IsPointInBox(box, {0, 600.5}));
  EXPECT_TRUE(IsPointInSegmentBox(1100, -100, 1000, 0, 0, 500));
  EXPECT_TRUE(DoBoxesTouch(box, {1100, 600, 2000, 2000}));
  EXPECT_FALSE(DoBoxesTouch({1100.5, 0, 2000, 500}, box));
}

TEST(GeometryBoxes, NearASegment) {
  const std::tuple<const char*, GeoPointType, LineType, bool> rows[] = {
      {"corner of a horizontal one", {1150, 150}, {0, 0, 1000, 0}, true},
      {"corner of a point", {150, 150}, {0, 0, 0, 0}, false},
      {"corner of an oblique one", {1140, 1140}, {0, 0, 1000, 1000}, false},
      {"beyond the end of an oblique one", {1100, 1100}, {0, 0, 1000, 1000}, true},
      {"in the box, but off the line", {0, 1000}, {0, 0, 1000, 1000}, false},
  };
  for (const auto& [name, p, s, near] : rows) {
    EXPECT_EQ(IsPointNearSegment(p.x, p.y, s.x1, s.y1, s.x2, s.y2, 50), near) << name;
  }
}

TEST(GeometryLines, MeetingsTurnAndMirrorWithTheLines) {
  constexpr unsigned kSeed = 20251;
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> some(-40, 40);
  const auto line = [&] {
    return LineType{some(random) * 25.0, some(random) * 25.0, some(random) * 25.0, some(random) * 25.0};
  };
  for (int i = 0; i < 20000; ++i) {
    const LineType l1 = line(), l2 = line();
    for (const bool bounds : {false, true}) {
      GeoPointType p, q;
      bool found, found_moved;
      IntersectLines(l1, l2, bounds, p, found);
      for (const bool mirror : {false, true}) {
        const auto move = [&](GeoPointType v) {
          return mirror ? GeoPointType{-v.x, v.y} : GeoPointType{-v.y, v.x};
        };
        IntersectLines(MakeLine(move(l1.P1()), move(l1.P2())), MakeLine(move(l2.P1()), move(l2.P2())), bounds,
                       q, found_moved);
        ASSERT_EQ(found, found_moved) << "seed " << kSeed << " case " << i;
        if (found) {
          ASSERT_NEAR(PointDistance(move(p), q), 0, 1e-6 * (1 + PointLength(q)))
              << "seed " << kSeed << " case " << i;
        }
      }
      // A meeting within bounds is on both.
      if (found && bounds) {
        ASSERT_LE(PointToSegmentDistance(p, l1), 100 + 1e-9) << "seed " << kSeed << " case " << i;
        ASSERT_LE(PointToSegmentDistance(p, l2), 100 + 1e-9) << "seed " << kSeed << " case " << i;
      }
    }
  }
}

}  // namespace
}  // namespace Ketril::Tools
