// Moving to the grid and placing texts, through the exports.
#include "DLLs/Tools/Placement/AutoPlacementTool.h"

#include <random>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "Interfaces/Tools.h"
#include "Platform/Messages.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tools {
namespace {

const char* const kLockedQuestion = "This selection contains locked component(s). Continue?";
const char* const kRoomQuestion = "Move objects within rooms?";

class GridTool : public PlacementBoard {
 protected:
  ~GridTool() override { Editor::SetProgressSink(nullptr); }

  // An ESC at the `n`-th step of the progress, 0 for none; notes what the progress shows.
  void WatchProgress(std::int32_t n = 0) {
    captions.clear();
    maximum = 0;
    Editor::SetProgressSink([this, n](const Editor::ProgressState& state) {
      if (captions.empty() || captions.back() != Platform::ToUtf8(state.caption))
        captions.push_back(Platform::ToUtf8(state.caption));
      maximum = state.maximum;
      if (n > 0 && state.position == n && state.running)
        Platform::PostMessage({.Window = 0, .Kind = Platform::WM_KEYDOWN, .WParam = Platform::VK_ESCAPE});
    });
  }

  Lines captions;
  std::int32_t maximum = 0;
};

constexpr const char* kComponents = R"(
  component U1 at 140,160 selected { pad 0,0 60x60 }
  component U2 at 150,-150 selected { pad 0,0 60x60 }
  component U3 at 340,360 { pad 0,0 60x60 }
  component U4 at 300,400 selected { pad 0,0 60x60 }
)";

TEST_F(GridTool, SelectedComponentsSnap) {
  Load(kComponents);
  WatchProgress();
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "U1 100,200 U2 100,-100 U3 340,360 U4 300,400");
  EXPECT_TRUE(questions.empty());
  EXPECT_EQ(captions, Lines{"Moving components to grid... (ESC to abort)"});
  EXPECT_EQ(maximum, 3);
  EXPECT_FALSE(board->progress->IsOpen());
  EXPECT_TRUE(board->document_changed);
  // The grid begins at the origin.
  Load(kComponents);
  board->setup.origin = {Mil(30), Mil(-20)};
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "U1 130,180 U2 130,-120 U3 340,360 U4 330,380");
}

TEST_F(GridTool, WhatStaysMarksTheDocumentTooAndIsNoEdit) {
  Load("component U1 at 300,400 selected { pad 0,0 60x60 }");
  board->journal.Begin();
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_TRUE(board->document_changed);
  EXPECT_TRUE(board->journal.Changes().empty());
  Load("component U1 at 140,160 { pad 0,0 60x60 }");
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_FALSE(board->document_changed);
}

TEST_F(GridTool, LockedComponentsAreAskedAbout) {
  const char* const kOneLocked =
      "component U1 at 140,160 selected locked { pad 0,0 60x60 };"
      "component U2 at 160,140 selected { pad 0,0 60x60 }";
  Load(kOneLocked);
  says_yes = false;
  WatchProgress();
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "U1 140,160 U2 160,140");
  EXPECT_EQ(questions, Lines{kLockedQuestion});
  EXPECT_TRUE(captions.empty()) << "the command ended before its progress began";
  says_yes = true;
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "U1 100,200 U2 200,100");
  questions.clear();
  Load(
      "component U1 at 140,160 locked { pad 0,0 60x60 }; component U2 at 160,140 selected { pad 0,0 60x60 }");
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_TRUE(questions.empty()) << "the locked one is not selected";
}

TEST_F(GridTool, EscStopsBetweenTwoComponents) {
  Load(kComponents);
  WatchProgress(1);
  says_yes = false;
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "U1 100,200 U2 100,-100 U3 340,360 U4 300,400");
  EXPECT_EQ(questions, Lines{"Confirm Abort Process"});
  Load(kComponents);
  says_yes = true;
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "U1 100,200 U2 150,-150 U3 340,360 U4 300,400");
  EXPECT_EQ(questions.size(), 2u) << "asked once in a run";
  EXPECT_FALSE(board->progress->IsOpen());
  // The next run is not stopped by the answer to the last one.
  Editor::SetProgressSink(nullptr);
  Tools_MoveAllCompsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "U1 100,200 U2 100,-100 U3 340,360 U4 300,400");
  ToolAborted = false;
}

