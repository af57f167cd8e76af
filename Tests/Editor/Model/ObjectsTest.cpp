// Nets, groups, copies and edits of objects.
#include <gtest/gtest.h>

#include "Editor/Model/ObjectFactory.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Tests {
namespace {

using namespace Editor;

std::vector<TCoord> FirstXs(const Net& net) {
  std::vector<TCoord> xs;
  for (const Primitive* object : net.ListMembers()) xs.push_back(object->Reference().x / 10000);
  return xs;
}

TEST(Net, ListsItsObjectsInTheOrderOfJoining) {
  const Ref<Board> board =
      BoardFromText("track 1,0 9,0 net A; track 2,0 9,0 net A; via 3,0 30/15 net A; net B");
  Net &a = *board->FindNet(u"A"), &b = *board->FindNet(u"B");
  Ref<Primitive> first(Find<Track>(*board, 0)), second(Find<Track>(*board, 1));
  EXPECT_EQ(FirstXs(a), (std::vector<TCoord>{1, 2, 3}));

  ASSERT_EQ(first->AsInterface()->SetState_Net(&b), Status::Ok);
  ASSERT_EQ(first->AsInterface()->SetState_Net(&a), Status::Ok);
  EXPECT_EQ(FirstXs(a), (std::vector<TCoord>{2, 3, 1}));
  EXPECT_EQ(b.Count(), 0u);

  // Off the board it keeps its net, which does not list it.
  board->Remove(second.Get());
  EXPECT_EQ(second->GetNet(), &a);
  EXPECT_EQ(FirstXs(a), (std::vector<TCoord>{3, 1}));
  board->Add(second.Get());
  EXPECT_EQ(FirstXs(a), (std::vector<TCoord>{3, 1, 2}));
  EXPECT_EQ(a.MemberAt(2), second.Get());
  EXPECT_EQ(a.MemberAt(3), nullptr);
}

TEST(Net, AWalkSurvivesLeavingJoiningAndDying) {
  const Ref<Net> net = MakeHost<Net>();
  std::vector<Ref<Primitive>> tracks;
  for (int i = 0; i < 200; ++i) {
    tracks.push_back(MakeObject(eTrackObject));
    tracks.back()->SetNet(net.Get());
  }
  int seen = 0;
  net->ForEach([&](Primitive& track) {
    ++seen;
    track.SetNet(nullptr);
    track.SetNet(net.Get());                                           // behind the end of this walk
    tracks[tracks.size() - static_cast<std::size_t>(seen)] = nullptr;  // one that is still to come
  });
  EXPECT_EQ(seen, 100);
  EXPECT_EQ(net->Count(), 100u);
}

TEST(Group, AnObjectIsInOneGroupAtMostAndInNoneThatDied) {
  Ref<Component> one = MakeHost<Component>();
  const Ref<Component> two = MakeHost<Component>();
  const Ref<Primitive> track = MakeObject(eTrackObject);
  EXPECT_EQ(one->RegisterWithGroupWarehouse(track->AsInterface()), Status::Ok);
  EXPECT_EQ(one->RegisterWithGroupWarehouse(track->AsInterface()), Status::Ok);
  EXPECT_EQ(one->Members().size(), 1u);
  EXPECT_EQ(two->RegisterWithGroupWarehouse(track->AsInterface()), Status::Ok);
  EXPECT_EQ(one->Members().size(), 0u);

  EXPECT_EQ(track->AsInterface()->SetState_Component(one.Get()), Status::Ok);
  EXPECT_EQ(track->Owner(), one.Get());
  EXPECT_FALSE(one->HasMember(*track));
  EXPECT_EQ(two->Members().size(), 0u);
  bool in_polygon = true;
  EXPECT_EQ(track->AsInterface()->SetState_Polygon(nullptr), Status::Ok);  // it has none to clear
  EXPECT_EQ(track->AsInterface()->GetState_InPolygon(in_polygon), Status::Ok);
  EXPECT_FALSE(in_polygon);
  EXPECT_EQ(track->Owner(), one.Get());
  one = nullptr;
  EXPECT_EQ(track->Owner(), nullptr);
}

TEST(Group, RefusesWhatCannotBeAMember) {
  const Ref<Component> outer = MakeHost<Component>(), inner = MakeHost<Component>();
  ASSERT_TRUE(outer->AddMember(inner.Get()));
  EXPECT_EQ(outer->RegisterWithGroupWarehouse(outer.Get()), Status::InvalidArgument);
  EXPECT_EQ(inner->RegisterWithGroupWarehouse(outer.Get()), Status::InvalidArgument);
  EXPECT_EQ(outer->RegisterWithGroupWarehouse(MakeHost<Net>().Get()), Status::InvalidArgument);
  EXPECT_EQ(outer->RegisterWithGroupWarehouse(nullptr), Status::InvalidArgument);
}

constexpr const char* kU1 = R"(component U1 at 500,500 pattern Lib:SOT rot 30 {
  pad -50,0 60x40 rect name 1 net A top; pad 50,0 60x40 name 2 hole 20 net B; text 0,-90 "10k" comment
  track -90,-90 90,-90 topoverlay })";

