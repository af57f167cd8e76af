#include "Editor/Rules/Clearance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "Editor/Copper/Distance.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Editor {
namespace {

using Tests::BoardFromText;
using Tests::Mil;

std::size_t Count(const char* text, TCoord clearance = Mil(10)) {
  const Ref<Board> board = BoardFromText(text);
  board->setup.clearance = clearance;
  board->setup.hole_clearance = Mil(12.5);
  board->objects.ForEach({ePolyObject}, [](Primitive& object) {
    PolygonData& data = As<Polygon>(&object)->data;
    data.keepout_copper = object.Has(kFlag_KeepOut);
    data.layers = {object.state.layer};
  });
  return board->Clearances().CheckBoard().size();
}

TEST(Clearance, WhoKeepsDistanceFromWhom) {
  const struct {
    const char* name;
    const char* board;
    std::size_t count;
  } rows[] = {
      {"too near", "track 0,0 100,0 w10 top net A ; track 0,19 100,19 w10 top net B", 1},
      {"far enough", "track 0,0 100,0 w10 top net A ; track 0,20 100,20 w10 top net B", 0},
      {"one net", "track 0,0 100,0 w10 top net A ; track 0,19 100,19 w10 top net A", 0},
      {"no nets", "track 0,0 100,0 w10 top ; track 0,19 100,19 w10 top", 0},
      {"a net and none", "track 0,0 100,0 w10 top net A ; track 0,19 100,19 w10 top", 1},
      {"other layers", "track 0,0 100,0 w10 top net A ; track 0,0 100,0 w10 bottom net B", 0},
      {"through all layers", "via 0,0 30/15 net A ; track -50,0 50,0 w10 bottom net B", 1},
      {"an inner via of other layers",
       "layers 4 ; via 0,0 30/15 mid1..bottom net A ; track 0,0 50,0 w10 top net B", 0},
      {"pads of one component",
       "component U1 at 0,0 { pad 0,0 60x60 top name 1 net A ; pad 65,0 60x60 top name 2 net B }", 1},
      {"within a region", "region 0,0 500,0 500,500 top net A ; via 400,100 30/15 net B", 1},
      {"keep-outs are no copper", "track 0,0 100,0 w10 top keepout ; track 0,0 100,0 w10 top net B", 0},
      {"a hole in a small ring", "via 0,0 30/28 net A ; track -50,31 50,31 w10 top net B", 1},
      {"a hole in a large ring", "via 0,0 30/10 net A ; track -50,31 50,31 w10 top net B", 0},
      {"a track where pours are forbidden",
       "zone 0,0 100,0 100,100 0,100 top keepout ; track 10,10 90,10 w10 top net A", 0},
      {"a region where pours are forbidden",
       "zone 0,0 100,0 100,100 0,100 top keepout ; region 90,10 150,10 150,50 top teardrop net A", 1},
      {"a region on another layer",
       "zone 0,0 100,0 100,100 0,100 top keepout ; region 90,10 150,10 150,50 bottom net A", 0},
      {"a class asks more", "class P V ; track 0,0 100,0 w10 top net V ; track 0,25 100,25 w10 top net B", 0},
  };
  for (const auto& row : rows) EXPECT_EQ(Count(row.board), row.count) << row.name;
}

TEST(Clearance, RulesGoByPriorityAndScope) {
  const Ref<Board> board =
      BoardFromText("track 0,0 100,0 w10 top net A ; via 50,22 10/5 net B ; track 0,40 100,40 w10 top net A");
  board->setup.clearance = Mil(5);
  Track* track = Tests::Find<Track>(*board);
  Via* via = Tests::Find<Via>(*board);
  EXPECT_EQ(board->Clearances().Clearance(*track, *via), Mil(5));
  const auto add = [&](std::int32_t priority, const char16_t* scope, TCoord gap) {
    const Ref<Rule> rule = MakeRule(eRule_Clearance);
    rule->data.priority = priority;
    rule->data.scope1 = scope;
    rule->data.gap = gap;
    board->Add(rule.Get());
    return rule;
  };
  add(2, u"", Mil(9));
  EXPECT_EQ(board->Clearances().Clearance(*track, *via), Mil(9));
  const Ref<Rule> first = add(1, u"via and net:B", Mil(30));
  EXPECT_EQ(board->Clearances().Clearance(*track, *via), Mil(30));
  EXPECT_EQ(board->Clearances().CheckObject(*via).size(), 2u);
  first->Write([&] { first->data.gaps[{eObjectClearanceID_Track, eObjectClearanceID_Via}] = Mil(3); });
  EXPECT_EQ(board->Clearances().Clearance(*via, *track), Mil(3));
  EXPECT_TRUE(board->Clearances().CheckObject(*via).empty());
  first->Write([&] { first->data.scope1 = u"net:(("; });  // no expression: the rule holds nothing
  EXPECT_EQ(board->Clearances().Clearance(*track, *via), Mil(9));
  first->Write([&] { first->data.enabled = false; });
  EXPECT_EQ(board->Clearances().Clearance(*track, *via), Mil(9));
}

// The index and the kept shapes against all pairs, each measured on its own.
TEST(Clearance, AgreesWithAllPairs) {
  for (const unsigned seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
    std::mt19937 random(seed);
    const auto place = [&] { return std::to_string(static_cast<int>(random() % 1000)); };
    std::string text;
    for (int i = 0; i < 70; ++i) {
      const std::string net = " net " + std::string(1, static_cast<char>('A' + random() % 4));
      const std::string layer = random() % 2 ? " top" : " bottom";
      switch (random() % 4) {
        case 0:
          text += "track " + place() + "," + place() + " " + place() + "," + place() + " w12" + layer + net +
                  "\n";
          break;
        case 1:
          text += "via " + place() + "," + place() + " 30/15" + net + "\n";
          break;
        case 2:
          text += "pad " + place() + "," + place() + " 60x30 rect rot 30" + layer + net + "\n";
          break;
        default:
          text += "region 0,0 " + place() + ",0 " + place() + "," + place() + layer + net + "\n";
      }
    }
    const Ref<Board> board = BoardFromText(text);
    board->setup.clearance = Mil(15);
    std::set<std::pair<const Primitive*, const Primitive*>> found, wanted;
    for (const Violation& violation : board->Clearances().CheckBoard())
      found.insert(std::minmax<const Primitive*>(violation.first.Get(), violation.second.Get()));
    std::vector<Primitive*> all;
    board->objects.ForEach({eTrackObject, eViaObject, ePadObject, eRegionObject},
                           [&](Primitive& object) { all.push_back(&object); });
    for (std::size_t i = 0; i < all.size(); ++i) {
      for (std::size_t k = 0; k < i; ++k) {
        if (all[i]->GetNet() != all[k]->GetNet() && Gap(*all[i], *all[k]) < Mil(15) - kTouchGap)
          wanted.insert(std::minmax<const Primitive*>(all[i], all[k]));
      }
    }
    EXPECT_EQ(found, wanted) << "seed " << seed;
    EXPECT_FALSE(wanted.empty());
  }
}

}  // namespace
}  // namespace Ketril::Editor
