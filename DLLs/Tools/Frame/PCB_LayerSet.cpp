#include "DLLs/Tools/Frame/PCB_LayerSet.h"

#include <algorithm>
#include <new>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

constexpr TLayerGroup kGroups[kLayerGroupCount] = {eGroup_Signal, eGroup_Mechanical, eGroup_InternalPlane,
                                                   eGroup_Standard, eGroup_Dielectric};

// Calls `proc` with `eV6_NoLayer` and then with each layer that there can be, in order, until it gives true.
void ForEachLayerValue(FunctionRef<bool(TV7_Layer)> proc) {
  for (int i = 0; i < kV6LayerCount; ++i)
    if (proc(static_cast<TV6_Layer>(i))) return;
  for (const FurtherLayers& kind : kFurtherLayers)
    for (int n = kind.First; n <= kind.Last; ++n)
      if (proc({static_cast<std::uint16_t>(n), kind.Flags})) return;
}

// The texts of the exceptions of a part, behind `all` when it holds all layers but those.
std::u16string Describe(const TSetPartition& part, const char16_t* all,
                        FunctionRef<std::u16string(TV7_Layer)> name) {
  std::u16string text = part.All ? all : u"";
  for (const TV7_Layer layer : part.Exceptions().Keys()) {
    if (!text.empty()) text += part.All ? u" - " : u", ";
    text += name(layer);
  }
  return text;
}

// The body of a method of the boundary, from which nothing may be thrown.
template <class Body>
Status Guarded(Body&& body) noexcept {
  try {
    body();
    return Status::Ok;
  } catch (const std::bad_alloc&) {
    return Status::OutOfMemory;
  } catch (...) {
    return Status::Failure;
  }
}

}  // namespace

const std::array<TSetPartition TPCB_LayerSetBase::*, kLayerGroupCount> TPCB_LayerSetBase::kParts = {
    &TPCB_LayerSetBase::FSignalLayersPartition, &TPCB_LayerSetBase::FMechanicalLayersPartition,
    &TPCB_LayerSetBase::FInternalPlaneLayersPartition, &TPCB_LayerSetBase::FStandardLayerPartition,
    &TPCB_LayerSetBase::FDielectricLayersPartition};

using This = TPCB_LayerSetBase::This;

This TPCB_LayerSetBase::PutLayer(TV7_Layer layer, bool in) {
  if (IsLayerValue(layer)) Part(GroupOf(PartitionOf(layer))).Put(layer, in);
  return this;
}

This TPCB_LayerSetBase::PutPartitions(TLayerPartitionSet partitions, bool in) {
  for (int i = 0; i < kLayerPartitionCount; ++i) {
    const auto partition = static_cast<TLayerPartition>(i);
    if (!partitions.Contains(partition)) continue;
    const TLayerGroup group = GroupOf(partition);
    TSetPartition& part = Part(group);
    if (IsUnbounded(partition)) {
      // What the group has besides its unbounded kind stays as it is.
      TSetPartition changed;
      changed.PutAll(in);
      for (const TV7_Layer layer : BoundedLayers(group)) changed.Put(layer, part.Contains(layer));
      part = std::move(changed);
    } else {
      for (const TV7_Layer layer : BoundedLayers(group))
        if (PartitionOf(layer) == partition) part.Put(layer, in);
    }
  }
  return this;
}

This TPCB_LayerSetBase::PutGroup(TLayerGroup group, bool in) {
  Part(group).PutAll(in);
  return this;
}

This TPCB_LayerSetBase::Include(const Ref<IPCB_LayerSet>& layers) {
  const This other = OneOfOurs(layers);
  for (const TLayerGroup group : kGroups) Part(group).Unite(other->Part(group));
  return this;
}

This TPCB_LayerSetBase::Exclude(const Ref<IPCB_LayerSet>& layers) {
  const This rest = OneOfOurs(layers)->Complement();
  for (const TLayerGroup group : kGroups) Part(group).Intersect(rest->Part(group));
  return this;
}

This TPCB_LayerSetBase::Include(const Ref<IPCB_LayerIterator>& layers) {
  ForEachLayer(layers, [this](TV7_Layer layer) { PutLayer(layer, true); });
  return this;
}

This TPCB_LayerSetBase::Exclude(const Ref<IPCB_LayerIterator>& layers) {
  ForEachLayer(layers, [this](TV7_Layer layer) { PutLayer(layer, false); });
  return this;
}

This TPCB_LayerSetBase::IncludeA(std::span<const TV7_Layer> layers) {
  for (const TV7_Layer layer : layers) PutLayer(layer, true);
  return this;
}

