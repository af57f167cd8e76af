// What every object of a board has. Interfaces form single chains, each adding to the one before; what an
// object offers is asked by query. Lengths and places are in units of 1/10000 mil, angles in degrees,
// counter-clockwise.
//
// Lifetime: an object lives as long as somebody holds a reference to it; the board holds one to each of its
// objects. An object that was made by the factory or by `Replicate` is on no board until it is registered.
#pragma once

#include "Interfaces/Interface.h"
#include "Interfaces/Layers.h"
#include "Interfaces/Types.h"

namespace Ketril {

class IPCB_Board;
class IPCB_Component;
class IPCB_Coordinate;
class IPCB_Dimension;
class IPCB_Net;
class IPCB_Polygon;

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

}  // namespace Ketril
