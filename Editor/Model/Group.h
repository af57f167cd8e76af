// Objects that hold others: the core that they share, and its interface.
#pragma once

#include <vector>

#include "Editor/Model/Iterators.h"
#include "Editor/Model/PrimitiveObject.h"

namespace Ketril::Editor {

// The core of a group. A group holds its members; a member knows its group by a plain pointer, which the
// group clears when it goes. Nets are no owners: see Net.
//
// An object may also note a group as its owner without being in the member list. Taking the note off a member
// takes the member out of the list: an object is in one list at most.
class Group : public Primitive {
 public:
  using Base = Primitive;
  static constexpr InterfaceId Id{"Ketril::Editor::Group"};
  using Primitive::Primitive;

  const std::vector<Ref<Primitive>>& Members() const { return members_; }
  const std::vector<Ref<Primitive>>* MemberList() const override { return &members_; }
  // Adds at the end; takes the object from the group that it was in. A member already stays where it is.
  // False for an object that cannot be a member: the group itself, what holds it, a net, a board. Data only.
  bool AddMember(Primitive* member);
  void RemoveMember(Primitive* member);
  void RemoveAllMembers();
  bool CanOwn(const Primitive& primitive) const;  // not so what AddMember refuses
  // Gives the list these members, as it was before; those that are no longer in it are free.
  void RestoreMembers(const std::vector<Ref<Primitive>>& members);
  // The group as the owner of an object that is in no list. Data only.
  void NoteOwned(Primitive* primitive);

  // What a walk of the group gives, in the order in which it joined: the members, of a net its listed
  // objects.
  virtual std::vector<Primitive*> ListMembers() const;
  virtual Primitive* MemberAt(std::int32_t index) const;  // null beyond the end
  virtual bool HasMember(const Primitive& primitive) const;

  // Of the members that are shown, but for a component's designator and comment, and of `OwnExtent`; the
  // reference point when there is nothing.
  TCoordRect Bounds() const override;
  void Transform(const PlaneMap& map) override;
  void MirrorLayers() override;

 protected:
  ~Group();

  struct Saved : Primitive::Saved {
    std::vector<Ref<Primitive>> members;
  };
  Saved SaveCore() const;
  void RestoreCore(const Saved& saved);
  void CopyCoreFrom(const Group& other);  // with copies of the members

  virtual Extent OwnExtent() const { return {}; }
  virtual void TransformSelf(const PlaneMap&) {}

  // Behind the interface.
  virtual Status Register(Primitive* member);
  virtual void UnregisterAll();
  virtual void TakeMembersOffBoard();
  std::int32_t CountMembers(TObjectSet kinds) const;

 private:
  friend class Primitive;
  void Forget(Primitive* primitive);  // as a member or as an object that only notes it

  std::vector<Ref<Primitive>> members_;
  std::vector<Primitive*> noted_;  // owner noted, not in the list
};

// The interface of groups, over their core.
template <class Self, class Interface>
class GroupObject : public PrimitiveObject<Self, Group, Interface> {
 public:
  KETRIL_HOST_METHOD(IPCB_Group, GroupIterator_Create, (Ref<IPCB_GroupIterator> & iterator),
                     void(iterator = MakeGroupIterator(*this)))
  KETRIL_HOST_METHOD(IPCB_Group, GroupIterator_Destroy, (IPCB_GroupIterator * iterator),
                     HandBackIterator(iterator, *this))
  KETRIL_HOST_METHOD(IPCB_Group, RegisterWithGroupWarehouse, (IPCB_Primitive * primitive),
                     this->Register(FromInterface(primitive)))
  KETRIL_HOST_METHOD(IPCB_Group, CancelAllPrimitivePrimaryWarehouseRegistrations, (),
                     this->TakeMembersOffBoard())
  KETRIL_HOST_METHOD(IPCB_Group, CancelAllPrimitiveRegistrations, (), this->UnregisterAll())
  KETRIL_HOST_METHOD(IPCB_Group, GetPrimitiveCount, (TObjectSet objects, std::int32_t& count),
                     void(count = this->CountMembers(objects)))
  KETRIL_HOST_METHOD(IPCB_Group, GetPrimitiveAt, (std::int32_t index, Ref<IPCB_Primitive>& primitive),
                     Answer(this->MemberAt(index), primitive))

  KETRIL_HOST_PAIR(IPCB_Group2, TCoord, ReferenceX, this->Reference().x,
                   this->MoveTo({value, this->Reference().y}))
  KETRIL_HOST_PAIR(IPCB_Group2, TCoord, ReferenceY, this->Reference().y,
                   this->MoveTo({this->Reference().x, value}))
  KETRIL_HOST_METHOD(IPCB_Group2, CleanBoardSide, (), static_cast<Self&>(*this).CleanSide())

  // Of groups that have no side there is nothing to put right.
  void CleanSide() {}

 private:
  static void Answer(Primitive* member, Ref<IPCB_Primitive>& primitive) {
    primitive = member ? Ref<IPCB_Primitive>(member->AsInterface()) : Ref<IPCB_Primitive>();
  }
};

template <class T>
T* Primitive::OwnerAs() const {
  return As<T>(owner_);
}

}  // namespace Ketril::Editor
