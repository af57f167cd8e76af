// Wrappers of pads and vias: objects that go through the layers of the board.
#pragma once

#include <memory>

#include "DLLs/Tools/Frame/PCB_LayerHash.h"
#include "DLLs/Tools/Frame/PrimitivesAreas.h"

// The values that rules decide, read through the view of a pad or a via.
#define KETRIL_FORWARD_CALCULATED(View)                                                                    \
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Calculated_ReliefConductorWidth, View,                          \
                          Calculated_ReliefConductorWidth)                                                 \
  KETRIL_FORWARD_OVERRIDE(std::int32_t, GetState_Calculated_ReliefEntries, View, Calculated_ReliefEntries) \
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Calculated_ReliefAirGap, View, Calculated_ReliefAirGap)         \
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Calculated_PasteMaskExpansion, View,                            \
                          Calculated_PasteMaskExpansion)                                                   \
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Calculated_SolderMaskExpansion, View,                           \
                          Calculated_SolderMaskExpansion)                                                  \
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Calculated_PowerPlaneClearance, View,                           \
                          Calculated_PowerPlaneClearance)                                                  \
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Calculated_PowerPlaneReliefExpansion, View,                     \
                          Calculated_PowerPlaneReliefExpansion)                                            \
  TCoord GetState_Calculated_SolderMaskExpansion(TV7_Layer mask_layer) const override {                    \
    return On(View()).Read(KETRIL_VIEW_METHOD(View, GetState_Calculated_SolderMaskExpansionOnLayer),       \
                           mask_layer);                                                                    \
  }

namespace Ketril::Tools {

// What pads and vias have in common.
class TStackObject : public TWrapper<TStackObject, TPrimitive> {
 public:
  using TWrapper::TWrapper;

  using TPrimitive::GetState_Calculated_SolderMaskExpansion;
  virtual TCoord GetState_Calculated_SolderMaskExpansion(TV7_Layer mask_layer) const = 0;
  // The layers that the object spans on `board`; without one, on its own board.
  virtual Ref<IPCB_LayerIterator> StackLayerIterator(TPrimitive* board) const = 0;
  virtual void RemoveUnusedPads(bool preserve_start_end) = 0;
  virtual void RestoreUnusedPads() = 0;

  // The part of the board on which the object stands, new at each read; null where the host gives none.
  TBoardRegion* BoardRegion() const;
  // Of a pad, whether its copper was taken away, for each layer of its stack; of anything else, empty. Filled
  // anew at each read, in a map that this object owns.
  TLayerToBoolean& RemovedPads();
  bool IsHoleStraddling(TV7_Layer layer) const;
  void SetIsHoleStraddling(TV7_Layer layer, bool value);

  // These raise ENotImplementedException.
  bool PadConnectedOnLayer(TV7_Layer) const { throw ENotImplementedException(); }
  TV7_Layer TopLayer() const { throw ENotImplementedException(); }
  TV7_Layer BottomLayer() const { throw ENotImplementedException(); }
  TV7_Layer TopSignalLayer() const { throw ENotImplementedException(); }
  TV7_Layer BottomSignalLayer() const { throw ENotImplementedException(); }

