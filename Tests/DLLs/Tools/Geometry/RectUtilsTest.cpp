#include "DLLs/Tools/Geometry/RectUtils.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <tuple>

namespace Ketril::Tools {
namespace {

TEST(RectUtils, Builds) {
  EXPECT_EQ(TRectUtils::SetRect(9, 8, 1, 2), (TCoordRect{1, 2, 9, 8}));
  EXPECT_EQ(TRectUtils::SetRectWithCenterDim(10, 10, 5, -5), (TCoordRect{8, 12, 12, 8}));
  EXPECT_EQ(TRectUtils::SetRectWithCornerDim(10, 10, -5, 5), (TCoordRect{10, 10, 5, 15}));
  EXPECT_EQ(TRectUtils::GetCenterPoint({-3, -4, 0, 1}), (TCoordPoint{-1, -1}));
  EXPECT_EQ(TRectUtils::GetCenterPoint({INT_MAX, INT_MIN, INT_MAX, INT_MAX}), (TCoordPoint{INT_MAX, 0}));
  EXPECT_EQ(TRectUtils::Area({0, 0, 46341, 46341}), -2147479015);
}

TEST(RectUtils, PointsInside) {
  const TCoordRect rect = {0, 0, 10, 10};
  EXPECT_FALSE(TRectUtils::IsPointIn(rect, {0, 5}));
  EXPECT_FALSE(TRectUtils::IsPointIn(rect, {5, 10}));
  EXPECT_TRUE(TRectUtils::IsPointIn(rect, {9, 9}));
  EXPECT_TRUE(TRectUtils::IsPointOnOrIn(rect, {0, 10}));
  EXPECT_FALSE(TRectUtils::IsPointOnOrIn(rect, {5, -1}));
  EXPECT_TRUE(TRectUtils::IsPointOnOrIn(rect, {-2, 12}, 2));
  EXPECT_FALSE(TRectUtils::IsPointOnOrIn(rect, {-3, 5}, 2));
  EXPECT_TRUE(TRectUtils::IsPointOnOrIn({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {INT_MIN, INT_MAX}, INT_MAX));
}

TEST(RectUtils, PairsOfRectangles) {
  const TCoordRect rect = {0, 0, 10, 10};
  const std::tuple<const char*, TCoordRect, bool, bool, TCoordRect> rows[] = {
      {"overlapping", {5, 5, 11, 9}, true, true, {5, 5, 10, 9}},
      {"common edge", {10, 2, 20, 8}, true, true, {10, 2, 10, 8}},
      {"common corner", {-5, -5, 0, 0}, true, true, {0, 0, 0, 0}},
      {"apart", {11, 0, 20, 10}, false, true, {0, 0, 10, 10}},
      {"round it", {-1, -1, 11, 11}, true, true, {0, 0, 10, 10}},
  };
  for (const auto& [name, other, shares_point, sticks_out, expected_shared] : rows) {
    TCoordRect shared = rect;
    EXPECT_EQ(TRectUtils::DoRectsIntersect(other, rect), shares_point) << name;
    EXPECT_EQ(TRectUtils::IsRectOutsideRect(other, rect), sticks_out) << name;
    EXPECT_EQ(TRectUtils::IsRectOnOrIn(other, rect), !sticks_out) << name;
    EXPECT_EQ(TRectUtils::Intersect(shared, other), shares_point) << name;
    EXPECT_EQ(shared, expected_shared) << name;
  }
  EXPECT_EQ(TRectUtils::Union({5, 5, 10, 10}, {}), (TCoordRect{0, 0, 10, 10}));
}

TEST(RectUtils, RotateBy90) {
  const TCoordRect unordered = {5, 6, 1, 2}, ordered = {1, 2, 5, 6}, once = {-4, 1, 0, 5};
  const std::tuple<double, TCoordRect> rows[] = {
      {0, unordered}, {45, ordered},        {90, once},           {179, once}, {180, {-3, -4, 1, 0}},
      {-89, ordered}, {270, {2, -3, 6, 1}}, {-90, {2, -3, 6, 1}}, {450, once}, {36e9, ordered}};
  for (const auto& [angle, turned] : rows) {
    TCoordRect rect = unordered;
    TRectUtils::RotateBy90(rect, {1, 1}, angle);
    EXPECT_EQ(rect, turned) << angle << " to " << rect.x1 << ' ' << rect.y1;
  }
}

TEST(RectUtils, ChangesInPlace) {
  TCoordRect rect = {0, 0, 10, 10};
  TRectUtils::Resize(rect, 20, -1, 0, 1);
  EXPECT_EQ(rect, (TCoordRect{10, -1, 20, 11}));
  TRectUtils::Inflate(rect, -6);
  EXPECT_EQ(rect, (TCoordRect{14, 5, 16, 5}));
  TRectUtils::Translate(rect, INT_MAX, -5);
  EXPECT_EQ(rect, (TCoordRect{INT_MIN + 13, 0, INT_MIN + 15, 0}));
  TRectUtils::ClipRectToMinMaxCoord(-5, 1, 5, 2, rect);
  EXPECT_EQ(rect, (TCoordRect{-5, 1, -5, 1}));
  TRectUtils::ClipRectToMinMaxCoord(9, 9, 0, 0, rect);
  EXPECT_EQ(rect, (TCoordRect{0, 0, 0, 0}));
}

// Whatever comes in, what is ordered comes out ordered.
TEST(RectUtils, ExtremesStayOrdered) {
  const TCoord ends[] = {INT_MIN, -1, 0, 1, INT_MAX};
  for (int i = 0; i < 5 * 5 * 5; ++i) {
    const TCoord a = ends[i % 5], b = ends[i / 5 % 5], c = ends[i / 25];
    for (const double angle : {90.0, -270.0, 1e300, -HUGE_VAL, std::nan("")}) {
      TCoordRect rect = {a, b, c, a};
      TRectUtils::RotateBy90(rect, {c, b}, angle);
      TRectUtils::Inflate(rect, c);
      EXPECT_TRUE(rect.left() <= rect.right() && rect.bottom() <= rect.top()) << a << ' ' << b << ' ' << c;
      TRectUtils::Area(rect);
    }
  }
}

}  // namespace
}  // namespace Ketril::Tools
