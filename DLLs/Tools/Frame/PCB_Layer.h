// Names of board layers: constructors by number, the coarse kind of a layer, its family, its display name.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "Interfaces/LayerTypes.h"

namespace Ketril::Tools {

// Each of these raises ELayerException, "Creating SignalLayer(0)", for a number that the family does not
// have.
//
// Signal layers are numbered through the stack: 1 is top, 65535 bottom, what lies between is mid layers.
TV7_Layer SignalLayer(int n);         // 1 to 65535
TV7_Layer MidLayer(int n);            // SignalLayer(n + 1); the failure names n + 1
TV7_Layer InternalPlaneLayer(int n);  // 1 to 65535
TV7_Layer MechanicalLayer(int n);     // 1 to 65535
TV7_Layer DielectricLayer(int n);     // 1 to 65535
// The outlines of the cover films of flexible parts of a board, kLastCoverlay on a side at most.
TV7_Layer TopCoverlayOutlineLayer(int n);
TV7_Layer BottomCoverlayOutlineLayer(int n);
constexpr int kLastCoverlay = 32;

// The layers of one kind that have no old number: `N` from `First` to `Last`.
struct FurtherLayers {
  std::uint16_t Flags;
  std::uint16_t First;
  std::uint16_t Last;
  TLayerPartition Partition;  // of the first one; of the others too, but for kFlags_FurtherFixed
};
// Ascending in `Flags`, and so in the order of layers.
constexpr std::array<FurtherLayers, 7> kFurtherLayers{{
    {kFlags_FurtherSignal, 32, 65534, eMidLayers},
    {kFlags_FurtherPlane, 17, 65535, eInternalPlaneLayers},
    {kFlags_FurtherFixed, 1, 3, eV7_TopPadMasterPlot},
    {kFlags_FurtherMechanical, 17, 65535, eMechanicalLayers},
    {kFlags_Dielectric, 1, 65535, eMidDielectricLayers},
    {kFlags_TopCoverlay, 1, kLastCoverlay, eTopCoverlayOutlineLayers},
    {kFlags_BottomCoverlay, 1, kLastCoverlay, eBottomCoverlayOutlineLayers},
}};

// The coarse kind of a layer; `eV7_NoLayer` also for a value that names no layer.
TLayerPartition PartitionOf(TV7_Layer layer);

// True for `eV6_NoLayer`, which stands for itself, and for every value that names a layer.
bool IsLayerValue(TV7_Layer layer);

// The place of a layer among those of its kind, which its display name ends in: n for `MidLayer(n)`,
// `InternalPlaneLayer(n)`, `MechanicalLayer(n)`, the place from 1 for dielectric and coverlay layers; 0 for
// layers of which there is one.
int LayerNumber(TV7_Layer layer);

// The parent of a layer in its family: the record with the finest of its parts taken away. A layer's parent
// is its kind, the record of the same Genus and Family with Species 0, where a layer with an old number
// counts as one of its further kind: (0, 257) for all signal layers, top and bottom too, (0, 260) for
// internal planes, (0, 1024) for mechanical layers. The parent of a kind has Genus 0 as well: (0, 256) for
// all copper, (0, 2048) for all films. That is the top, with `eV6_NoLayer` above it, which is also above
// layers of which there is one each and that have an old number.
//
// Kinds and families name no layer of a board; they are keys of maps only.
TV7_Layer LayerParent(TV7_Layer layer);

// The fixed display name, "Mid Layer 3". "No Layer" for a value that names no layer.
std::u16string LayerToString(TV7_Layer layer);

}  // namespace Ketril::Tools
