// The shove, through its export: by hand, and on random boards against a plain calculation.
#include "DLLs/Tools/Placement/AutoPlaceNew.h"

#include <cstdlib>
#include <random>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Placement/AutoPlaceNewPlaces.h"
#include "Interfaces/Tools.h"
#include "Platform/Messages.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"
#include "Tests/DLLs/Tools/Placement/ShoveOracle.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tools {
namespace {

class Shove : public PlacementBoard {
 protected:
  // On a board of 2 by 2 inches, unless `edge` says otherwise, with 20 mil around each component.
  void LoadOnBoard(const std::string& text, double grid = 10,
                   const char* edge = "0,0 2000,0 2000,2000 0,2000") {
    Load((std::string("edge ") + edge + "\n" + text).c_str(), grid);
    SetClearances(20, 20);
  }
  void SetClearances(double small, double large) {
    Ref<IPCB_AdvancedPlacerOptions> options;
    board->GetState_AdvancedPlacerOptions(options);
    options->SetState_PlaceSmallClear(Mil(small));
    options->SetState_PlaceLargeClear(Mil(large));
  }
  void Run(std::vector<TCoordPoint> at = {{955, 955}}) {
    picks = std::move(at);
    Tools_ShoveComponents(board.Get(), View());
    EXPECT_EQ(ObjectScopeDepth, 0);
    EXPECT_EQ(board->LiveIterators(), 0);
    EXPECT_EQ(Platform::CurrentCursor(), Platform::TCursor::Arrow);
  }
  void RunWithPasses(std::int32_t passes) {
    ReleasePCBServer();
    Editor::ClientSetup setup = User();
    setup.shove_passes = passes;
    const Editor::ClientInstallation limited(Editor::MakeHost<Editor::Client>(std::move(setup)));
    Run();
    ReleasePCBServer();
  }
};

// A component of one pad of 100 by 100 mil.
std::string Square(const char* name, int x, int y, const char* more = "") {
  return "component " + std::string(name) + " at " + std::to_string(x) + "," + std::to_string(y) + " " +
         more + " { pad 0,0 100x100 }\n";
}

TEST_F(Shove, TowardsTheSideByTheShorterWay) {
  const struct {
    int x, y;           // of the other one, from the middle of the one that is picked
    const char* after;  // 120 mil is the way between two centres
  } rows[] = {
      {40, 0, "1120,1000"},  {-40, 0, "880,1000"},  {0, 40, "1000,1120"},  {0, -40, "1000,880"},
      {40, 30, "1120,1030"}, {30, 40, "1030,1120"}, {-40, 30, "880,1030"}, {-30, 40, "970,1120"},
      {-40, -30, "880,970"}, {-30, -40, "970,880"}, {40, -30, "1120,970"}, {30, -40, "1030,880"},
      {40, 40, "1120,1040"},  // equally deep: along x
      {110, 0, "1110,1000"},  // not overlapping, though its clearance is
      {90, 95, "1090,1120"},
  };
  for (const auto& row : rows) {
    LoadOnBoard(Square("A", 1000, 1000) + Square("B", 1000 + row.x, 1000 + row.y));
    // Where only A is.
    const auto away = [](int way) { return way > 0 ? 955 : way < 0 ? 1045 : 1000; };
    Run({{away(row.x), away(row.y)}});
    EXPECT_EQ(Places(*board), std::string("A 1000,1000 B ") + row.after);
  }
}

TEST_F(Shove, FromTheSameCentreChanceDecides) {
  std::srand(3);
  std::string seen;
  for (int i = 0; i < 40; ++i) {
    LoadOnBoard(Square("A", 1000, 1000) + Square("B", 1000, 1000));
    Run();  // of equals the pick gives the first
    for (const char* const side : {"880,1000", "1120,1000"}) {
      if (Places(*board) == std::string("A 1000,1000 B ") + side) seen += side[0];
    }
  }
  EXPECT_EQ(seen.size(), 40u);
  EXPECT_NE(seen.find('8'), seen.npos);
  EXPECT_NE(seen.find('1'), seen.npos);
}

TEST_F(Shove, TargetsGoToTheGridAndUpwardsAStepMore) {
  LoadOnBoard(Square("A", 1000, 1000) + Square("B", 1040, 1010) + Square("C", 960, 990), 25);
  Run({{1040, 955}});
  // 1120 is nearest to 1125 and goes one further, 1010 without a way to 1000; 880 goes to 875.
  EXPECT_EQ(Places(*board), "A 1000,1000 B 1150,1000 C 875,1000");
  // It is the reference point that goes there.
  LoadOnBoard(Square("A", 1000, 1000) + "component B at 1007,1003 { pad 33,7 100x100 }", 25);
  Run();
  EXPECT_EQ(Places(*board), "A 1000,1000 B 1100,1000");  // 1087 is nearest to 1075
}

TEST_F(Shove, TriesTheOtherSidesAndSlides) {
  const struct {
    const char* name;
    std::string others;  // than A at 1000,1000
    const char* edge;
    const char* after;
  } rows[] = {
      {"slides down first, as far as it must",
       Square("B", 1040, 1010) + "component L at 1120,1000 locked { pad 0,0 100x20 }", nullptr,
       "B 1120,920 L 1120,1000"},
      {"the other axis when ten steps are too few",
       Square("B", 1040, 1010) + Square("L", 1120, 1000, "locked"), nullptr, "B 1040,1120 L 1120,1000"},
      {"a locked one on the other side of the board is in the way too",
       Square("B", 1040, 1010) + Square("L", 1120, 1000, "locked bottom"), nullptr,
       "B 1040,1120 L 1120,1000"},
      {"one that is free on the other side is not",
       Square("B", 1040, 1010) + Square("L", 1120, 1000, "bottom"), nullptr, "B 1120,1010 L 1120,1000"},
      {"one that is free on this side is not, and is pushed in its turn",
       Square("B", 1040, 1010) + Square("L", 1150, 1010), nullptr, "B 1120,1010 L 1240,1010"},
      {"stays on the board", Square("B", 1040, 1010), "0,0 1179,0 1179,2000 0,2000", "B 1040,1120"},
      {"up to its edge", Square("B", 1040, 1010), "0,0 1180,0 1180,2000 0,2000", "B 1120,1010"},
      {"back along y, where x is the shorter way", Square("B", 1040, 1010), "0,0 1179,0 1179,1179 0,1179",
       "B 1040,880"},
      {"back along x at last", Square("B", 1040, 1010), "0,850 1179,850 1179,1179 0,1179", "B 880,1010"},
      {"nowhere to go", Square("B", 1040, 1010), "850,850 1179,850 1179,1179 850,1179", "B 1040,1010"},
      {"a locked one stays where it overlaps", Square("B", 1040, 1010, "locked"), nullptr, "B 1040,1010"},
      {"one on the other side of the board does not overlap", Square("B", 1040, 1010, "bottom"), nullptr,
       "B 1040,1010"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    LoadOnBoard(Square("A", 1000, 1000) + row.others, 10,
                row.edge ? row.edge : "0,0 2000,0 2000,2000 0,2000");
    Run();
    EXPECT_EQ(Places(*board), std::string("A 1000,1000 ") + row.after);
  }
}

TEST_F(Shove, KeepOutFillsAreInTheWay) {
  for (const bool keep_out : {false, true}) {
    LoadOnBoard(Square("A", 1000, 1000) + Square("B", 1040, 1010) + "fill 1100,500 1110,1500");
    if (keep_out) Tests::Find<Editor::Fill>(*board)->state.layer = eV6_KeepOutLayer;
    Run();
    EXPECT_EQ(Places(*board), keep_out ? "A 1000,1000 B 1030,1120" : "A 1000,1000 B 1120,1010");
  }
}

TEST_F(Shove, NearerThanAHundredUnitsIsOverlapping) {
  const TCoordRect box{0, 0, 1000, 1000};
  for (const auto& [apart, overlaps] : {std::pair{99, true}, {100, true}, {101, false}}) {
    EXPECT_EQ(RectanglesOverlap(box, {1000 + apart, 0, 2000 + apart, 1000}), overlaps) << apart;
    EXPECT_EQ(RectanglesOverlap({1000 + apart, 0, 2000 + apart, 1000}, box), overlaps) << apart;
    EXPECT_EQ(RectanglesOverlap(box, {0, -1000 - apart, 1000, -apart}), overlaps) << apart;
    LoadOnBoard(Square("A", 1000, 1000) + Square("B", 1100, 1000));
    Editor::Component& other = *Tests::Find<Editor::Component>(*board, 1);
    other.MoveByXY(apart, 0);
    Run();
    EXPECT_EQ(other.Reference().x > Mil(1110), overlaps) << apart;
  }
}

TEST_F(Shove, FourteenPadsMakeAComponentLarge) {
  for (const int pads : {13, 14}) {
    std::string b = "component B at 1040,1000 {";
    for (int i = 0; i < pads; ++i) b += "pad 0,0 100x100;";
    LoadOnBoard(Square("A", 1000, 1000) + b + "}");
    SetClearances(20, 60);
    Run();
    EXPECT_EQ(Places(*board), pads == 14 ? "A 1000,1000 B 1140,1000" : "A 1000,1000 B 1120,1000");
  }
}

// A pushes B onto C, B pushes C onto D, and so on: a wave for each.
TEST_F(Shove, WavesGoOnUpToTheLimit) {
  const char* const after[] = {
      "A 1000,1000 B 1040,1000 C 1150,1000 D 1270,1000", "A 1000,1000 B 1120,1000 C 1150,1000 D 1270,1000",
      "A 1000,1000 B 1120,1000 C 1240,1000 D 1270,1000", "A 1000,1000 B 1120,1000 C 1240,1000 D 1360,1000",
      "A 1000,1000 B 1120,1000 C 1240,1000 D 1360,1000",
  };
  for (std::int32_t passes = 0; passes < 5; ++passes) {
    LoadOnBoard(Square("A", 1000, 1000) + Square("B", 1040, 1000) + Square("C", 1150, 1000) +
                Square("D", 1270, 1000));
    RunWithPasses(passes);
    EXPECT_EQ(Places(*board), after[passes]) << passes;
  }
}

TEST_F(Shove, EscEndsItAfterThePushInHand) {
  const std::string text = Square("A", 1000, 1000) + Square("B", 1040, 1030) + Square("C", 960, 1030);
  const auto press = [] {
    Platform::PostMessage({.Window = 0, .Kind = Platform::WM_KEYDOWN, .WParam = Platform::VK_ESCAPE});
  };
  LoadOnBoard(text);
  press();
  Run({{1000, 955}});
  EXPECT_EQ(questions.size(), 1u);
  EXPECT_EQ(Places(*board), "A 1000,1000 B 1120,1030 C 960,1030");
  EXPECT_FALSE(ToolAborted);
  LoadOnBoard(text);
  says_yes = false;
  press();
  Run({{1000, 955}});
  EXPECT_EQ(Places(*board), "A 1000,1000 B 1120,1030 C 880,1030");
  // What an aborted run of another tool left behind stops nothing, and the next pick begins anew.
  LoadOnBoard(text);
  ToolAborted = true;
  Run({{1000, 955}});
  EXPECT_EQ(Places(*board), "A 1000,1000 B 1120,1030 C 880,1030");
}

TEST_F(Shove, PicksUntilTheUserCancels) {
  LoadOnBoard(Square("A", 1000, 1000) + Square("B", 1040, 1000) + Square("C", 500, 500) +
              Square("D", 540, 500) + "via 1500,1500 60/30");
  Run({{100, 100}, {1500, 1500}, {955, 955}, {455, 455}});
  EXPECT_EQ(prompts, Lines(5, "Select a Component"));
  EXPECT_EQ(Places(*board), "A 1000,1000 B 1120,1000 C 500,500 D 620,500 via 1500,1500");
  // The marks are those of the last shove.
  std::vector<int> marks;
  board->objects.ForEach({eComponentObject}, [&](const Editor::Primitive& c) { marks.push_back(c.index); });
  EXPECT_EQ(marks, (std::vector{0, 0, 1, 1}));
  const Ref<Editor::Board> empty = Editor::MakeHost<Editor::Board>();
  picks = {{0, 0}};
  Tools_ShoveComponents(empty.Get(), empty->view.Get());
}

// Dense boards of many sizes, some locked, on both sides: places and marks are those of the plain
// calculation, locked ones stay, and an undo gives all back.
TEST_F(Shove, OnRandomBoards) {
  std::mt19937 random(29);
  const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
  int moved = 0;
  for (int round = 0; round < 60; ++round) {
    std::string text = "component S at 1000,1000 { pad 0,0 100x100 }\n";
    for (int i = 0; i < 60; ++i) {
      text += "component U" + std::to_string(i) + " at " + std::to_string(400 + 10 * any(120)) + "," +
              std::to_string(400 + 10 * any(120)) + (any(6) ? "" : " locked") + (any(4) ? "" : " bottom") +
              " { pad " + std::to_string(any(30)) + ",0 " + std::to_string(40 + any(150)) + "x" +
              std::to_string(40 + any(150)) + "}\n";
    }
    const int grids[] = {5, 10, 25, 33};
    LoadOnBoard(text, grids[any(4)]);
    const Lines before = Tests::DescribeBoard(*board);
    ShoveOracle oracle(*board);
    const Editor::Primitive* start = nullptr;
    {
      Editor::HitOptions click;
      click.kinds = {eComponentObject};
      click.method = eProcessComponent;
      start = Editor::HitObject(*board, {Mil(1000), Mil(1000)}, click);
    }
    std::srand(static_cast<unsigned>(round));
    oracle.Run(*start, 10);
    std::srand(static_cast<unsigned>(round));
    board->journal.Begin();
    Run({{1000, 1000}});
    ASSERT_EQ(oracle.Differences(), "") << "round " << round;
    moved += oracle.Moved();
    board->journal.Undo();
    ASSERT_EQ(Tests::Differences(before, Tests::DescribeBoard(*board)), "");
  }
  EXPECT_GT(moved, 200) << "the boards were not dense";
}

}  // namespace
}  // namespace Ketril::Tools