TEST_F(GridTool, TheGridIsForcedIntoRangeOnTheBoard) {
  const struct {
    double grid, components, rooms;
  } rows[] = {{50, 100, 10000}, {100, 100, 10000}, {10000, 10000, 10000},
              {0, 100, 10000},  {-1, 100, 10000},  {2e7, 2e7, 1e7},
              {1e8, 1e8, 1e7},  {1e9, 1e8, 1e7},   {12345.5, 12345.5, 12345.5}};
  for (const auto& row : rows) {
    const Ref<Editor::Board> empty = Editor::MakeHost<Editor::Board>();
    empty->setup.grid_x = row.grid;
    empty->setup.grid_y = 777777;
    Tools_MoveAllCompsToGrid(empty.Get());
    EXPECT_EQ(empty->setup.grid_x, row.components) << row.grid;
    Load("");
    Room(u"A", u"", {0, 0, 100, 100}, true);
    board->setup.grid_y = row.grid;
    Tools_MoveAllRoomsToGrid(board.Get());
    EXPECT_EQ(board->setup.grid_y, row.rooms) << row.grid;
    EXPECT_EQ(empty->setup.grid_y, 777777);
  }
}

TEST_F(GridTool, RoomsSnapByTheirLowCorner) {
  const char* const kHeld = R"(
    component R1 at 250,250 { pad 0,0 60x60 }
    component R2 at 9000,9000 locked { pad 0,0 60x60 }
    component C1 at 280,280 { pad 0,0 20x20 }
    via 200,250 20/10
    via 200,170 20/10
    via 900,900 20/10
  )";
  const auto load = [&] {
    Load(kHeld);
    questions.clear();
    Room(u"A", u"component and name:R*", {130, 160, 330, 460}, true);
    Room(u"B", u"", {1130, 1160, 1330, 1460});
    Room(u"C", u"", {2100, 2100, 2330, 2460}, true);
  };
  load();
  WatchProgress();
  Tools_MoveAllRoomsToGrid(board.Get());
  // By its scope R2 is a component of the room, C1 is not; of what is free, that goes along which lies in the
  // room at its new place.
  EXPECT_EQ(Places(*board),
            "R1 220,290 R2 8970,9040 C1 280,280 via 170,290 via 200,170 via 900,900 A 100,200 B 1130,1160 C "
            "2100,2100");
  EXPECT_EQ(questions, Lines{kRoomQuestion});
  EXPECT_EQ(captions, Lines{"Moving rooms to grid... (ESC to abort)"});
  EXPECT_EQ(maximum, 2);
  load();
  says_yes = false;
  Tools_MoveAllRoomsToGrid(board.Get());
  EXPECT_EQ(Places(*board),
            "R1 250,250 R2 9000,9000 C1 280,280 via 200,250 via 200,170 via 900,900 A 100,200 B 1130,1160 C "
            "2100,2100");
}

TEST_F(GridTool, RoomsThatStay) {
  Load("component R1 at 250,250 selected { pad 0,0 60x60 }");
  Room(u"A", u"", {130, 160, 330, 460});
  Tools_MoveAllRoomsToGrid(board.Get());
  EXPECT_TRUE(questions.empty()) << "no room is selected";
  EXPECT_FALSE(board->document_changed);
  Room(u"B", u"", {1130, 1160, 1330, 1460}, true)->Set(Editor::kFlag_Locked, true);
  Tools_MoveAllRoomsToGrid(board.Get());
  EXPECT_EQ(questions.size(), 1u);
  Room(u"C", u"", {2130, 2160, 2330, 2460}, true);
  Platform::PostMessage({.Window = 0, .Kind = Platform::WM_KEYDOWN, .WParam = Platform::VK_ESCAPE});
  Tools_MoveAllRoomsToGrid(board.Get());
  EXPECT_EQ(Places(*board), "R1 250,250 A 130,160 B 1130,1160 C 2130,2160") << "locked, and stopped by ESC";
  ToolAborted = false;
}

