// The objects of a board. Interfaces form single chains, each adding to the one before; what an object offers
// is asked by query. Lengths and places are in units of 1/10000 mil, angles in degrees, counter-clockwise.
//
// Lifetime: an object lives as long as somebody holds a reference to it; the board holds one to each of its
// objects. An object that was made by the factory or by `Replicate` is on no board until it is registered.
#pragma once

#include "Interfaces/Interface.h"
#include "Interfaces/Layers.h"
#include "Interfaces/PolygonRecords.h"
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

// What every object of a board has.
class IPCB_Primitive : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_Primitive"};

  // The identity key: equal for all references to one object, different for two, stable while it lives.
  KETRIL_READ(std::uintptr_t, ObjectAddress);
  KETRIL_READ(TObjectId, ObjectID);
  KETRIL_PROPERTY(std::u16string, UniqueId);
  KETRIL_PROPERTY(TV7_Layer, Layer);
  KETRIL_PROPERTY(Ref<IPCB_Net>, Net);
  // The net that decides connectivity: of a net itself that net, of others their `Net`.
  KETRIL_READ(Ref<IPCB_Net>, LogicalNet);
  // The board that the object is on or is being tried on; empty otherwise. Writing it does not register the
  // object.
  KETRIL_PROPERTY(Ref<IPCB_Board>, Board);

  // The groups that own the object, empty when it belongs to none of that kind. Writing only notes the
  // owner; the group's member list is changed through `IPCB_Group`.
  KETRIL_PROPERTY(Ref<IPCB_Component>, Component);
  KETRIL_PROPERTY(Ref<IPCB_Polygon>, Polygon);
  KETRIL_PROPERTY(Ref<IPCB_Coordinate>, Coordinate);
  KETRIL_PROPERTY(Ref<IPCB_Dimension>, Dimension);
  KETRIL_PROPERTY(bool, InComponent);
  KETRIL_PROPERTY(bool, InPolygon);
  KETRIL_PROPERTY(bool, InCoordinate);
  KETRIL_PROPERTY(bool, InDimension);
  KETRIL_PROPERTY(bool, InNet);

  KETRIL_PROPERTY(bool, Moveable);  // false for a locked object
  KETRIL_PROPERTY(bool, Selected);
  KETRIL_PROPERTY(bool, IsKeepOut);
  KETRIL_PROPERTY(bool, IsPreRoute);
  KETRIL_PROPERTY(bool, UserRouted);
  KETRIL_PROPERTY(bool, TearDrop);  // the mark of teardrop copper
  KETRIL_PROPERTY(bool, EnableDraw);
  KETRIL_PROPERTY(bool, PrimUsed);
  KETRIL_READ(bool, PolygonOutline);

  // Scratch marks for one run of one tool; no board file keeps them.
  KETRIL_PROPERTY(bool, MiscFlag1);
  KETRIL_PROPERTY(bool, MiscFlag2);
  KETRIL_PROPERTY(bool, MiscFlag3);
  KETRIL_PROPERTY(std::uint16_t, Index);

  // Ties the parts of a union together; 0 means none.
  KETRIL_PROPERTY(std::int32_t, UnionIndex);

  virtual Status GetState_BoundingRectangle(TCoordRect& rectangle) noexcept = 0;
  virtual Status MoveByXY(TCoord dx, TCoord dy) noexcept = 0;
  virtual Status MoveToXY(TCoord x, TCoord y) noexcept = 0;
  // Turns the object, a group with its members, about its reference point.
  virtual Status RotateBy(double degrees) noexcept = 0;

  // The bracket of a change. Writes between begin and end count as one edit; cancel abandons it: the object
  // is as it was at the begin.
  virtual Status BeginModify() noexcept = 0;
  virtual Status EndModify() noexcept = 0;
  virtual Status CancelModify() noexcept = 0;
  virtual Status GraphicallyInvalidate() noexcept = 0;

  // A new object with the same properties, on no board and in no group.
  virtual Status Replicate(Ref<IPCB_Primitive>& replica) noexcept = 0;
  // True when the file version has a word for an object of this kind.
  virtual Status GetState_IsSaveable(TKetrilFileFormatVersion version, bool& saveable) noexcept = 0;
};

// The gap that is told where there is none.
constexpr TCoord kNoGap = 999990000;

