// `TPrimitive`, the wrapper through which the tools see an object of the board, and what makes wrappers.
//
// A wrapper holds one counted reference to the editor's object and forwards at once: a value read is the live
// value of the board, a value written is on the board. Nothing is cached, so a tool that needs a value often
// keeps it in a local. A wrapper does not notice that its object left the board: it goes on forwarding.
//
// Every operation raises EHostError when the host fails, EIntfCastError when the object does not offer the
// interface of the view, and EEmptyReference on a wrapper of nothing, unless it is told otherwise.
#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "DLLs/Tools/Frame/ContainedObject.h"
#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/WrapperMemory.h"
#include "Interfaces/Board.h"

namespace Ketril::Tools {

class TContainer;
class TGroup;
class TNet;

// Wrappers are made by `Create` of their class and freed by `Free`, or at the latest when the object scope
// closes; one made with no scope open belongs to its maker. Freeing never touches the host object.
class TPrimitive : public TContainedObject {
 public:
  static TPrimitive* Create(Ref<IPCB_Primitive> primitive = nullptr);  // see TWrapper
  void Free() override;

  Ref<IPCB_Primitive> IPrimitive() const { return FPrimitive; }
  Ref<IPCB_Primitive2> IPrimitive2() const { return CheckedCast<IPCB_Primitive2>(FPrimitive); }
  Ref<IPCB_Primitive3> IPrimitive3() const { return CheckedCast<IPCB_Primitive3>(FPrimitive); }

