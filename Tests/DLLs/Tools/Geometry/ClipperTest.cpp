// Named cases of the clipper, and what it makes of odd input.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <sstream>

#include "Tests/DLLs/Tools/Geometry/ClipperShapes.h"

namespace Ketril::Tools::Tests {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// "x,y x,y x,y; x,y ...": rings.
TShape FromText(const std::string& text) {
  TShape shape;
  std::istringstream rings(text);
  for (std::string ring_text; std::getline(rings, ring_text, ';');) {
    TRing& ring = shape.rings.emplace_back();
    std::istringstream words(ring_text);
    char comma;
    for (Tgpc_vertex vertex; words >> vertex.x >> comma >> vertex.y;) ring.push_back(vertex);
  }
  return shape;
}

// Each ring from its lowest vertex on, the rings in the order of their texts.
std::string Sorted(TShape shape) {
  std::vector<std::string> rings;
  for (std::size_t i = 0; i < shape.rings.size(); ++i) {
    TRing& ring = shape.rings[i];
    std::rotate(ring.begin(),
                std::min_element(
                    ring.begin(), ring.end(),
                    [](const auto& a, const auto& b) { return std::pair(a.y, a.x) < std::pair(b.y, b.x); }),
                ring.end());
    rings.push_back(ToText({{ring}, {shape.holes[i]}}));
  }
  std::sort(rings.begin(), rings.end());
  std::string text;
  for (const std::string& ring : rings) text += (text.empty() ? "" : "; ") + ring;
  return text;
}

struct TNamedCase {
  const char* name;
  TClipOperation operation;
  const char* subject;
  const char* clip;
  const char* result;
};

TEST(Clipper, NamedCases) {
  const TNamedCase cases[] = {
      {"both empty", eClipUnion, "", "", ""},
      {"nothing without a square", eClipDifference, "", "0,0 4,0 4,4 0,4", ""},
      {"a square and nothing in common", eClipIntersection, "0,0 4,0 4,4 0,4", "", ""},
      {"nothing and a square", eClipUnion, "", "0,0 0,4 4,4 4,0", "0,0 4,0 4,4 0,4"},
      {"nothing or else a square", eClipExclusiveOr, "", "0,0 0,4 4,4 4,0", "0,0 4,0 4,4 0,4"},
      {"part of an edge in common", eClipUnion, "0,0 4,0 4,8 0,8", "4,2 6,2 6,6 4,6",
       "0,0 4,0 4,2 6,2 6,6 4,6 4,8 0,8"},
      {"a whole edge in common leaves no seam", eClipUnion, "0,0 4,0 4,4 0,4", "4,0 9,0 9,4 4,4",
       "0,0 9,0 9,4 0,4"},
      {"part of a slanted edge in common", eClipUnion, "0,0 9,3 0,9", "3,1 6,2 6,-4",
       "6,-4 6,2 9,3 0,9 0,0 3,1"},
      {"an edge in common is no piece", eClipIntersection, "0,0 4,0 4,8 0,8", "4,2 6,2 6,6 4,6", ""},
      {"a corner in common", eClipUnion, "0,0 2,0 2,2 0,2", "2,2 4,2 4,4 2,4",
       "0,0 2,0 2,2 4,2 4,4 2,4 2,2 0,2"},
      {"the hole is a contour of its own", eClipDifference, "0,0 9,0 9,9 0,9", "3,3 6,3 6,6 3,6",
       "0,0 9,0 9,9 0,9; hole 3,3 3,6 6,6 6,3"},
      {"the hole touches the middle of an edge", eClipDifference, "0,0 8,0 8,8 0,8", "0,4 2,2 4,4 2,6",
       "0,0 8,0 8,8 0,8; hole 2,2 0,4 2,6 4,4"},
      {"the hole shares part of an edge", eClipDifference, "0,0 8,0 8,8 0,8", "0,2 4,2 4,6 0,6",
       "0,0 8,0 8,8 0,8 0,6 4,6 4,2 0,2"},
      {"a hole filled", eClipUnion, "0,0 9,0 9,9 0,9; 3,3 6,3 6,6 3,6", "3,3 6,3 6,6 3,6", "0,0 9,0 9,9 0,9"},
      {"an island in a hole", eClipExclusiveOr, "0,0 9,0 9,9 0,9; 4,4 5,4 5,5 4,5", "2,2 7,2 7,7 2,7",
       "0,0 9,0 9,9 0,9; 4,4 5,4 5,5 4,5; hole 2,2 2,7 7,7 7,2"},
      {"the same twice", eClipExclusiveOr, "0,0 9,1 5,7", "5,7 9,1 0,0", ""},
      {"the same contour twice is outside", eClipUnion, "0,0 9,1 5,7; 0,0 9,1 5,7", "", ""},
      {"a bow tie", eClipUnion, "0,0 4,4 4,0 0,4", "", "0,0 2,2 4,0 4,4 2,2 0,4"},
      {"a pentagram has a hole", eClipUnion, "0,10 60,10 10,50 30,-10 50,50", "",
       "30,-10 36.6666717529297,10 60,10 41.5789489746094,24.7368469238281 50,50 30,34 10,50 "
       "18.4210510253906,24.7368469238281 0,10 23.3333282470703,10; hole 23.3333282470703,10 "
       "18.4210510253906,24.7368469238281 30,34 41.5789489746094,24.7368469238281 36.6666717529297,10"},
      {"repeated and collinear vertices, an edge walked back", eClipUnion,
       "0,0 2,0 2,0 4,0 8,0 6,0 8,0 8,8 8,12 8,8 0,8 0,0", "", "0,0 8,0 8,8 0,8"},
      {"contours of no area", eClipUnion, "0,0 4,4 8,8; 1,1; 2,2 3,3; 5,0 5,0 5,0", "0,0 2,0 2,2 0,2",
       "0,0 2,0 2,2 0,2"},
      {"a crossing off the grid", eClipIntersection, "0,0 3,1 0,1", "0,1 1,0 1,1",
       "0.75,0.25 1,0.333328247070312 1,1 0,1"},
      {"fractions", eClipIntersection, "0.1,0.1 0.7,0.1 0.7,0.7 0.1,0.7", "0.3,0.3 0.9,0.3 0.9,0.9 0.3,0.9",
       "0.3,0.3 0.7,0.3 0.7,0.7 0.3,0.7"},
      {"a sliver over the whole range", eClipIntersection,
       "-2147483648,-2147483648 2147483647,2147483646 2147483647,2147483647",
       "-1000,-2000 1000,-2000 1000,2000 -1000,2000", "-1000,-1000.5 1000,999.5 1000,1000 -1000,-1000"},
      {"edges apart by one part in 2^62", eClipUnion, "0,0 2147483647,2147483646 0,2147483647",
       "0,0 2147483647,0 2147483646,2147483645",
       "0,0 2147483647,0 2147483646,2147483645 0,0 2147483647,2147483646 0,2147483647"},
  };
  for (const TNamedCase& named : cases) {
    EXPECT_EQ(Sorted(Clip(named.operation, FromText(named.subject), FromText(named.clip))), named.result)
        << named.name;
  }
}

TEST(Clipper, LeavesOutVerticesThatAreNotFinite) {
  const TShape square{{Rectangle(0, 0, 8, 8)}, {}}, none;
  const TShape odd{
      {{{0, 0}, {kNaN, 3}, {8, 0}, {kInfinity, 4}, {8, 8}, {2, -kInfinity}, {0, 8}}, {{kNaN, kNaN}}}, {}};
  EXPECT_EQ(Sorted(Clip(eClipUnion, odd, none)), Sorted(Clip(eClipUnion, square, none)));
  EXPECT_EQ(Sorted(Clip(eClipDifference, odd, square)), "");
}

// Magnitudes that a coordinate never has: nothing is promised but an end, closed rings and whole areas.
TEST(Clipper, KeepsAreasAtAnyMagnitude) {
  for (const double size : {1e-320, 1e-17, 1e-12, 1e-3, 0x1p31, 1e15, 1e150, 1.7e308}) {
    const TShape wide{{Rectangle(-size, -size / 4, size, size / 4)}, {}};
    const TShape high{{Rectangle(-size / 4, -size, size / 4, size)}, {}};
    const TShape both = Clip(eClipUnion, wide, high);
    if (size < 1e-16) {
      EXPECT_TRUE(both.rings.empty()) << size;
      continue;
    }
    ASSERT_EQ(both.rings.size(), 1u) << size;
    EXPECT_EQ(both.rings[0].size(), 12u) << size;
    EXPECT_NEAR(double(SignedArea(both) / ((long double)size * size)), 1.75, 1e-3) << size;
  }
}

TEST(Clipper, ResultMayBeAnInput) {
  const TPolygonOwner polygon(NewPolygon()), other(NewPolygon());
  TRing first = Rectangle(0, 0, 4, 4), second = Rectangle(2, 2, 6, 6);
  const Tgpc_vertex_list first_list{4, first.data()}, second_list{4, second.data()};
  AddContour(polygon.get(), &first_list, false);
  AddContour(other.get(), &second_list, false);
  ClipPolygons(eClipIntersection, polygon.get(), other.get(), polygon.get());
  ASSERT_EQ(polygon->num_contours, 1);
  EXPECT_EQ(polygon->contour[0].num_vertices, 4);
  EXPECT_EQ(polygon->contour[0].vertex[0].x, 2);
  ClipPolygons(eClipIntersection, polygon.get(), nullptr, polygon.get());
  EXPECT_EQ(polygon->num_contours, 0);
  ClipPolygons(eClipUnion, other.get(), nullptr, nullptr);
}

// Many edges through one point, or on one line, take no time to speak of.
TEST(Clipper, ManyEdgesThroughOnePlace) {
  constexpr int kArms = 3001;
  const TShape none;
  TShape fan{{{}}, {}}, pile;
  double doubled_area = 0;
  Tgpc_vertex before{1e6, 0};
  for (int i = 0; i < kArms; ++i) {
    const double angle = std::numbers::pi * i / kArms;
    const Tgpc_vertex arm{std::round(1e6 * std::cos(angle)), std::round(1e6 * std::sin(angle))};
    const double way = i % 2 ? -1 : 1;
    fan.rings[0].push_back({way * arm.x, way * arm.y});
    fan.rings[0].push_back({-way * arm.x, -way * arm.y});
    doubled_area += std::fabs(before.x * arm.y - before.y * arm.x);
    before = arm;
    pile.rings.push_back(Rectangle(0, 0, 10, 10));
  }
  doubled_area += 1e6 * before.y;
  EXPECT_EQ(Sorted(Clip(eClipUnion, pile, none)), "0,0 10,0 10,10 0,10");
  const TShape sectors = Clip(eClipUnion, fan, none);
  EXPECT_EQ(sectors.rings.size(), 1u);
  EXPECT_EQ(VertexCount(sectors), 3u * kArms);
  EXPECT_DOUBLE_EQ(double(SignedArea(sectors)), doubled_area / 2);
}

}  // namespace
}  // namespace Ketril::Tools::Tests
