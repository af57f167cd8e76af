#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "Tests/DLLs/Tools/Frame/ScopedBoard.h"

namespace Ketril::Tools {
namespace {

using Editor::HostGate;

class Iterators : public ScopedBoard {
 protected:
  Iterators() {
    const TV7_Layer layers[] = {eV6_TopLayer, eV6_BottomLayer, eV6_TopOverlay};
    for (int i = 0; i < 3; ++i)
      Put<Editor::Track>([&](Editor::Track& track) {
        track.data = {{i * 1000000, 0}, {i * 1000000, 500000}, 100000};
        track.state.layer = layers[i];
      });
    Put<Editor::Via>([](Editor::Via& via) { via.data.center = {0, 250000}; });
  }

  // The kinds and places of what is left of a walk: "t0 t1 v0" for tracks and vias by million units of x.
  static std::string Listed(TAbstractIterator& iterator) {
    std::string list;
    for (TPrimitive* p = iterator.First(); p; p = iterator.Next())
      list += (p->ObjectID() == eViaObject ? "v" : "t") + std::to_string(p->GetState_X() / 1000000) + " ";
    return list;
  }
};

TEST_F(Iterators, FiltersOfABoardIterator) {
  TBoardIterator iterator(board);
  iterator.SetState_FilterObject({eViaObject});
  EXPECT_EQ(Listed(iterator), "v0 ");
  iterator.SetState_FilterObject({eTrackObject, eTextObject});
  EXPECT_EQ(Listed(iterator), "t0 t1 t2 ");
  iterator.SetState_FilterLayers(TLayerPartitionSet{eV7_TopLayer, eV7_TopOverlay});
  EXPECT_EQ(Listed(iterator), "t0 t2 ");
  iterator.SetState_FilterLayers(TPCBFactory::CreateLayerSet()->Include(eV6_BottomLayer));
  EXPECT_EQ(Listed(iterator), "t1 ");
  iterator.SetState_FilterLayers(TLayerPartitionSet());  // an empty set passes all
  EXPECT_EQ(Listed(iterator), "t0 t1 t2 ");
  iterator.SetState_FilterMethod(eProcessComponent);
  EXPECT_EQ(Listed(iterator), "");
}

TEST_F(Iterators, FiltersOfASpatialIteratorInTheirForms) {
  const TV7_Layer top[] = {eV6_TopLayer, eV6_TopOverlay};
  const TObjectSet tracks{eTrackObject};
  TSpatialIterator iterator(board);
  iterator.SetState_Filter(0, 0, 1000000, 1, TLayerPartitionSet{eV7_TopLayer, eV7_BottomLayer}, tracks);
  EXPECT_EQ(Listed(iterator), "t0 t1 ");
  iterator.SetState_Filter(0, 0, 2000000, 1, TV6_LayerSet{eV6_BottomLayer, eV6_TopOverlay}, tracks);
  EXPECT_EQ(Listed(iterator), "t1 t2 ");
  HostGate::Arm(true);
  iterator.SetState_FilterA(0, 0, 1000000, 1, top, tracks);
  EXPECT_EQ(HostGate::Record(), (std::vector<std::string>{"IPCB_AbstractIterator.FilterArea",
                                                          "IPCB_AbstractIterator.FilterLayers",
                                                          "IPCB_AbstractIterator.FilterObjects"}));
  EXPECT_EQ(Listed(iterator), "t0 ");
  iterator.InitFilter(board, 0, 0, 2000000, 500000, Ref<IPCB_LayerSet>(), TObjectSet::All());
  EXPECT_EQ(Listed(iterator), "t0 t1 t2 v0 ");
}

TEST_F(Iterators, WithoutAHostThereIsNoneOrAMessage) {
  const auto message = [](auto make) -> std::string {
    try {
      make();
    } catch (const Exception& exception) {
      return exception.what();
    }
    return "";
  };
  EXPECT_EQ(message([] { TBoardIterator(TBoard::Create(nullptr)); }), "Cannot create board iterator");
  EXPECT_EQ(message([] { TSpatialIterator(nullptr); }), "Cannot create spatial iterator");
  TGroupIterator iterator(TGroup::Create(Put<Editor::Track>()));
  iterator.InitFilter(nullptr, {eTrackObject});
  EXPECT_EQ(iterator.First(), nullptr);
  EXPECT_EQ(iterator.Next(), nullptr);
}

// Every call fails once: alone, then together with one of the next, which may be the one that hands back
// while the first failure is on its way.
TEST_F(Iterators, EveryFailureReachesTheCallerAndEachIteratorIsHandedBack) {
  Put<Editor::Net>();
  TComp* component = TComp::Create(PutComponent({0, 0}, u"R1"));
  const auto walks = [&] {
    TBoardIterator all(board);
    all.SetState_FilterObject({eComponentObject});
    for (TPrimitive* p = all.First(); p; p = all.Next()) {
      TSpatialIterator near(board);
      near.SetState_FilterArea(0, 0, 1, 1);
      near.First();
      TGroupIterator members(component);
      members.InitFilter(component, {eTextObject});
      EXPECT_TRUE(members.First());
    }
    board->ProcessAllNets([](TPrimitive*) {});
    board->GetSortedNetList();
    board->GetSpatialSortedComponents();
    board->Getstate_ComponentByName(u"R2");
  };
  HostGate::Arm();
  walks();
  const std::int64_t calls = HostGate::Calls();
  EXPECT_GE(calls, 40);
  for (std::int64_t k = 1; k <= calls; ++k) {
    for (const std::int64_t again : {0, 1, 2}) {
      HostGate::Arm(true, k, again);
      EXPECT_THROW(walks(), EHostError) << k << " " << again;
      std::int64_t call = 0, held = 0;
      for (const std::string& name : HostGate::Record()) {
        ++call;
        const bool failed = call == k || (again > 0 && call == k + again);
        if (name.ends_with("Iterator_Create") && !failed) ++held;
        if (name.ends_with("Iterator_Destroy")) --held;
      }
      EXPECT_EQ(held, 0) << k << " " << again;
    }
  }
}

}  // namespace
}  // namespace Ketril::Tools
