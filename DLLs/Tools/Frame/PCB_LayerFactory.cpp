#include "DLLs/Tools/Frame/PCB_LayerFactory.h"

#include <new>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCBServer.h"

namespace Ketril::Tools {

namespace {

// The kinds that make up a group.
Ref<IPCB_LayerSet> ReadySet(TLayerGroup group) {
  std::uint32_t bits = 0;
  for (int i = 0; i < kLayerPartitionCount; ++i)
    if (GroupOf(static_cast<TLayerPartition>(i)) == group) bits |= 1u << i;
  return On(LayerSetUtils()).Read(&IPCB_LayerSetUtils::CreateLayerSet, TLayerPartitionSet(bits));
}

}  // namespace

Ref<TPCB_LayerSetBase> TPCBFactory::CreateLayerSet() {
  return MakeCounted<TPCB_LayerSetBase>();
}

Ref<TPCB_LayerSetBase> TPCBFactory::CreateLayerSet(TLayerPartitionSet partitions) {
  return CreateLayerSet()->Include(partitions);
}

Ref<TPCB_LayerSetBase> TPCBFactory::CreateLayerSet(const TV6_LayerSet& layers) {
  Ref<TPCB_LayerSetBase> set = CreateLayerSet();
  for (int i = 0; i < kV6LayerCount; ++i) {
    const auto layer = static_cast<TV6_Layer>(i);
    if (layers.Contains(layer)) set->Include(TV7_Layer(layer));
  }
  return set;
}

Ref<TPCB_LayerSetBase> TPCBFactory::CreateLayerSet(std::span<const TV7_Layer> layers) {
  return CreateLayerSet()->IncludeA(layers);
}

Ref<TPCB_LayerSetBase> TPCBFactory::AllLayers() {
  return CreateLayerSet()->IncludeAllLayers();
}

Ref<TPCB_LayerSetBase> TPCBFactory::SignalLayers() {
  return CreateLayerSet()->IncludeSignalLayers();
}

Status TLayerSetUtils::CreateLayerSet(TLayerPartitionSet partitions, Ref<IPCB_LayerSet>& layers) noexcept {
  try {
    layers = TPCBFactory::CreateLayerSet(partitions);
    return Status::Ok;
  } catch (const std::bad_alloc&) {
    return Status::OutOfMemory;
  }
}

Ref<IPCB_LayerSet> TLayerSetUtils::SignalLayers() {
  return ReadySet(eGroup_Signal);
}

Ref<IPCB_LayerSet> TLayerSetUtils::MechanicalLayers() {
  return ReadySet(eGroup_Mechanical);
}

Ref<IPCB_LayerSet> TLayerSetUtils::InternalPlaneLayers() {
  return ReadySet(eGroup_InternalPlane);
}

Ref<IPCB_LayerSet> TLayerSetUtils::DielectricLayers() {
  return ReadySet(eGroup_Dielectric);
}

Ref<IPCB_LayerSet> TLayerSetUtils::StandardLayers() {
  return ReadySet(eGroup_Standard);
}

Ref<IPCB_LayerSetUtils> LayerSetUtils() {
  if (const Ref<IPCB_ServerInterface> server = PCBServer())
    if (Ref<IPCB_LayerSetUtils> utils = On(server).Read(&IPCB_ServerInterface::GetState_LayerSetUtils))
      return utils;
  return MakeCounted<TLayerSetUtils>();
}

}  // namespace Ketril::Tools
