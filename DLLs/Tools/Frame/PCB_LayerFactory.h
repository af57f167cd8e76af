// Where layer sets come from.
#pragma once

#include "DLLs/Tools/Frame/PCB_LayerSet.h"
#include "Interfaces/Client.h"

namespace Ketril::Tools {

// New sets of the library's own, for the caller to change. They need no host.
class TPCBFactory {
 public:
  static Ref<TPCB_LayerSetBase> CreateLayerSet();  // empty
  static Ref<TPCB_LayerSetBase> CreateLayerSet(TLayerPartitionSet partitions);
  static Ref<TPCB_LayerSetBase> CreateLayerSet(const TV6_LayerSet& layers);
  static Ref<TPCB_LayerSetBase> CreateLayerSet(std::span<const TV7_Layer> layers);
  // These have no bound. To walk them, intersect them with the layers of a board or of a pad.
  static Ref<TPCB_LayerSetBase> AllLayers();
  static Ref<TPCB_LayerSetBase> SignalLayers();  // top and bottom too
};

// The library's own utilities, which stand in for those of the host.
class TLayerSetUtils final : public CountedObject<IPCB_LayerSetUtils> {
 public:
  Status CreateLayerSet(TLayerPartitionSet partitions, Ref<IPCB_LayerSet>& layers) noexcept override;

  // Ready sets of the families, new at each call, from the utilities in use. Raise EHostError when the host
  // fails.
  static Ref<IPCB_LayerSet> SignalLayers();
  static Ref<IPCB_LayerSet> MechanicalLayers();
  static Ref<IPCB_LayerSet> InternalPlaneLayers();
  static Ref<IPCB_LayerSet> DielectricLayers();
  static Ref<IPCB_LayerSet> StandardLayers();
};

// The utilities in use: those of the PCB server, or the library's own when there is no server or it has none.
// Raises EHostError when the host fails.
Ref<IPCB_LayerSetUtils> LayerSetUtils();

}  // namespace Ketril::Tools
