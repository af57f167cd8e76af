#include "DLLs/Tools/Geometry/RectUtils.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

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
  const struct {
    const char* Name;
    TCoordRect Other;
    bool SharesPoint, SticksOut;
    TCoordRect Shared;
  } rows[] = {
      {"inside", {1, 1, 9, 9}, true, false, {1, 1, 9, 9}},
      {"overlapping", {5, 5, 11, 9}, true, true, {5, 5, 10, 9}},
      {"common edge", {10, 2, 20, 8}, true, true, {10, 2, 10, 8}},
      {"common corner", {-5, -5, 0, 0}, true, true, {0, 0, 0, 0}},
      {"apart", {11, 0, 20, 10}, false, true, {0, 0, 10, 10}},
      {"round it", {-1, -1, 11, 11}, true, true, {0, 0, 10, 10}},
  };
  for (const auto& row : rows) {
    TCoordRect shared = rect;
    EXPECT_EQ(TRectUtils::DoRectsIntersect(row.Other, rect), row.SharesPoint) << row.Name;
    EXPECT_EQ(TRectUtils::IsRectOutsideRect(row.Other, rect), row.SticksOut) << row.Name;
    EXPECT_EQ(TRectUtils::IsRectOnOrIn(row.Other, rect), !row.SticksOut) << row.Name;
    EXPECT_EQ(TRectUtils::Intersect(shared, row.Other), row.SharesPoint) << row.Name;
    EXPECT_EQ(shared, row.Shared) << row.Name;
  }
  EXPECT_EQ(TRectUtils::Union({5, 5, 10, 10}, {}), (TCoordRect{0, 0, 10, 10}));
}

TEST(RectUtils, RotateBy90) {
  const TCoordRect unordered = {5, 6, 1, 2}, ordered = {1, 2, 5, 6}, once = {-4, 1, 0, 5};
  const struct {
    double Angle;
    TCoordRect Turned;
  } rows[] = {{0, unordered}, {45, ordered},        {90, once},           {179, once}, {180, {-3, -4, 1, 0}},
              {-89, ordered}, {270, {2, -3, 6, 1}}, {-90, {2, -3, 6, 1}}, {450, once}, {36e9, ordered}};
  for (const auto& row : rows) {
    TCoordRect rect = unordered;
    TRectUtils::RotateBy90(rect, {1, 1}, row.Angle);
    EXPECT_EQ(rect, row.Turned) << row.Angle << " to " << rect.x1 << ' ' << rect.y1;
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
  for (const TCoord a : ends) {
    for (const TCoord b : ends) {
      for (const TCoord c : ends) {
        TCoordRect rect = {a, b, c, a};
        const auto ordered = [&] { return rect.left() <= rect.right() && rect.bottom() <= rect.top(); };
        for (const double angle :
             {90.0, -270.0, 1e300, -std::numeric_limits<double>::infinity(), std::nan("")}) {
          TRectUtils::RotateBy90(rect, {c, b}, angle);
          EXPECT_TRUE(ordered());
        }
        TRectUtils::Inflate(rect, c);
        EXPECT_TRUE(ordered());
        TRectUtils::Area(rect);
        TRectUtils::SetRectWithCenterDim(a, b, c, a);
      }
    }
  }
}

}  // namespace
}  // namespace Ketril::Tools
