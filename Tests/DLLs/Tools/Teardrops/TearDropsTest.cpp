// Teardrops on whole boards, through the exports: who gets which, and who loses it.
#include <sstream>

#include "Editor/Files/BoardFile.h"
#include "Editor/Rules/Clearance.h"
#include "Tests/DLLs/Tools/Teardrops/TearDropsBoard.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril {
namespace {

using Tests::DescribeBoard;
using Tests::Mil;
using TearDrops = TearDropsBoard;

TEST_F(TearDrops, WhoGetsHowMany) {
  constexpr std::int32_t kAdd = TeardropFlag_Add | TeardropFlag_ScaleWidth;
  const struct {
    const char* name;
    const char* board;
    std::int32_t flags;
    int count;
  } rows[] = {
      {"track through a via: both sides in one", "via 0,0 30/15 net A ; track -200,0 200,0 w10 top net A",
       kDefault, 1},
      {"rectangle crossed twice", "pad 0,0 60x40 rect top net A ; track -200,0 200,0 w10 top net A", kDefault,
       2},
      {"a track wider than the pad", "pad 0,0 20x20 round top net A ; track 0,0 200,0 w30 top net A",
       kDefault, 0},
      {"vias alone", "pad 0,0 60x60 round top net A ; via 200,0 30/15 net A ; track 0,0 200,0 w10 top net A",
       kAdd | TeardropFlag_Via, 1},
      {"surface pads alone",
       "pad 0,0 60x60 round hole 30 net A ; pad 200,0 60x60 top net A ; track 0,0 200,0 w10 top net A",
       kAdd | TeardropFlag_Pad, 1},
      {"T of one width", "track -200,0 200,0 w10 top net A ; track 0,0 0,200 w10 top net A", kDefault, 1},
      {"cross", "track -200,0 200,0 w10 top net A ; track 0,-200 0,200 w10 top net A", kDefault, 1},
      {"junction on a via is the via's",
       "via 0,0 30/15 net A ; track -200,0 200,0 w10 top net A ; track 0,0 0,200 w10 top net A", kDefault, 2},
      {"a stub beside a straight run: the junction has no area",
       "track 0,-100 0,0 w18 top net A ; track 0,0 0,100 w18 top net A ; track 1,1 0,0 w18 top net A",
       kDefault, 0},
      {"keep-out track", "via 0,0 30/15 net A ; track 0,0 200,0 w10 top net A keepout", kDefault, 0},
      {"selection: the via is selected",
       "via 0,0 30/15 net A selected ; via 200,0 30/15 net A ; track 0,0 200,0 w10 top net A",
       kDefault | TeardropFlag_Selected, 1},
      {"nothing asked for", "via 0,0 30/15 net A ; track 0,0 200,0 w10 top net A", kAdd, 0},
      {"empty board", "", kDefault, 0},
  };
  for (const auto& row : rows) {
    const Ref<Editor::Board> board = BoardFromText(row.board);
    Run(*board, row.flags);
    EXPECT_EQ(Count(*board), row.count) << row.name;
  }
}

// The first vertices of the only teardrop, in mil; lengths come from the rows of the options.
TEST_F(TearDrops, OutlinesOnABoard) {
  constexpr std::int32_t kStraight = kDefault | TeardropFlag_Straight;
  constexpr std::int32_t kUnscaled = kStraight & ~TeardropFlag_ScaleWidth;
  const struct {
    const char* name;
    const char* board;
    std::int32_t flags;
    std::string outline;  // none: no teardrop
  } rows[] = {
      {"via: 9 long, 21 wide", "via 0,0 30/15 ; track 0,0 200,0 w10 top", kStraight,
       "23.1421,-5 10.7121,-10.5 10.7121,10.5 23.1421,5"},
      {"round surface pad: 10 long, 20 wide", "pad 0,0 60x60 round top ; track 0,0 200,0 w10 top", kStraight,
       "39.5804,-5 28.2843,-10 28.2843,10 39.5804,5"},
      {"round through-hole pad: 18 long, 42 wide", "pad 0,0 60x60 round hole 30 ; track 0,0 200,0 w10 top",
       kStraight, "47.5804,-5 21.4243,-21 21.4243,21 47.5804,5"},
      {"rectangle, shrunk by 0.12", "pad 0,0 60x40 rect top ; track 0,0 200,0 w10 top", kStraight,
       "39.88,-5 29.76,-10 29.76,10 39.88,5"},
      {"oval, across", "pad 0,0 60x40 round top ; track 0,0 0,200 w8 top", kStraight,
       "4,27.88 8,19.76 -8,19.76 -4,27.88"},
      {"rectangle, half the run", "pad 0,0 60x40 rect top ; track 0,0 34.88,0 w10 top", kStraight, ""},
      {"rectangle, half the run at the full width", "pad 0,0 60x40 rect top ; track 0,0 34.88,0 w10 top",
       kUnscaled, "34.88,-5 29.76,-10 29.76,10 34.88,5"},
      {"a narrow track leaves a wide one", "track -200,0 200,0 w40 top ; track 0,0 0,200 w10 top", kStraight,
       "5,59.3649 14.1510,14.1333 -14.1510,14.1333 -5,59.3649"},
      {"via, curved", "via 0,0 30/15 ; track 0,0 200,0 w10 top", kDefault,
       "23.1421,-5 21.7508,-5.055 20.3925,-5.22 19.0671,-5.495 17.7747,-5.88 16.5152,-6.375 15.2887,-6.98 "
       "14.0951,-7.695 12.9345,-8.52 11.8068,-9.455 10.7121,-10.5 10.7121,10.5"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Editor::Board> board = BoardFromText(row.board);
    Run(*board, row.flags);
    const auto* region = Tests::Find<Editor::Region>(*board);
    ASSERT_EQ(region != nullptr, !row.outline.empty());
    if (!region) continue;
    const auto& points = region->data.rings[0].points;
    ASSERT_EQ(points.size(), row.flags & TeardropFlag_Straight ? 4u : 22u);
    std::istringstream outline(row.outline);
    char comma = 0;
    double x = 0, y = 0;
    for (std::size_t i = 0; outline >> x >> comma >> y; ++i) {
      EXPECT_NEAR(points[i].x, x * 10000, 2) << "vertex " << i;
      EXPECT_NEAR(points[i].y, y * 10000, 2) << "vertex " << i;
    }
  }
}

// The track of the older builder is as wide as the wide track, with which it is filed for junctions.
TEST_F(TearDrops, ATeardropOfTheOlderBuilderGoes) {
  const Ref<Editor::Board> board = BoardFromText(
      "track -200,0 200,0 w10 top net A ; track 0,0 0,20 w10 top net A teardrop ; track 0,0 0,200 w6 top net "
      "A");
  Run(*board, kDefault);
  board->objects.ForEach({eTrackObject}, [](const Editor::Primitive& track) {
    EXPECT_FALSE(track.Has(Editor::kFlag_TearDrop));
  });
}

// Teardrops that other programs wrote are taken for what they are: with and without a fill.
TEST_F(TearDrops, OfOtherProgramsGo) {
  const std::string head = R"((kicad_pcb (version 20240108) (generator "pcbnew")
  (layers (0 "F.Cu" signal) (31 "B.Cu" signal)) (net 0 "") (net 1 "GND")
  (segment (start 100 100) (end 110 100) (width 0.25) (layer "F.Cu") (net 1))
  (segment (start 110 100) (end 110 110) (width 0.5) (layer "F.Cu") (net 1))
  (via (at 100 100) (size 0.8) (drill 0.4) (layers "F.Cu" "B.Cu") (net 1))
  (zone (net 1) (net_name "GND") (layer "F.Cu") (name "copper") (hatch full 0.1) (min_thickness 0.1) (fill yes)
    (polygon (pts (xy 99 99) (xy 112 99) (xy 112 112) (xy 99 112))))
)";
  const std::string drops =
      R"(  (zone (net 1) (net_name "GND") (layer "F.Cu") (name "$teardrop_padvia$") (hatch full 0.1)
    (priority 30000) (attr (teardrop (type padvia))) (connect_pads yes (clearance 0)) (min_thickness 0.0254)
    (filled_areas_thickness no) (fill yes (thermal_gap 0.5) (thermal_bridge_width 0.5))
    (polygon (pts (xy 100.8 99.875) (xy 100.2 99.65) (xy 99.9 100) (xy 100.2 100.35) (xy 100.8 100.125)))
    (filled_polygon (layer "F.Cu")
      (pts (xy 100.8 99.875) (xy 100.2 99.65) (xy 99.9 100) (xy 100.2 100.35) (xy 100.8 100.125))))
  (zone (net 1) (net_name "GND") (layer "F.Cu") (name "$teardrop_track$") (hatch full 0.1)
    (priority 30001) (attr (teardrop (type track_end))) (min_thickness 0.0254) (fill yes)
    (polygon (pts (xy 109.5 99.875) (xy 110 99.75) (xy 110.2 100) (xy 110 100.25) (xy 109.5 100.125))))
)";
  const Ref<Editor::Board> board = Editor::ReadBoardText(head + drops + ")\n");
  EXPECT_EQ(Count(*board), 2);
  Run(*board, kDefault & ~TeardropFlag_Add);
  EXPECT_EQ(Count(*board), 0);
  EXPECT_EQ(Editor::WriteBoardText(*board), head + ")\n");
}

