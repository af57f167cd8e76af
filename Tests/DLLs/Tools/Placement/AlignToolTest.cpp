// The arrange commands on boards, through the exports.
#include "DLLs/Tools/Placement/AlignTool.h"

#include <gtest/gtest.h>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "Platform/Messages.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"

namespace Ketril::Tools {
namespace {

using AlignTool = PlacementBoard;

TEST_F(AlignTool, WhatBecomesANode) {
  const struct {
    const char* name;
    const char* board;
    const char* after;  // lined up on the left
  } rows[] = {
      {"components, but no locked one",
       "component U1 at 500,100 selected { pad 0,0 60x60 }; component U2 at 300,400 selected { pad 0,0 60x60 "
       "};"
       "component U3 at 100,700 selected locked { pad 0,0 60x60 }",
       "U1 300,100 U2 300,400 U3 100,700"},
      {"one selected",
       "component U1 at 500,100 selected { pad 0,0 60x60 }; component U2 at 300,400 { pad 0,0 60x60 }",
       "U1 500,100 U2 300,400"},
      {"selected members stand for their component, once",
       "component U1 at 500,100 { pad 0,0 60x60 selected; pad 100,0 60x60 selected };"
       "component U2 at 300,400 { pad 0,0 60x60 selected }",
       "U1 300,100 pad 300,100 pad 400,100 U2 300,400 pad 300,400"},
      {"members of a locked component do not",
       "component U1 at 500,100 locked { pad 0,0 60x60 selected }; via 300,400 60/30 selected; via 200,700 "
       "60/30 selected",
       "U1 500,100 pad 500,100 via 200,400 via 200,700"},
      {"a component with its members is one plain thing",
       "component U1 at 500,100 selected { pad 0,0 60x60 selected }; via 300,400 60/30 selected",
       "U1 300,100 pad 300,100 via 300,400"},
      {"a free object first, a component later",
       "via 100,100 60/30 selected; component U1 at 500,400 selected { pad 0,0 60x60 };"
       "component U2 at 700,700 { pad 0,0 60x60 selected }",
       "via 100,100 U1 100,400 U2 100,700 pad 100,700"},
      {"a component first: members go by themselves",
       "component U1 at 300,100 selected { pad 0,0 60x60 }; component U2 at 500,400 { pad 0,0 60x60 selected "
       "}",
       "U1 300,100 U2 500,400 pad 300,400"},
      {"texts alone go by themselves",
       "component U1 at 500,100 { pad 0,0 60x60; text 0,80 \"10k\" h60 comment selected };"
       "component U2 at 300,400 { pad 0,0 60x60; text 0,80 \"22k\" h60 comment selected }",
       "U1 500,100 10k 300,180 U2 300,400 22k 300,480"},
      {"with anything else they stand for their component",
       "component U1 at 500,100 { pad 0,0 60x60; text 0,80 \"10k\" h60 comment selected };"
       "component U2 at 300,400 { pad 0,0 60x60; text 0,80 \"22k\" h60 comment selected };"
       "via 600,700 60/30 selected",
       "U1 300,100 10k 300,180 U2 300,400 22k 300,480 via 235,700"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Load(row.board);
    Tools_RunArrange(board.Get(), View(), eArrangeLeft);
    EXPECT_EQ(Places(*board), row.after);
    EXPECT_EQ(board->LiveIterators(), 0);
    EXPECT_EQ(ObjectScopeDepth, 0);
    EXPECT_EQ(Platform::CurrentCursor(), Platform::TCursor::Arrow);
  }
}

constexpr const char* kThree = R"(
  component U1 at 500,100 selected { pad 0,0 60x60 }
  component U2 at 300,400 selected { pad 0,0 100x40 }
  component U3 at 1000,800 selected { pad 0,0 60x60 }
)";

TEST_F(AlignTool, AnEmptyBoardIsNoTrouble) {
  for (int method = eArrangeRectangle; method <= eArrangeBottomSideBySide; ++method) {
    Load("");
    picks = {{1000, 800}};
    Tools_RunArrange(board.Get(), View(), static_cast<TArrangerMethod>(method));
    EXPECT_EQ(Platform::CurrentCursor(), Platform::TCursor::Arrow);
  }
}

TEST_F(AlignTool, CentringOnNothingOrOnSomethingElseMovesNothing) {
  for (const TCoordPoint pick : {TCoordPoint{5000, 5000}, TCoordPoint{2000, 0}}) {
    Load(kThree);
    const Ref<Editor::Via> other = Editor::MakeHost<Editor::Via>();
    other->data.center = {Mil(2000), 0};
    board->Load(other.Get());
    picks = {pick};
    Tools_RunArrange(board.Get(), View(), eArrangeHorCenter);
    EXPECT_EQ(Places(*board), "U1 500,100 U2 300,400 U3 1000,800 via 2000,0");
    EXPECT_EQ(prompts.back(), "Select a Primitive");
  }
}

// A selected member stands for its component and is what is centred.
TEST_F(AlignTool, CentringByAMember) {
  for (const TCoordPoint pick : {TCoordPoint{100, 100}, TCoordPoint{800, 400}}) {
    Load(
        "via 100,100 60/30 selected; component U1 at 700,400 { pad 100,0 40x40 selected; pad 0,0 40x40 };"
        "via 300,900 20/10 selected");
    picks = {pick};
    Tools_RunArrange(board.Get(), View(), eArrangeHorCenter);
    EXPECT_EQ(Places(*board), pick.x == 100 ? "via 100,100 U1 0,400 pad 100,400 via 100,900"
                                            : "via 800,100 U1 700,400 pad 800,400 via 800,900");
  }
}

TEST_F(AlignTool, ToTheGridCutsTowardsZero) {
  Load(
      "component U1 at 155,-155 selected { pad 0,0 60x60 }; component U2 at 400,300 selected { pad 0,0 60x60 "
      "}");
  Tools_RunArrange(board.Get(), View(), eArrangeMoveToGrid);
  EXPECT_EQ(Places(*board), "U1 100,-100 U2 400,300");
}

// The component keeps 10 mil from others and the vias 4. It shares a channel with the first via along x and
// with the last along y only by what these clearances add.
TEST_F(AlignTool, ClearancesCountForEdgesAndChannels) {
  const struct {
    TArrangerMethod method;
    const char* after;
  } rows[] = {
      {eArrangeLeft, "U1 316,100 via 300,150 via 300,400 via 300,700"},
      {eArrangeRight, "U1 884,100 via 900,150 via 900,400 via 900,700"},
      {eArrangeTop, "U1 500,684 via 300,700 via 900,700 via 552,700"},
      {eArrangeBottom, "U1 500,100 via 300,84 via 900,84 via 552,84"},
      {eArrangeLeftSideBySide, "U1 500,100 via 564,150 via 484,400 via 484,700"},
      {eArrangeRightSideBySide, "U1 500,100 via 436,150 via 516,400 via 516,700"},
      {eArrangeTopSideBySide, "U1 500,100 via 300,116 via 900,116 via 552,36"},
      {eArrangeBottomSideBySide, "U1 500,100 via 300,84 via 900,84 via 552,164"},
  };
  for (const auto& row : rows) {
    Load(
        "component U1 at 500,100 selected { pad 0,0 60x60 }; via 300,150 40/20 selected;"
        "via 900,400 40/20 selected; via 552,700 40/20 selected");
    Clearance(eRule_ComponentClearance, 10);
    Clearance(eRule_Clearance, 3);
    Clearance(eRule_Clearance, 4);
    Clearance(eRule_Clearance, 99, false);
    Tools_RunArrange(board.Get(), View(), row.method);
    EXPECT_EQ(Places(*board), row.after) << row.method;
  }
}

// What the clearance rules ask stands between the objects, and comes off again.
TEST_F(AlignTool, NodesKeepTheirClearance) {
  Load(kThree);
  Clearance(eRule_ComponentClearance, 10);
  Clearance(eRule_ComponentClearance, 99, false);
  Tools_RunArrangeToRectangle(board.Get(), View(), 0, 0, Mil(200), Mil(1000));
  // 80, 80 and 60 high, 80, 80 and 120 wide: the first two side by side from 10 mil below the top.
  EXPECT_EQ(Places(*board), "U1 40,950 U2 60,880 U3 120,950");
}

TEST_F(AlignTool, SpreadTextsKeepTheirMeanGap) {
  Load(R"(
    text 0,0 "AAA" h50 selected topoverlay
    text 300,0 "BBB" h50 selected topoverlay
    text 1000,0 "CCC" h50 selected topoverlay
    via 2000,0 60/30 selected
  )");
  const auto boxes = [&] {
    std::vector<TCoordRect> all;
    board->objects.ForEach({eTextObject}, [&](const Editor::Primitive& t) { all.push_back(t.Bounds()); });
    return all;
  };
  const auto before = boxes();
  Tools_RunArrange(board.Get(), View(), eArrangeSpreadX);
  const auto after = boxes();
  const TCoord mean = ((before[1].x1 - before[0].x2) + (before[2].x1 - before[1].x2)) / 2;
  EXPECT_EQ(after[0], before[0]);
  EXPECT_EQ(after[1].x1, after[0].x2 + mean);
  EXPECT_EQ(after[2].x1, after[1].x2 + mean);
  EXPECT_EQ(after[1].y1, before[1].y1);
}

TEST_F(AlignTool, ATextBesideOtherThingsIsSpreadByItsReference) {
  for (const double clearance : {0.0, 4.0}) {
    Load("via 0,0 60/30 selected; text 500,0 \"A\" h50 selected topoverlay; via 2000,0 60/30 selected");
    Clearance(eRule_Clearance, clearance);
    Tools_RunArrange(board.Get(), View(), eArrangeSpreadX);
    EXPECT_EQ(Places(*board), "via 0,0 A 970,0 via 2000,0");  // -30 + 2000 / 2
  }
}

// Runs end at what is no text; the first text of a run has nothing to follow.
TEST_F(AlignTool, EachRunOfTextsHasItsOwnGap) {
  Load(R"(
    via 0,0 60/30 selected
    text 0,200 "A" h50 selected topoverlay
    text 0,400 "B" h50 selected topoverlay
    via 0,1000 60/30 selected
    text 0,1300 "C" h50 selected topoverlay
    text 0,1800 "D" h50 selected topoverlay
    via 0,6000 60/30 selected
  )");
  const auto box = [&](std::size_t n) { return Tests::Find<Editor::Text>(*board, n)->Bounds(); };
  const TCoord first_gap = box(1).y1 - box(0).y2, second_gap = box(3).y1 - box(2).y2;
  ASSERT_GT(first_gap, 0);
  Tools_RunArrange(board.Get(), View(), eArrangeSpreadY);
  // Steps of 1000 from -30: the texts that have a gap leave theirs.
  EXPECT_EQ(Tests::Find<Editor::Text>(*board, 0)->Reference().y, Mil(970));
  EXPECT_EQ(box(1).y1 - box(0).y2, first_gap);
  EXPECT_EQ(Tests::Find<Editor::Text>(*board, 2)->Reference().y, Mil(3970));
  EXPECT_EQ(box(3).y1 - box(2).y2, second_gap);
  EXPECT_EQ(Tests::Find<Editor::Via>(*board, 1)->Reference().y, Mil(3000));
  EXPECT_EQ(Tests::Find<Editor::Via>(*board, 2)->Reference().y, Mil(6000));
  for (std::size_t n = 0; n < 4; ++n) EXPECT_EQ(Tests::Find<Editor::Text>(*board, n)->Reference().x, 0);
}

TEST_F(AlignTool, OutsideTheBoard) {
  const struct {
    const char* name;
    const char* board;
    const char* after;
  } rows[] = {
      {"one goes above", "edge 0,0 1000,0 1000,800 0,800; component U1 at 500,100 selected { pad 0,0 60x60 }",
       "U1 30,850"},
      {"the rest goes to the right; what is locked or not selected stays",
       "edge 0,0 1000,0 1000,800 0,800; component U1 at 500,100 selected { pad 0,0 60x60 };"
       "component U2 at 500,200 selected { pad 0,0 60x60 }; component U3 at 500,300 selected { pad 0,0 60x60 "
       "};"
       "component U4 at 500,400 { pad 0,0 60x60 }; component U5 at 500,500 locked selected { pad 0,0 60x60 }",
       "U1 30,850 U2 90,850 U3 1040,40 U4 500,400 U5 500,500"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Load(row.board);
    Tools_RunArrangeOutsideBoard(board.Get(), View());
    EXPECT_EQ(Places(*board), row.after);
    Load(row.board);
    Tools_AutoPlaceOutsideBoard(board.Get(), View());
    EXPECT_EQ(Places(*board), row.after);
  }
  // Without an outline, what is drawn on the keep-out layer is the board.
  Load("component U1 at 500,100 selected { pad 0,0 60x60 }; track 0,0 900,0 w0; track 0,0 0,700 w0");
  board->objects.ForEach({eTrackObject},
                         [](Editor::Primitive& track) { track.state.layer = eV6_KeepOutLayer; });
  Tools_RunArrangeOutsideBoard(board.Get(), View());
  EXPECT_EQ(Places(*board), "U1 30,750");
}

TEST_F(AlignTool, ToRectangles) {
  // 60, 60 and 40 high: the first two beside each other, 10 mil below the top.
  const char* const kInto = "U1 2030,2960 U2 2050,2910 U3 2090,2960";
  Load(kThree);
  Tools_AutoPlaceToRectangle(board.Get(), View(),
                             Parameters(u"Location1.x=20000000 mm|Location1.y=20000000|Location2.x=21500000|"
                                        u"Location2.y=30000000")
                                 .Get());
  EXPECT_EQ(Places(*board), kInto);
  EXPECT_TRUE(prompts.empty());
  // One is missing: the user picks until he cancels, in any corner order.
  Load(kThree);
  picks = {{0, 0}, {500, 500}, {2150, 3000}, {2000, 2000}};
  Tools_AutoPlaceToRectangle(board.Get(), View(),
                             Parameters(u"Location1.x=0|Location1.y=0|Location2.x=9").Get());
  EXPECT_EQ(Places(*board), kInto);
  EXPECT_EQ(prompts.size(), 5u);
  EXPECT_EQ(prompts.front() + ", " + prompts[1], "Choose first corner, Choose second corner");
}

TEST_F(AlignTool, ByTheAlignmentDialog) {
  Load(kThree);
  alignment = {eArrangeLeft, eArrangeSpreadY, true};
  Tools_AutoPlaceRunDialog(board.Get(), View());
  EXPECT_EQ(Places(*board), "U1 200,100 U2 300,400 U3 200,800");
  Load(kThree);
  alignment = {eArrangeTop, eArrangeLeft, false};  // each on the wrong axis
  Tools_AutoPlaceRunDialog(board.Get(), View());
  EXPECT_EQ(Places(*board), "U1 500,100 U2 300,400 U3 1000,800");
  alignment = {eArrangeLeft, eArrangeTop, true};
  dialog_confirmed = false;
  Tools_AutoPlaceRunDialog(board.Get(), View());
  EXPECT_EQ(Places(*board), "U1 500,100 U2 300,400 U3 1000,800");
}

}  // namespace
}  // namespace Ketril::Tools