TEST(Copy, OfAComponentHasItsMembersAndNoPlaceOnTheBoard) {
  const Ref<Board> board = BoardFromText(kU1);
  const Component& u1 = *Find<Component>(*board);
  Ref<IPCB_Primitive> replica;
  ASSERT_EQ(const_cast<Component&>(u1).Replicate(replica), Status::Ok);
  const Component& copy = *As<Component>(FromInterface(replica.Get()));
  EXPECT_EQ(copy.data, u1.data);
  ASSERT_EQ(copy.Members().size(), 5u);
  EXPECT_EQ(copy.Designator(), u"U1");
  EXPECT_NE(copy.UniqueId(), u1.UniqueId());
  for (const Ref<Primitive>& member : copy.Members()) {
    EXPECT_EQ(member->Owner(), &copy);
    EXPECT_FALSE(member->on_board);
    EXPECT_EQ(member->board, nullptr);
  }
  EXPECT_EQ(As<Pad>(copy.Members()[1].Get())->data, Find<Pad>(*board)->data);
  EXPECT_EQ(copy.Members()[1]->GetNet(), board->FindNet(u"A"));
  EXPECT_EQ(As<Net>(board->FindNet(u"A")->Copy().Get())->Count(), 0u);
}

TEST(EditBracket, CancelRestoresTheStateAtTheFirstBegin) {
  const Ref<Board> board = BoardFromText(kU1);
  Component& u1 = *Find<Component>(*board);
  Pad& pad = *Find<Pad>(*board);
  Net& a = *board->FindNet(u"A");
  const ComponentData before = u1.data;
  const PadData pad_before = pad.data;
  const TCoordRect bounds = u1.Bounds();
  u1.BeginModify();
  u1.MoveByXY(Mil(10), 0);
  u1.BeginModify();
  u1.FlipComponent();
  pad.AsInterface()->SetState_Net(nullptr);
  pad.AsInterface()->SetState_Selected(true);
  u1.EndModify();
  u1.CancelModify();
  EXPECT_EQ(u1.data, before);
  EXPECT_EQ(pad.data, pad_before);
  EXPECT_EQ(u1.Bounds(), bounds);
  EXPECT_EQ(pad.GetNet(), &a);
  EXPECT_TRUE(pad.Has(kFlag_Selected)) << "the selection is no part of an edit";
  EXPECT_EQ(board->index.Find({bounds.x1, bounds.y1, bounds.x1 + 1, bounds.y1 + 1}).empty(), false);

  u1.MoveByXY(Mil(10), 0);
  u1.CancelModify();  // without a begin
  EXPECT_EQ(u1.data.reference.x, before.reference.x + Mil(10));
}

