#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/Rule_Abstract.h"
#include "Editor/Model/Library.h"
#include "Editor/Model/ObjectFactory.h"
#include "Tests/DLLs/Tools/Frame/ScopedBoard.h"

namespace Ketril::Tools {
namespace {

using Editor::HostGate;
using Editor::MakeHost;

class Board : public ScopedBoard {};

TEST_F(Board, NetsAscendByCodeUnit) {
  for (const char16_t* name : {u"b", u"A", u"a", u"ab", u"", u"\uFF00", u"\U0001F600"})
    Put<Editor::Net>([&](Editor::Net& net) { net.data.name = name; });
  std::u16string names;
  for (TNet* net : board->GetSortedNetList()) names += net->Name() + u"|";
  EXPECT_EQ(names, u"|A|a|ab|b|\U0001F600|\uFF00|");
  EXPECT_TRUE(NetMap->empty());
}

TEST_F(Board, ComponentsInAGreedyWalkFromTheOrigin) {
  constexpr TCoord kMin = std::numeric_limits<TCoord>::min();
  const struct {
    const char* name;
    std::vector<TCoordPoint> places;
    std::vector<int> order;
  } rows[] = {
      {"equally near: the host's first", {{5, 0}, {0, 5}, {-5, 0}}, {0, 1, 2}},
      {"nearest to the one before", {{100, 0}, {10, 0}, {-5, 0}, {11, 3}}, {2, 1, 3, 0}},
      {"the exchange moves a passed-over one back", {{9, 0}, {-10, 0}, {1, 0}, {11, 0}}, {2, 0, 3, 1}},
      {"a distance of 2^32 wraps to 0", {{1, 0}, {kMin, kMin}}, {1, 0}},
  };
  for (const auto& row : rows) {
    std::vector<IPCB_Primitive*> hosts;
    for (const TCoordPoint place : row.places) hosts.push_back(PutComponent(place, nullptr));
    std::vector<int> order;
    for (TComp* component : board->GetSpatialSortedComponents()) {
      const auto found = std::find(hosts.begin(), hosts.end(), component->IPrimitive().Get());
      order.push_back(static_cast<int>(found - hosts.begin()));
      board->CancelPrimaryWarehouseRegistration(component);
    }
    EXPECT_EQ(order, row.order) << row.name;
  }
}

TEST_F(Board, AComponentIsFoundByNameWithoutLitter) {
  PutComponent({1, 0}, nullptr);
  PutComponent({2, 0}, u"Å1");
  PutComponent({3, 0}, u"R10");
  PutComponent({4, 0}, u"r1");
  const std::size_t recorded = PrimitiveRegistry->size();
  const struct {
    const char16_t* name;
    TCoord x;  // 0: not found
  } rows[] = {{u"R1", 4}, {u"r10", 3}, {u"Å1", 2}, {u"å1", 0}, {u"R", 0}, {u"", 0}};
  std::size_t found = 0;
  for (const auto& row : rows) {
    TComp* component = board->Getstate_ComponentByName(row.name);
    EXPECT_EQ(component ? component->GetState_X() : 0, row.x);
    found += component != nullptr;
  }
  EXPECT_EQ(PrimitiveRegistry->size(), recorded + found);
}

using Process = void (TBoard::*)(TPrimMethod);

// How many objects `process` passes; more than 99 when one is of another kind.
int Seen(TBoard* board, Process process, TObjectId kind) {
  int count = 0;
  (board->*process)([&](TPrimitive* p) { count += p->ObjectID() == kind ? 1 : 100; });
  return count;
}

TEST_F(Board, ProcessAllPassesItsKindOnly) {
  const std::pair<Process, TObjectId> rows[] = {{&TBoard::ProcessAllArcs, eArcObject},
                                                {&TBoard::ProcessAllComponents, eComponentObject},
                                                {&TBoard::ProcessAllConnections, eConnectionObject},
                                                {&TBoard::ProcessAllCoordinates, eCoordinateObject},
                                                {&TBoard::ProcessAllFills, eFillObject},
                                                {&TBoard::ProcessAllNets, eNetObject},
                                                {&TBoard::ProcessFreePads, ePadObject},
                                                {&TBoard::ProcessAllPolygons, ePolyObject},
                                                {&TBoard::ProcessAllRegions, eRegionObject},
                                                {&TBoard::ProcessAllRules, eRuleObject},
                                                {&TBoard::ProcessAllTexts, eTextObject},
                                                {&TBoard::ProcessAllTracks, eTrackObject},
                                                {&TBoard::ProcessAllVias, eViaObject}};
  for (const auto& [process, kind] : rows) host->Load(Editor::MakeObject(kind).Get());
  for (const auto& [process, kind] : rows) EXPECT_EQ(Seen(board, process, kind), 1) << int{kind};
  const auto pad = Editor::MakeObject(ePadObject);
  Put<Editor::Component>([&](Editor::Component& component) { component.AddMember(pad.Get()); });
  EXPECT_EQ(Seen(board, &TBoard::ProcessFreePads, ePadObject), 1);
  EXPECT_EQ(Seen(board, &TBoard::ProcessAllPads, ePadObject), 2);
}

TEST_F(Board, AWalkBearsChanges) {
  for (int i = 0; i < 4; ++i) Put<Editor::Via>();
  int seen = 0;
  board->ProcessAllVias([&](TPrimitive* via) {
    ++seen;
    TPrimitive* replica = via->Replicate(eFullCopy);
    board->CancelPrimaryWarehouseRegistration(via);
    board->RegisterWithPrimaryWarehouse(replica);
  });
  EXPECT_EQ(seen, 4);
  EXPECT_EQ(board->GetPrimitiveCount({eViaObject}, TLayerPartitionSet(), eProcessAll), 4);
  HostGate::Arm();
  board->ProcessAllVias(nullptr);
  EXPECT_EQ(HostGate::Calls(), 0);
}

TEST_F(Board, RulesOfAKindAreOneListWithFreshContent) {
  PutRule(eRule_Clearance, u"a");
  PutRule(eRule_ConfinementConstraint, u"room");
  std::vector<TRule*>& list = board->SortedRules(eRule_Clearance);
  ASSERT_EQ(list.size(), 1u);
  TRule* const before = list[0];
  PutRule(eRule_Clearance, u"b");
  EXPECT_EQ(&board->SortedRules(eRule_Clearance), &list);
  ASSERT_EQ(list.size(), 2u);
  EXPECT_NE(list[0], before);
  EXPECT_TRUE(SamePrimitive(list[0], before));
  EXPECT_TRUE(board->SortedRules(eRule_Creepage).empty());
  EXPECT_EQ(board->GetState_RuleByRuleName(u"none"), nullptr);
  EXPECT_TRUE(board->GetState_RuleByRuleName(u"room")->IsRoom());
}

TEST_F(Board, WithoutAnOutlineOrObjectsTheRectanglesStay) {
  TCoord x1 = 1, y1 = 2, x2 = 3, y2 = 4;
  EXPECT_FALSE(board->GetBoardOutlineRectangle(x1, y1, x2, y2));
  EXPECT_FALSE(
      board->GetState_BoundingRectangleBoard(x1, y1, x2, y2, TObjectSet::All(), TLayerPartitionSet(), false));
  EXPECT_EQ(std::vector({x1, y1, x2, y2}), std::vector({1, 2, 3, 4}));
  EXPECT_EQ(board->BoardOutline(), nullptr);
}

TEST_F(Board, LibrariesGiveTheirComponents) {
  const auto library = MakeHost<Editor::Library>();
  library->components.push_back(MakeHost<Editor::LibComponent>());
  library->components[0]->data.pattern = u"R0402";
  auto* wrapper = new TPCBComponentLibrary(library);
  ASSERT_EQ(wrapper->ComponentList()->Count(), 1);
  EXPECT_EQ(wrapper->ComponentList()->At(0)->Pattern(), u"R0402");
  EXPECT_EQ(wrapper->ComponentList()->At(1), nullptr);
  EXPECT_NE(wrapper->CurrentComponent(), wrapper->CurrentComponent());
  EXPECT_THROW(TPCBComponentLibrary(nullptr).IPCBCompLib(), Exception);
}

}  // namespace
}  // namespace Ketril::Tools
