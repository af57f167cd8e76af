#include "DLLs/Tools/Frame/PCB_LayerSetPartition.h"

#include <utility>

#include "DLLs/Tools/Frame/PCB_Layer.h"

namespace Ketril::Tools {

TLayerGroup GroupOf(TLayerPartition partition) {
  switch (partition) {
    case eV7_TopLayer:
    case eMidLayers:
    case eV7_BottomLayer:
      return eGroup_Signal;
    case eMechanicalLayers:
      return eGroup_Mechanical;
    case eInternalPlaneLayers:
      return eGroup_InternalPlane;
    case eMidDielectricLayers:
    case eTopCoverlayOutlineLayers:
    case eBottomCoverlayOutlineLayers:
      return eGroup_Dielectric;
    default:
      return eGroup_Standard;
  }
}

bool IsUnbounded(TLayerPartition partition) {
  return partition == eMidLayers || partition == eMechanicalLayers || partition == eInternalPlaneLayers ||
         partition == eMidDielectricLayers;
}

const std::vector<TV7_Layer>& BoundedLayers(TLayerGroup group) {
  using Lists = std::array<std::vector<TV7_Layer>, kLayerGroupCount>;
  static const Lists lists = [] {
    Lists result;
    const auto add = [&result](TV7_Layer layer) {
      const TLayerPartition partition = PartitionOf(layer);
      if (!IsUnbounded(partition)) result[GroupOf(partition)].push_back(layer);
    };
    for (int i = 0; i < kV6LayerCount; ++i) add(static_cast<TV6_Layer>(i));
    for (const FurtherLayers& kind : kFurtherLayers) {
      if (IsUnbounded(kind.Partition)) continue;
      for (std::uint16_t n = kind.First; n <= kind.Last; ++n) add({n, kind.Flags});
    }
    return result;
  }();
  return lists[group];
}

void TSetPartition::Put(TV7_Layer layer, bool in) {
  TLayerHash& exceptions = All ? ExcludedHash : IncludedHash;
  if (in == All) {
    exceptions.Remove(layer);
  } else {
    exceptions.Add(layer);
  }
}

void TSetPartition::PutAll(bool in) {
  All = in;
  IncludedHash.Clear();
  ExcludedHash.Clear();
}

void TSetPartition::Complement() {
  All = !All;
  std::swap(IncludedHash, ExcludedHash);
}

void TSetPartition::Unite(const TSetPartition& other) {
  if (!other.All) {
    for (const TV7_Layer layer : other.IncludedHash.Keys()) Put(layer, true);
    return;
  }
  TLayerHash excluded;
  for (const TV7_Layer layer : other.ExcludedHash.Keys())
    if (!Contains(layer)) excluded.Add(layer);
  PutAll(true);
  ExcludedHash = std::move(excluded);
}

// A ∩ B is what is left out by the union of what A and B leave out.
void TSetPartition::Intersect(TSetPartition other) {
  Complement();
  other.Complement();
  Unite(other);
  Complement();
}

bool TSetPartition::EqualTo(const TSetPartition& other) const {
  return All == other.All && Exceptions().EqualTo(other.Exceptions());
}

}  // namespace Ketril::Tools
