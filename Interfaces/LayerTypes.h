// How a board layer is named: the older numbering of one byte, the current 32-bit form, and the coarse
// partition of layers into kinds.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>

namespace Ketril {

// The older numbering. The values between the named ends of a range are the numbered layers of that range.
enum TV6_Layer : std::uint8_t {
  eV6_NoLayer = 0,
  eV6_TopLayer = 1,
  eV6_MidLayer1 = 2,
  eV6_MidLayer30 = 31,
  eV6_BottomLayer = 32,
  eV6_TopOverlay = 33,
  eV6_BottomOverlay = 34,
  eV6_TopPaste = 35,
  eV6_BottomPaste = 36,
  eV6_TopSolder = 37,
  eV6_BottomSolder = 38,
  eV6_InternalPlane1 = 39,
  eV6_InternalPlane16 = 54,
  eV6_DrillGuide = 55,
  eV6_KeepOutLayer = 56,
  eV6_Mechanical1 = 57,
  eV6_Mechanical16 = 72,
  eV6_DrillDrawing = 73,
  eV6_MultiLayer = 74,
  eV6_ConnectLayer = 75,
  eV6_BackGroundLayer = 76,
  eV6_DRCErrorLayer = 77,
  eV6_HighlightLayer = 78,
  eV6_GridColor1 = 79,
  eV6_GridColor10 = 80,
  eV6_PadHoleLayer = 81,
  eV6_ViaHoleLayer = 82,
};
constexpr int kV6LayerCount = 83;

// A set of `TV6_Layer`, 11 bytes: bit n % 8 of byte n / 8 is the value n.
struct TV6_LayerSet {
  std::array<std::uint8_t, 11> Bits{};

  constexpr TV6_LayerSet() = default;
  constexpr TV6_LayerSet(std::initializer_list<TV6_Layer> layers) {
    for (const TV6_Layer layer : layers) Bits[layer / 8] |= static_cast<std::uint8_t>(1u << layer % 8);
  }
  constexpr bool Contains(TV6_Layer layer) const {
    return layer < kV6LayerCount && (Bits[layer / 8] >> layer % 8 & 1) != 0;
  }
  friend constexpr bool operator==(const TV6_LayerSet&, const TV6_LayerSet&) = default;
};
static_assert(sizeof(TV6_LayerSet) == 11);

// A layer in the current form. A layer that has an old number holds it: `ID` is that number and `Flags` 0.
// Others carry a number in `N` and a kind in `Flags`. The 32 bits are read under several names.
struct TV7_Layer {
  std::uint32_t ID = 0;

  constexpr TV7_Layer() = default;
  constexpr TV7_Layer(TV6_Layer layer) : ID(layer) {}  // NOLINT: the identity on the old numbers
  constexpr TV7_Layer(std::uint16_t n, std::uint16_t flags)
      : ID(n | static_cast<std::uint32_t>(flags) << 16) {}

  constexpr std::uint16_t N() const { return static_cast<std::uint16_t>(ID); }
  constexpr std::uint16_t Flags() const { return static_cast<std::uint16_t>(ID >> 16); }
  constexpr std::uint16_t Species() const { return N(); }
  constexpr std::uint8_t Genus() const { return static_cast<std::uint8_t>(ID >> 16); }
  constexpr std::uint8_t Family() const { return static_cast<std::uint8_t>(ID >> 24); }
  constexpr std::uint32_t Ord() const { return ID; }

  // For inspection in a debugger: the old number, meaningful when both of the others are 0.
  constexpr TV6_Layer DEBUG_V6_LAYER() const { return static_cast<TV6_Layer>(ID & 0xff); }
  constexpr std::uint8_t DEBUG_V6_LAYER_VALID_IF_ZERO_1() const { return static_cast<std::uint8_t>(ID >> 8); }
  constexpr std::uint16_t DEBUG_V6_LAYER_VALID_IF_ZERO_2() const { return Flags(); }

