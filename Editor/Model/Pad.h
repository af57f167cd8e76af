// Pads.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/LayerFacts.h"
#include "Editor/Model/PrimitiveObject.h"

namespace Ketril::Editor {

// A pad's copper on one layer, about its centre before rotation.
struct PadLayer {
  TV7_Layer layer = eV6_MultiLayer;  // eV6_MultiLayer: on every layer that has no entry of its own
  TCoord x_size = 600000;
  TCoord y_size = 600000;
  TShape shape = eRounded;
  std::uint8_t chamfer_corners = 0;  // bits: 1 top left, 2 top right, 4 bottom left, 8 bottom right
  TCoordPoint offset;                // of the copper from the hole
  double corner_ratio = 0;           // of a rounded rectangle: radius over the smaller side, 0 to 0.5
  double chamfer_ratio = 0;          // of a chamfered corner: side of the cut over the smaller side
  // Of a trapezoid: its right side is longer than `y_size` by x and the left one shorter, its bottom is
  // longer than `x_size` by y and the top shorter.
  TCoordPoint trapezoid;
  // Of a custom shape: filled polygons about the pad's centre, united with the anchor of the shape above.
  std::vector<std::vector<TCoordPoint>> custom;
  friend bool operator==(const PadLayer&, const PadLayer&) = default;
};

struct PadData {
  std::u16string name;
  TCoordPoint center;     // of the hole
  TCoord hole = 0;        // 0: no hole
  TCoord hole_width = 0;  // the longer side of a slot
  TExtendedHoleType hole_type = eRoundHole;
  TPadMode mode = ePadMode_Simple;
  bool plated = true;
  bool remove_unused = false;
  bool keep_end_layers = false;
  std::uint16_t high_bits = 0;
  double hole_rotation = 0;                 // of the slot's longer side against the pad's x axis, degrees
  double rotation = 0;                      // of the board, the component's included
  std::vector<PadLayer> stack{PadLayer{}};  // never empty
  // Copper, mask and paste layers that the pad opens or fills; empty for those that follow from its layer:
  // all copper and both solder masks for eV6_MultiLayer, else the layer with the mask and the paste of its
  // side.
  std::vector<TV7_Layer> layers;
  std::vector<TV7_Layer> removed;
  std::vector<TV7_Layer> straddling;
  MaskData mask;
  double paste_ratio = 0;
  TCoord clearance = 0;  // 0: from the rules
  friend bool operator==(const PadData&, const PadData&) = default;
};

// A disc; a point when the radius is 0.
struct Disc {
  double x = 0, y = 0, radius = 0;
};
// Discs whose convex hull is the copper of the entry about its centre, before offset and rotation, in the
// order of its corners counter-clockwise; custom polygons are not in it. Empty where there is no copper. An
// octagon is a square with corners cut to a regular one, of the smaller side.
std::vector<Disc> HullOf(const PadLayer& layer);

// Its layer is the one that an SMD pad stands on, eV6_MultiLayer for a through pad.
class Pad final : public PrimitiveObject<Pad, Primitive, IPCB_Pad3> {
 public:
  static constexpr TObjectId kKind = ePadObject;
  PadData data;

  Pad();
  TCoordRect Bounds() const override;  // copper of all layers and the hole
  TCoordRect BoundsOn(TV7_Layer layer) const;
  TCoordPoint Reference() const override { return data.center; }
  void Transform(const PlaneMap& map) override;
  void MirrorLayers() override;
  void ChangeLayer(TV7_Layer layer) override;
  std::u16string Identifier() const override;
  const MaskData& Mask() const override { return data.mask; }
  MaskData& EditMask() override { return data.mask; }
  bool OpensMask(TV7_Layer layer) const override;

  const PadLayer& On(TV7_Layer layer) const;  // the entry that holds for the layer
  PadLayer& EditOn(TV7_Layer layer);          // data only; outside simple mode a new entry if need be
  void SetMode(TPadMode mode);  // data only; going back to simple mode keeps the copper on the first layer
  bool IsOn(TV7_Layer layer) const;  // fills or opens that layer
  TCoordPoint HoleBox() const;       // sides of the hole before the pad's rotation
  bool IsHoleSizeValid() const;      // none, or within the copper where the pad is plated
  void MakeValid();                  // data only; see ValidateSizeShape

