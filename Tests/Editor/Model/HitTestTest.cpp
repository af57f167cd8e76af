#include "Editor/Model/HitTest.h"

#include <gtest/gtest.h>

#include "Editor/Model/Board.h"
#include "Platform/Text.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Editor {
namespace {

using Tests::Mil;

TEST(HitTest, GivesWhatIsAtAPlace) {
  const Ref<Board> board = Tests::BoardFromText(R"(
    track 0,0 1000,1000 w20 top
    via 500,500 60/30
    zone 0,0 2000,0 2000,2000 0,2000 bottom net A
    component U1 at 1500,500 { pad -100,0 60x60 rect top ; pad 100,0 60x60 round top selected ; text 0,300 "10k" h60 comment }
    component U4 at 3000,400 { pad 0,0 20x20 top ; text 0,100 "10k" h60 comment }
    component U3 at 3020,520 { pad 0,0 100x100 top }
    component U2 at 1500,1000 selected { pad -50,0 60x60 top selected ; pad 50,0 60x60 top }
  )");
  const Ref<Rule> room = MakeRule(eRule_ConfinementConstraint);
  room->data.name = u"Room";
  room->data.region.points = {{0, 0}, {Mil(900), 0}, {0, Mil(900)}};
  board->Load(room.Get());
  constexpr TObjectSet kAll = TObjectSet::All(),
                       kNoZone(kAll.Bits() & ~(TObjectSet{ePolyObject, eRuleObject}.Bits()));
  const struct {
    const char* name;
    double x, y;  // mil
    TObjectSet kinds;
    TIterationMethod method;
    bool only_selected;
    const char* hit;  // its kind and identifier
  } rows[] = {
      {"the smaller of two", 505, 505, kAll, eProcessComponent, false, "Via"},
      {"a line by its shape", 300, 310, kNoZone, eProcessComponent, false, "Track"},
      {"not by its box", 300, 400, kNoZone, eProcessComponent, false, ""},
      {"a component between its pads", 1500, 500, kNoZone, eProcessComponent, false, "Component U1"},
      {"a member stands for its component", 1400, 500, kNoZone, eProcessComponent, false, "Component U1"},
      {"unless it is selected alone", 1600, 500, kNoZone, eProcessComponent, false, "Pad U1-"},
      {"a selected component stands for all", 1450, 1000, kNoZone, eProcessComponent, false, "Component U2"},
      {"its comment stands for it", 1500, 800, kNoZone, eProcessComponent, false, "Component U1"},
      {"what is there comes before a comment over it", 3020, 520, kNoZone, eProcessComponent, false,
       "Component U3"},
      {"each by itself", 1400, 500, kNoZone, eProcessAll, false, "Pad U1-"},
      {"members passed over", 1400, 500, kNoZone, eProcessFree, false, "Component U1"},
      {"only what is selected", 1400, 500, kNoZone, eProcessAll, true, ""},
      {"a room by its region", 100, 100, {eRuleObject}, eProcessComponent, false, "Rule Room"},
      {"not by its box either", 800, 800, {eRuleObject}, eProcessComponent, false, ""},
      {"nothing", 5000, 5000, kAll, eProcessComponent, false, ""},
  };
  for (const auto& row : rows) {
    Ref<IPCB_Primitive> hit;
    ASSERT_EQ(board->view->HitTest({Mil(row.x), Mil(row.y)}, row.kinds, nullptr, row.method, nullptr,
                                   row.only_selected, hit),
              Status::Ok);
    const Primitive* object = FromInterface(hit.Get());
    std::string found = object ? KindName(object->kind) : "";
    if (object && !object->Identifier().empty()) found += " " + Platform::ToUtf8(object->Identifier());
    EXPECT_EQ(found, row.hit) << row.name;
  }
}

// Joining such a group is no edit and takes nothing out of its own group.
TEST(LooseGroup, MovesWhatItLists) {
  const Ref<Board> board =
      Tests::BoardFromText("component U1 at 100,100 { pad 0,0 60x60 }; via 300,100 60/30");
  auto* const component = Tests::Find<Component>(*board);
  auto* const via = Tests::Find<Via>(*board);
  component->file_changed = via->file_changed = false;
  board->journal.Begin();
  Ref<IPCB_Group2> group;
  ASSERT_EQ(board->CreateGroup(group), Status::Ok);
  for (Primitive* object : {static_cast<Primitive*>(component), static_cast<Primitive*>(via)})
    ASSERT_EQ(group->RegisterWithGroupWarehouse(object->AsInterface()), Status::Ok);
  EXPECT_TRUE(board->journal.Changes().empty());
  EXPECT_FALSE(component->file_changed);
  EXPECT_EQ(via->Owner(), nullptr);
  Ref<IPCB_GroupIterator> walk;
  ASSERT_EQ(group->GroupIterator_Create(walk), Status::Ok);
  std::vector<std::string> walked;
  Ref<IPCB_Primitive> object;
  for (walk->First(object); object; walk->Next(object))
    walked.push_back(KindName(FromInterface(object.Get())->kind));
  EXPECT_EQ(walked, (std::vector<std::string>{"Component", "Via"}));
  ASSERT_EQ(group->GroupIterator_Destroy(walk.Get()), Status::Ok);
  ASSERT_EQ(group->MoveByXY(Mil(10), Mil(20)), Status::Ok);
  EXPECT_EQ(component->Reference(), (TCoordPoint{Mil(110), Mil(120)}));
  EXPECT_EQ(component->Members().back()->Reference(), (TCoordPoint{Mil(110), Mil(120)}));
  EXPECT_EQ(via->Reference(), (TCoordPoint{Mil(310), Mil(120)}));
  EXPECT_EQ(board->index.Find({Mil(310), Mil(120), Mil(310), Mil(120)}).size(), 1u);
  group = nullptr;
  board->journal.Undo();
  EXPECT_EQ(component->Reference(), (TCoordPoint{Mil(100), Mil(100)}));
  EXPECT_EQ(via->Reference(), (TCoordPoint{Mil(300), Mil(100)}));
}

}  // namespace
}  // namespace Ketril::Editor
