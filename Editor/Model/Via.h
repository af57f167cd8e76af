// Vias.
#pragma once

#include <vector>

#include "Editor/Model/LayerFacts.h"
#include "Editor/Model/PrimitiveObject.h"

namespace Ketril::Editor {

struct LayerSize {
  TV7_Layer layer;
  TCoord size = 0;
  friend bool operator==(const LayerSize&, const LayerSize&) = default;
};

struct ViaData {
  TCoordPoint center;
  TCoord hole = 280000;
  TCoord size = 500000;
  TV7_Layer low = eV6_TopLayer;
  TV7_Layer high = eV6_BottomLayer;
  TPadMode mode = ePadMode_Simple;
  bool remove_unused = false;    // copper only where something connects
  bool keep_end_layers = false;  // but always on the first and the last layer
  std::uint16_t high_bits = 0;
  std::vector<LayerSize> sizes;    // of the layers that differ from `size`, outside simple mode
  std::vector<TV7_Layer> removed;  // layers whose copper was taken away
  std::vector<TV7_Layer> straddling;
  MaskData mask;
  friend bool operator==(const ViaData&, const ViaData&) = default;
};

// Its layer is eV6_MultiLayer, unless somebody writes another.
class Via final : public PrimitiveObject<Via, Primitive, IPCB_Via2> {
 public:
  static constexpr TObjectId kKind = eViaObject;
  ViaData data;

  Via();
  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override { return data.center; }
  void Transform(const PlaneMap& map) override { data.center = map(data.center); }
  void MirrorLayers() override;
  std::u16string LayerText() const override;
  const MaskData& Mask() const override { return data.mask; }
  MaskData& EditMask() override { return data.mask; }
  bool OpensMask(TV7_Layer layer) const override;

  TCoord SizeOn(TV7_Layer layer) const;
  void SetSizeOn(TV7_Layer layer, TCoord size);  // data only; in simple mode the size of all layers
  void SetMode(TPadMode mode);  // data only; going back to simple mode keeps the size on the first layer
  bool Spans(TV7_Layer layer) const;
  bool IsHoleSizeValid() const;  // there is a hole and it is smaller than the copper everywhere

  KETRIL_HOST_PROPERTY(IPCB_Via, TCoord, XCenter, data.center.x)
  KETRIL_HOST_PROPERTY(IPCB_Via, TCoord, YCenter, data.center.y)
  KETRIL_HOST_PROPERTY(IPCB_Via, TCoord, HoleSize, data.hole)
  KETRIL_HOST_PROPERTY(IPCB_Via, TCoord, Size, data.size)
  KETRIL_HOST_PROPERTY(IPCB_Via, TV7_Layer, LowLayer, data.low)
  KETRIL_HOST_PROPERTY(IPCB_Via, TV7_Layer, HighLayer, data.high)
  KETRIL_HOST_PAIR(IPCB_Via2, TPadMode, Mode, data.mode, Write([&] { SetMode(value); }))
  KETRIL_HOST_LAYER_PAIR(IPCB_Via2, TCoord, SizeOnLayer, SizeOn(layer),
                         Write([&] { SetSizeOn(layer, value); }))
  KETRIL_HOST_LAYER_PAIR(IPCB_Via2, bool, IsHoleStraddling, Contains(data.straddling, layer),
                         Write([&] { Include(data.straddling, layer, value); }))
  KETRIL_HOST_PROPERTY(IPCB_Via2, std::uint16_t, MultiLayerHighBits, data.high_bits)
  KETRIL_HOST_READ(IPCB_Via2, bool, IsBackDrill, false)  // the board files have no word for one
  KETRIL_HOST_READ(IPCB_Via2, bool, IsHoleSizeValid, IsHoleSizeValid())
  // Empty: a board has one region only.
  KETRIL_HOST_READ(IPCB_Via2, Ref<IPCB_BoardRegion>, BoardRegion, nullptr)
  KETRIL_HOST_METHOD(IPCB_Via2, IntersectLayer, (TV7_Layer layer, bool& intersects),
                     void(intersects = Spans(layer)))
  // In simple mode the first layer of the span alone, which stands for all; outside it every copper layer of
  // the span, since each has a size of its own there.
  KETRIL_HOST_READ(IPCB_Via2, Ref<IPCB_LayerIterator>, DefinitionLayerIterator, DefinitionLayers())
  KETRIL_HOST_METHOD(IPCB_Via2, StackLayerIterator, (IPCB_Board * on, Ref<IPCB_LayerIterator>& iterator),
                     StackLayers(on, iterator))
  // What is unused: Editor/Vias/UnusedCopper.h.
  Status RemoveUnusedPads(bool preserve_start_end) noexcept override;
  Status RestoreUnusedPads() noexcept override;
  KETRIL_HOST_LAYER_READ(IPCB_Via2, TCoord, Calculated_SolderMaskExpansionOnLayer,
                         OpensMask(layer) ? SolderMaskExpansion() : 0)

 private:
  Ref<IPCB_LayerIterator> DefinitionLayers() const;
  Status StackLayers(IPCB_Board* on, Ref<IPCB_LayerIterator>& iterator) const;
};

}  // namespace Ketril::Editor
