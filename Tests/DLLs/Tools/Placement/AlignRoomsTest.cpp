// Rooms that are filled and laid out, through the exports.
#include "DLLs/Tools/Placement/AlignRooms.h"

#include <gtest/gtest.h>

#include "Editor/Files/BoardFile.h"
#include "Editor/Files/CompanionFiles.h"
#include "Editor/Files/Units.h"
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
  const std::vector<TCoordPoint> kNone;
  const struct {
    const char* name;
    const char16_t* parameters;
    std::vector<TCoordPoint> picks;
    const char* after;
    std::size_t prompts;
  } rows[] = {
      {"by name", u"RoomName=A", {}, kMoved, 0},
      {"by a name that the user corrects", u"RoomName=X", {}, kMoved, 1},
      {"by numbers, absent and unknown ones passed over", u"RoomsToUpdateCount=4|Room1=A|Room3=Z|Room4=B",
       kNone, kBoth, 0},
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

// A board with an area for each way to say what it places, the first of which forbids tracks too, one that
// places nothing and one that is locked. What belongs to the rooms that can move stands `dx` mil to the
// right.
std::string BoardOfAreas(int dx) {
  std::string text = R"((kicad_pcb (version 20241229)
 (layers (0 "F.Cu" signal) (2 "B.Cu" signal)) (net 0 ""))";
  const auto mm = [](int mil) { return Editor::FormatMillimetres(mil * 25400); };
  const auto part = [&](const std::string& name, int x, int y, const char* says) {
    text += "\n (footprint \"P\" (layer \"F.Cu\") (uuid \"" + name + "\")\n  (at " + mm(x) + " " + mm(y) +
            ") " + says + " (pad \"1\" smd rect (at 0 0) (size 1 1) (layers \"F.Cu\")))";
  };
  const auto area = [&](int x, int y, const char* says) {
    text += std::string("\n (zone (layers \"F.Cu\" \"B.Cu\") (odd 0.50) (placement ") + says +
            ")\n  (polygon (pts";
    for (const auto& [right, down] : {std::pair{0, 0}, {400, 0}, {400, 300}, {0, 300}})
      text += " (xy " + mm(x + right) + " " + mm(y + down) + ")";
    text += ")))";
  };
  part("R1", 5000 + dx, 9000, R"((sheetname "/A \"x\"/"))");  // of the first room, but not in it
  part("R2", 700, 200, R"((sheetname "/B/"))");               // in it, but not of it
  part("R3", 700 + dx, 5000, R"((component_classes (class "Hot") (class "Odd")))");
  part("R4", 700 + dx, 6000, "");
  part("R5", 700 + dx, 3150, "");
  text += R"(
 (group "inner" (uuid "g1") (members "R4" "nobody"))
 (group "outer" (uuid "g2") (members "g1")))";
  area(540 + dx, 100, R"((enabled yes) (sheetname "/A \"x\"/")) (keepout (tracks not_allowed))");
  area(540 + dx, 1000, R"((enabled yes) (component_class "Odd")) (name "ODD")");
  area(540 + dx, 2000, R"((enabled yes) (group "outer"))");
  area(540 + dx, 3000, R"((enabled yes) (sheetname ""))");
  area(540, 4000, R"((enabled no) (sheetname "/B/"))");
  area(540, 5000, R"((enabled yes) (sheetname "/B/")) (locked yes)");
  return text + "\n)\n";
}

TEST_F(AlignRooms, AreasThatPlaceAreRooms) {
  const std::string text = BoardOfAreas(0);
  board = Editor::ReadBoardText(text);
  board->setup.grid_x = board->setup.grid_y = Mil(100);
  const auto count = [&](TObjectId kind) { return board->objects.Count(kind); };
  EXPECT_EQ(count(eRuleObject), 5u);
  EXPECT_EQ(count(ePolyObject), 6u) << "they are zones still";
  board->objects.ForEach({eRuleObject},
                         [](Editor::Primitive& room) { room.Set(Editor::kFlag_Selected, true); });
  board->journal.Begin();
  Tools_MoveAllRoomsToGrid(board.Get());
  EXPECT_EQ(Editor::WriteBoardText(*board), BoardOfAreas(-40));
  EXPECT_EQ(Editor::ExtrasText(*board), "") << "the file has them, and not the one beside it too";
  board->journal.Undo();
  EXPECT_EQ(Editor::WriteBoardText(*board), text);

  // Either of the two takes the other along; an edit that is cancelled, and an undo, bring both back.
  auto* const zone = Tests::Find<Editor::Polygon>(*board);
  auto* const room = Tests::Find<Editor::Rule>(*board);
  const TCoordRect place = room->Bounds();
  room->AsInterface()->BeginModify();
  zone->AsInterface()->MoveByXY(Mil(100), 0);
  EXPECT_EQ(room->Bounds().x1, place.x1 + Mil(100));
  room->AsInterface()->MoveByXY(Mil(100), 0);
  EXPECT_EQ(zone->Bounds().x1, place.x1 + Mil(200));
  room->AsInterface()->CancelModify();
  EXPECT_EQ(zone->Bounds(), place);
  board->journal.Begin();
  board->Remove(zone);
  EXPECT_EQ(count(eRuleObject), 4u);
  board->journal.Undo();
  EXPECT_EQ(count(eRuleObject), 5u);
  EXPECT_EQ(Editor::WriteBoardText(*board), text);
  // Written anew, it says still what it places.
  zone->Write([&] { zone->data.rings.push_back(zone->data.rings.front()); });
  const Ref<Editor::Board> again = Editor::ReadBoardText(Editor::WriteBoardText(*board));
  EXPECT_EQ(Tests::Find<Editor::Rule>(*again)->data.scope1, room->data.scope1);
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
