// Rooms that are filled and laid out, through the exports.
#include "DLLs/Tools/Placement/AlignRooms.h"

#include <gtest/gtest.h>

#include "Platform/Dialogs.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"

namespace Ketril::Tools {
namespace {

using AlignRooms = PlacementBoard;

TEST_F(AlignRooms, ToRooms) {
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

// A room goes with its components and what lies wholly in it; the rest stays.
TEST_F(AlignRooms, RoomsMoveWithWhatTheyHold) {
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

TEST_F(AlignRooms, RoomsGoBackToTheirOffsetFromTheGrid) {
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

TEST_F(AlignRooms, RoomsByTheDialogTakeTheirOriginFromAPick) {
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
