// Wrappers of objects that hold others: nets, components, polygons, dimensions, and classes of objects.
#pragma once

#include <memory>

#include "DLLs/Tools/Frame/FunctionRef.h"
#include "DLLs/Tools/Frame/PrimitivesAreas.h"

namespace Ketril::Tools {

// What is called with each object of a walk: a plain procedure, a function object or a lambda.
using TItemMethod = FunctionRef<void(TPrimitive*)>;

class TGroup;

// The members of a group by index, in the order in which they joined.
class TGroupContainer {
 public:
  explicit TGroupContainer(TGroup* parent) : FParentGroup(parent) {}
  std::int32_t Count() const;
  // A plain `TPrimitive` whatever the object is, new at each call; null where the host gives nothing.
  TPrimitive* At(std::int32_t index) const;

 private:
  TGroup* FParentGroup;
};

class TGroup : public TWrapper<TGroup, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Group2> IGroup() const { return CheckedCast<IPCB_Group2>(FPrimitive); }

  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_X, IGroup, ReferenceX)
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Y, IGroup, ReferenceY)
  // Makes an object a member; the board's own list of objects is another matter.
  virtual void RegisterWithGroupWarehouse(TPrimitive* primitive);
  virtual void CancelAllPrimitivePrimaryWarehouseRegistrations();  // takes the members off the board
  virtual void CancelAllPrimitiveRegistrations();                  // empties the group
  virtual std::int32_t GetPrimitiveCount(TObjectSet objects) const;
  // Calls `proc` with each member of the kinds, in host order. The wrappers stay until the scope closes.
  virtual void ProcessItems(TItemMethod proc, TObjectSet objects);
  virtual void FreePrimitives() { CancelAllPrimitiveRegistrations(); }

  // The group's own, made on the first read.
  TGroupContainer* Container();
  // The reference point; writing it moves the members along.
  KETRIL_FORWARD_READ(TCoord, x, IGroup, ReferenceX)
  KETRIL_FORWARD_READ(TCoord, y, IGroup, ReferenceY)
  KETRIL_FORWARD_WRITE(TCoord, SetX, IGroup, ReferenceX)
  KETRIL_FORWARD_WRITE(TCoord, SetY, IGroup, ReferenceY)
  // Sides of the bounding rectangle.
  TCoord lx() const { return GetState_BoundingRectangle().lx(); }
  TCoord ly() const { return GetState_BoundingRectangle().ly(); }
  TCoord hx() const { return GetState_BoundingRectangle().hx(); }
  TCoord hy() const { return GetState_BoundingRectangle().hy(); }
  void CleanBoardSide() { On(IGroup()).Call(&IPCB_Group2::CleanBoardSide); }

 private:
  std::unique_ptr<TGroupContainer> FContainer;
};

class TNet : public TWrapper<TNet, TGroup> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Net2> INet() const { return CheckedCast<IPCB_Net2>(FPrimitive); }
  KETRIL_FORWARD(std::u16string, Name, INet, Name)
  KETRIL_FORWARD_READ(double, GetState_RoutedLength, INet, RoutedLength)  // in units
};

class TComp : public TWrapper<TComp, TGroup> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Component2> IComp() const { return CheckedCast<IPCB_Component2>(FPrimitive); }

  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IComp, DescriptorString)
  // With texts among the kinds, first the name, then the comment, where they exist; then the members.
  void ProcessItems(TItemMethod proc, TObjectSet objects) override;

  // The designator and the value; null when there is none. The wrapper is valid until the next read of the
  // same property on this object, which frees it.
  TText* Name();
  TText* Comment();
  KETRIL_FORWARD(TComponentKind, ComponentKind, IComp, ComponentKind)
  KETRIL_FORWARD_READ(std::u16string, Pattern, IComp, Pattern)  // the footprint's name in its library
  KETRIL_FORWARD(double, Rotation, IComp, Rotation)

  using TPrimitive::SetLayer;
  void SetLayer(TV7_Layer layer, bool fix_layer);  // with `fix_layer` the members follow, mirrored
  void SetState_RotateAroundXY(TCoord x, TCoord y, double degrees);
  // False when the text is missing or cannot take that place.
  bool SetState_PlaceNameAutoposition(TTextAutoposition position);
  bool SetState_PlaceCommentAutoposition(TTextAutoposition position);
  void FlipComponent() { On(IComp()).Call(&IPCB_Component2::FlipComponent); }

 private:
  TText* FName = nullptr;  // the wrappers last handed out
  TText* FComment = nullptr;
};

class TDimension : public TWrapper<TDimension, TGroup> {
 public:
  using TWrapper::TWrapper;
};

class TCoordinate : public TWrapper<TCoordinate, TGroup> {
 public:
  using TWrapper::TWrapper;
};

class TLibComponent : public TWrapper<TLibComponent, TGroup> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_LibComponent> ILibComponent() const { return CheckedCast<IPCB_LibComponent>(FPrimitive); }
  KETRIL_FORWARD_READ(std::u16string, Pattern, ILibComponent, Pattern)
};

class TPolygon : public TWrapper<TPolygon, TGroup> {
 public:
  using TWrapper::TWrapper;
  std::int32_t PointCount() const;
};

class TPoly : public TWrapper<TPoly, TPolygon> {
 public:
  using TWrapper::TWrapper;
};

class TBoardOutline : public TWrapper<TBoardOutline, TPoly> {
 public:
  using TWrapper::TWrapper;
};

// A class of objects, such as a net class.
class TObjectClassBase : public TWrapper<TObjectClassBase, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_ObjectClass> IObjectClassBase() const { return CheckedCast<IPCB_ObjectClass>(FPrimitive); }

  virtual bool IsMember(const std::u16string& name) const;
  virtual bool IsMember(TPrimitive* primitive) const;
  KETRIL_FORWARD(TClassMemberKind, MemberKind, IObjectClassBase, MemberKind)
  KETRIL_FORWARD(std::u16string, Name, IObjectClassBase, Name)
};

}  // namespace Ketril::Tools