// Texts that name the object to a person, and values that rules and the board's setup decide.
class IPCB_Primitive2 : public IPCB_Primitive {
 public:
  using Base = IPCB_Primitive;
  static constexpr InterfaceId Id{"IPCB_Primitive2"};

  KETRIL_READ(std::u16string, Identifier);  // what names it among its kind: "U1", "R3-2", "GND"
  KETRIL_READ(std::u16string,
              DescriptorString);  // kind, identifier and place: "Via (100mil,200mil) Top Layer"
  KETRIL_READ(std::u16string, DetailString);
  KETRIL_READ(std::u16string, Handle);  // the object's name in texts that lead back to it
  KETRIL_READ(std::int32_t, ViolationCount);

  // Mask openings: how far the opening reaches beyond the object.
  KETRIL_PROPERTY(TCoord, PasteMaskExpansion);
  KETRIL_PROPERTY(TMaskExpansionMode, PasteMaskExpansionMode);
  KETRIL_PROPERTY(TCoord, SolderMaskExpansion);
  KETRIL_PROPERTY(TMaskExpansionMode, SolderMaskExpansionMode);
  KETRIL_LAYER_READ(TCoord, MaskExpansion);
  KETRIL_LAYER_READ(bool, HasMaskExpansion);

  KETRIL_READ(TCoord, Calculated_PasteMaskExpansion);
  KETRIL_READ(TCoord, Calculated_SolderMaskExpansion);
  KETRIL_READ(TCoord, Calculated_PowerPlaneClearance);
  KETRIL_READ(TCoord, Calculated_PowerPlaneReliefExpansion);
  KETRIL_READ(TCoord, Calculated_ReliefConductorWidth);
  KETRIL_READ(std::int32_t, Calculated_ReliefEntries);
  KETRIL_READ(TCoord, Calculated_ReliefAirGap);
  KETRIL_READ(TCoord, Calculated_RoutingMinWidth);
  KETRIL_READ(TCoord, Calculated_RoutingViaWidth);
};

class IPCB_Primitive3 : public IPCB_Primitive2 {
 public:
  using Base = IPCB_Primitive2;
  static constexpr InterfaceId Id{"IPCB_Primitive3"};

  // The object's reference point.
  KETRIL_READ(TCoord, X);
  KETRIL_READ(TCoord, Y);
  virtual Status GetState_BoundingRectangleForSelection(TCoordRect& rectangle) noexcept = 0;
  // Brings the sizes that the object derives from its data up to date after its members moved.
  virtual Status SetState_XSizeYSize() noexcept = 0;

  // True when the copper of the two objects touches or overlaps on a layer that they share: when their gap is
  // below one unit, since whole coordinates may part what touches.
  virtual Status GetState_Touches(IPCB_Primitive* other, bool& touches) noexcept = 0;
  // The gap between the copper of the two objects on the layers that they share, in whole units, cut towards
  // zero: 0 when they touch. kNoGap when they share no layer, or neither knows a board.
  virtual Status GetState_GapTo(IPCB_Primitive* other, TCoord& gap) noexcept = 0;
};

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

// A ring of vertices, as the tools hand outlines over and take them. Vertices are kept in doubles and read
// rounded, a half to the even neighbour. Indexes are cyclic: the count is vertex 0 again, -1 the last vertex;
// a vertex of an empty ring is a failure.
class IPCB_Contour : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_Contour"};
  // Writing it cuts the ring, or leaves the vertices beyond the old count undefined.
  KETRIL_PROPERTY(std::int32_t, Count);
  // In square units, of either orientation.
  KETRIL_READ(double, Area);
  virtual Status GetState_PointX(std::int32_t index, TCoord& x) noexcept = 0;
  virtual Status GetState_PointY(std::int32_t index, TCoord& y) noexcept = 0;
  virtual Status SetState_PointX(std::int32_t index, TCoord x) noexcept = 0;
  virtual Status SetState_PointY(std::int32_t index, TCoord y) noexcept = 0;
  // By degrees about the origin, by a way, by degrees about a place; whole coordinates all the way.
  virtual Status Rotate(double angle) noexcept = 0;
  virtual Status Translate(TCoord dx, TCoord dy) noexcept = 0;
  virtual Status RotateAboutPoint(double angle, TCoord x, TCoord y) noexcept = 0;
  virtual Status Clear() noexcept = 0;
  virtual Status AddPoint(TCoord x, TCoord y) noexcept = 0;
  virtual Status InsertPoint(std::int32_t index, TCoord x, TCoord y) noexcept = 0;
  virtual Status DeletePoint(std::int32_t index) noexcept = 0;
  // Appends the vertices `first` to `last` of another ring; a `last` below `first` means one in the next
  // turn. At least one vertex is read.
  virtual Status AddContourRange(IPCB_Contour* contour, std::int32_t first, std::int32_t last) noexcept = 0;
  virtual Status AddContour(IPCB_Contour* contour) noexcept = 0;  // all of it
  // A new ring with the same vertices.
  virtual Status Replicate(Ref<IPCB_Contour>& replica) noexcept = 0;
  // The vertices themselves, the ring's own. Who changes them does so behind its back.
  virtual Status GetState_VertexList(Pgpc_vertex_list& list) noexcept = 0;
  virtual Status EnsureCapacity(std::int32_t count) noexcept = 0;
};

