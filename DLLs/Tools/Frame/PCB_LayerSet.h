// Sets of layers, bounded or not.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "DLLs/Tools/Frame/PCB_LayerSetPartition.h"

namespace Ketril::Tools {

// The library's layer set. Held by a Ref from the start (`TPCBFactory` makes them), and changed in place.
//
// Every form of Include and Exclude hands the set back:
//
//   TPCBFactory::CreateLayerSet()->IncludeSignalLayers()->Exclude(eV6_TopLayer)->Include({eV7_MultiLayer})
//
// A value that names no layer is in no set, and including it changes nothing. A set or an iterator that is
// not ours may be given too; when it fails, EHostError is raised and this set holds part of the change.
class TPCB_LayerSetBase : public CountedObject<IPCB_LayerSet> {
 public:
  // Only sets of this class answer to it.
  static constexpr InterfaceId Id{"TPCB_LayerSetBase"};
  using This = Ref<TPCB_LayerSetBase>;

  TPCB_LayerSetBase() = default;
  TPCB_LayerSetBase(const TPCB_LayerSetBase&) = default;

  // All layers of the kinds; those of `eMidLayers` are without bound, and without top and bottom.
  This Include(TLayerPartitionSet partitions) { return PutPartitions(partitions, true); }
  This Exclude(TLayerPartitionSet partitions) { return PutPartitions(partitions, false); }
  This Include(TV7_Layer layer) { return PutLayer(layer, true); }
  This Exclude(TV7_Layer layer) { return PutLayer(layer, false); }
  // An empty reference stands for the empty set.
  This Include(const Ref<IPCB_LayerSet>& layers);
  This Exclude(const Ref<IPCB_LayerSet>& layers);
  // The layers that are left in the iterator.
  This Include(const Ref<IPCB_LayerIterator>& layers);
  This Exclude(const Ref<IPCB_LayerIterator>& layers);
  This IncludeA(std::span<const TV7_Layer> layers);
  This ExcludeA(std::span<const TV7_Layer> layers);
  This IncludeA(TV7_Layer layer) { return Include(layer); }
  This ExcludeA(TV7_Layer layer) { return Exclude(layer); }

  // Whole groups, without bound but for the standard layers.
  This IncludeAllLayers();
  This ExcludeAllLayers();
  This IncludeSignalLayers() { return PutGroup(eGroup_Signal, true); }  // top and bottom too
  This ExcludeSignalLayers() { return PutGroup(eGroup_Signal, false); }
  This IncludeMechanicalLayers() { return PutGroup(eGroup_Mechanical, true); }
  This ExcludeMechanicalLayers() { return PutGroup(eGroup_Mechanical, false); }
  This IncludeInternalPlaneLayers() { return PutGroup(eGroup_InternalPlane, true); }
  This ExcludeInternalPlaneLayers() { return PutGroup(eGroup_InternalPlane, false); }
  This IncludeDielectricLayers() { return PutGroup(eGroup_Dielectric, true); }  // coverlays too
  This ExludeDielectricLayers() { return PutGroup(eGroup_Dielectric, false); }
  This IncludeStandardLayers() { return PutGroup(eGroup_Standard, true); }
  // The standard layers that are no overlay, paste or solder mask: drill, keep-out, multi-layer and such.
  This IncludeMiscLayers();

  // New sets; the operands stay.
  This Complement() const;
  This Union(const Ref<IPCB_LayerSet>& other) const;
  This Intersection(const Ref<IPCB_LayerSet>& other) const;
  This Replicate() const;

  bool Contains(TV7_Layer layer) const;
  bool ContainsInternalPlaneLayers() const;  // one at least
  bool IsAllLayers() const;
  bool IsEmpty() const;
  // False when the set holds all of a group that has no bound, also with exceptions.
  bool IsFinite() const;
  bool EqualTo(const Ref<IPCB_LayerSet>& other) const;

  // The walk is in the order of `ID` and passes over `eV6_NoLayer`, which is no layer to visit. The iterator
  // has a list of its own, so the set may change meanwhile. Raises EPCB_LayerSetException, "Iterating an
  // infinite layer set", for a set that is not finite: intersect it with a finite one first.
  Ref<IPCB_LayerIterator> LayerIterator() const;
  // The first layer in that order, also of a set that is not finite; `eV6_NoLayer` when there is none.
  TV7_Layer GetFirstLayer() const;

  // For people: "All Signal Layers - Top Layer, Multi Layer".
  std::u16string ToString() const;
  // For comparing: the groups in their order with the numbers of `ID`, "* - 1||||74|".
  std::u16string SerializeToString() const;

  IInterface* QueryInterface(const InterfaceId& id) noexcept override;
  Status IncludeLayer(TV7_Layer layer) noexcept override;
  Status ExcludeLayer(TV7_Layer layer) noexcept override;
  Status IncludePartitions(TLayerPartitionSet partitions) noexcept override;
  Status ExcludePartitions(TLayerPartitionSet partitions) noexcept override;
  Status ContainsLayer(TV7_Layer layer, bool& contained) noexcept override;
  Status GetState_IsEmpty(bool& empty) noexcept override;
  Status GetState_IsAllLayers(bool& all) noexcept override;
  Status GetState_IsFinite(bool& finite) noexcept override;
  Status CreateLayerIterator(Ref<IPCB_LayerIterator>& iterator) noexcept override;

 protected:
  ~TPCB_LayerSetBase() override = default;

 private:
  // `set` itself when it is one of ours, else a set with the same layers.
  static This OneOfOurs(const Ref<IPCB_LayerSet>& set);
  This PutLayer(TV7_Layer layer, bool in);
  This PutPartitions(TLayerPartitionSet partitions, bool in);
  This PutGroup(TLayerGroup group, bool in);
  TSetPartition& Part(TLayerGroup group) { return this->*kParts[group]; }
  const TSetPartition& Part(TLayerGroup group) const { return this->*kParts[group]; }

  TSetPartition FSignalLayersPartition;
  TSetPartition FMechanicalLayersPartition;
  TSetPartition FInternalPlaneLayersPartition;
  TSetPartition FStandardLayerPartition;
  TSetPartition FDielectricLayersPartition;
  static const std::array<TSetPartition TPCB_LayerSetBase::*, kLayerGroupCount> kParts;
};

}  // namespace Ketril::Tools
