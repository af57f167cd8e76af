#include "DLLs/Tools/Frame/PCB_Layer.h"

#include "DLLs/Tools/Frame/Exceptions.h"

namespace Ketril::Tools {

namespace {

constexpr int kBottomSignal = 65535;

// The kinds of the old numbers in which a range of them is one kind.
struct OldRange {
  TV6_Layer First;
  TV6_Layer Last;
  TLayerPartition Partition;
};
constexpr OldRange kOldRanges[] = {
    {eV6_TopLayer, eV6_TopLayer, eV7_TopLayer},
    {eV6_MidLayer1, eV6_MidLayer30, eMidLayers},
    {eV6_BottomLayer, eV6_BottomLayer, eV7_BottomLayer},
    {eV6_InternalPlane1, eV6_InternalPlane16, eInternalPlaneLayers},
    {eV6_Mechanical1, eV6_Mechanical16, eMechanicalLayers},
};
// The others follow each other in the order of the partitions.
constexpr OldRange kOldSingles[] = {
    {eV6_TopOverlay, eV6_BottomSolder, eV7_TopOverlay},
    {eV6_DrillGuide, eV6_KeepOutLayer, eV7_DrillGuide},
    {eV6_DrillDrawing, eV6_ViaHoleLayer, eV7_DrillDrawing},
};

constexpr std::array<TLayerPartition, kV6LayerCount> PartitionsOfOldNumbers() {
  std::array<TLayerPartition, kV6LayerCount> result{};
  for (const OldRange& range : kOldRanges)
    for (int i = range.First; i <= range.Last; ++i) result[i] = range.Partition;
  for (const OldRange& range : kOldSingles)
    for (int i = range.First; i <= range.Last; ++i)
      result[i] = static_cast<TLayerPartition>(range.Partition + (i - range.First));
  return result;
}
constexpr std::array<TLayerPartition, kV6LayerCount> kOldPartitions = PartitionsOfOldNumbers();
static_assert(kOldPartitions[eV6_ViaHoleLayer] == eV7_ViaHoleLayer);
static_assert(kOldPartitions[eV6_BottomSolder] == eV7_BottomSolder);

constexpr const char16_t* kNames[kLayerPartitionCount] = {
    u"No Layer",
    u"Top Layer",
    u"Mid Layer ",
    u"Bottom Layer",
    u"Internal Plane ",
    u"Mechanical Layer ",
    u"Top Overlay",
    u"Bottom Overlay",
    u"Top Paste",
    u"Bottom Paste",
    u"Top Solder Mask",
    u"Bottom Solder Mask",
    u"Drill Guide",
    u"Keep Out Layer",
    u"Drill Drawing",
    u"Multi Layer",
    u"Connect Layer",
    u"BackGround",
    u"DRC Errors",
    u"Highlight Layer",
    u"Grid Color 1",
    u"Grid Color 10",
    u"Pad Hole Layer",
    u"Via Hole Layer",
    u"Top Pad Master",
    u"Bottom Pad Master",
    u"DRC Details",
    u"Dielectric Layer ",
    u"Top Coverlay Outline Layer ",
    u"Bottom Coverlay Outline Layer ",
};

const FurtherLayers* KindOf(TV7_Layer layer) {
  for (const FurtherLayers& kind : kFurtherLayers)
    if (kind.Flags == layer.Flags() && layer.N() >= kind.First && layer.N() <= kind.Last) return &kind;
  return nullptr;
}

[[noreturn]] void RaiseLayerException(const char* constructor, std::int64_t n) {
  throw ELayerException(std::string("Creating ") + constructor + "(" + std::to_string(n) + ")");
}

// The layer `n` of the kind with `flags`, whose first layers have the old numbers from `first_old` on.
TV7_Layer NumberedLayer(const char* constructor, int n, std::uint16_t flags, int first_old = 0) {
  const TV7_Layer further(static_cast<std::uint16_t>(n), flags);
  if (n < 1 || n > 65535) RaiseLayerException(constructor, n);
  if (KindOf(further)) return further;
  if (first_old == 0) RaiseLayerException(constructor, n);
  return static_cast<TV6_Layer>(first_old + n - 1);
}

// One number more than an int holds comes from `MidLayer`.
TV7_Layer MakeSignalLayer(std::int64_t n) {
  if (n < 1 || n > kBottomSignal) RaiseLayerException("SignalLayer", n);
  if (n == kBottomSignal) return eV6_BottomLayer;
  return NumberedLayer("SignalLayer", static_cast<int>(n), kFlags_FurtherSignal, eV6_TopLayer);
}

}  // namespace

TV7_Layer SignalLayer(int n) {
  return MakeSignalLayer(n);
}

TV7_Layer MidLayer(int n) {
  return MakeSignalLayer(std::int64_t{n} + 1);
}

TV7_Layer InternalPlaneLayer(int n) {
  return NumberedLayer("InternalPlaneLayer", n, kFlags_FurtherPlane, eV6_InternalPlane1);
}

TV7_Layer MechanicalLayer(int n) {
  return NumberedLayer("MechanicalLayer", n, kFlags_FurtherMechanical, eV6_Mechanical1);
}

TV7_Layer DielectricLayer(int n) {
  return NumberedLayer("DielectricLayer", n, kFlags_Dielectric);
}

TV7_Layer TopCoverlayOutlineLayer(int n) {
  return NumberedLayer("TopCoverlayOutlineLayer", n, kFlags_TopCoverlay);
}

TV7_Layer BottomCoverlayOutlineLayer(int n) {
  return NumberedLayer("BottomCoverlayOutlineLayer", n, kFlags_BottomCoverlay);
}

TLayerPartition PartitionOf(TV7_Layer layer) {
  if (layer.ID < kV6LayerCount) return kOldPartitions[layer.ID];
  const FurtherLayers* kind = KindOf(layer);
  if (!kind) return eV7_NoLayer;
  if (kind->Flags == kFlags_FurtherFixed)
    return static_cast<TLayerPartition>(kind->Partition + layer.N() - 1);
  return kind->Partition;
}

bool IsLayerValue(TV7_Layer layer) {
  return layer.ID < kV6LayerCount || KindOf(layer);
}

int LayerNumber(TV7_Layer layer) {
  switch (PartitionOf(layer)) {
    case eMidLayers:
      return layer.N() - 1;
    case eInternalPlaneLayers:
      return layer.Flags() == 0 ? layer.N() - eV6_InternalPlane1 + 1 : layer.N();
    case eMechanicalLayers:
      return layer.Flags() == 0 ? layer.N() - eV6_Mechanical1 + 1 : layer.N();
    case eMidDielectricLayers:
    case eTopCoverlayOutlineLayers:
    case eBottomCoverlayOutlineLayers:
      return layer.N();
    default:
      return 0;
  }
}

TV7_Layer LayerParent(TV7_Layer layer) {
  if (layer.Flags() == 0) {
    switch (PartitionOf(layer)) {
      case eV7_TopLayer:
      case eMidLayers:
      case eV7_BottomLayer:
        return {0, kFlags_FurtherSignal};
      case eInternalPlaneLayers:
        return {0, kFlags_FurtherPlane};
      case eMechanicalLayers:
        return {0, kFlags_FurtherMechanical};
      default:
        return eV6_NoLayer;
    }
  }
  if (layer.Species() != 0) return {0, layer.Flags()};
  if (layer.Genus() != 0) return {0, static_cast<std::uint16_t>(layer.Family() << 8)};
  return eV6_NoLayer;
}

std::u16string LayerToString(TV7_Layer layer) {
  std::u16string name = kNames[PartitionOf(layer)];
  if (name.back() == u' ')
    for (const char digit : std::to_string(LayerNumber(layer))) name += static_cast<char16_t>(digit);
  return name;
}

}  // namespace Ketril::Tools
