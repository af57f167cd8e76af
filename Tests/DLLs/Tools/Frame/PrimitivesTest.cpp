#include "DLLs/Tools/Frame/Primitives.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/Rule_Abstract.h"
#include "Editor/Client/Client.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/ObjectFactory.h"
#include "Editor/Rules/Rule.h"

namespace Ketril::Tools {
namespace {

using Editor::HostGate;
using Editor::MakeHost;

const std::type_info& ClassOf(const TPrimitive* wrapper) {
  return typeid(*wrapper);
}

// A board with two nets and, on the first of them, two tracks; a third track has no net.
class Wrappers : public testing::Test {
 protected:
  Wrappers() {
    net_a = Loaded<Editor::Net>();
    net_b = Loaded<Editor::Net>();
    for (auto* track : {&track_1, &track_2, &track_3}) *track = Loaded<Editor::Track>();
    track_1->SetNet(net_a.Get());
    track_2->SetNet(net_a.Get());
    BeginObjectScope();
  }
  ~Wrappers() override {
    HostGate::Disarm();
    EndObjectScope();
    ReleasePCBServer();
  }

  template <class T>
  Ref<T> Loaded() {
    Ref<T> object = MakeHost<T>();
    board->Load(object.Get());
    return object;
  }

  const Editor::ClientInstallation installation{MakeHost<Editor::Client>(Editor::ClientSetup())};
  Ref<Editor::Board> board = MakeHost<Editor::Board>();
  Ref<Editor::Net> net_a, net_b;
  Ref<Editor::Track> track_1, track_2, track_3;
};

TEST_F(Wrappers, ANetIsOneWrapperWithinAScopeOnly) {
  TTrack* a = TTrack::Create(track_1);
  TTrack* b = TTrack::Create(track_2);
  TNet* net = a->Net();
  EXPECT_EQ(net, b->Net());
  EXPECT_EQ(net, b->vNet());
  EXPECT_EQ(TTrack::Create(track_3)->Net(), nullptr);
  EndObjectScope();
  BeginObjectScope();
  EXPECT_TRUE(NetMap->empty());
  TNet* renewed = TTrack::Create(track_1)->Net();
  EXPECT_EQ(renewed, NetMap->begin()->second);
  EXPECT_EQ(PrimitiveRegistry->size(), 2u);  // the track and the new wrapper of its net
}

TEST_F(Wrappers, WritingTheNet) {
  TTrack* track = TTrack::Create(track_1);
  track->SetNet(TNet::Create(net_b));  // another wrapper of the net than that of the map
  EXPECT_EQ(track_1->GetNet(), net_b.Get());
  EXPECT_THROW(track->SetNet(TNet::Create(track_2)), EIntfCastError);
  EXPECT_EQ(track_1->GetNet(), net_b.Get());
  track->SetVNet(nullptr);
  EXPECT_EQ(track_1->GetNet(), nullptr);
  EXPECT_EQ(track->Net(), nullptr);
}

TEST_F(Wrappers, ComparingByTheObjectBehind) {
  TTrack* a = TTrack::Create(track_1);
  TTrack* b = TTrack::Create(track_2);
  TTrack* free = TTrack::Create(track_3);
  TTrack* free_too = TTrack::Create(Loaded<Editor::Track>());
  TNet* net = TNet::Create(net_a);
  TNet* other_net = TNet::Create(net_b);
  TPrimitive* nothing = TPrimitive::Create();
  const struct {
    const char* name;
    TPrimitive *x, *y;
    bool same, same_net;
  } rows[] = {
      {"one wrapper", a, a, true, true},
      {"two wrappers of one object", a, TPrimitive::Create(track_1), true, true},
      {"two objects of one net", a, b, false, true},
      {"an object and its net", a, net, false, true},
      {"an object and another net", a, other_net, false, false},
      {"no net on one side", a, free, false, false},
      {"no net on both sides", free, free_too, false, true},
      {"null", a, nullptr, false, false},
  };
  const std::size_t recorded = PrimitiveRegistry->size();
  for (const auto& row : rows) {
    EXPECT_EQ(SamePrimitive(row.x, row.y), row.same) << row.name;
    EXPECT_EQ(SamePrimitive(row.y, row.x), row.same) << row.name;
    EXPECT_EQ(SameLogicalNet(row.x, row.y), row.same_net) << row.name;
    EXPECT_EQ(SameLogicalNet(row.y, row.x), row.same_net) << row.name;
  }
  EXPECT_FALSE(SamePrimitive(a, nothing));
  EXPECT_EQ(PrimitiveRegistry->size(), recorded);
}

TEST_F(Wrappers, TheBoardHasOneWrapperForEachPrimitive) {
  TTrack* a = TTrack::Create(track_1);
  TTrack* b = TTrack::Create(track_2);
  TPrimitive* owner = a->OwnerBoard();
  EXPECT_EQ(owner, a->OwnerBoard());
  EXPECT_NE(owner, b->OwnerBoard());
  EXPECT_TRUE(SamePrimitive(owner, b->OwnerBoard()));
  const std::size_t recorded = PrimitiveRegistry->size();
  a->SetState_Board(nullptr);
  EXPECT_EQ(track_1->board, board.Get());
  EXPECT_EQ(PrimitiveRegistry->size(), recorded - 1);
  a->OwnerBoard();
  EXPECT_EQ(PrimitiveRegistry->size(), recorded);
}

TEST_F(Wrappers, OwnersAreReadAnewAndTakenByKind) {
  const auto component = Loaded<Editor::Component>();
  const auto polygon = Loaded<Editor::Polygon>();
  TTrack* track = TTrack::Create(track_1);
  EXPECT_EQ(track->vComponent(), nullptr);
  track->SetVComponent(TPolygon::Create(polygon));  // no component
  EXPECT_EQ(track->vComponent(), nullptr);
  track->SetVComponent(TComp::Create(component));
  TGroup* owner = track->vComponent();
  EXPECT_EQ(ClassOf(owner), typeid(TComp));
  EXPECT_NE(owner, track->vComponent());
  EXPECT_EQ(track->vPolygon(), nullptr);
  track->SetVComponent(nullptr);
  EXPECT_EQ(track_1->Owner(), nullptr);
}

TEST_F(Wrappers, TextsOfAComponent) {
  const auto component = Loaded<Editor::Component>();
  const auto name = Loaded<Editor::Text>();
  name->data.role = Editor::TextRole::Designator;
  component->AddMember(name.Get());
  component->AddMember(track_1.Get());
  TComp* wrapper = TComp::Create(component);
  EXPECT_EQ(wrapper->Comment(), nullptr);
  EXPECT_TRUE(wrapper->Name());
  const std::size_t recorded = PrimitiveRegistry->size();
  EXPECT_TRUE(wrapper->Name());
  EXPECT_EQ(PrimitiveRegistry->size(), recorded);  // the wrapper that was handed out before is freed

  std::vector<TObjectId> seen;
  const auto note = [&](TPrimitive* item) { seen.push_back(item->ObjectID()); };
  wrapper->ProcessItems(note, {eTextObject, eTrackObject});
  EXPECT_EQ(seen, (std::vector{eTextObject, eTextObject, eTrackObject}));  // as the name, then as members
  seen.clear();
  wrapper->ProcessItems(note, {eTrackObject});
  EXPECT_EQ(seen, std::vector{eTrackObject});

  EXPECT_EQ(wrapper->Container()->Count(), 2);
  EXPECT_EQ(ClassOf(wrapper->Container()->At(1)), typeid(TPrimitive));
  EXPECT_EQ(wrapper->Container()->At(2), nullptr);
}

TEST_F(Wrappers, AReplicaHasTheClassThatTheCallSees) {
  TTrack* track = TTrack::Create(track_1);
  TPrimitive* plain = track;
  TPrimitive* rule = TRule::Create(Ref<IPCB_Primitive>(Editor::MakeRule(eRule_None)->AsInterface()));
  EXPECT_EQ(ClassOf(track->Replicate(eFullCopy)), typeid(TTrack));
  TPrimitive* replica = plain->Replicate(eFullCopy);
  EXPECT_EQ(ClassOf(replica), typeid(TPrimitive));
  EXPECT_EQ(replica->ObjectID(), eTrackObject);
  EXPECT_FALSE(SamePrimitive(replica, plain));
  EXPECT_EQ(replica->OwnerBoard()->IPrimitive(), nullptr);
  EXPECT_EQ(ClassOf(CheckedCast<TRule>(rule)->Replicate(eFullCopy)), typeid(TRule));
  EXPECT_FALSE(rule->IsRoom() || plain->IsRoom());
}

TEST_F(Wrappers, ANewObjectIsOfTheKindOfItsClassAndIsWrappedByWhatItOffers) {
  const struct {
    TPrimitive* made;
    TObjectId kind;
    const std::type_info& wrapped_as;
  } rows[] = {
      {TTrack::Create(), eTrackObject, typeid(TTrack)},
      {TArc::Create(), eArcObject, typeid(TArc)},
      {TNet::Create(), eNetObject, typeid(TNet)},
      {TVia::Create(), eViaObject, typeid(TVia)},
      {TPad::Create(), ePadObject, typeid(TPad)},
      {TPolygon::Create(), ePolyObject, typeid(TPolygon)},
      {TBoardOutline::Create(), ePolyObject, typeid(TPolygon)},
      {TPolyRegion::Create(), eRegionObject, typeid(TPolyRegion)},
      {TComponentBody::Create(), eRegionObject, typeid(TPolyRegion)},
      {TRule::Create(), eRuleObject, typeid(TRule)},
      {TText::Create(), eTextObject, typeid(TText)},
      {TComp::Create(), eComponentObject, typeid(TComp)},
      {TFill::Create(Editor::MakeObject(eFillObject)->AsInterface()), eFillObject, typeid(TFill)},
      {TGroup::Create(Editor::MakeObject(eDimensionObject)->AsInterface()), eDimensionObject, typeid(TGroup)},
      {TConnection::Create(Editor::MakeObject(eConnectionObject)->AsInterface()), eConnectionObject,
       typeid(TConnection)},
      {TObjectClassBase::Create(Editor::MakeObject(eClassObject)->AsInterface()), eClassObject,
       typeid(TObjectClassBase)},
      {TPrimitive::Create(board), eBoardObject, typeid(TBoard)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.made->ObjectID(), row.kind) << typeid(*row.made).name();
    TPrimitive* wrapper = CreatePrimitiveWrapper(row.made->IPrimitive());
    EXPECT_EQ(ClassOf(wrapper), row.wrapped_as) << typeid(*row.made).name();
  }
  EXPECT_EQ(TFill::Create()->IPrimitive(), nullptr);
  EXPECT_EQ(CreatePrimitiveWrapper(nullptr), nullptr);
}

TEST_F(Wrappers, EachPropertyReachesItsOwnValue) {
  TTrack* track = TTrack::Create();
  TArc* arc = TArc::Create();
  TConnection* line = TConnection::Create(Editor::MakeObject(eConnectionObject)->AsInterface());
  TPad* pad = TPad::Create();
  TVia* via = TVia::Create();
  // Writes a value of its own to each property, then reads them all.
  const auto check = [](auto* p, auto... property) {
    TCoord written = 100000, expected = 100000;
    ((p->*property.second)(written += 1000), ...);
    const auto read = [&](auto get) { EXPECT_EQ((p->*get)(), expected += 1000) << typeid(*p).name(); };
    (read(property.first), ...);
  };
  check(track, std::pair(&TTrack::x1, &TTrack::SetX1), std::pair(&TTrack::y1, &TTrack::SetY1),
        std::pair(&TTrack::x2, &TTrack::SetX2), std::pair(&TTrack::y2, &TTrack::SetY2),
        std::pair(&TTrack::Width, &TTrack::SetWidth));
  check(arc, std::pair(&TArc::X, &TArc::SetX), std::pair(&TArc::Y, &TArc::SetY),
        std::pair(&TArc::Radius, &TArc::SetRadius), std::pair(&TArc::LineWidth, &TArc::SetLineWidth));
  check(line, std::pair(&TConnection::x1, &TConnection::SetX1),
        std::pair(&TConnection::y1, &TConnection::SetY1), std::pair(&TConnection::x2, &TConnection::SetX2),
        std::pair(&TConnection::y2, &TConnection::SetY2));
  check(pad, std::pair(&TPad::X, &TPad::SetX), std::pair(&TPad::Y, &TPad::SetY),
        std::pair(&TPad::HoleSize, &TPad::SetHoleSize),
        std::pair(&TPad::SolderMaskExpansion, &TPad::SetSolderMaskExpansion));
  check(via, std::pair(&TVia::X, &TVia::SetX), std::pair(&TVia::Y, &TVia::SetY),
        std::pair(&TVia::HoleSize, &TVia::SetHoleSize), std::pair(&TVia::Size, &TVia::SetSize));
  EXPECT_EQ(via->GetState_X(), via->X());
  pad->SetXPadOffset(eV6_TopLayer, 11);
  pad->SetYPadOffset(eV6_TopLayer, 12);
  EXPECT_EQ(pad->XPadOffset(eV6_TopLayer), 11);
  EXPECT_EQ(pad->YPadOffset(eV6_TopLayer), 12);
}

TEST_F(Wrappers, RemovedPadsAreThoseOfNow) {
  board->layers.resize(2);
  board->layers[0].id = eV6_TopLayer;
  board->layers[1].id = eV6_BottomLayer;
  const auto host_pad = Loaded<Editor::Pad>();
  TPad* pad = TPad::Create(host_pad);
  host_pad->data.removed = {eV6_BottomLayer};
  EXPECT_EQ(pad->RemovedPads().Keys(), (std::vector<TV7_Layer>{eV6_TopLayer, eV6_BottomLayer}));
  EXPECT_FALSE(pad->RemovedPads().Data(eV6_TopLayer));
  EXPECT_TRUE(pad->RemovedPads().Data(eV6_BottomLayer));
  host_pad->data.removed.clear();
  EXPECT_FALSE(pad->RemovedPads().Data(eV6_BottomLayer));
  EXPECT_TRUE(TVia::Create()->RemovedPads().Keys().empty());
}

TEST_F(Wrappers, AWrapperOfNothingOrOfAnotherKindRaises) {
  TTrack* empty = TTrack::Create(nullptr);
  EXPECT_FALSE(empty->Selected());
  EXPECT_FALSE(empty->Moveable());
  empty->SetSelected(true);
  try {
    empty->SetWidth(1);
    FAIL();
  } catch (const EEmptyReference& e) {
    EXPECT_STREQ(e.what(), "SetWidth: there is no IPCB_Track to call");
  }
  EXPECT_THROW(empty->Net(), EEmptyReference);
  EXPECT_THROW(empty->OwnerBoard(), EEmptyReference);
  EXPECT_THROW(empty->SetVPolygon(nullptr), EEmptyReference);
  EXPECT_THROW(empty->Replicate(eFullCopy), EEmptyReference);
  EXPECT_THROW(empty->PushState(), EEmptyReference);
  EXPECT_THROW(TComp::Create(nullptr)->Name(), EEmptyReference);
  EXPECT_THROW(TComp::Create(nullptr)->Container()->Count(), EEmptyReference);
  EXPECT_TRUE(TPad::Create(nullptr)->RemovedPads().Keys().empty());
  EXPECT_THROW(TPad::Create(track_1)->HoleSize(), EIntfCastError);
  EXPECT_THROW(CheckedCast<TPad>(empty), EInvalidCast);
  HostGate::Arm(false, 1);
  EXPECT_THROW(TTrack::Create(track_1)->Width(), EHostError);
}

TEST_F(Wrappers, TheStateSetAsideComesBack) {
  TTrack* track = TTrack::Create(track_1);
  EXPECT_FALSE(track->PopState());
  track_1->data = {{1, 2}, {3, 4}, 5};
  track->PushState();
  track_1->data = {};
  track->SetNet(nullptr);
  EXPECT_TRUE(track->PopState());
  EXPECT_EQ(track_1->data, (Editor::TrackData{{1, 2}, {3, 4}, 5}));
  EXPECT_EQ(track_1->GetNet(), net_a.Get());
  EXPECT_FALSE(track->PopState());
}

}  // namespace
}  // namespace Ketril::Tools
