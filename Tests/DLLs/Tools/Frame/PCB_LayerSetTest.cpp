#include "DLLs/Tools/Frame/PCB_LayerSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "DLLs/Tools/Frame/PCB_LayerFactory.h"

namespace Ketril::Tools {
namespace {

using Set = Ref<TPCB_LayerSetBase>;
using AnySet = Ref<IPCB_LayerSet>;

// A set that the library takes for somebody else's.
class ForeignSet final : public TPCB_LayerSetBase {
 public:
  explicit ForeignSet(const TPCB_LayerSetBase& set) : TPCB_LayerSetBase(set) {}
  IInterface* QueryInterface(const InterfaceId& id) noexcept override {
    return id == Id ? nullptr : TPCB_LayerSetBase::QueryInterface(id);
  }
};

constexpr TLayerPartitionSet kSignal{eV7_TopLayer, eMidLayers, eV7_BottomLayer};
constexpr TLayerPartitionSet kDielectric(7u << eMidDielectricLayers);
constexpr TLayerPartitionSet kStandard(0x07ffffc1), kAll(0x3fffffff);
const struct {
  Set (TPCB_LayerSetBase::*Change)();
  bool In;
  TLayerPartitionSet Kinds;
} kGroupChanges[] = {
    {&TPCB_LayerSetBase::IncludeAllLayers, true, kAll},
    {&TPCB_LayerSetBase::ExcludeAllLayers, false, kAll},
    {&TPCB_LayerSetBase::IncludeSignalLayers, true, kSignal},
    {&TPCB_LayerSetBase::ExcludeSignalLayers, false, kSignal},
    {&TPCB_LayerSetBase::IncludeMechanicalLayers, true, {eMechanicalLayers}},
    {&TPCB_LayerSetBase::ExcludeMechanicalLayers, false, {eMechanicalLayers}},
    {&TPCB_LayerSetBase::IncludeInternalPlaneLayers, true, {eInternalPlaneLayers}},
    {&TPCB_LayerSetBase::ExcludeInternalPlaneLayers, false, {eInternalPlaneLayers}},
    {&TPCB_LayerSetBase::IncludeDielectricLayers, true, kDielectric},
    {&TPCB_LayerSetBase::ExludeDielectricLayers, false, kDielectric},
    {&TPCB_LayerSetBase::IncludeStandardLayers, true, kStandard},
};

// A set and, slowly, whether each layer of a sample is in it.
struct Pair {
  Set Ours = TPCBFactory::CreateLayerSet();
  std::vector<bool> Truth;
};

class LayerSetProperty : public ::testing::Test {
 protected:
  LayerSetProperty()
      : sample_{SignalLayer(32),       SignalLayer(65534),        InternalPlaneLayer(17),
                MechanicalLayer(500),  MechanicalLayer(65535),    DielectricLayer(1),
                kLayer_DRCDetail,      kLayer_TopPadMasterPlot,   kLayer_BottomPadMasterPlot,
                SignalLayer(40000),    InternalPlaneLayer(40000), MechanicalLayer(40000),
                DielectricLayer(40000)} {
    for (int i = 0; i < kV6LayerCount; ++i) sample_.push_back(static_cast<TV6_Layer>(i));
    for (int i = 1; i <= kLastCoverlay; ++i)
      sample_.insert(sample_.end(), {TopCoverlayOutlineLayer(i), BottomCoverlayOutlineLayer(i)});
    std::sort(sample_.begin(), sample_.end());
  }
  // Never named alone, so that a set is bounded when it has none of them.
  static bool IsFar(TV7_Layer layer) { return layer.N() == 40000; }
  std::size_t Random(std::size_t count) { return random_() % count; }
  void Put(Pair& pair, bool in, auto&& which) {
    for (std::size_t i = 0; i < sample_.size(); ++i)
      if (which(i)) pair.Truth[i] = in;
  }

  void Change(Pair& a, const Pair& b) {
    const bool in = Random(2) == 0;
    const AnySet other = Random(12) ? AnySet(b.Ours) : AnySet(MakeCounted<ForeignSet>(*b.Ours));
    const std::vector<bool> right = b.Truth;
    if (const std::size_t kind = Random(7); kind == 0) {
      const std::size_t i = Random(sample_.size());
      if (IsFar(sample_[i])) return;
      in ? a.Ours->Include(sample_[i]) : a.Ours->Exclude(sample_[i]);
      a.Truth[i] = in;
    } else if (kind == 1) {
      const TLayerPartitionSet some(static_cast<std::uint32_t>(Random(3) ? 1u << Random(30) : random_()));
      in ? a.Ours->Include(some) : a.Ours->Exclude(some);
      Put(a, in, [&](std::size_t i) { return some.Contains(PartitionOf(sample_[i])); });
    } else if (kind == 2) {
      const auto& row = kGroupChanges[Random(std::size(kGroupChanges))];
      (a.Ours.Get()->*row.Change)();
      Put(a, row.In, [&](std::size_t i) { return row.Kinds.Contains(PartitionOf(sample_[i])); });
    } else if (kind == 3) {
      a.Ours = a.Ours->Complement();
      a.Truth.flip();
    } else if (kind == 4) {
      a.Ours = a.Ours->Intersection(other);
      Put(a, false, [&](std::size_t i) { return !right[i]; });
    } else {
      if (kind == 5 && in) {
        a.Ours = a.Ours->Union(other);
      } else {
        in ? a.Ours->Include(other) : a.Ours->Exclude(other);
      }
      Put(a, in, [&](std::size_t i) { return right[i]; });
    }
  }

