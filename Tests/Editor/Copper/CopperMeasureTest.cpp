#include "Editor/Copper/CopperMeasure.h"

#include <gtest/gtest.h>

#include <numbers>

#include "Tests/Editor/Model/SmallBoard.h"

namespace Ketril::Editor {
namespace {

constexpr double kPi = std::numbers::pi;

FillData Box(TCoord x1, TCoord y1, TCoord x2, TCoord y2) {
  return {{x1, y1, x2, y2}, 0};
}

TEST(CopperMeasure, CountsEachPlaceOnceAndNoHole) {
  const struct {
    const char* name;
    std::function<void(Board&)> fill;
    double area;
  } rows[] = {
      {"nothing", [](Board&) {}, 0},
      {"other layers", [](Board& board) { Put<Fill>(board, Box(0, 0, 500000, 500000), eV6_BottomLayer); }, 0},
      {"two boxes that overlap",
       [](Board& board) {
         Put<Fill>(board, Box(0, 0, 500000, 500000));
         Put<Fill>(board, Box(400000, 400000, 600000, 600000));
       },
       25e10 + 4e10 - 1e10},
      {"a cross of tracks",
       [](Board& board) {
         Put<Track>(board, TrackData{{-1000000, 0}, {1000000, 0}, 200000});
         Put<Track>(board, TrackData{{0, -1000000}, {0, 1000000}, 200000});
       },
       2 * (2e6 * 2e5 + kPi * 1e10) - 4e10},
      {"a drilled box",
       [](Board& board) {
         Put<Fill>(board, Box(-500000, -500000, 500000, 500000));
         Put<Via>(board, ViaData{}, eV6_MultiLayer);
       },
       1e12 - kPi * 140000.0 * 140000},
      {"a bare hole",
       [](Board& board) {
         PadData pad;
         pad.hole = pad.stack[0].x_size;
         pad.plated = false;
         Put<Pad>(board, pad, eV6_MultiLayer);
       },
       0},
      {"a pad in the hole of a region",
       [](Board& board) {
         RegionData region;
         region.rings = {
             {{{-900000, -900000}, {900000, -900000}, {900000, 900000}, {-900000, 900000}}, false},
             {{{-500000, -500000}, {500000, -500000}, {500000, 500000}, {-500000, 500000}}, true}};
         Put<Region>(board, region);
         Put<Fill>(board, Box(-100000, -100000, 100000, 100000));
       },
       324e10 - 100e10 + 4e10},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Board> board = MakeHost<Board>();
    row.fill(*board);
    EXPECT_NEAR(CopperArea(*board, eV6_TopLayer), row.area, 0.001 * row.area + 1);
  }
}

TEST(CopperMeasure, IsToldByTheBoard) {
  const Ref<Board> board = MakeHost<Board>();
  board->layers = {{eV6_TopLayer, 0, "F.Cu", {}, "signal"}, {eV6_BottomLayer, 31, "B.Cu", {}, "signal"}};
  const auto edge = [&](TCoord size) {
    RegionData ring;
    ring.rings = {{{{-size, -size}, {size, -size}, {size, size}, {-size, size}}, false}};
    Put<Region>(*board, ring, eV6_Mechanical1);
  };
  const auto measure = Probe<IPCB_BoardMeasure>(board);
  ASSERT_TRUE(measure);
  double area = -1;
  EXPECT_EQ(measure->GetState_Area(area), Status::Ok);
  EXPECT_EQ(area, 0) << "no outline";
  edge(1000);
  edge(100);
  EXPECT_EQ(measure->GetState_Area(area), Status::Ok);
  EXPECT_EQ(area, 4e6 - 4e4);

  Put<Fill>(*board, Box(0, 0, 100, 100));
  Ref<IPCB_CopperBodyList> bodies;
  EXPECT_EQ(measure->GetState_CopperBodyList(bodies), Status::Ok);
  Put<Fill>(*board, Box(0, 0, 200, 100));
  EXPECT_EQ(measure->GetState_LayerArea(bodies.Get(), eV6_TopLayer, area), Status::Ok);
  EXPECT_EQ(area, 1e4) << "as it was then";
  EXPECT_EQ(measure->GetState_LayerArea(bodies.Get(), eV6_TopOverlay, area), Status::Ok);
  EXPECT_EQ(area, 0);
  EXPECT_EQ(measure->GetState_LayerArea(nullptr, eV6_TopLayer, area), Status::Ok);
  EXPECT_EQ(area, 2e4) << "as it is now";
}

}  // namespace
}  // namespace Ketril::Editor
