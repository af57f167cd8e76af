#include <gtest/gtest.h>

#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Frame/Rule_Clearance.h"
#include "DLLs/Tools/Frame/Rule_ComponentClearance.h"
#include "DLLs/Tools/Frame/Rule_Confinement.h"
#include "Tests/DLLs/Tools/Frame/ScopedBoard.h"

namespace Ketril::Tools {
namespace {

class Rules : public ScopedBoard {
 protected:
  template <class T>
  T* Wrapped(TRuleKind kind, const char16_t* name) {
    return CheckedCast<T>(CreatePrimitiveWrapper(PutRule(kind, name)->AsInterface()));
  }
  TPrimitive* PutTrack(TCoord y, const char16_t* net_name) {
    Editor::Net* net = Put<Editor::Net>([&](Editor::Net& made) { made.data.name = net_name; });
    return TTrack::Create(Put<Editor::Track>([&](Editor::Track& track) {
                            track.data.p1 = {0, y};
                            track.data.p2 = {1000000, y};
                            track.data.width = 100000;
                            track.state.layer = eV6_TopLayer;
                            track.SetNet(net);
                          })->AsInterface());
  }
};

TEST_F(Rules, SameAsSeesEachField) {
  TRule* rule = Wrapped<TRule>(eRule_Clearance, u"a");
  TRule* replica = rule->Replicate(eFullCopy);
  EXPECT_TRUE(rule->SameAs(replica));
  EXPECT_EQ(typeid(*replica), typeid(TClearanceConstraint));
  const std::pair<const char*, void (*)(TRule*)> changes[] = {
      {"name", [](TRule* r) { r->SetName(u"b"); }},
      {"comment", [](TRule* r) { r->SetComment(u"b"); }},
      {"identifier", [](TRule* r) { r->SetUniqueId(u"b"); }},
      {"origin", [](TRule* r) { r->SetDefinedByLogicalDocument(true); }},
      {"net scope", [](TRule* r) { r->SetNetScope(eNetScope_AnyNet); }},
      {"layer kind", [](TRule* r) { r->SetLayerKind(eRuleLayerKind_AdjacentLayer); }},
      {"checked", [](TRule* r) { r->SetDRCEnabled(false); }},
      {"first scope", [](TRule* r) { r->SetScope1Expression(u"via"); }},
      {"second scope", [](TRule* r) { r->SetScope2Expression(u"via"); }},
  };
  for (const auto& [name, change] : changes) {
    TRule* changed = rule->Replicate(eFullCopy);
    change(changed);
    EXPECT_FALSE(rule->SameAs(changed)) << name;
  }
  EXPECT_FALSE(rule->SameAs(board));
}

TEST_F(Rules, ClearancesOfPairsAndTheCheck) {
  auto* rule = Wrapped<TClearanceConstraint>(eRule_Clearance, u"gap");
  TPrimitive *a = PutTrack(0, u"A"), *b = PutTrack(150000, u"B");
  EXPECT_EQ(rule->Mode(), eClearanceConstraintMode_SingleClearance);
  EXPECT_EQ(rule->ActualCheck(a, b), nullptr);
  rule->SetGap(60000);
  const std::unique_ptr<TContainer> found = rule->ActualCheck(a, b);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Count(), 1);
  rule->SetScope1Expression(u"net:C");
  EXPECT_FALSE(rule->Scope1Includes(a));
  EXPECT_FALSE(rule->Scope2Includes(nullptr));
  EXPECT_EQ(rule->ActualCheck(a, b), nullptr);
  rule->SetScope1Expression(u"");
  EXPECT_TRUE(rule->SubscopeMatches(a, b));
  rule->SetClearance(a, b, 10000);
  EXPECT_EQ(rule->GetClearance(eObjectClearanceID_Track, eObjectClearanceID_Track), 10000);
  rule->SetClearance(eObjectClearanceID_Via, eObjectClearanceID_Arc, 90000);
  EXPECT_EQ(rule->GetClearance(eObjectClearanceID_Arc, eObjectClearanceID_Via), 90000);
  EXPECT_EQ(rule->MaxGap(), 90000);
  EXPECT_EQ(rule->MinGap(), 10000);
  EXPECT_EQ(rule->MaxGap(a), 60000);
  EXPECT_THROW(rule->GetClearance(a, nullptr), EHostError);  // the host's refusal, no crash
  EXPECT_THROW(rule->SetClearance(nullptr, b, 1), EHostError);
  EXPECT_EQ(rule->MinGap(nullptr), 10000);
  EXPECT_EQ(rule->ActualCheck(a, b), nullptr);
}

TEST_F(Rules, ARoomHasItsRegionAtOnce) {
  auto* room = Wrapped<TConfinementConstraint>(eRule_ConfinementConstraint, u"room");
  ASSERT_NE(room->Region(), nullptr);
  EXPECT_EQ(room->Region()->Polyshape()->PointCount(), 0);
  EXPECT_EQ(PolygonalShapeArea(*room->Region()->Polyshape(), 4), 0);
  TPolygonalShape* shape = room->Region()->Polyshape();
  shape->SetState_PointCount(4);
  const TCoordPoint corners[] = {{0, 0}, {100, 0}, {100, 50}, {0, 50}};
  for (int i = 0; i < 4; ++i) {
    TPolySegment segment;
    segment.vx = corners[i].x;
    segment.vy = corners[i].y;
    shape->SetState_Segments(i, segment);
  }
  EXPECT_EQ(PolygonalShapeArea(*shape, 4), 5000);
  EXPECT_EQ(room->GetState_BoundingRectangle(), (TCoordRect{0, 0, 100, 50}));
  EXPECT_EQ(room->Region()->Owner(), room);
  EXPECT_EQ(room->Region()->Layer(), TV7_Layer(eV6_TopLayer));
  auto* spacing = Wrapped<TComponentClearanceConstraint>(eRule_ComponentClearance, u"spacing");
  spacing->SetHorizontalGap(7);
  EXPECT_EQ(spacing->HorizontalGap(), 7);
  EXPECT_EQ(spacing->VerticalGap(), 0);
  EXPECT_THROW(TPolygonalShape(spacing).PointCount(), Exception);
}

}  // namespace
}  // namespace Ketril::Tools