TEST(Objects, TellWhatTheyAre) {
  const Ref<Board> board = BoardFromText(
      std::string(kU1) + "\ntrack 100,200 300.5,-200 top net A; via 1,2 30/15; text 0,0 \"${VALUE}\"");
  const auto describe = [](IPCB_Primitive2* object) {
    std::u16string text;
    EXPECT_EQ(object->GetState_DescriptorString(text), Status::Ok);
    return text;
  };
  EXPECT_EQ(describe(Find<Track>(*board, 1)), u"Track (100mil,200mil)(300.5mil,-200mil) on Top Layer");
  EXPECT_EQ(describe(Find<Via>(*board)), u"Via (1mil,2mil) on Top Layer - Bottom Layer");
  EXPECT_EQ(describe(Find<Net>(*board)), u"Net A");
  EXPECT_EQ(Find<Pad>(*board)->Identifier(), u"U1-1");
  EXPECT_EQ(Find<Text>(*board, 2)->Shown(), u"${VALUE}") << "no component";
  Text& comment = *Find<Component>(*board)->CommentText();
  comment.data.string = u"${REFERENCE}/%R/${NOBODY}/${FOOTPRINT_NAME}";
  EXPECT_EQ(comment.Shown(), u"U1/U1/${NOBODY}/SOT");
  bool moveable = true;
  Find<Component>(*board)->Set(kFlag_Locked, true);
  Find<Pad>(*board)->GetState_Moveable(moveable);
  EXPECT_FALSE(moveable) << "its component is locked";
}

// What turns pads into vias stands on this: in simple mode one layer tells the size of all.
TEST(Stack, ModesAndTheLayersThatDefineThem) {
  const Ref<Board> board =
      BoardFromText("layers 4; pad 0,0 60x40 hole 30; via 9,9 30/15 mid1..bottom; pad 5,5 9x9 bottom");
  const auto layers = [](auto& object) {
    Ref<IPCB_LayerIterator> iterator;
    EXPECT_EQ(object.GetState_DefinitionLayerIterator(iterator), Status::Ok);
    std::vector<TV7_Layer> result;
    TV7_Layer layer;
    EXPECT_EQ(iterator->Layer(layer), Status::InvalidArgument) << "before the first";
    for (bool found = true; iterator->Next(found), found;) {
      EXPECT_EQ(iterator->Layer(layer), Status::Ok);
      result.push_back(layer);
    }
    return result;
  };
  Pad& pad = *Find<Pad>(*board);
  Via& via = *Find<Via>(*board);
  const TV7_Layer mid1 = eV6_MidLayer1, mid2 = static_cast<TV6_Layer>(eV6_MidLayer1 + 1);
  EXPECT_EQ(layers(pad), (std::vector<TV7_Layer>{eV6_TopLayer}));
  EXPECT_EQ(layers(*Find<Pad>(*board, 1)), (std::vector<TV7_Layer>{eV6_BottomLayer}));
  EXPECT_EQ(layers(via), (std::vector<TV7_Layer>{mid1}));
  pad.SetState_Mode(ePadMode_LocalStack);
  via.SetState_Mode(ePadMode_LocalStack);
  EXPECT_EQ(layers(pad), (std::vector<TV7_Layer>{eV6_TopLayer, mid1, mid2, eV6_BottomLayer}));
  EXPECT_EQ(layers(via), (std::vector<TV7_Layer>{mid1, mid2, eV6_BottomLayer}));

  pad.SetState_XSizeOnLayer(mid2, Mil(100));
  via.SetState_SizeOnLayer(mid1, Mil(100));
  EXPECT_EQ(pad.On(mid1).x_size, Mil(60));
  EXPECT_EQ(pad.On(mid2).x_size, Mil(100));
  EXPECT_EQ(pad.Bounds(), (TCoordRect{Mil(-50), Mil(-20), Mil(50), Mil(20)}));
  EXPECT_EQ(pad.BoundsOn(mid1), (TCoordRect{Mil(-30), Mil(-20), Mil(30), Mil(20)}));
  EXPECT_EQ(via.SizeOn(mid2), Mil(30));
  pad.SetState_Mode(ePadMode_Simple);
  via.SetState_Mode(ePadMode_Simple);
  EXPECT_EQ(pad.On(mid2).x_size, Mil(60));
  EXPECT_EQ(via.SizeOn(mid2), Mil(100)) << "that of its first layer";
  bool intersects = true;
  via.IntersectLayer(eV6_TopLayer, intersects);
  EXPECT_FALSE(intersects);
}

