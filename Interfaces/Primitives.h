// The objects of a board by their kinds: tracks, arcs, texts, vias, pads and what else has no members. What
// they have in common is in PrimitiveBase.h, regions are in Regions.h, objects with members in Groups.h.
#pragma once

#include "Interfaces/Layers.h"
#include "Interfaces/PrimitiveBase.h"
#include "Interfaces/Regions.h"
#include "Interfaces/Types.h"

namespace Ketril {

class IPCB_Board;
class IPCB_BoardRegion;
class IPCB_Component;
class IPCB_Coordinate;
class IPCB_Dimension;
class IPCB_GroupIterator;
class IPCB_Net;
class IPCB_Polygon;
class IPCB_Text;

class IPCB_Track : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Track"};
  KETRIL_PROPERTY(TCoord, X1);
  KETRIL_PROPERTY(TCoord, Y1);
  KETRIL_PROPERTY(TCoord, X2);
  KETRIL_PROPERTY(TCoord, Y2);
  KETRIL_PROPERTY(TCoord, Width);
};

class IPCB_Arc : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Arc"};
  KETRIL_PROPERTY(TCoord, XCenter);
  KETRIL_PROPERTY(TCoord, YCenter);
  KETRIL_PROPERTY(TCoord, Radius);
  KETRIL_PROPERTY(double, Angle1);  // the arc runs counter-clockwise from Angle1 to Angle2
  KETRIL_PROPERTY(double, Angle2);
  KETRIL_PROPERTY(TCoord, LineWidth);
};

// Adds the end points, which follow from centre, radius and angles.
class IPCB_Arc2 : public IPCB_Arc {
 public:
  using Base = IPCB_Arc;
  static constexpr InterfaceId Id{"IPCB_Arc2"};
  KETRIL_READ(TCoord, StartX);
  KETRIL_READ(TCoord, StartY);
  KETRIL_READ(TCoord, EndX);
  KETRIL_READ(TCoord, EndY);
};

// A box given by two corners and a rotation about its centre.
class IPCB_RectangularPrimitive : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_RectangularPrimitive"};
  KETRIL_PROPERTY(TCoord, X1);
  KETRIL_PROPERTY(TCoord, Y1);
  KETRIL_PROPERTY(TCoord, X2);
  KETRIL_PROPERTY(TCoord, Y2);
  KETRIL_PROPERTY(double, Rotation);
};

class IPCB_Fill : public IPCB_RectangularPrimitive {
 public:
  using Base = IPCB_RectangularPrimitive;
  static constexpr InterfaceId Id{"IPCB_Fill"};
};

class IPCB_Text : public IPCB_RectangularPrimitive {
 public:
  using Base = IPCB_RectangularPrimitive;
  static constexpr InterfaceId Id{"IPCB_Text"};
  KETRIL_PROPERTY(std::u16string, Text);  // as it is shown, with variables put in
  KETRIL_PROPERTY(TCoord, Size);          // height of a letter
  KETRIL_PROPERTY(TCoord, Width);         // of the stroke
  // Where the text is anchored, and whether it is drawn mirrored, left to right, about that place. The
  // rotation is about it too.
  KETRIL_PROPERTY(TCoord, AnchorX);
  KETRIL_PROPERTY(TCoord, AnchorY);
  KETRIL_PROPERTY(bool, Mirrored);
};

class IPCB_Text2 : public IPCB_Text {
 public:
  using Base = IPCB_Text;
  static constexpr InterfaceId Id{"IPCB_Text2"};
  KETRIL_PROPERTY(std::u16string, String);  // as it is stored, with variables such as ${REFERENCE}
};

// Adds where a text stands by itself.
class IPCB_Text3 : public IPCB_Text2 {
 public:
  using Base = IPCB_Text2;
  static constexpr InterfaceId Id{"IPCB_Text3"};
  KETRIL_READ(TCoordRect, TextRectangle);  // around its letters, as they are turned
  KETRIL_READ(TCoordPoint, TextReference);
};

class IPCB_Via : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Via"};
  KETRIL_PROPERTY(TCoord, XCenter);
  KETRIL_PROPERTY(TCoord, YCenter);
  KETRIL_PROPERTY(TCoord, HoleSize);
  KETRIL_PROPERTY(TCoord, Size);  // the diameter on every layer of a simple via
  KETRIL_PROPERTY(TV7_Layer, LowLayer);
  KETRIL_PROPERTY(TV7_Layer, HighLayer);
};