  virtual bool Moveable() const;  // false for a locked object and for a wrapper of nothing
  virtual void Init() {}          // the last step of making a wrapper
  virtual void Clean() {}         // the first step of freeing it, after it left the registry
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_X, IPrimitive3, X)
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_Y, IPrimitive3, Y)
  // Layer, net and the keep-out and teardrop marks of this object, into another wrapper.
  void CopyTo(TContainedObject* target, TCopyMode mode) const override;
  // A rectangle as the result and, in the forms that have them, as left, bottom, right, top. By layer it is
  // still that of the whole object, but for pads.
  virtual TCoordRect GetState_BoundingRectangle_OnLayer(TV7_Layer layer, TCoord& x1, TCoord& y1, TCoord& x2,
                                                        TCoord& y2) const;
  KETRIL_FORWARD_OVERRIDE(TCoordRect, GetState_BoundingRectangle, IPrimitive, BoundingRectangle)
  virtual TCoordRect GetState_BoundingRectangle(TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) const;
  KETRIL_FORWARD_VIRTUAL(TCoordRect, GetState_BoundingRectangleForSelection, IPrimitive3,
                         BoundingRectangleForSelection)
  KETRIL_FORWARD_VIRTUAL(std::u16string, GetProperty_UniqueID, IPrimitive, UniqueId)
  KETRIL_FORWARD_VIRTUAL_WRITE(std::u16string, SetProperty_UniqueID, IPrimitive, UniqueId)
  virtual void GenerateUniqueID() {}  // the host gives identifiers: nothing to do
  virtual void SetState_Default() { throw ENotImplementedException(); }
  KETRIL_FORWARD_VIRTUAL(std::u16string, GetState_Identifier, IPrimitive2, Identifier)
  KETRIL_FORWARD_VIRTUAL(std::u16string, GetState_DescriptorString, IPrimitive2, DescriptorString)
  virtual std::u16string GetState_ShortDescriptorString() const { throw ENotImplementedException(); }
  KETRIL_FORWARD_VIRTUAL(std::u16string, GetState_DetailString, IPrimitive2, DetailString)
  KETRIL_FORWARD_VIRTUAL(std::u16string, GetState_Handle, IPrimitive2, Handle)
  // The one mark of teardrop copper.
  KETRIL_FORWARD_VIRTUAL(bool, TearDrop, IPrimitive, TearDrop)
  KETRIL_FORWARD_VIRTUAL_WRITE(bool, SetTearDrop, IPrimitive, TearDrop)
  KETRIL_FORWARD_VIRTUAL(bool, EnableDraw, IPrimitive, EnableDraw)
  KETRIL_FORWARD_VIRTUAL_WRITE(bool, SetEnableDraw, IPrimitive, EnableDraw)
  KETRIL_FORWARD_VIRTUAL(bool, PrimUsed, IPrimitive, PrimUsed)
  KETRIL_FORWARD_VIRTUAL_WRITE(bool, SetPrimUsed, IPrimitive, PrimUsed)
  // An empty board leaves the host untouched. Either way the next read of `OwnerBoard` makes a new wrapper.
  virtual void SetState_Board(TPrimitive* board);
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_Calculated_ReliefConductorWidth, IPrimitive2,
                         Calculated_ReliefConductorWidth)
  KETRIL_FORWARD_VIRTUAL(std::int32_t, GetState_Calculated_ReliefEntries, IPrimitive2,
                         Calculated_ReliefEntries)
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_Calculated_ReliefAirGap, IPrimitive2, Calculated_ReliefAirGap)
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_Calculated_PasteMaskExpansion, IPrimitive2,
                         Calculated_PasteMaskExpansion)
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_Calculated_SolderMaskExpansion, IPrimitive2,
                         Calculated_SolderMaskExpansion)
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_Calculated_PowerPlaneClearance, IPrimitive2,
                         Calculated_PowerPlaneClearance)
  KETRIL_FORWARD_VIRTUAL(TCoord, GetState_Calculated_PowerPlaneReliefExpansion, IPrimitive2,
                         Calculated_PowerPlaneReliefExpansion)
  virtual bool IsSaveable(TKetrilFileFormatVersion version) const;
  virtual void HandleNeeded() { throw ENotImplementedException(); }
  // The net that decides connectivity in a new wrapper, which the caller may free; null when there is none.
  virtual TNet* GetLogicalNet() const;
  virtual void Import_FromUser_Execute() { throw ENotImplementedException(); }
  virtual void MoveByXY(TCoord dx, TCoord dy);
  // The bracket of a change, see EditInBracket. The arguments are taken for form only.
  virtual void BeginModify(bool push_state);
  virtual void EndModify(const void* event_data);
  virtual void CancelModify(bool pop_state);
  virtual void SetState_XSizeYSize();

  TContainedObject* Create(TCopyMode mode) const override;  // a wrapper of a replica
  // The state set aside is a replica on the host; taking it back restores what `CopyTo` carries.
  void PushSelfOnly() override;
  void PushState() override { PushSelfOnly(); }
  bool PopState() override;
  void ClearLastState() override { FLastState = nullptr; }
  std::size_t MemoryUsed() const override { return sizeof(TPrimitive); }

  // A wrapper of a host replica, on no board until it is registered. It has the class that the call sees,
  // not that of the object; `mode` is not passed on.
  TPrimitive* Replicate(TCopyMode mode) const;

  // The net: the same `TNet` for all primitives of a net within one object scope, null when there is none.
  // Writing null clears it. Raises EIntfCastError when what is written is no wrapper of a net.
  TNet* Net() const;
  void SetNet(TNet* net);
  TGroup* vNet() const;
  void SetVNet(TGroup* net);

  // The board in a wrapper of this object's own, the same at each read; it may be a wrapper of nothing.
  TPrimitive* OwnerBoard();
  void SetOwnerBoard(TPrimitive* board) { SetState_Board(board); }

  // The groups that own the object, each read in a new wrapper; null when it belongs to none of the kind.
  // Writing null clears the owner on the host; an object of another kind is ignored.
  TGroup* vPolygon() const;
  TGroup* vComponent() const;
  TGroup* vCoordinate() const;
  TGroup* vDimension() const;
  void SetVPolygon(TGroup* owner);
  void SetVComponent(TGroup* owner);
  void SetVCoordinate(TGroup* owner);
  void SetVDimension(TGroup* owner);

  // False, and without an effect, on a wrapper of nothing.
  bool Selected() const;
  void SetSelected(bool value);

  // The first entry of the container that wraps the same object; -1 when there is none.
  std::int32_t FindInContainer(const TContainer& AContainer) const;

  bool IsRoom() const;       // a rule that confines components
  bool IsAccordion() const;  // a union that tunes a track's length

  KETRIL_FORWARD_READ(TObjectId, ObjectID, IPrimitive, ObjectID)
  KETRIL_FORWARD(TV7_Layer, Layer, IPrimitive, Layer)
  // Scratch marks for one run of one tool.
  KETRIL_FORWARD(bool, MiscFlag1, IPrimitive, MiscFlag1)
  KETRIL_FORWARD(bool, MiscFlag2, IPrimitive, MiscFlag2)
  KETRIL_FORWARD(bool, MiscFlag3, IPrimitive, MiscFlag3)
  KETRIL_FORWARD_READ(std::uint16_t, vIndex, IPrimitive, Index)
  KETRIL_FORWARD_WRITE(std::uint16_t, SetVIndex, IPrimitive, Index)
  KETRIL_FORWARD(bool, IsKeepOut, IPrimitive, IsKeepOut)
  KETRIL_FORWARD(bool, InPolygon, IPrimitive, InPolygon)
  KETRIL_FORWARD(bool, InComponent, IPrimitive, InComponent)
  KETRIL_FORWARD(bool, InCoordinate, IPrimitive, InCoordinate)
  KETRIL_FORWARD(bool, InDimension, IPrimitive, InDimension)
  KETRIL_FORWARD(bool, InNet, IPrimitive, InNet)
  KETRIL_FORWARD(bool, IsPreRoute, IPrimitive, IsPreRoute)
  KETRIL_FORWARD_READ(bool, PolygonOutline, IPrimitive, PolygonOutline)
  KETRIL_FORWARD(bool, UserRouted, IPrimitive, UserRouted)
  KETRIL_FORWARD(TCoord, PasteMaskExpansion, IPrimitive2, PasteMaskExpansion)
  KETRIL_FORWARD(TMaskExpansionMode, PasteMaskExpansionMode, IPrimitive2, PasteMaskExpansionMode)
  KETRIL_FORWARD(TCoord, SolderMaskExpansion, IPrimitive2, SolderMaskExpansion)
  KETRIL_FORWARD(TMaskExpansionMode, SolderMaskExpansionMode, IPrimitive2, SolderMaskExpansionMode)
  KETRIL_FORWARD_LAYER_READ(TCoord, MaskExpansion, IPrimitive2, MaskExpansion)
  KETRIL_FORWARD_LAYER_READ(bool, HasMaskExpansion, IPrimitive2, HasMaskExpansion)
  KETRIL_FORWARD_READ(std::int32_t, ViolationCount, IPrimitive2, ViolationCount)
  KETRIL_FORWARD_READ(TCoord, GetState_Calculated_RoutingMinWidth, IPrimitive2, Calculated_RoutingMinWidth)
  KETRIL_FORWARD_READ(TCoord, GetState_Calculated_RoutingViaWidth, IPrimitive2, Calculated_RoutingViaWidth)
  std::u16string UniqueId() const { return GetProperty_UniqueID(); }
  void SetUniqueId(const std::u16string& id) { SetProperty_UniqueID(id); }
  std::u16string DescriptorString() const { return GetState_DescriptorString(); }
  void MoveToXY(TCoord x, TCoord y);

 protected:
  explicit TPrimitive(Ref<IPCB_Primitive> primitive) : FPrimitive(std::move(primitive)) {}
  ~TPrimitive() override = default;
  static void* operator new(std::size_t size) { return TakeWrapperMemory(size); }
  static void operator delete(void* memory, std::size_t size) {
    ReturnWrapperMemory(memory, size);
  }  // `Free` is the way

  // Records a new wrapper in an open scope and calls its `Init`; frees it when that raises.
  static void Enter(TPrimitive* wrapper);
  // A new host object of the kind, on no board; empty for eNoObject.
  static Ref<IPCB_Primitive> NewHostObject(TObjectId kind);
  Ref<IPCB_Primitive> HostReplica() const;
  // Hands a rectangle out as left, bottom, right, top, and passes it on.
  static TCoordRect Spread(const TCoordRect& rectangle, TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2);

 private:
  template <class Self, class Base>
  friend class TWrapper;

  void WriteNet(TPrimitive* net);

 protected:
  Ref<IPCB_Primitive> FPrimitive;     // may be empty
  Ref<IPCB_Primitive> FLastState;     // the state set aside, a replica on the host; empty when there is none
  TNet* FNet = nullptr;               // the net last assigned through this wrapper; reads do not use it
  TPrimitive* FOwnerBoard = nullptr;  // made on the first read of `OwnerBoard`
};

