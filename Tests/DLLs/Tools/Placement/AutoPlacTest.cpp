#include "DLLs/Tools/Placement/AutoPlac.h"

#include <gtest/gtest.h>

#include <limits>

namespace Ketril::Tools {
namespace {

constexpr TCoord kHigh = std::numeric_limits<TCoord>::max();
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

TEST(AutoPlac, CorrectsUpAndDown) {
  const struct {
    TCoord coordinate;
    double grid;
    TCoord down, up;
  } rows[] = {
      {15, 10, 10, 20},
      {-15, 10, -10, 0},
      {20, 10, 20, 20},
      {-20, 10, -20, -20},
      {1, 10, 0, 10},
      {-1, 10, 0, 10},
      {0, 10, 0, 0},
      {4, 2.5, 2, 4},  // 2.5 goes to the even 2, and 4.5 to the even 4
      {8, 2.5, 8, 8},  // 7.5 is 8: on the grid
      {7, 2.5, 5, 8},  // 5 and 2.5
      {3, 0.3, 3, 3},  // 0.3 ten times
      {7, 0, 0, 7},    // no grid, no step up
      {7, -10, 0, 7},  // nor on one that goes down
      {7, kNone, -kHigh, 7},
      {kHigh, 10, 2147483640, kHigh},
      {-kHigh, 10, -2147483640, -2147483630},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(GridCorrectDown(row.coordinate, row.grid), row.down) << row.coordinate << " on " << row.grid;
    EXPECT_EQ(GridCorrectUp(row.coordinate, row.grid), row.up) << row.coordinate << " on " << row.grid;
  }
}

TEST(AutoPlac, ConversionsThatFailTellTheSide) {
  EXPECT_EQ(SafeRound(2.5), 2);
  EXPECT_EQ(SafeRound(-3.5), -4);
  EXPECT_EQ(SafeTrunc(-3.9), -3);
  EXPECT_EQ(SafeRound(2147483647.4), kHigh);
  EXPECT_EQ(SafeRound(2147483647.6), kHigh);
  EXPECT_EQ(SafeRound(-2147483648.0), -kHigh - 1);
  EXPECT_EQ(SafeRound(-2147483649.0), -kHigh);
  EXPECT_EQ(SafeTrunc(std::numeric_limits<double>::infinity()), kHigh);
  EXPECT_EQ(SafeTrunc(kNone), -kHigh);
}

TEST(AutoPlac, SnapsToTheNearerCorrection) {
  const struct {
    TCoord position, origin;
    double grid;
    TCoord snapped;
  } rows[] = {
      {14, 0, 10, 10},   {16, 0, 10, 20},   {15, 0, 10, 10},  // a tie goes down
      {-14, 0, 10, -10}, {-16, 0, 10, -10},                   // up from there leads to 0
      {-19, 0, 10, -10}, {19, 3, 10, 23},   {18, 3, 10, 13},  // a tie from the origin
      {-1, 3, 10, 3},    {23, 3, 10, 23},   {-kHigh - 1, kHigh, 10, kHigh},
  };
  for (const auto& row : rows)
    EXPECT_EQ(SnapToGrid(row.position, row.origin, row.grid), row.snapped)
        << row.position << " from " << row.origin;
}

}  // namespace
}  // namespace Ketril::Tools
