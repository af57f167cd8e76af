// The arrange commands on boards, through the exports.
#include "DLLs/Tools/Placement/AlignTool.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/HostCall.h"
#include "Editor/Rules/Rule.h"
#include "Interfaces/Tools.h"
#include "Platform/Dialogs.h"
#include "Platform/Messages.h"
#include "Platform/Text.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tools {
namespace {

using Tests::Mil;
using Lines = std::vector<std::string>;

// "U1 300,100 via 70,80 10k 0,90": places in mil of components, vias, comments, selected pads and rooms.
std::string Places(const Editor::Board& board) {
  std::string text;
  board.objects.ForEach(TObjectSet::All(), [&](const Editor::Primitive& object) {
    const auto* words = Editor::As<Editor::Text>(&object);
    const auto* rule = Editor::As<Editor::Rule>(&object);
    const bool shown = object.kind == eComponentObject || object.kind == eViaObject ||
                       (rule && !rule->data.region.points.empty()) ||
                       (words && words->data.role != Editor::TextRole::Designator) ||
                       (object.kind == ePadObject && object.Has(Editor::kFlag_Selected));
    if (!shown) return;
    const auto mil = [](TCoord value) { return std::to_string(value / 10000); };
    const TCoordPoint at = object.Reference();
    std::string name = Platform::ToUtf8(object.Identifier());
    if (name.empty() || object.kind == ePadObject) name = object.kind == eViaObject ? "via" : "pad";
    text += (text.empty() ? "" : " ") + name + " " + mil(at.x) + "," + mil(at.y);
  });
  return text;
}

class AlignTool : public testing::Test {
 protected:
  ~AlignTool() override { ReleasePCBServer(); }

  void Load(const char* text, double grid = 100) {
    board = Tests::BoardFromText(text);
    board->setup.grid_x = board->setup.grid_y = Mil(grid);
  }
  IPCBGraphicalViewInterface* View() { return board->view.Get(); }
  Editor::Rule* Room(const char16_t* name, const char16_t* scope, TCoordRect mils, bool selected = false) {
    const Ref<Editor::Rule> rule = Editor::MakeRule(eRule_ConfinementConstraint);
    rule->data.name = name;
    rule->data.scope1 = scope;
    const TCoord x1 = Mil(mils.x1), y1 = Mil(mils.y1), x2 = Mil(mils.x2), y2 = Mil(mils.y2);
    rule->data.region.points = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
    rule->Set(Editor::kFlag_Selected, selected);
    board->Load(rule.Get());
    return rule.Get();
  }
  void Clearance(TRuleKind kind, double mil, bool enabled = true) {
    const Ref<Editor::Rule> rule = Editor::MakeRule(kind);
    (kind == eRule_Clearance ? rule->data.gap : rule->data.horizontal_gap) = Mil(mil);
    rule->data.vertical_gap = Mil(50);  // of no account
    rule->data.enabled = enabled;
    board->Load(rule.Get());
  }
  static Ref<IParameterList> Parameters(const char16_t* text) {
    const auto list = Editor::MakeHost<Editor::Parameters>();
    list->SetFromWide(text);
    return Ref<IParameterList>(list.Get());
  }

  Ref<Editor::Board> board;
  std::vector<TCoordPoint> picks;  // in mil, in their order; then the user cancels
  Lines prompts;
  Editor::AlignmentAnswer alignment;
  bool dialog_confirmed = true;

 private:
  std::optional<TCoordPoint> Pick(const std::u16string& prompt) {
    prompts.push_back(Platform::ToUtf8(prompt));
    if (picks.empty()) return std::nullopt;
    const TCoordPoint pick = picks.front();
    picks.erase(picks.begin());
    return TCoordPoint{Mil(pick.x), Mil(pick.y)};
  }
  Editor::ClientSetup User() {
    Editor::ClientSetup setup;
    setup.choose_location = [this](const std::u16string& prompt) { return Pick(prompt); };
    setup.choose_rectangle = [this](const std::u16string& first,
                                    const std::u16string& second) -> std::optional<TCoordRect> {
      const auto a = Pick(first), b = a ? Pick(second) : std::nullopt;
      if (!b) return std::nullopt;
      return TCoordRect{a->x, a->y, b->x, b->y};
    };
    setup.dialogs.alignment = [this](Editor::AlignmentAnswer& answer) {
      answer = alignment;
      return dialog_confirmed;
    };
    setup.dialogs.room_arrange = [this](IPCB_RoomArrangeOptions& options) {
      options.SetState_ColCount(3);
      return dialog_confirmed;
    };
    return setup;
  }
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(User())};
};

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
      {"none selected",
       "component U1 at 500,100 { pad 0,0 60x60 }; component U2 at 300,400 { pad 0,0 60x60 }",
       "U1 500,100 U2 300,400"},
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