// The kind that a new object of a wrapper class has on the host: that of the first class of the table that
// it is or derives from; eNoObject for a class that stands for no kind.
template <class T>
constexpr TObjectId ObjectKindOf();

// What each wrapper class has by its own type: construction and `Replicate`. Class `Self` derives from
// `TWrapper<Self, Base>`, which derives from its `Base`.
template <class Self, class Base>
class TWrapper : public Base {
 public:
  using Base::Base;

  // Wraps a host object, or nothing: an empty reference is accepted.
  static Self* Create(Ref<IPCB_Primitive> primitive) {
    Self* wrapper = new Self(std::move(primitive));
    TPrimitive::Enter(wrapper);
    return wrapper;
  }
  // Makes a new host object of the kind of the class, which is on no board yet, and wraps it.
  static Self* Create() { return Create(TPrimitive::NewHostObject(ObjectKindOf<Self>())); }

  Self* Replicate(TCopyMode) const { return Create(this->HostReplica()); }
  std::size_t MemoryUsed() const override { return sizeof(Self); }
};

// Frees a wrapper at the end of a block.
struct TFreeWrapper {
  void operator()(TPrimitive* wrapper) const { wrapper->Free(); }
};
template <class T>
using TTemporary = std::unique_ptr<T, TFreeWrapper>;

