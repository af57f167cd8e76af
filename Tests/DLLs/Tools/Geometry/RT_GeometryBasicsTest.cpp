#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <tuple>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {
namespace {

TEST(GeometryRounding, HalvesAndEndsOfTheRange) {
  const std::tuple<double, TCoord, TCoord> rows[] = {
      {0.5, 0, 1},
      {-1.5, -2, -2},
      {-2.5, -2, -3},
      {0.49999999999999994, 0, 0},
      {2147483646.5, INT_MAX - 1, INT_MAX},
      {4503599627370497.0, INT_MAX, INT_MAX},
      {-1e300, INT_MIN, INT_MIN},
      {INFINITY, INT_MAX, INT_MAX},
      {NAN, 0, 0},
  };
  for (const auto& [value, even, away] : rows) {
    EXPECT_EQ(Round(value), even) << value;
    EXPECT_EQ(TGeomUtils::Nearest(value), away) << value;
  }
}

TEST(GeometryAngles, NormalizeAndQuadrant) {
  const std::tuple<double, double, int> rows[] = {
      {0, 0, 1},        {360, 360, 4},        {720, 360, 4}, {720.5, 0.5, 1},
      {1080, 0, 1},     {-90, 270, 4},        {-720, 0, 1},  {-725.5, 354.5, 4},
      {90, 90, 2},      {89.999, 89.999, 1},  {180, 180, 3}, {2147483645.5, 125.5, 2},
      {-1e20, 0, 1},    {2147483646.0, 0, 1}, {1e10, 0, 1},  {-2147483645.25, 234.75, 3},
      {-1e-20, 360, 4},
  };
  for (const auto& [input, normal, quadrant] : rows) {
    double angle = input;
    NormalizeAngle(angle);
    EXPECT_EQ(angle, normal) << input;
    EXPECT_EQ(AngleQuadrant(input), quadrant) << input;
  }
}

TEST(GeometryAngles, OfAPoint) {
  const double rows[][3] = {{0, 0, 270},  {0, 1, 90},   {0, -1, 270},  {1, 0, 0},    {1, 1, 45},
                            {-1, 1, 135}, {-1, 0, 180}, {-1, -1, 225}, {1, -1, 315}, {1, -1e-20, 0}};
  for (const auto& [x, y, angle] : rows) EXPECT_DOUBLE_EQ(PointAngle(x + 7, y, 7, 0), angle) << x << ' ' << y;
}

TEST(GeometryAngles, InSweep) {
  const std::tuple<double, double, double, bool> rows[] = {
      {350, 10, 0, true},  {10, 350, 0, false},    {350, 10, 180, false},  {350, 10, 349.9995, true},
      {90, 90, 91, false}, {90, 90, 90.001, true}, {0, 90, 90.0009, true}, {0, 90, 90.0011, false},
      {0, 90, 360, false}, {0, 360, 360, true}};
  for (const auto& [a1, a2, t, in] : rows)
    EXPECT_EQ(IsAngleInSweep(a1, a2, t), in) << a1 << ' ' << a2 << ' ' << t;
}

TEST(GeometryAngles, AtAVertex) {
  const std::tuple<const char*, GeoPointType, GeoPointType, double> rows[] = {
      {"first is the higher", {0, 1}, {1, 0}, 270},
      {"clockwise, but first is the lower", {-1, 0}, {0, 1}, 90},
      {"equal heights", {1, 1}, {-1, 1}, 90},
      {"nothing on one side", {1e-13, 0}, {0, 1}, 0},
      {"one direction, first is the higher", {2, 2}, {1, 1}, 360},
  };
  for (const auto& [name, p1, p2, angle] : rows) EXPECT_NEAR(AngleAtVertex(p1, {}, p2), angle, 2e-6) << name;
}

TEST(GeometryPoints, ZeroStaysAndNearIsBelowTheTolerance) {
  GeoPointType p;
  UnitVector(p);
  EXPECT_EQ(p, GeoPointType{});
  EXPECT_TRUE(PointsNear({0, 0}, {99.9, -99.9}));  // each coordinate by itself
  EXPECT_FALSE(PointsNear({0, 0}, {0, 100}));
  EXPECT_TRUE(IsEqual(1, 3, 2));
  EXPECT_FALSE(IsEqual(1, 3.0001, 2));
}

TEST(GeometryCoordinates, Rotate) {
  const std::tuple<TCoordPoint, double, bool, TCoordPoint> rows[] = {
      {{3, 1}, 0, true, {-3, 1}},
      {{3, 1}, 90, false, {-1, 3}},
      {{3, 1}, 90, true, {-1, -3}},
      {{3, 1}, 180, false, {-3, -1}},
      {{3, 1}, 270, false, {1, -3}},
      {{3, 1}, -90, false, {1, -3}},
      {{10, 0}, 45, false, {7, 7}},
      {{7, 7}, NAN, false, {0, 0}},
      {{5, INT_MIN}, 90, false, {INT_MIN, 5}},
      {{INT_MAX, INT_MAX}, 45, false, {0, INT_MAX}},
  };
  for (const auto& [before, angle, mirror, turned] : rows) {
    TCoordPoint p = before;
    RotateCoord(p.x, p.y, angle, mirror);
    EXPECT_EQ(p, turned) << before.x << ' ' << angle << " to " << p.x << ' ' << p.y;
  }
  for (const double angle : {90.0, 450.0, -270.0, 1170.0, 1e10}) {
    TCoordPoint p = {20, 10};
    RotateCoordAbout(p.x, p.y, 10, 10, angle);
    EXPECT_EQ(p, (angle == 1e10 ? TCoordPoint{20, 10} : TCoordPoint{10, 20})) << angle;
  }
}

TEST(GeometryCoordinates, MirrorByMode) {
  TCoordPoint p = {20, 10};
  MirrorCoord(p.x, p.y, 15, 2);
  MirrorCoord(p.x, p.y, 15, 0);
  EXPECT_EQ(p, (TCoordPoint{10, 10}));
  MirrorCoord(p.x, p.y, 15, 1);
  EXPECT_EQ(p, (TCoordPoint{10, 20}));
}

// Whatever comes in: an end, and an angle in range.
TEST(GeometryAngles, ExtremesEnd) {
  for (const double a : {1e300, -1e300, 5e-324, 2147483645.999, -2147483645.999, HUGE_VAL, 0.0}) {
    double angle = a;
    NormalizeAngle(angle);
    EXPECT_TRUE(angle >= 0 && angle <= 360) << a;
    TCoordPoint p = {INT_MIN, INT_MAX};
    RotateCoordAbout(p.x, p.y, INT_MAX, INT_MIN, a);
    for (const double b : {1e300, -1e300, -5e-324, 1.0}) {
      const double seen = PointAngle(a, b, 0, 0);
      EXPECT_TRUE(seen >= 0 && seen < 360) << a << ' ' << b;
    }
  }
  EXPECT_EQ(AngleQuadrant(NAN), 1);
}

}  // namespace
}  // namespace Ketril::Tools
