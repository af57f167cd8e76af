#include "DLLs/Tools/Geometry/PointUtils.h"

#include <gtest/gtest.h>

#include <climits>
#include <numbers>
#include <tuple>

namespace Ketril::Tools {
namespace {

TEST(PointUtils, TranslateAboutPt) {
  const std::tuple<TCoordPoint, double, TCoordPoint, TCoordPoint> rows[] = {
      {{20, 10}, 90, {10, 10}, {10, 20}},
      {{20, 11}, 180, {10, 10}, {0, 9}},
      {{20, 11}, 270, {10, 10}, {11, 0}},
      {{20, 10}, 0, {10, 10}, {20, 10}},
      {{20, 10}, 45, {10, 10}, {17, 17}},
      {{20, 10}, 450, {10, 10}, {10, 20}},
      {{INT_MAX, 0}, 45, {INT_MIN, 0}, {889516851, INT_MAX}}};
  for (const auto& [expected_p, angle, pivot, turned] : rows) {
    TCoordPoint p = expected_p;
    TPointUtils::TranslateAboutPt(p, angle, pivot);
    EXPECT_EQ(p, turned) << angle << " to " << p.x << ' ' << p.y;
  }
}

TEST(PointUtils, ExtremesWrapOrCompareRight) {
  EXPECT_EQ(TPointUtils::Add({INT_MAX, -1}, {1, 1}), (TCoordPoint{INT_MIN, 0}));
  EXPECT_EQ(TPointUtils::Subtract({INT_MIN, 0}, {1, 1}), (TCoordPoint{INT_MAX, -1}));
  EXPECT_EQ(TPointUtils::Manhattan({INT_MIN, 0}, {INT_MAX, 0}), -1);
  EXPECT_TRUE(TPointUtils::PointsNearEqual({0, 0}, {5, -5}, 5));
  EXPECT_FALSE(TPointUtils::PointsNearEqual({INT_MIN, 0}, {INT_MAX, 0}, 5));
  EXPECT_EQ(TPointUtils::Magnitude({INT_MIN, 0}), 2147483648.0);
  EXPECT_EQ(TPointUtils::Magnitude({-7, 7}), std::numbers::sqrt2 * 7);
  EXPECT_TRUE(TPointUtils::AreCollinear({2, 3}, {0, 0}));
  EXPECT_FALSE(TPointUtils::AreCollinear({2, 3}, {4, 5}));
  EXPECT_TRUE(TPointUtils::AreCollinear({INT_MAX, INT_MAX - 1}, {INT_MAX - 1, INT_MAX - 2}));  // off by 1
  EXPECT_TRUE(TPointUtils::AreCollinear({1, 1}, {2, 2}, {4, 4}));
  EXPECT_FALSE(TPointUtils::AreCollinear({INT_MIN, 0}, {INT_MAX, 1}, {0, 7}));
}

}  // namespace
}  // namespace Ketril::Tools