// `primitive` as the wrapper class `T`; null stays null, another class raises EInvalidCast.
template <class T>
T* CheckedCast(TPrimitive* primitive) {
  T* result = dynamic_cast<T*>(primitive);
  if (primitive && !result) RaiseClassCastError(ClassName<T>());
  return result;
}

class TArc;
class TBoard;
class TComp;
class TPad;
class TPolyRegion;
class TPolygon;
class TRule;
class TText;
class TTrack;
class TVia;

template <class T>
constexpr TObjectId ObjectKindOf() {
  if (std::is_base_of_v<TTrack, T>) return eTrackObject;
  if (std::is_base_of_v<TArc, T>) return eArcObject;
  if (std::is_base_of_v<TNet, T>) return eNetObject;
  if (std::is_base_of_v<TVia, T>) return eViaObject;
  if (std::is_base_of_v<TPad, T>) return ePadObject;
  if (std::is_base_of_v<TPolygon, T>) return ePolyObject;
  if (std::is_base_of_v<TPolyRegion, T>) return eRegionObject;
  if (std::is_base_of_v<TRule, T>) return eRuleObject;
  if (std::is_base_of_v<TText, T>) return eTextObject;
  if (std::is_base_of_v<TComp, T>) return eComponentObject;
  if (std::is_base_of_v<TBoard, T>) return eBoardObject;
  return eNoObject;
}

}  // namespace Ketril::Tools
