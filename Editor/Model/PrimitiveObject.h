// The methods that all objects of the board share, over the core: one template that each class of the editor
// derives from, naming itself, its core and the end of its interface chain.
#pragma once

#include <utility>

#include "Editor/Model/HostProperty.h"
#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

// `Self` has a `data` member that is copied by save, restore and copy, and a `kKind`. Its constructor stands
// in its source file, so that these methods are compiled there once.
template <class Self, class Core, class... Interfaces>
class PrimitiveObject : public HostObject<Interfaces..., Core> {
  using Host = HostObject<Interfaces..., Core>;

 public:
  PrimitiveObject() : Host(std::in_place_type<Core>, Self::kKind) {}

  IPCB_Primitive* AsInterface() override { return this; }

  std::unique_ptr<Snapshot> Save() const override {
    return std::make_unique<SavedObject>(Core::SaveCore(), This().data);
  }
  void Restore(const Snapshot& snapshot) override {
    const auto& saved = static_cast<const SavedObject&>(snapshot);
    Core::RestoreCore(saved.core);
    This().data = saved.data;
  }
  Ref<Primitive> Copy() const override {
    const Ref<Self> copy = MakeHost<Self>();
    copy->data = This().data;
    copy->CopyCoreFrom(*this);
    return Ref<Primitive>(copy.Get());
  }