TEST_F(GridTool, TextsGoBesideTheSelectedComponents) {
  const char* const kTexts = R"(
    component U1 at 500,500 rot 180 selected { pad 0,0 200x100; text 0,80 "10k" h60 comment rot 90 }
    component U2 at 900,500 bottom selected { pad 0,0 200x100; text 0,80 "1u" h60 comment }
    component U3 at 1300,500 { pad 0,0 200x100; text 0,80 "22k" h60 comment }
    component U4 at 1700,500 selected { pad 0,0 200x100 }
  )";
  Load(kTexts);
  const auto text = [&](std::size_t n, bool comment) {
    const auto* component = Tests::Find<Editor::Component>(*board, n);
    return comment ? component->CommentText() : component->NameText();
  };
  const auto place_of = [&](std::size_t n, bool comment) {
    return text(n, comment) ? text(n, comment)->Bounds() : TCoordRect();
  };
  const TCoordRect other = place_of(2, true), designator = place_of(0, false);
  Tools_AutopositionText(board.Get(), eAutoPos_TopLeft, eAutoPos_BottomCenter, true, false);
  EXPECT_EQ(place_of(0, false), designator);
  EXPECT_EQ(place_of(2, true), other) << "not selected";
  for (const std::size_t n : {0u, 1u}) {
    const TCoordRect box = Tests::Find<Editor::Component>(*board, n)->Bounds(), place = place_of(n, true);
    EXPECT_LT(place.y2, box.y1) << n;
    EXPECT_NEAR(place.x1 + place.x2, box.x1 + box.x2, 1) << n;
  }
  EXPECT_EQ(text(0, true)->data.rotation, 90);
  Tools_AutopositionText(board.Get(), eAutoPos_TopLeft, eAutoPos_TopLeft, false, true);
  EXPECT_EQ(text(0, false)->data.rotation, 0) << "it stood on its head";
  EXPECT_EQ(place_of(0, false).x1, Mil(400));
  EXPECT_GT(place_of(0, false).y1, Mil(550));

  Load(kTexts);
  board->journal.Begin();
  const auto invalidations = board->view->Invalidations();
  Tools_AutopositionText(board.Get(), eAutoPos_TopLeft, eAutoPos_TopLeft, true, true);
  EXPECT_TRUE(board->journal.Changes().empty());
  EXPECT_EQ(board->view->Invalidations(), invalidations);
}

// Of the moved ones the reference point is on the grid, nothing else has moved, and an undo gives all back.
TEST_F(GridTool, OnRandomBoards) {
  std::mt19937 random(17);
  const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
  for (int round = 0; round < 60; ++round) {
    std::string text;
    for (int i = 0; i < 20; ++i) {
      text += "component U" + std::to_string(i) + " at " + std::to_string(any(4000) - 2000) + "," +
              std::to_string(any(4000) - 2000) + (any(2) ? " selected" : "") + (any(4) ? "" : " locked") +
              (any(3) ? "" : " bottom") + " { pad 3,4 60x60; text 0,80 \"10k\" comment };";
    }
    Load(text.c_str());
    const TCoord grid = 100 + any(2000000);
    board->setup.grid_x = grid;
    board->setup.grid_y = 2 * grid;
    board->setup.origin = {any(1000000), -any(1000000)};
    const Lines before = Tests::DescribeBoard(*board);
    std::vector<TCoordPoint> from;
    board->objects.ForEach({eComponentObject},
                           [&](Editor::Primitive& component) { from.push_back(component.Reference()); });
    board->journal.Begin();
    Tools_MoveAllCompsToGrid(board.Get());
    std::size_t n = 0;
    board->objects.ForEach({eComponentObject}, [&](Editor::Primitive& component) {
      const TCoordPoint was = from[n++], is = component.Reference(), origin = board->setup.origin;
      if (!component.Has(Editor::kFlag_Selected)) {
        ASSERT_EQ(is, was);
        return;
      }
      ASSERT_EQ((is.x - origin.x) % grid, 0);
      ASSERT_EQ((is.y - origin.y) % (2 * grid), 0);
      ASSERT_LT(std::abs(is.x - was.x), grid);
      ASSERT_LT(std::abs(is.y - was.y), 2 * grid);
    });
    board->journal.Undo();
    ASSERT_EQ(Tests::Differences(before, Tests::DescribeBoard(*board)), "");
  }
}

}  // namespace
}  // namespace Ketril::Tools