  KETRIL_HOST_PROPERTY(IPCB_Pad, std::u16string, Name, data.name)
  KETRIL_HOST_PROPERTY(IPCB_Pad, TCoord, XCenter, data.center.x)
  KETRIL_HOST_PROPERTY(IPCB_Pad, TCoord, YCenter, data.center.y)
  KETRIL_HOST_PROPERTY(IPCB_Pad, TCoord, HoleSize, data.hole)
  KETRIL_HOST_PAIR(IPCB_Pad, TPadMode, Mode, data.mode, Write([&] { SetMode(value); }))
  KETRIL_HOST_PROPERTY(IPCB_Pad, bool, Plated, data.plated)
  KETRIL_HOST_PROPERTY(IPCB_Pad, double, Rotation, data.rotation)
  KETRIL_HOST_LAYER_PAIR(IPCB_Pad, TCoord, XSizeOnLayer, On(layer).x_size,
                         Write([&] { EditOn(layer).x_size = value; }))
  KETRIL_HOST_LAYER_PAIR(IPCB_Pad, TCoord, YSizeOnLayer, On(layer).y_size,
                         Write([&] { EditOn(layer).y_size = value; }))
  KETRIL_HOST_LAYER_PAIR(IPCB_Pad, TShape, ShapeOnLayer, On(layer).shape,
                         Write([&] { EditOn(layer).shape = value; }))

  KETRIL_HOST_PROPERTY(IPCB_Pad2, TExtendedHoleType, HoleType, data.hole_type)
  KETRIL_HOST_PROPERTY(IPCB_Pad2, TCoord, HoleWidth, data.hole_width)
  KETRIL_HOST_READ(IPCB_Pad2, TCoord, HoleXSize, HoleBox().x)
  KETRIL_HOST_READ(IPCB_Pad2, TCoord, HoleYSize, HoleBox().y)
  KETRIL_HOST_READ(IPCB_Pad2, bool, IsHoleSizeValid, IsHoleSizeValid())
  KETRIL_HOST_METHOD(IPCB_Pad2, GetState_XPadOffsetOnLayer, (TV6_Layer layer, TCoord& value),
                     void(value = On(layer).offset.x))
  KETRIL_HOST_METHOD(IPCB_Pad2, SetState_XPadOffsetOnLayer, (TV6_Layer layer, TCoord value),
                     Write([&] { EditOn(layer).offset.x = value; }))
  KETRIL_HOST_METHOD(IPCB_Pad2, GetState_YPadOffsetOnLayer, (TV6_Layer layer, TCoord& value),
                     void(value = On(layer).offset.y))
  KETRIL_HOST_METHOD(IPCB_Pad2, SetState_YPadOffsetOnLayer, (TV6_Layer layer, TCoord value),
                     Write([&] { EditOn(layer).offset.y = value; }))
  KETRIL_HOST_METHOD(IPCB_Pad2, GetState_BoundingRectangleOnLayer, (TV7_Layer layer, TCoordRect& rectangle),
                     void(rectangle = BoundsOn(layer)))

  KETRIL_HOST_PROPERTY(IPCB_Pad3, std::uint16_t, MultiLayerHighBits, data.high_bits)
  KETRIL_HOST_LAYER_PAIR(IPCB_Pad3, bool, IsHoleStraddling, Contains(data.straddling, layer),
                         Write([&] { Include(data.straddling, layer, value); }))
  // Empty: a board has one region only.
  KETRIL_HOST_READ(IPCB_Pad3, Ref<IPCB_BoardRegion>, BoardRegion, nullptr)
  // In simple mode one layer alone, which stands for all: the top layer for a through pad, else the pad's
  // own. Outside it every copper layer that the pad is on, since each has sizes of its own there.
  KETRIL_HOST_READ(IPCB_Pad3, Ref<IPCB_LayerIterator>, DefinitionLayerIterator, DefinitionLayers())
  KETRIL_HOST_METHOD(IPCB_Pad3, StackLayerIterator, (IPCB_Board * on, Ref<IPCB_LayerIterator>& iterator),
                     StackLayers(on, iterator))
  KETRIL_HOST_LAYER_READ(IPCB_Pad3, bool, IsPadRemoved, Contains(data.removed, layer))
  // What is unused: Editor/Vias/UnusedCopper.h.
  Status RemoveUnusedPads(bool preserve_start_end) noexcept override;
  Status RestoreUnusedPads() noexcept override;
  KETRIL_HOST_METHOD(IPCB_Pad3, ValidateSizeShape, (), Write([&] { MakeValid(); }))
  // No shape is kept beside the data: only the index holds a box that follows from it.
  KETRIL_HOST_METHOD(IPCB_Pad3, InvalidateCache, (), AfterWrite())
  KETRIL_HOST_LAYER_READ(IPCB_Pad3, TCoord, Calculated_SolderMaskExpansionOnLayer,
                         OpensMask(layer) ? SolderMaskExpansion() : 0)

 private:
  TCoord PasteMaskExpansion() const override;
  TCoord PlaneClearance() const override;
  void AddCopper(Extent& extent, const PadLayer& entry, double growth) const;
  TV7_Layer FirstLayer() const;
  Ref<IPCB_LayerIterator> DefinitionLayers() const;
  Status StackLayers(IPCB_Board* on, Ref<IPCB_LayerIterator>& iterator) const;
};

}  // namespace Ketril::Editor