  void Check(const Pair& pair, const Pair& other) {
    std::vector<TV7_Layer> members, walked;
    for (std::size_t i = 0; i < sample_.size(); ++i) {
      EXPECT_EQ(pair.Ours->Contains(sample_[i]), pair.Truth[i]) << sample_[i].ID;
      if (pair.Truth[i] && sample_[i] != eV6_NoLayer) members.push_back(sample_[i]);
    }
    EXPECT_EQ(pair.Ours->IsEmpty(), members.empty() && !pair.Truth[0]);
    EXPECT_EQ(pair.Ours->IsAllLayers(), members.size() + 1 == sample_.size() && pair.Truth[0]);
    EXPECT_EQ(pair.Ours->EqualTo(other.Ours), pair.Truth == other.Truth);
    const bool finite = std::none_of(members.begin(), members.end(), IsFar);
    ASSERT_EQ(pair.Ours->IsFinite(), finite);
    if (!finite) {
      EXPECT_THROW(pair.Ours->LayerIterator(), EPCB_LayerSetException);
      EXPECT_TRUE(pair.Ours->Contains(pair.Ours->GetFirstLayer()));
      return;
    }
    ForEachLayer(pair.Ours->LayerIterator(), [&](TV7_Layer layer) { walked.push_back(layer); });
    EXPECT_EQ(walked, members);
    EXPECT_EQ(pair.Ours->GetFirstLayer(), members.empty() ? TV7_Layer() : members.front());
  }

  std::vector<TV7_Layer> sample_;
  std::mt19937 random_;
};

TEST_F(LayerSetProperty, AgreesWithATableOfMembers) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    random_.seed(seed);
    Pair pairs[3];
    for (Pair& pair : pairs) pair.Truth.resize(sample_.size());
    for (int step = 0; step < 40 && !HasFailure(); ++step) {
      Pair& changed = pairs[Random(3)];
      Change(changed, pairs[Random(3)]);
      Check(changed, pairs[Random(3)]);
    }
  }
}

TEST(PCB_LayerSet, MidLayersAreUnboundedWithoutTopAndBottom) {
  const Set mids = TPCBFactory::CreateLayerSet({eMidLayers});
  EXPECT_EQ(mids->ToString(), u"All Signal Layers - Top Layer - Bottom Layer");
  const Set rest = TPCBFactory::SignalLayers()->Exclude(AnySet(mids))->Include({eV7_MultiLayer});
  EXPECT_EQ(rest->ToString(), u"Top Layer, Bottom Layer, Multi Layer");
  EXPECT_EQ(rest->SerializeToString(), u"1, 32|||74||");
}

TEST(PCB_LayerSet, BoundaryFailsInsteadOfThrowing) {
  const AnySet set = TPCBFactory::AllLayers();
  Ref<IPCB_LayerIterator> layers;
  EXPECT_EQ(set->CreateLayerIterator(layers), Status::Failure);
  bool contained = true;
  EXPECT_EQ(set->ContainsLayer(TV7_Layer(99, 99), contained), Status::Ok);
  EXPECT_FALSE(contained);
  EXPECT_EQ(set->ExcludePartitions(kAll), Status::Ok);
  EXPECT_EQ(set->IncludeLayer(TV7_Layer(99, 99)), Status::Ok);
  bool empty = false, found = true;
  EXPECT_EQ(set->GetState_IsEmpty(empty), Status::Ok);
  EXPECT_TRUE(empty);
  ASSERT_EQ(set->CreateLayerIterator(layers), Status::Ok);
  TV7_Layer layer;
  EXPECT_EQ(layers->Layer(layer), Status::InvalidArgument);
  EXPECT_EQ(layers->Next(found), Status::Ok);
  EXPECT_FALSE(found);
  EXPECT_EQ(layers->Layer(layer), Status::InvalidArgument);
}

TEST(PCB_LayerSet, FromOldNumbersAndLists) {
  const TV7_Layer list[] = {eV6_MultiLayer, MidLayer(50)};
  const AnySet old = TPCBFactory::CreateLayerSet(TV6_LayerSet{eV6_TopLayer, eV6_ViaHoleLayer});
  const Set set = TPCBFactory::CreateLayerSet(list)->Union(old);
  EXPECT_EQ(set->ToString(), u"Top Layer, Mid Layer 50, Multi Layer, Via Hole Layer");
  EXPECT_EQ(TPCBFactory::CreateLayerSet()->IncludeMiscLayers()->Intersection(set)->ToString(),
            u"Multi Layer, Via Hole Layer");
}

TEST(PCB_LayerFactory, ReadySetsAreTheFamilies) {
  const auto empty = [] { return TPCBFactory::CreateLayerSet(); };
  EXPECT_TRUE(empty()->IncludeSignalLayers()->EqualTo(TLayerSetUtils::SignalLayers()));
  EXPECT_TRUE(empty()->IncludeMechanicalLayers()->EqualTo(TLayerSetUtils::MechanicalLayers()));
  EXPECT_TRUE(empty()->IncludeInternalPlaneLayers()->EqualTo(TLayerSetUtils::InternalPlaneLayers()));
  EXPECT_TRUE(empty()->IncludeDielectricLayers()->EqualTo(TLayerSetUtils::DielectricLayers()));
  EXPECT_TRUE(empty()->IncludeStandardLayers()->EqualTo(TLayerSetUtils::StandardLayers()));
}

}  // namespace
}  // namespace Ketril::Tools