 private:
  std::unique_ptr<TLayerToBoolean> FRemovedPads;
};

class TPad : public TWrapper<TPad, TStackObject> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Pad3> IPad() const { return CheckedCast<IPCB_Pad3>(FPrimitive); }

  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_X, IPad, XCenter)
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Y, IPad, YCenter)
  TCoordRect GetState_BoundingRectangle_OnLayer(TV7_Layer layer, TCoord& x1, TCoord& y1, TCoord& x2,
                                                TCoord& y2) const override;
  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IPad, DescriptorString)
  KETRIL_FORWARD_CALCULATED(IPad)

  KETRIL_FORWARD(std::u16string, Name, IPad, Name)
  KETRIL_FORWARD_READ(TCoord, X, IPad, XCenter)
  KETRIL_FORWARD_READ(TCoord, Y, IPad, YCenter)
  KETRIL_FORWARD_WRITE(TCoord, SetX, IPad, XCenter)
  KETRIL_FORWARD_WRITE(TCoord, SetY, IPad, YCenter)
  KETRIL_FORWARD(TCoord, HoleSize, IPad, HoleSize)  // the smaller side of a slot
  KETRIL_FORWARD(TExtendedHoleType, HoleType, IPad, HoleType)
  KETRIL_FORWARD(TCoord, HoleWidth, IPad, HoleWidth)  // the longer side of a slot
  KETRIL_FORWARD(TPadMode, Mode, IPad, Mode)
  KETRIL_FORWARD(bool, Plated, IPad, Plated)
  KETRIL_FORWARD(std::uint16_t, MultiLayerHighBits, IPad, MultiLayerHighBits)
  KETRIL_FORWARD_READ(Ref<IPCB_LayerIterator>, DefinitionLayerIterator, IPad, DefinitionLayerIterator)
  KETRIL_FORWARD(double, Rotation, IPad, Rotation)

  // Size and shape of the copper by layer; both names of a pair mean the same.
  KETRIL_FORWARD_LAYER(TCoord, XSizeOnLayer, IPad, XSizeOnLayer)
  KETRIL_FORWARD_LAYER(TCoord, YSizeOnLayer, IPad, YSizeOnLayer)
  KETRIL_FORWARD_LAYER(TShape, ShapeOnLayer, IPad, ShapeOnLayer)
  KETRIL_FORWARD_LAYER(TCoord, StackSizeX, IPad, XSizeOnLayer)
  KETRIL_FORWARD_LAYER(TCoord, StackSizeY, IPad, YSizeOnLayer)
  KETRIL_FORWARD_LAYER(TShape, StackShape, IPad, ShapeOnLayer)
  // How far the copper is off the hole. The host keeps it by the older layer number.
  TCoord XPadOffset(TV7_Layer layer) const;
  TCoord YPadOffset(TV7_Layer layer) const;
  void SetXPadOffset(TV7_Layer layer, TCoord value);
  void SetYPadOffset(TV7_Layer layer, TCoord value);

  // Sides of the hole's box before the pad's rotation.
  KETRIL_FORWARD_READ(TCoord, GetHoleXSize, IPad, HoleXSize)
  KETRIL_FORWARD_READ(TCoord, GetHoleYSize, IPad, HoleYSize)
  KETRIL_FORWARD_READ(bool, IsHoleSizeValid, IPad, IsHoleSizeValid)
  void ValidateSizeShape() { On(IPad()).Call(&IPCB_Pad3::ValidateSizeShape); }
  void InvalidateCache() { On(IPad()).Call(&IPCB_Pad3::InvalidateCache); }
  Ref<IPCB_LayerIterator> StackLayerIterator(TPrimitive* board) const override;
  void RemoveUnusedPads(bool preserve_start_end) override;
  void RestoreUnusedPads() override { On(IPad()).Call(&IPCB_Pad3::RestoreUnusedPads); }
};

class TVia : public TWrapper<TVia, TStackObject> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Via2> IVia() const { return CheckedCast<IPCB_Via2>(FPrimitive); }

  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_X, IVia, XCenter)
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Y, IVia, YCenter)
  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IVia, DescriptorString)
  KETRIL_FORWARD_CALCULATED(IVia)

  KETRIL_FORWARD_READ(TCoord, X, IVia, XCenter)
  KETRIL_FORWARD_READ(TCoord, Y, IVia, YCenter)
  KETRIL_FORWARD_WRITE(TCoord, SetX, IVia, XCenter)
  KETRIL_FORWARD_WRITE(TCoord, SetY, IVia, YCenter)
  KETRIL_FORWARD(TCoord, HoleSize, IVia, HoleSize)
  KETRIL_FORWARD(TPadMode, Mode, IVia, Mode)
  KETRIL_FORWARD(TCoord, Size, IVia, Size)  // the diameter on every layer of a simple via
  KETRIL_FORWARD_READ(TV7_Layer, vLowLayer, IVia, LowLayer)
  KETRIL_FORWARD_READ(TV7_Layer, vHighLayer, IVia, HighLayer)
  KETRIL_FORWARD_WRITE(TV7_Layer, SetVLowLayer, IVia, LowLayer)
  KETRIL_FORWARD_WRITE(TV7_Layer, SetVHighLayer, IVia, HighLayer)
  KETRIL_FORWARD(std::uint16_t, MultiLayerHighBits, IVia, MultiLayerHighBits)
  KETRIL_FORWARD_READ(Ref<IPCB_LayerIterator>, DefinitionLayerIterator, IVia, DefinitionLayerIterator)
  KETRIL_FORWARD_READ(bool, IsBackDrill, IVia, IsBackDrill)
  // The diameter by layer, under two names.
  KETRIL_FORWARD_LAYER(TCoord, SizeOnLayer, IVia, SizeOnLayer)
  KETRIL_FORWARD_LAYER(TCoord, StackSize, IVia, SizeOnLayer)

  bool IntersectLayer(TV7_Layer layer) const;  // does the via span the layer
  bool IntersectLayer(const Ref<IPCB_LayerSet>&) const { throw ENotImplementedException(); }
  KETRIL_FORWARD_READ(bool, IsHoleSizeValid, IVia, IsHoleSizeValid)
  Ref<IPCB_LayerIterator> StackLayerIterator(TPrimitive* board) const override;
  void RemoveUnusedPads(bool preserve_start_end) override;
  void RestoreUnusedPads() override { On(IVia()).Call(&IPCB_Via2::RestoreUnusedPads); }
};

}  // namespace Ketril::Tools

#undef KETRIL_FORWARD_CALCULATED
