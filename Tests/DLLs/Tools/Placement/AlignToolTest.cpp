// The arrange commands on boards, through the exports.
#include "DLLs/Tools/Placement/AlignTool.h"

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "Interfaces/Tools.h"
#include "Platform/Dialogs.h"
#include "Platform/Messages.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"

namespace Ketril::Tools {
namespace {

class AlignTool : public PlacementBoard {};

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

TEST_F(AlignTool, ToTheGridCutsTowardsZero) {
  Load(
      "component U1 at 155,-155 selected { pad 0,0 60x60 }; component U2 at 400,300 selected { pad 0,0 60x60 "
      "}");
  Tools_RunArrange(board.Get(), View(), eArrangeMoveToGrid);
  EXPECT_EQ(Places(*board), "U1 100,-100 U2 400,300");
}

// What the clearance rules ask stands between the objects, and comes off again.
TEST_F(AlignTool, NodesKeepTheirClearance) {
  Load(kThree);
  const Ref<Editor::Rule> rule = Editor::MakeRule(eRule_ComponentClearance);
  rule->data.horizontal_gap = Mil(10);
  rule->data.vertical_gap = Mil(50);
  board->Load(rule.Get());
  const Ref<Editor::Rule> disabled = Editor::MakeRule(eRule_ComponentClearance);
  disabled->data.horizontal_gap = Mil(99);
  disabled->data.enabled = false;
  board->Load(disabled.Get());
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
  Load("via 0,0 60/30 selected; text 500,0 \"A\" h50 selected topoverlay; via 2000,0 60/30 selected");
  Tools_RunArrange(board.Get(), View(), eArrangeSpreadX);
  EXPECT_EQ(Places(*board), "via 0,0 A 970,0 via 2000,0");  // -30 + 2000 / 2
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