// An area of outer rings and holes.
class IPCB_GeometricPolygon : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_GeometricPolygon"};
  KETRIL_READ(std::int32_t, Count);
  virtual Status GetState_Contour(std::int32_t index, Ref<IPCB_Contour>& contour) noexcept = 0;
  virtual Status GetState_IsHole(std::int32_t index, bool& hole) noexcept = 0;
  // Takes a copy of the contour.
  virtual Status AddContour(IPCB_Contour* contour, bool hole) noexcept = 0;
  virtual Status Clear() noexcept = 0;
  virtual Status Replicate(Ref<IPCB_GeometricPolygon>& replica) noexcept = 0;
};

class IPCB_Region : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Region"};
  // The area; reading gives a copy.
  KETRIL_PROPERTY(Ref<IPCB_GeometricPolygon>, RegionData);
  KETRIL_PROPERTY(TRegionKind, Kind);
};

class IPCB_Region2 : public IPCB_Region {
 public:
  using Base = IPCB_Region;
  static constexpr InterfaceId Id{"IPCB_Region2"};
  KETRIL_READ(double, Area);  // in square units, holes taken off
};

// A region of the board itself: one part of a board with its own layer stack.
class IPCB_BoardRegion : public IPCB_Region2 {
 public:
  using Base = IPCB_Region2;
  static constexpr InterfaceId Id{"IPCB_BoardRegion"};
  KETRIL_READ(std::u16string, Name);
};

class IPCB_ComponentBody : public IPCB_Region2 {
 public:
  using Base = IPCB_Region2;
  static constexpr InterfaceId Id{"IPCB_ComponentBody"};
  KETRIL_PROPERTY(std::u16string, ModelName);
};

class IPCB_ComponentBody2 : public IPCB_ComponentBody {
 public:
  using Base = IPCB_ComponentBody;
  static constexpr InterfaceId Id{"IPCB_ComponentBody2"};
  KETRIL_PROPERTY(TCoord, OverallHeight);
};

// The outline of a region as segments. An object that has it offers it beside its own chain.
class IPCB_RegionShape : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_RegionShape"};
  // One segment of the first outline, 0 to the count. The one at the count closes the outline: it begins
  // where segment 0 does, and can be written only so.
  virtual Status GetState_Segments(std::int32_t index, TPolySegment& segment) noexcept = 0;
  virtual Status SetState_Segments(std::int32_t index, const TPolySegment& segment) noexcept = 0;
  // Takes out vertices that repeat their neighbour or lie in line with both.
  virtual Status RemoveRedundantVertices() noexcept = 0;
  virtual Status SynchronizeGPCPolyFromShape(bool conserve_existing_holes) noexcept = 0;
  // Takes the segments from the area's first outline, in the order of its vertices. The closing one is then
  // among those that count; who wants it at the count, behind them, takes one off.
  virtual Status SynchronizeShapeFromGPCPoly() noexcept = 0;
};

// Adds the count of the segments.
class IPCB_RegionShape3 : public IPCB_RegionShape {
 public:
  using Base = IPCB_RegionShape;
  static constexpr InterfaceId Id{"IPCB_RegionShape3"};
  KETRIL_PROPERTY(std::int32_t, PointCount);
  virtual Status IncrementPointCount() noexcept = 0;
  virtual Status DecrementPointCount() noexcept = 0;
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
