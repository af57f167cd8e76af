// One part of a layer set: the members among one group of layers, with or without a bound.
#pragma once

#include <vector>

#include "DLLs/Tools/Frame/PCB_LayerHash.h"

namespace Ketril::Tools {

// The groups into which a layer set parts the layers. Signal layers, mechanical layers, internal planes and
// dielectric layers are numbered up to 65535, and taken as having no bound. Standard layers are all those of
// which there is one, and `eV6_NoLayer`, for the objects that are on no layer. The coverlay outlines are
// dielectric layers of a bounded number.
enum TLayerGroup {
  eGroup_Signal,
  eGroup_Mechanical,
  eGroup_InternalPlane,
  eGroup_Standard,
  eGroup_Dielectric,
};
constexpr int kLayerGroupCount = eGroup_Dielectric + 1;

TLayerGroup GroupOf(TLayerPartition partition);
// Is `partition` the kind of its group that has no bound.
bool IsUnbounded(TLayerPartition partition);
// The layers of the group that are not of its unbounded kind, ascending.
const std::vector<TV7_Layer>& BoundedLayers(TLayerGroup group);

// A layer is in the part if `All` is set and it is not in `ExcludedHash`, or if `All` is clear and it is in
// `IncludedHash`. The other of the two stays empty.
struct TSetPartition {
  bool All = false;
  TLayerHash IncludedHash;
  TLayerHash ExcludedHash;

  bool Contains(TV7_Layer layer) const {
    return All ? !ExcludedHash.Exists(layer) : IncludedHash.Exists(layer);
  }
  const TLayerHash& Exceptions() const { return All ? ExcludedHash : IncludedHash; }
  // In the part, or out of it, from then on: one layer; all layers.
  void Put(TV7_Layer layer, bool in);
  void PutAll(bool in);
  void Complement();
  void Unite(const TSetPartition& other);
  void Intersect(TSetPartition other);
  bool EqualTo(const TSetPartition& other) const;
};

}  // namespace Ketril::Tools