TEST(Region, LosesVerticesThatSayNothing) {
  struct Row {
    const char* name;
    std::vector<TCoordPoint> points, left;
  };
  const Row rows[] = {
      {"repeated and straight", {{0, 0}, {0, 0}, {5, 0}, {9, 0}, {9, 9}}, {{0, 0}, {9, 0}, {9, 9}}},
      {"across the start", {{5, 0}, {9, 0}, {9, 9}, {0, 0}, {3, 0}}, {{9, 0}, {9, 9}, {0, 0}}},
      {"a spike", {{0, 0}, {9, 0}, {20, 0}, {9, 0}, {9, 9}}, {{0, 0}, {9, 0}, {9, 9}}},
      {"no area", {{0, 0}, {5, 5}, {9, 9}}, {}},
      {"nearly straight, far out",
       {{-2147483647, 0}, {0, 1}, {2147483647, 0}},
       {{-2147483647, 0}, {0, 1}, {2147483647, 0}}}};
  for (const Row& row : rows) {
    Ring ring{row.points, false};
    RemoveRedundantVertices(ring);
    EXPECT_EQ(ring.points, row.left) << row.name;
  }
  const Ref<Region> region = MakeHost<Region>();
  region->data.rings = {{{{0, 0}, {100, 0}, {100, 100}, {0, 100}}, false},
                        {{{10, 10}, {10, 20}, {20, 20}, {20, 10}}, true}};
  Ref<IPCB_GeometricPolygon> area;
  double square_units = 0;
  EXPECT_EQ(region->GetState_RegionData(area), Status::Ok);
  EXPECT_EQ(region->SetState_RegionData(area.Get()), Status::Ok);
  EXPECT_EQ(region->GetState_Area(square_units), Status::Ok);
  EXPECT_EQ(square_units, 9900);
  EXPECT_EQ(region->SetState_RegionData(nullptr), Status::InvalidArgument);
}

TEST(Region, ItsClosingSegmentCountsOnceItIsTakenFromTheArea) {
  const Ref<Region> region = MakeHost<Region>();
  region->data.rings = {{{{5, 6}, {100, 0}, {100, 100}}, false}};
  const auto count = [&] {
    std::int32_t value = -1;
    EXPECT_EQ(region->GetState_PointCount(value), Status::Ok);
    return value;
  };
  const auto expect_closed_at = [&](std::int32_t index) {
    TPolySegment segment;
    EXPECT_EQ(region->GetState_Segments(index, segment), Status::Ok);
    EXPECT_EQ(TCoord{segment.vx}, 5);
    EXPECT_EQ(region->SetState_Segments(index, segment), Status::Ok);
    segment.vy = 7;
    EXPECT_EQ(region->SetState_Segments(index, segment), Status::InvalidArgument);
    EXPECT_EQ(region->GetState_Segments(count() + 1, segment), Status::InvalidArgument);
  };
  expect_closed_at(3);
  EXPECT_EQ(region->SynchronizeShapeFromGPCPoly(), Status::Ok);
  EXPECT_EQ(count(), 4);
  expect_closed_at(3);
  EXPECT_EQ(region->DecrementPointCount(), Status::Ok);
  EXPECT_EQ(count(), 3);
  expect_closed_at(3);
  EXPECT_EQ(region->data.rings[0].points.size(), 3u);
}

}  // namespace
}  // namespace Ketril::Tests