  KETRIL_HOST_READ(IPCB_Primitive, std::uintptr_t, ObjectAddress, Address())
  KETRIL_HOST_READ(IPCB_Primitive, TObjectId, ObjectID, this->kind)
  KETRIL_HOST_PAIR(IPCB_Primitive, std::u16string, UniqueId, this->UniqueId(), this->AssignUniqueId(value))
  KETRIL_HOST_PAIR(IPCB_Primitive, TV7_Layer, Layer, this->state.layer,
                   this->Write([&] { this->ChangeLayer(value); }))
  KETRIL_HOST_PAIR(IPCB_Primitive, Ref<IPCB_Net>, Net, this->NetInterface(), this->AssignNet(value))
  KETRIL_HOST_READ(IPCB_Primitive, Ref<IPCB_Net>, LogicalNet, this->NetInterface())
  KETRIL_HOST_PAIR(IPCB_Primitive, Ref<IPCB_Board>, Board, this->BoardInterface(), this->AssignBoard(value))

#define KETRIL_HOST_OWNER(Name)                                                                          \
  KETRIL_HOST_PAIR(IPCB_Primitive, Ref<IPCB_##Name>, Name, this->template OwnerInterface<IPCB_##Name>(), \
                   this->AssignOwner(IPCB_##Name::Id, value))                                            \
  KETRIL_HOST_PAIR(IPCB_Primitive, bool, In##Name, bool(this->template OwnerInterface<IPCB_##Name>()),   \
                   value ? Status::Ok : this->AssignOwner(IPCB_##Name::Id, nullptr))
  KETRIL_HOST_OWNER(Component)
  KETRIL_HOST_OWNER(Polygon)
  KETRIL_HOST_OWNER(Coordinate)
  KETRIL_HOST_OWNER(Dimension)
#undef KETRIL_HOST_OWNER
  // Writing `true` to one of these names no owner, so it changes nothing.
  KETRIL_HOST_PAIR(IPCB_Primitive, bool, InNet, this->GetNet() != nullptr,
                   value ? Status::Ok : this->AssignNet(nullptr))

  KETRIL_HOST_PAIR(IPCB_Primitive, bool, Moveable, this->IsMoveable(), this->SetFlag(kFlag_Locked, !value))
#define KETRIL_HOST_FLAG(Name, Flag) \
  KETRIL_HOST_PAIR(IPCB_Primitive, bool, Name, this->Has(Flag), this->SetFlag(Flag, value))
  KETRIL_HOST_FLAG(Selected, kFlag_Selected)
  KETRIL_HOST_FLAG(IsKeepOut, kFlag_KeepOut)
  KETRIL_HOST_FLAG(IsPreRoute, kFlag_PreRoute)
  KETRIL_HOST_FLAG(UserRouted, kFlag_UserRouted)
  KETRIL_HOST_FLAG(TearDrop, kFlag_TearDrop)
  KETRIL_HOST_FLAG(EnableDraw, kFlag_EnableDraw)
  KETRIL_HOST_FLAG(PrimUsed, kFlag_PrimUsed)
  KETRIL_HOST_FLAG(MiscFlag1, kFlag_Misc1)
  KETRIL_HOST_FLAG(MiscFlag2, kFlag_Misc2)
  KETRIL_HOST_FLAG(MiscFlag3, kFlag_Misc3)
#undef KETRIL_HOST_FLAG
  KETRIL_HOST_READ(IPCB_Primitive, bool, PolygonOutline, this->Has(kFlag_PolygonOutline))
  KETRIL_HOST_PAIR(IPCB_Primitive, std::uint16_t, Index, this->index, void(this->index = value))
  KETRIL_HOST_PROPERTY(IPCB_Primitive, std::int32_t, UnionIndex, this->state.union_index)

  KETRIL_HOST_METHOD(IPCB_Primitive, GetState_BoundingRectangle, (TCoordRect & rectangle),
                     void(rectangle = this->Bounds()))
  KETRIL_HOST_METHOD(IPCB_Primitive, MoveByXY, (TCoord dx, TCoord dy), this->MoveBy(dx, dy))
  KETRIL_HOST_METHOD(IPCB_Primitive, MoveToXY, (TCoord x, TCoord y), this->MoveTo({x, y}))
  KETRIL_HOST_METHOD(IPCB_Primitive, RotateBy, (double degrees), this->TurnBy(degrees))
  KETRIL_HOST_METHOD(IPCB_Primitive, BeginModify, (), this->BeginEdit())
  KETRIL_HOST_METHOD(IPCB_Primitive, EndModify, (), this->EndEdit())
  KETRIL_HOST_METHOD(IPCB_Primitive, CancelModify, (), this->CancelEdit())
  // Nothing is drawn while a tool runs.
  KETRIL_HOST_METHOD(IPCB_Primitive, GraphicallyInvalidate, (), Status::Ok)
  KETRIL_HOST_METHOD(IPCB_Primitive, Replicate, (Ref<IPCB_Primitive> & replica),
                     void(replica = Ref<IPCB_Primitive>(this->FreeCopy()->AsInterface())))
  KETRIL_HOST_METHOD(IPCB_Primitive, GetState_IsSaveable, (TKetrilFileFormatVersion version, bool& saveable),
                     void(saveable = this->IsSaveableIn(version)))

  KETRIL_HOST_READ(IPCB_Primitive2, std::u16string, Identifier, this->Identifier())
  KETRIL_HOST_READ(IPCB_Primitive2, std::u16string, DescriptorString, this->Describe())
  KETRIL_HOST_READ(IPCB_Primitive2, std::u16string, DetailString, this->DescribeInDetail())
  KETRIL_HOST_READ(IPCB_Primitive2, std::u16string, Handle, this->UniqueId())
  KETRIL_HOST_READ(IPCB_Primitive2, std::int32_t, ViolationCount, this->CountViolations())
  KETRIL_HOST_PAIR(IPCB_Primitive2, TCoord, PasteMaskExpansion, this->Mask().paste,
                   this->SetMaskValue(&MaskData::paste, value))
  KETRIL_HOST_PAIR(IPCB_Primitive2, TMaskExpansionMode, PasteMaskExpansionMode, this->Mask().paste_mode,
                   this->SetMaskMode(&MaskData::paste_mode, value))
  KETRIL_HOST_PAIR(IPCB_Primitive2, TCoord, SolderMaskExpansion, this->Mask().solder,
                   this->SetMaskValue(&MaskData::solder, value))
  KETRIL_HOST_PAIR(IPCB_Primitive2, TMaskExpansionMode, SolderMaskExpansionMode, this->Mask().solder_mode,
                   this->SetMaskMode(&MaskData::solder_mode, value))
  KETRIL_HOST_LAYER_READ(IPCB_Primitive2, TCoord, MaskExpansion, this->MaskExpansionOn(layer))
  KETRIL_HOST_LAYER_READ(IPCB_Primitive2, bool, HasMaskExpansion, this->OpensMask(layer))
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_PasteMaskExpansion, this->PasteMaskExpansion())
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_SolderMaskExpansion, this->SolderMaskExpansion())
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_PowerPlaneClearance, this->PlaneClearance())
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_PowerPlaneReliefExpansion, this->ReliefGap())
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_ReliefConductorWidth, this->ReliefConductorWidth())
  KETRIL_HOST_READ(IPCB_Primitive2, std::int32_t, Calculated_ReliefEntries, this->ReliefEntries())
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_ReliefAirGap, this->ReliefGap())
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_RoutingMinWidth, this->RoutingWidth())
  KETRIL_HOST_READ(IPCB_Primitive2, TCoord, Calculated_RoutingViaWidth, this->RoutingViaSize())

  KETRIL_HOST_READ(IPCB_Primitive3, TCoord, X, this->Reference().x)
  KETRIL_HOST_READ(IPCB_Primitive3, TCoord, Y, this->Reference().y)
  KETRIL_HOST_METHOD(IPCB_Primitive3, GetState_BoundingRectangleForSelection, (TCoordRect & rectangle),
                     void(rectangle = this->Bounds()))
  // Sizes are never kept: only the index holds a box that follows from them.
  KETRIL_HOST_METHOD(IPCB_Primitive3, SetState_XSizeYSize, (), this->AfterWrite())
  KETRIL_HOST_METHOD(IPCB_Primitive3, GetState_Touches, (IPCB_Primitive * other, bool& touches),
                     this->TellTouch(other, touches))
  KETRIL_HOST_METHOD(IPCB_Primitive3, GetState_GapTo, (IPCB_Primitive * other, TCoord& gap),
                     this->TellGap(other, gap))

 private:
  struct SavedObject final : Snapshot {
    template <class CorePart, class Data>
    SavedObject(CorePart core, const Data& data) : core(std::move(core)), data(data) {}
    typename Core::Saved core;
    decltype(Self::data) data;
  };

  Self& This() {
    return static_cast<Self&>(*this);
  }
  const Self& This() const {
    return static_cast<const Self&>(*this);
  }
  std::uintptr_t Address() {
    return reinterpret_cast<std::uintptr_t>(static_cast<Primitive*>(this));
  }
};

}  // namespace Ketril::Editor