This TPCB_LayerSetBase::ExcludeA(std::span<const TV7_Layer> layers) {
  for (const TV7_Layer layer : layers) PutLayer(layer, false);
  return this;
}

This TPCB_LayerSetBase::IncludeAllLayers() {
  for (const TLayerGroup group : kGroups) PutGroup(group, true);
  return this;
}

This TPCB_LayerSetBase::ExcludeAllLayers() {
  for (const TLayerGroup group : kGroups) PutGroup(group, false);
  return this;
}

This TPCB_LayerSetBase::IncludeMiscLayers() {
  return Include({eV7_DrillGuide, eV7_KeepOutLayer, eV7_DrillDrawing, eV7_MultiLayer, eV7_ConnectLayer,
                  eV7_BackGroundLayer, eV7_DRCErrorLayer, eV7_HighlightLayer, eV7_GridColor1, eV7_GridColor10,
                  eV7_PadHoleLayer, eV7_ViaHoleLayer, eV7_TopPadMasterPlot, eV7_BottomPadMasterPlot,
                  eV7_DRCDetailLayer});
}

This TPCB_LayerSetBase::Replicate() const {
  return MakeCounted<TPCB_LayerSetBase>(*this);
}

This TPCB_LayerSetBase::Complement() const {
  This result = Replicate();
  for (const TLayerGroup group : kGroups) result->Part(group).Complement();
  return result;
}

This TPCB_LayerSetBase::Union(const Ref<IPCB_LayerSet>& other) const {
  return Replicate()->Include(other);
}

This TPCB_LayerSetBase::Intersection(const Ref<IPCB_LayerSet>& other) const {
  return Replicate()->Exclude(Ref<IPCB_LayerSet>(OneOfOurs(other)->Complement()));
}

bool TPCB_LayerSetBase::Contains(TV7_Layer layer) const {
  const TLayerPartition partition = PartitionOf(layer);
  if (partition == eV7_NoLayer && layer != eV6_NoLayer) return false;
  return Part(GroupOf(partition)).Contains(layer);
}

bool TPCB_LayerSetBase::ContainsInternalPlaneLayers() const {
  return FInternalPlaneLayersPartition.All || FInternalPlaneLayersPartition.IncludedHash.Count() > 0;
}

bool TPCB_LayerSetBase::IsEmpty() const {
  const std::vector<TV7_Layer>& standard = BoundedLayers(eGroup_Standard);
  return IsFinite() &&
         std::all_of(kGroups, std::end(kGroups),
                     [this](TLayerGroup group) {
                       return group == eGroup_Standard || Part(group).IncludedHash.Count() == 0;
                     }) &&
         std::none_of(standard.begin(), standard.end(), [this](TV7_Layer layer) { return Contains(layer); });
}

bool TPCB_LayerSetBase::IsAllLayers() const {
  return Complement()->IsEmpty();
}

bool TPCB_LayerSetBase::IsFinite() const {
  return std::none_of(kGroups, std::end(kGroups),
                      [this](TLayerGroup group) { return group != eGroup_Standard && Part(group).All; });
}

// The standard layers can be counted, so that the same ones may be told by `All` or one by one.
bool TPCB_LayerSetBase::EqualTo(const Ref<IPCB_LayerSet>& other) const {
  const This right = OneOfOurs(other);
  const std::vector<TV7_Layer>& standard = BoundedLayers(eGroup_Standard);
  return std::all_of(kGroups, std::end(kGroups),
                     [&](TLayerGroup group) {
                       return group == eGroup_Standard || Part(group).EqualTo(right->Part(group));
                     }) &&
         std::all_of(standard.begin(), standard.end(),
                     [&](TV7_Layer layer) { return Contains(layer) == right->Contains(layer); });
}

Ref<IPCB_LayerIterator> TPCB_LayerSetBase::LayerIterator() const {
  if (!IsFinite()) throw EPCB_LayerSetException("Iterating an infinite layer set");
  std::vector<TV7_Layer> layers;
  for (const TLayerGroup group : kGroups) {
    const bool standard = group == eGroup_Standard;
    for (const TV7_Layer layer : standard ? BoundedLayers(group) : Part(group).IncludedHash.Keys())
      if (layer != eV6_NoLayer && Contains(layer)) layers.push_back(layer);
  }
  std::sort(layers.begin(), layers.end());
  return MakeCounted<TLayerListIterator>(std::move(layers));
}