constexpr const char* kMixed = R"(
  via 0,0 30/15 net A
  pad 300,0 60x40 rect top net A rot 30
  pad 600,0 50x50 round hole 25 net A
  track -300,0 300,0 w10 top net A
  track 300,0 600,0 w10 top net A
  track 150,0 150,300 w10 top net A
  track -300,0 -300,300 w40 top net A
  track 150,300 450,300 w10 top net A
  arc 600,300 r300 180..270 w10 top net A
  via 150,300 30/15 net A
)";

TEST_F(TearDrops, AgainIsTheSameAndRemovingGivesTheBoardBack) {
  for (const std::int32_t straight : {0, int{TeardropFlag_Straight}}) {
    const Ref<Editor::Board> board = BoardFromText(kMixed);
    const std::vector<std::string> before = DescribeBoard(*board, true);
    Run(*board, kDefault | straight);
    const std::vector<std::string> once = DescribeBoard(*board, true);
    EXPECT_GT(Count(*board), 5);
    Run(*board, kDefault | straight);
    EXPECT_EQ(DescribeBoard(*board, true), once);
    Run(*board, (kDefault | straight) & ~TeardropFlag_Add);
    EXPECT_EQ(DescribeBoard(*board, true), before);
  }
}

TEST_F(TearDrops, WhatBreaksAClearanceComesOffUnlessForced) {
  // A straight flank passes 4 mil beside the end of a track of another net.
  constexpr const char* kBoard =
      "via 0,0 40/20 net A ; track 0,0 200,0 w10 top net A ; track 25,19 200,19 w6 top net B";
  const Ref<Editor::Board> board = BoardFromText(kBoard);
  board->setup.clearance = Mil(6);
  ASSERT_TRUE(board->Clearances().CheckBoard().empty());
  Run(*board, kDefault | TeardropFlag_Straight | TeardropFlag_Force,
      {{u"TeardropParam_PercentForVias_Length", u"100"}, {u"TeardropParam_PercentForVias_Width", u"100"}});
  EXPECT_EQ(Count(*board), 1);
  EXPECT_FALSE(board->Clearances().CheckBoard().empty());
  Tools_RemoveDropsViolation(board.Get());
  EXPECT_EQ(Count(*board), 0);
  Run(*board, kDefault | TeardropFlag_Straight,
      {{u"TeardropParam_PercentForVias_Length", u"100"}, {u"TeardropParam_PercentForVias_Width", u"100"}});
  EXPECT_EQ(Count(*board), 0);
}

TEST_F(TearDrops, MarksAndSelection) {
  const Ref<Editor::Board> board = BoardFromText(kMixed);
  Run(*board, kDefault);
  int of_pads = 0, of_vias = 0;
  board->objects.ForEach({eRegionObject}, [&](Editor::Primitive& region) {
    EXPECT_EQ(region.GetNet()->data.name, u"A");
    EXPECT_EQ(region.state.layer, TV7_Layer(eV6_TopLayer));
    of_pads += region.Has(Editor::kFlag_Misc1) ? 1 : 0;
    of_vias += region.Has(Editor::kFlag_Misc2) ? 1 : 0;
  });
  EXPECT_GE(of_pads, 4);
  EXPECT_GE(of_vias, 2);
  const int all = Count(*board);
  Editor::Via* via = Tests::Find<Editor::Via>(*board);
  via->SetFlag(Editor::kFlag_Selected, true);
  Tools_RemoveTearDropsOnSelected(board.Get());
  EXPECT_EQ(Count(*board), all - 1);
}

}  // namespace
}  // namespace Ketril