class IPCB_Via2 : public IPCB_Via {
 public:
  using Base = IPCB_Via;
  static constexpr InterfaceId Id{"IPCB_Via2"};
  KETRIL_PROPERTY(TPadMode, Mode);
  KETRIL_LAYER_PROPERTY(TCoord, SizeOnLayer);
  KETRIL_LAYER_PROPERTY(bool, IsHoleStraddling);
  KETRIL_PROPERTY(std::uint16_t, MultiLayerHighBits);
  KETRIL_READ(bool, IsBackDrill);
  KETRIL_READ(bool, IsHoleSizeValid);
  KETRIL_READ(Ref<IPCB_BoardRegion>, BoardRegion);
  // True when the via spans the layer.
  virtual Status IntersectLayer(TV7_Layer layer, bool& intersects) noexcept = 0;
  // The layers on which the via has a size of its own.
  KETRIL_READ(Ref<IPCB_LayerIterator>, DefinitionLayerIterator);
  // All layers that the via spans on `board`, which may be empty: then those of its own board.
  virtual Status StackLayerIterator(IPCB_Board* board, Ref<IPCB_LayerIterator>& iterator) noexcept = 0;
  virtual Status RemoveUnusedPads(bool preserve_start_end) noexcept = 0;
  virtual Status RestoreUnusedPads() noexcept = 0;
  KETRIL_LAYER_READ(TCoord, Calculated_SolderMaskExpansionOnLayer);
};

class IPCB_Pad : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Pad"};
  KETRIL_PROPERTY(std::u16string, Name);
  KETRIL_PROPERTY(TCoord, XCenter);
  KETRIL_PROPERTY(TCoord, YCenter);
  KETRIL_PROPERTY(TCoord, HoleSize);  // the smaller side of a slot
  KETRIL_PROPERTY(TPadMode, Mode);
  KETRIL_PROPERTY(bool, Plated);
  KETRIL_PROPERTY(double, Rotation);
  KETRIL_LAYER_PROPERTY(TCoord, XSizeOnLayer);
  KETRIL_LAYER_PROPERTY(TCoord, YSizeOnLayer);
  KETRIL_LAYER_PROPERTY(TShape, ShapeOnLayer);
};

class IPCB_Pad2 : public IPCB_Pad {
 public:
  using Base = IPCB_Pad;
  static constexpr InterfaceId Id{"IPCB_Pad2"};
  KETRIL_PROPERTY(TExtendedHoleType, HoleType);
  KETRIL_PROPERTY(TCoord, HoleWidth);  // the longer side of a slot
  KETRIL_READ(TCoord, HoleXSize);      // sides of the hole's box before the pad's rotation
  KETRIL_READ(TCoord, HoleYSize);
  KETRIL_READ(bool, IsHoleSizeValid);
  // The pad's copper is off its hole by this much, by the older layer number.
  virtual Status GetState_XPadOffsetOnLayer(TV6_Layer layer, TCoord& value) noexcept = 0;
  virtual Status SetState_XPadOffsetOnLayer(TV6_Layer layer, TCoord value) noexcept = 0;
  virtual Status GetState_YPadOffsetOnLayer(TV6_Layer layer, TCoord& value) noexcept = 0;
  virtual Status SetState_YPadOffsetOnLayer(TV6_Layer layer, TCoord value) noexcept = 0;
  virtual Status GetState_BoundingRectangleOnLayer(TV7_Layer layer, TCoordRect& rectangle) noexcept = 0;
};

class IPCB_Pad3 : public IPCB_Pad2 {
 public:
  using Base = IPCB_Pad2;
  static constexpr InterfaceId Id{"IPCB_Pad3"};
  KETRIL_PROPERTY(std::uint16_t, MultiLayerHighBits);
  KETRIL_LAYER_PROPERTY(bool, IsHoleStraddling);
  KETRIL_READ(Ref<IPCB_BoardRegion>, BoardRegion);
  KETRIL_READ(Ref<IPCB_LayerIterator>, DefinitionLayerIterator);
  virtual Status StackLayerIterator(IPCB_Board* board, Ref<IPCB_LayerIterator>& iterator) noexcept = 0;
  // True when the pad's copper was taken away on that layer because nothing used it.
  KETRIL_LAYER_READ(bool, IsPadRemoved);
  virtual Status RemoveUnusedPads(bool preserve_start_end) noexcept = 0;
  virtual Status RestoreUnusedPads() noexcept = 0;
  // Makes sizes and shapes fit together after a change: no negative size, a shape where there is copper.
  virtual Status ValidateSizeShape() noexcept = 0;
  virtual Status InvalidateCache() noexcept = 0;
  KETRIL_LAYER_READ(TCoord, Calculated_SolderMaskExpansionOnLayer);
};

class IPCB_Connection : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Connection"};
  KETRIL_PROPERTY(TCoord, X1);
  KETRIL_PROPERTY(TCoord, Y1);
  KETRIL_PROPERTY(TCoord, X2);
  KETRIL_PROPERTY(TCoord, Y2);
  KETRIL_PROPERTY(TV7_Layer, Layer1);
  KETRIL_PROPERTY(TV7_Layer, Layer2);
  KETRIL_PROPERTY(TConnectionMode, Mode);
};

// A class of objects: of nets, components and so on.
class IPCB_ObjectClass : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_ObjectClass"};
  KETRIL_PROPERTY(std::u16string, Name);
  KETRIL_PROPERTY(TClassMemberKind, MemberKind);
  virtual Status IsMemberByName(const std::u16string& name, bool& member) noexcept = 0;
  virtual Status IsMember(IPCB_Primitive* primitive, bool& member) noexcept = 0;
};

}  // namespace Ketril