TEST_F(AlignTool, EachExportRunsItsMethod) {
  const struct {
    const char* name;
    decltype(Tools_AutoPlaceAlignLeft)* run;
    const char* after;
  } rows[] = {
      {"left", Tools_AutoPlaceAlignLeft, "U1 280,100 U2 300,400 U3 280,800"},
      {"right", Tools_AutoPlaceAlignRight, "U1 1000,100 U2 980,400 U3 1000,800"},
      {"top", Tools_AutoPlaceAlignTop, "U1 500,800 U2 300,810 U3 1000,800"},
      {"bottom", Tools_AutoPlaceAlignBottom, "U1 500,100 U2 300,90 U3 1000,100"},
      {"left side by side", Tools_AutoPlaceAlignLeftSideBySide, "U1 500,100 U2 520,400 U3 500,800"},
      {"right side by side", Tools_AutoPlaceAlignRightSideBySide, "U1 500,100 U2 480,400 U3 500,800"},
      {"top side by side", Tools_AutoPlaceAlignTopSideBySide, "U1 500,100 U2 300,110 U3 1000,100"},
      {"bottom side by side", Tools_AutoPlaceAlignBottomSideBySide, "U1 500,100 U2 300,90 U3 1000,100"},
      {"expand x", Tools_AutoPlaceExpandXComps, "U1 600,100 U2 300,400 U3 1200,800"},
      {"expand y", Tools_AutoPlaceExpandYComps, "U1 500,100 U2 300,500 U3 1000,1000"},
      {"contract x", Tools_AutoPlaceContractXComps, "U1 400,100 U2 300,400 U3 800,800"},
      {"contract y", Tools_AutoPlaceContractYComps, "U1 500,100 U2 300,300 U3 1000,600"},
      {"spread x", Tools_AutoPlaceSpreadXComps, "U1 640,100 U2 300,400 U3 1000,800"},
      {"spread y", Tools_AutoPlaceSpreadYComps, "U1 500,100 U2 300,440 U3 1000,800"},
      {"centre x, on what is picked", Tools_AutoPlaceCentreHoriziontal,
       "U1 1000,100 U2 1000,400 U3 1000,800"},
      {"centre y", Tools_AutoPlaceCentreVertical, "U1 500,800 U2 300,800 U3 1000,800"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Load(kThree);
    picks = {{1000, 800}};
    row.run(board.Get(), View());
    EXPECT_EQ(Places(*board), row.after);
    EXPECT_EQ(Platform::CurrentCursor(), Platform::TCursor::Arrow);
    const Ref<Editor::Board> empty = Editor::MakeHost<Editor::Board>();
    row.run(empty.Get(), empty->view.Get());
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
      {"two go above",
       "edge 0,0 1000,0 1000,800 0,800; component U1 at 500,100 selected { pad 0,0 60x60 };"
       "component U2 at 500,200 selected { pad 0,0 60x60 }",
       "U1 30,850 U2 90,850"},
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

TEST_F(AlignTool, ToRooms) {
  const char* const kBoard =
      "component R1 at 0,0 { pad 0,0 60x60 }; component R2 at 0,100 locked { pad 0,0 60x60 };"
      "component C1 at 0,200 selected { pad 0,0 60x60 }";
  const char* const kMoved = "R1 1030,1960 R2 0,100 C1 0,200 A 1000,1000 B 3000,1000";
  const char* const kStays = "R1 0,0 R2 0,100 C1 0,200 A 1000,1000 B 3000,1000";
  const char* const kBoth = "R1 1030,1960 R2 0,100 C1 3030,1960 A 1000,1000 B 3000,1000";
  const auto load = [&] {
    Load(kBoard);
    Room(u"A", u"component and name:R*", {1000, 1000, 2000, 2000});
    Room(u"B", u"component and name:C*", {3000, 1000, 4000, 2000});
    prompts.clear();
  };
  const struct {
    const char* name;
    const char16_t* parameters;
    std::vector<TCoordPoint> picks;
    const char* after;
    std::size_t prompts;
  } rows[] = {
      {"by name", u"RoomName=A", {}, kMoved, 0},
      {"by a name that the user corrects", u"RoomName=X", {}, kMoved, 1},
      {"by numbers, absent and unknown ones passed over",
       u"RoomsToUpdateCount=4|Room1=A|Room3=Z|Room4=B",
       {},
       kBoth,
       0},
      {"a count of none", u"RoomsToUpdateCount=0", {}, kStays, 0},
      {"a count that is no whole number", u"RoomsToUpdateCount=1.0|Room1=A", {{1500, 1500}}, kMoved, 2},
      {"a count beyond all", u"RoomsToUpdateCount=99999999999|Room1=A", {{1500, 1500}}, kMoved, 2},
      {"picked, until he cancels", u"", {{3500, 1500}, {9000, 9000}, {1500, 1500}}, kBoth, 4},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    load();
    Platform::SetStringEditProvider([&](const std::u16string& caption, std::u16string& text) {
      prompts.push_back(Platform::ToUtf8(caption));
      EXPECT_EQ(caption, u"Enter Room Name");
      EXPECT_EQ(text, u"X");
      text = u"A";
      return true;
    });
    picks = row.picks;
    Tools_AutoPlaceToRoom(board.Get(), View(), Parameters(row.parameters).Get());
    Platform::SetStringEditProvider(nullptr);
    EXPECT_EQ(Places(*board), row.after);
    EXPECT_EQ(prompts.size(), row.prompts);
  }
  load();
  Tools_RunArrangeToRoom(board.Get(), View(), u"nowhere");
  EXPECT_EQ(Places(*board), kStays);
  Tools_RunArrangeToRoom(board.Get(), View(), u"A");
  EXPECT_EQ(Places(*board), kMoved);
  const Ref<Editor::Rule> other = Editor::MakeRule(eRule_Clearance);
  board->Load(other.Get());
  EXPECT_FALSE(Tools_RunArrangeToRoomRule(board.Get(), View(), nullptr));
  EXPECT_FALSE(Tools_RunArrangeToRoomRule(board.Get(), View(), Probe<IPCB_Rule>(other->AsInterface()).Get()));
  Ref<IPCB_Primitive> room;
  board->GetState_RuleByName(u"B", room);
  EXPECT_TRUE(Tools_RunArrangeToRoomRule(board.Get(), View(), Probe<IPCB_Rule>(room).Get()));
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

// A room goes with its components and what lies wholly in it; the rest stays.
TEST_F(AlignTool, RoomsMoveWithWhatTheyHold) {
  Load(R"(
    component R1 at 130,130 rot 90 { pad 0,0 60x60 net A; text 0,80 "10k" comment }
    component R2 at 150,170 locked { pad 0,0 60x60 }
    component C1 at 5000,5000 { pad 0,0 60x60 }
    via 180,180 20/10 net A
    via 201,180 20/10 net A
    track 0,0 4000,0 w10 top
  )");
  Editor::Rule* const a = Room(u"A", u"component and name:R*", {100, 100, 200, 200}, true);
  Editor::Rule* const b = Room(u"B", u"component and name:C*", {4900, 4900, 5200, 5100}, true);
  Room(u"X", u"not all", {300, 300, 400, 400});
  const Ref<Editor::ObjectClass> channel = Editor::MakeHost<Editor::ObjectClass>();
  channel->data.name = u"Channel";
  channel->data.member_kind = eClassMemberKind_DesignChannel;
  channel->data.members = {u"A"};
  board->Load(channel.Get());
  const auto options = Editor::MakeHost<Editor::RoomArrangeOptions>();
  options->SetState_ColCount(1);
  options->SetState_OriginX(Mil(1000));
  options->SetState_OriginY(Mil(1000));
  options->SetState_AutoSpacing(false);
  options->SetState_SpacingY(Mil(50));
  Tools_RunRoomArrange(board.Get(), View(), options.Get());
  // B is in no channel and comes first; A follows after B's height and the gap.
  EXPECT_EQ(b->Bounds(), (TCoordRect{Mil(1000), Mil(1000), Mil(1300), Mil(1200)}));
  EXPECT_EQ(a->Bounds(), (TCoordRect{Mil(1000), Mil(1250), Mil(1100), Mil(1350)}));
  EXPECT_EQ(Places(*board),
            "R1 1030,1280 10k 950,1280 R2 150,170 C1 1100,1100 via 1080,1330 via 201,180 A 1000,1250 B "
            "1000,1000 X 300,300");
  EXPECT_EQ(Tests::Find<Editor::Component>(*board)->data.rotation, 90);
}

TEST_F(AlignTool, RoomsGoBackToTheirOffsetFromTheGrid) {
  Load("via 150,-150 20/10; track 0,0 4000,0 w10 top");
  const Editor::Rule* const room = Room(u"A", u"not all", {130, -180, 230, -20}, true);
  const auto options = Editor::MakeHost<Editor::RoomArrangeOptions>();
  options->SetState_OriginX(Mil(1050));
  options->SetState_OriginY(Mil(1020));
  for (const bool to_grid : {false, true}) {
    board->journal.Begin();
    options->SetState_MoveToGrid(to_grid);
    Tools_RunRoomArrange(board.Get(), View(), options.Get());
    // The offset was 30 to the right and, cut towards zero, 80 down; at the origin it is 50 and 20.
    const TCoordPoint place = to_grid ? TCoordPoint{Mil(1030), Mil(920)} : TCoordPoint{Mil(1050), Mil(1020)};
    EXPECT_EQ(room->Bounds().Location1(), place);
    EXPECT_EQ(Tests::Find<Editor::Via>(*board)->Reference(),
              (TCoordPoint{place.x + Mil(20), place.y + Mil(30)}));
    board->journal.Undo();
  }
}

// Which calls change the board, in their order; what is read and drawn by a walk is left out.
Lines Edits(const std::vector<std::string>& calls) {
  Lines edits;
  for (const std::string& call : calls) {
    const std::string name = call.substr(call.find('.') + 1);
    for (const char* const edit :
         {"BeginModify", "EndModify", "MoveByXY", "MoveToXY", "SetState_XSizeYSize", "UpdateNet",
          "GraphicallyInvalidatePrimitive", "SetState_DocumentHasChanged"}) {
      if (name == edit) edits.push_back(name);
    }
  }
  return edits;
}

TEST_F(AlignTool, ChangesStandInBrackets) {
  Load("via 0,0 60/30 selected; component U1 at 500,400 { pad 0,0 60x60 selected }");
  Editor::HostGate::Arm(true);
  Tools_RunArrange(board.Get(), View(), eArrangeLeft);
  Editor::HostGate::Disarm();
  const char *const kDraw = "GraphicallyInvalidatePrimitive", *const kMark = "SetState_DocumentHasChanged";
  EXPECT_EQ(Edits(Editor::HostGate::Record()),
            (Lines{kDraw, "BeginModify", "MoveByXY", "EndModify", kDraw, kMark, kDraw, "BeginModify",
                   "MoveToXY", "EndModify", kDraw, kMark}));
  EXPECT_TRUE(board->document_changed);
  // A room with a component and a via, of two nets.
  Load("component U1 at 150,150 { pad 0,0 60x60 net A }; via 130,130 20/10 net B");
  Room(u"A", u"component", {100, 100, 200, 200}, true);
  Editor::HostGate::Arm(true);
  Tools_RunRoomArrange(board.Get(), View(), nullptr);
  Editor::HostGate::Disarm();
  EXPECT_EQ(Edits(Editor::HostGate::Record()),
            (Lines{kDraw, "BeginModify", "BeginModify", "BeginModify", "MoveToXY", "MoveByXY",
                   "SetState_XSizeYSize", "EndModify", "EndModify", "EndModify", "UpdateNet", "UpdateNet",
                   kDraw, kDraw, kDraw, kMark}));
  EXPECT_TRUE(board->document_changed);
}

// Whatever is arranged: what is locked stays, sizes stay, one axis stays, and an undo gives the board back.
TEST_F(AlignTool, KeepsWhatIsLockedAndCanBeUndone) {
  std::mt19937 random(51);
  const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
  const auto place = [&] { return std::to_string(below(3000)) + "," + std::to_string(below(3000)); };
  const auto marks = [&] { return std::string(below(3) ? " selected" : "") + (below(4) ? "" : " locked"); };
  const auto text = [&] {
    std::string lines;
    for (int i = 0; i < 14; ++i) {
      const std::string number = std::to_string(i);
      switch (below(4)) {
        case 0:
          lines += "via " + place() + " 60/30 net A" + marks();
          break;
        case 1:
          lines += "track " + place() + " " + place() + " w10 top" + marks();
          break;
        case 2:
          lines += "text " + place() + " \"T" + number + "\" h50 topoverlay" + marks();
          break;
        default:
          lines += "component U" + number + " at " + place() + (below(2) ? " bottom" : "") + marks() +
                   " { pad 0,0 60x60 net A" + (below(2) ? " selected" : "") +
                   "; pad 100,0 40x90; text 0,80 \"V" + number + "\" h60 comment" +
                   (below(3) ? "" : " selected") + " }";
      }
      lines += "\n";
    }
    return lines;
  };
  struct Before {
    const Editor::Primitive* object;
    TCoordRect box;
  };
  int moved = 0;
  for (int round = 0; round < 20; ++round) {
    const std::string objects = text();
    SCOPED_TRACE(objects);
    Load(objects.c_str());
    Clearance(eRule_Clearance, below(20));
    Clearance(eRule_ComponentClearance, below(20));
    Room(u"A", u"component and name:U1*", {500, 500, 1500, 1500}, below(2));
    Editor::Rule* const locked = Room(u"B", u"component", {1000, 1000, 2500, 2500}, true);
    locked->Set(Editor::kFlag_Locked, true);
    const auto described = Tests::DescribeBoard(*board);
    std::vector<Before> before;
    board->objects.ForEach(TObjectSet::All(), [&](const Editor::Primitive& object) {
      if (object.kind != eNetObject) before.push_back({&object, object.Bounds()});
    });
    const auto& centre = before[static_cast<std::size_t>(below(14))].box;
    for (int method = eArrangeMoveToGrid; method <= eArrangeBottomSideBySide + 4; ++method) {
      SCOPED_TRACE(method);
      picks = {{centre.x1 / 10000, centre.y1 / 10000}};
      board->journal.Begin();
      const int command = method - eArrangeBottomSideBySide;
      if (command <= 0) Tools_RunArrange(board.Get(), View(), static_cast<TArrangerMethod>(method));
      if (command == 1) Tools_RunArrangeToRectangle(board.Get(), View(), 0, 0, Mil(900), Mil(900));
      if (command == 2) Tools_RunArrangeToRoom(board.Get(), View(), u"A");
      if (command == 3) Tools_RunArrangeOutsideBoard(board.Get(), View());
      if (command == 4) Tools_RunRoomArrange(board.Get(), View(), nullptr);
      const bool along_x = method == eArrangeLeft || method == eArrangeRight ||
                           method == eArrangeLeftSideBySide || method == eArrangeRightSideBySide ||
                           (method >= eArrangeHorCenter && method <= eArrangeSpreadX);
      const bool along_one = method > eArrangeMoveToGrid && command <= 0;
      for (const Before& was : before) {
        const TCoordRect is = was.object->Bounds();
        moved += is == was.box ? 0 : 1;
        const auto* const owner = was.object->Owner();
        const bool is_locked =
            was.object->Has(Editor::kFlag_Locked) || (owner && owner->Has(Editor::kFlag_Locked));
        EXPECT_TRUE(!is_locked || is == was.box);
        // Beside a component that comes first, a member goes out of its own by itself.
        const bool keeps_size =
            is.x2 - is.x1 == was.box.x2 - was.box.x1 && is.y2 - is.y1 == was.box.y2 - was.box.y1;
        EXPECT_TRUE(keeps_size || was.object->MemberList());
        EXPECT_TRUE(!along_one || (along_x ? is.y1 == was.box.y1 : is.x1 == was.box.x1));
      }
      EXPECT_EQ(board->LiveIterators(), 0);
      board->journal.Undo();
      EXPECT_EQ(Tests::DescribeBoard(*board), described);
      if (HasFailure()) return;
    }
  }
  EXPECT_GT(moved, 1000) << "the boards were too empty to say anything";
}

TEST_F(AlignTool, RoomsByTheDialogTakeTheirOriginFromAPick) {
  const auto load = [&] {
    Load("");
    prompts.clear();
    return Room(u"A", u"not all", {100, 100, 200, 200}, true);
  };
  const auto low_corner = [](const Editor::Rule* room) { return room->Bounds().Location1(); };
  const TCoordPoint unmoved{Mil(100), Mil(100)}, picked{Mil(700), Mil(800)};
  const Editor::Rule* room = load();
  Tools_ArrangeRooms(board.Get(), View(), nullptr);
  EXPECT_EQ(low_corner(room), unmoved) << "the pick is cancelled";
  picks = {{700, 800}};
  Tools_ArrangeRooms(board.Get(), View(), nullptr);
  EXPECT_EQ(low_corner(room), picked) << "one room is laid out too";
  EXPECT_EQ(prompts, (Lines{"Choose location", "Choose location"}));
  picks = {{1, 1}};  // the origin is chosen by now, and kept
  Tools_ArrangeRooms(board.Get(), View(), nullptr);
  EXPECT_EQ(prompts.size(), 2u);
  room = load();
  dialog_confirmed = false;
  Tools_ArrangeRooms(board.Get(), View(), nullptr);
  EXPECT_EQ(low_corner(room), unmoved) << "the dialog is cancelled";
  EXPECT_TRUE(prompts.empty());
  // Without options all is zero.
  Tools_RunRoomArrange(board.Get(), View(), nullptr);
  EXPECT_EQ(low_corner(room), TCoordPoint{});
}

}  // namespace
}  // namespace Ketril::Tools