  friend constexpr bool operator==(TV7_Layer a, TV7_Layer b) { return a.ID == b.ID; }
  friend constexpr bool operator<(TV7_Layer a, TV7_Layer b) { return a.ID < b.ID; }
};
static_assert(sizeof(TV7_Layer) == 4);

// `Flags` of the layers beyond the old numbering.
constexpr std::uint16_t kFlags_FurtherSignal = 257;       // Genus 1, Family 1
constexpr std::uint16_t kFlags_FurtherPlane = 260;        // Genus 4, Family 1
constexpr std::uint16_t kFlags_FurtherMechanical = 1024;  // Genus 0, Family 4
constexpr std::uint16_t kFlags_FurtherFixed = 512;        // Genus 0, Family 2: the three layers below
constexpr std::uint16_t kFlags_Dielectric = 2048;         // Genus 0, Family 8: N is the place from 1
constexpr std::uint16_t kFlags_TopCoverlay = 2049;        // Genus 1, Family 8: likewise
constexpr std::uint16_t kFlags_BottomCoverlay = 2050;     // Genus 2, Family 8: likewise

// Layers of which there is one each, and which have no old number.
constexpr TV7_Layer kLayer_TopPadMasterPlot{1, kFlags_FurtherFixed};
constexpr TV7_Layer kLayer_BottomPadMasterPlot{2, kFlags_FurtherFixed};
constexpr TV7_Layer kLayer_DRCDetail{3, kFlags_FurtherFixed};

// The old number of a layer; `eV6_NoLayer` for one that has none.
constexpr TV6_Layer ToV6(TV7_Layer layer) {
  return layer.ID < kV6LayerCount ? static_cast<TV6_Layer>(layer.ID) : eV6_NoLayer;
}

constexpr bool IsSignalLayer(TV7_Layer layer) {
  return layer.Flags() == 0 ? layer.ID >= eV6_TopLayer && layer.ID <= eV6_BottomLayer
                            : layer.Flags() == kFlags_FurtherSignal;
}
constexpr bool IsInternalPlaneLayer(TV7_Layer layer) {
  return layer.Flags() == 0 ? layer.ID >= eV6_InternalPlane1 && layer.ID <= eV6_InternalPlane16
                            : layer.Flags() == kFlags_FurtherPlane;
}

// The coarse kinds of layers.
enum TLayerPartition : std::uint8_t {
  eV7_NoLayer,
  eV7_TopLayer,
  eMidLayers,
  eV7_BottomLayer,
  eInternalPlaneLayers,
  eMechanicalLayers,
  eV7_TopOverlay,
  eV7_BottomOverlay,
  eV7_TopPaste,
  eV7_BottomPaste,
  eV7_TopSolder,
  eV7_BottomSolder,
  eV7_DrillGuide,
  eV7_KeepOutLayer,
  eV7_DrillDrawing,
  eV7_MultiLayer,
  eV7_ConnectLayer,
  eV7_BackGroundLayer,
  eV7_DRCErrorLayer,
  eV7_HighlightLayer,
  eV7_GridColor1,
  eV7_GridColor10,
  eV7_PadHoleLayer,
  eV7_ViaHoleLayer,
  eV7_TopPadMasterPlot,
  eV7_BottomPadMasterPlot,
  eV7_DRCDetailLayer,
  eMidDielectricLayers,
  eTopCoverlayOutlineLayers,
  eBottomCoverlayOutlineLayers,
};
constexpr int kLayerPartitionCount = eBottomCoverlayOutlineLayers + 1;

// A set of `TLayerPartition`: bit n is the value n.
class TLayerPartitionSet {
 public:
  constexpr TLayerPartitionSet() = default;
  constexpr explicit TLayerPartitionSet(std::uint32_t bits) : bits_(bits) {}
  constexpr TLayerPartitionSet(std::initializer_list<TLayerPartition> partitions) {
    for (const TLayerPartition partition : partitions) bits_ |= 1u << partition;
  }
  constexpr bool Contains(TLayerPartition partition) const { return (bits_ >> partition & 1u) != 0; }
  constexpr std::uint32_t Bits() const { return bits_; }
  friend constexpr bool operator==(TLayerPartitionSet, TLayerPartitionSet) = default;

 private:
  std::uint32_t bits_ = 0;
};
static_assert(TLayerPartitionSet{eV7_TopLayer, eMidLayers, eV7_BottomLayer}.Bits() == 14);
static_assert(TLayerPartitionSet{eV7_KeepOutLayer, eV7_MultiLayer}.Bits() == 40960);

}  // namespace Ketril

template <>
struct std::hash<Ketril::TV7_Layer> {
  std::size_t operator()(Ketril::TV7_Layer layer) const noexcept { return layer.ID; }
};