TV7_Layer TPCB_LayerSetBase::GetFirstLayer() const {
  TV7_Layer first = eV6_NoLayer;
  if (IsFinite()) {
    const Ref<IPCB_LayerIterator> layers = LayerIterator();
    if (On(layers).Read(&IPCB_LayerIterator::Next)) first = On(layers).Read(&IPCB_LayerIterator::Layer);
  } else {
    ForEachLayerValue([&](TV7_Layer layer) {
      if (Contains(layer)) first = layer;
      return first != eV6_NoLayer;
    });
  }
  return first;
}

std::u16string TPCB_LayerSetBase::ToString() const {
  constexpr const char16_t* kAll[kLayerGroupCount] = {u"All Signal Layers", u"All Mechanical Layers",
                                                      u"All Internal Planes", u"All Standard Layers",
                                                      u"All Dielectric Layers"};
  std::u16string text;
  for (const TLayerGroup group : kGroups) {
    const std::u16string part = Describe(Part(group), kAll[group], LayerToString);
    if (!text.empty() && !part.empty()) text += u", ";
    text += part;
  }
  return text;
}

std::u16string TPCB_LayerSetBase::SerializeToString() const {
  std::u16string text;
  for (const TLayerGroup group : kGroups)
    text += Describe(Part(group), u"*",
                     [](TV7_Layer layer) { return Platform::ToUtf16(std::to_string(layer.ID)); }) +
            u"|";
  return text;
}

This TPCB_LayerSetBase::OneOfOurs(const Ref<IPCB_LayerSet>& set) {
  if (!set) return MakeCounted<TPCB_LayerSetBase>();
  if (This ours = Probe<TPCB_LayerSetBase>(set)) return ours;

  This result = MakeCounted<TPCB_LayerSetBase>();
  const auto host = On(set);
  if (host.Read(&IPCB_LayerSet::GetState_IsAllLayers)) return result->IncludeAllLayers();
  if (host.Read(&IPCB_LayerSet::GetState_IsFinite)) {
    if (host.Read(&IPCB_LayerSet::ContainsLayer, eV6_NoLayer)) result->PutLayer(eV6_NoLayer, true);
    return result->Include(host.Read(&IPCB_LayerSet::CreateLayerIterator));
  }
  // Every layer is asked for. A group of which it has more than half is one that it has without bound.
  std::vector<TV7_Layer> members;
  std::array<int, kLayerGroupCount> counts{};
  ForEachLayerValue([&](TV7_Layer layer) {
    if (host.Read(&IPCB_LayerSet::ContainsLayer, layer)) {
      members.push_back(layer);
      ++counts[GroupOf(PartitionOf(layer))];
    }
    return false;
  });
  for (const TLayerGroup group : kGroups) result->PutGroup(group, counts[group] > 0xffff / 2);
  ForEachLayerValue([&](TV7_Layer layer) {
    result->PutLayer(layer, std::binary_search(members.begin(), members.end(), layer));
    return false;
  });
  return result;
}

IInterface* TPCB_LayerSetBase::QueryInterface(const InterfaceId& id) noexcept {
  return CountedObject::QueryInterface(id == Id ? IPCB_LayerSet::Id : id);
}

Status TPCB_LayerSetBase::IncludeLayer(TV7_Layer layer) noexcept {
  return Guarded([&] { PutLayer(layer, true); });
}

Status TPCB_LayerSetBase::ExcludeLayer(TV7_Layer layer) noexcept {
  return Guarded([&] { PutLayer(layer, false); });
}

Status TPCB_LayerSetBase::IncludePartitions(TLayerPartitionSet partitions) noexcept {
  return Guarded([&] { PutPartitions(partitions, true); });
}

Status TPCB_LayerSetBase::ExcludePartitions(TLayerPartitionSet partitions) noexcept {
  return Guarded([&] { PutPartitions(partitions, false); });
}

Status TPCB_LayerSetBase::ContainsLayer(TV7_Layer layer, bool& contained) noexcept {
  contained = Contains(layer);
  return Status::Ok;
}

Status TPCB_LayerSetBase::GetState_IsEmpty(bool& empty) noexcept {
  return Guarded([&] { empty = IsEmpty(); });
}

Status TPCB_LayerSetBase::GetState_IsAllLayers(bool& all) noexcept {
  return Guarded([&] { all = IsAllLayers(); });
}

Status TPCB_LayerSetBase::GetState_IsFinite(bool& finite) noexcept {
  finite = IsFinite();
  return Status::Ok;
}

Status TPCB_LayerSetBase::CreateLayerIterator(Ref<IPCB_LayerIterator>& iterator) noexcept {
  return Guarded([&] { iterator = LayerIterator(); });
}

}  // namespace Ketril::Tools
