// Wrappers of boxes and regions: texts, fills, copper regions, board regions, component bodies.
#pragma once

#include <memory>

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Geometry/PolyTools.h"

namespace Ketril::Tools {

// A box given by two corners and a rotation about its centre, in degrees.
class TRectangularPrimitive : public TWrapper<TRectangularPrimitive, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_RectangularPrimitive> IRectPrim() const {
    return CheckedCast<IPCB_RectangularPrimitive>(FPrimitive);
  }

  KETRIL_FORWARD(TCoord, X1, IRectPrim, X1)
  KETRIL_FORWARD(TCoord, X2, IRectPrim, X2)
  KETRIL_FORWARD(TCoord, Y1, IRectPrim, Y1)
  KETRIL_FORWARD(TCoord, Y2, IRectPrim, Y2)
  KETRIL_FORWARD(double, Rotation, IRectPrim, Rotation)
};

class TText : public TWrapper<TText, TRectangularPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Text2> IText() const { return CheckedCast<IPCB_Text2>(FPrimitive); }

  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IText, DescriptorString)
  KETRIL_FORWARD(std::u16string, Text, IText, Text)  // as it is shown
  KETRIL_FORWARD(TCoord, Size, IText, Size)          // height of a letter
  KETRIL_FORWARD(TCoord, Width, IText, Width)        // of the stroke
  // The text as it is stored, with its variables.
  KETRIL_FORWARD_READ(std::u16string, GetState_String, IText, String)
  KETRIL_FORWARD_WRITE(std::u16string, SetState_String, IText, String)
};

class TFill : public TWrapper<TFill, TRectangularPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Fill> IFill() const { return CheckedCast<IPCB_Fill>(FPrimitive); }
  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IFill, DescriptorString)
};

class TPolyRegion : public TWrapper<TPolyRegion, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Region2> IPolyRegion() const { return CheckedCast<IPCB_Region2>(FPrimitive); }

  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IPolyRegion, DescriptorString)
  KETRIL_FORWARD(Ref<IPCB_GeometricPolygon>, RegionData, IPolyRegion, RegionData)
  KETRIL_FORWARD(TRegionKind, Kind, IPolyRegion, Kind)

  void Init() override { FShape = std::make_unique<TPolygonalShape>(this); }
  void Clean() override { FShape = nullptr; }
  // The outline as segments, this object's own.
  TPolygonalShape* Shape() const { return FShape.get(); }

  // These do nothing when the host object does not offer its outline as a shape.
  void RemoveRedundantVertices();
  void SynchronizeGPCPolyFromShape(bool conserve_existing_holes);
  void SynchronizeShapeFromGPCPoly();

 private:
  std::unique_ptr<TPolygonalShape> FShape;
};

// A part of the board with a layer stack of its own.
class TBoardRegion : public TWrapper<TBoardRegion, TPolyRegion> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_BoardRegion> IBoardRegion() const { return CheckedCast<IPCB_BoardRegion>(FPrimitive); }
};

class TComponentBody : public TWrapper<TComponentBody, TPolyRegion> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_ComponentBody2> IComponentBody() const { return CheckedCast<IPCB_ComponentBody2>(FPrimitive); }
  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IComponentBody, DescriptorString)
};

}  // namespace Ketril::Tools
