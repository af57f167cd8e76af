// The objects that stand for a stitching and for a shielding, and the list of them that a board keeps.
#pragma once

#include "Editor/Model/PrimitiveObject.h"
#include "Editor/Vias/ViaPlacer.h"

namespace Ketril::Editor {

// Parts are the objects of the board that carry the union's index. The object itself is on no board's list of
// objects: it is there as long as its board lists it as a union and parts of it are on the board, so that an
// undo which takes the parts away takes it as well.
class ViaUnion {
 public:
  const TUnionKind union_kind;
  bool listed = false;                // by its board
  std::vector<Ref<Primitive>> built;  // what a build made and no index is given to yet
  Primitive& Self() { return self_; }
  std::vector<Primitive*> Parts() const;

 protected:
  ViaUnion(TUnionKind kind, Primitive& self) : union_kind(kind), self_(self) {}
  ~ViaUnion() = default;
  TCoordRect PartsBounds() const;
  Ref<IPCB_Board> OwnerBoard() const;
  Status SetOwnerBoard(IPCB_Board* board);

 private:
  Primitive& self_;
};

template <class Self, class Interface, TUnionKind Kind>
class ViaUnionObject : public PrimitiveObject<Self, Primitive, IPCB_Primitive3, Interface>, public ViaUnion {
 public:
  static constexpr TObjectId kKind = eNoObject;

  ViaUnionObject() : ViaUnion(Kind, static_cast<Primitive&>(*this)) {}
  TCoordRect Bounds() const override { return PartsBounds(); }
  TCoordPoint Reference() const override { return PartsBounds().Location1(); }

  KETRIL_HOST_READ(IPCB_SmartUnionObject, TUnionKind, UnionKind, Kind)
  KETRIL_HOST_PAIR(IPCB_SmartUnionObject, Ref<IPCB_Board>, OwnerBoard, this->OwnerBoard(),
                   this->SetOwnerBoard(value))
  // Parts are looked up when they are asked for.
  KETRIL_HOST_METHOD(IPCB_SmartUnionObject, RefreshObject, (), Status::Ok)
  KETRIL_HOST_METHOD(IPCB_SmartUnionObject, GetRegistered, (bool& registered), void(registered = listed))
};

struct StitchingData {
  Ref<StitchOptions> options;
};
class Stitching final : public ViaUnionObject<Stitching, IPCB_SmartUnionObject, eUnionKind_ViaStitching> {
 public:
  StitchingData data;
  KETRIL_HOST_METHOD(IPCB_SmartUnionObject, GetFloodOptions, (Ref<IPCB_ViaStitchFloodOptions> & options),
                     void(options = data.options))
};

struct ShieldingData {
  Ref<ShieldOptions> options;
};
class Shielding final : public ViaUnionObject<Shielding, IPCB_ViaShieldingSU, eUnionKind_ViaShielding> {
 public:
  ShieldingData data;
  KETRIL_HOST_METHOD(IPCB_SmartUnionObject, GetFloodOptions, (Ref<IPCB_ViaStitchFloodOptions>&),
                     Status::Failure)
  KETRIL_HOST_METHOD(IPCB_ViaShieldingSU, GetShieldingOptions, (Ref<IPCB_ViaShieldingOptions> & options),
                     void(options = data.options))
  KETRIL_HOST_METHOD(IPCB_ViaShieldingSU, GetShieldingDone, (bool& done), void(done = !built.empty()))
};

}  // namespace Ketril::Editor
