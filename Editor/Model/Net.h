// Nets.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/Group.h"

namespace Ketril::Editor {

struct NetData {
  std::u16string name;
  std::int32_t number = 0;  // in the board file, 0 for none
};

// A net lists the objects that name it as their net, in the order in which they joined; it does not keep them
// alive. An object is listed from when it is given the net until it is taken off the board, and again when it
// is put back. Moving a net moves none of them.
class Net final : public GroupObject<Net, IPCB_Net2> {
 public:
  static constexpr TObjectId kKind = eNetObject;
  NetData data;

  Net();
  // Calls `visit(Primitive&)` with each object of the net; objects may join, which the walk does not see, and
  // leave meanwhile.
  template <class Visit>
  void ForEach(Visit&& visit) const {
    const Walk walk(*this);
    for (std::size_t i = 0, end = listed_.size(); i < end; ++i) {
      if (Primitive* primitive = listed_[i]) visit(*primitive);
    }
  }
  std::size_t Count() const { return listed_.size() - gaps_; }
  double RoutedLength() const;  // of the tracks and arcs on copper layers, in units
  // Lists the objects of the net in this order; those that are not in `order` come last.
  void RestoreOrder(const std::vector<Primitive*>& order);

  std::vector<Primitive*> ListMembers() const override;
  Primitive* MemberAt(std::int32_t index) const override;
  bool HasMember(const Primitive& primitive) const override;
  TCoordRect Bounds() const override;  // of all its objects
  TCoordPoint Reference() const override { return Bounds().Location1(); }
  void Transform(const PlaneMap&) override {}
  std::u16string Identifier() const override { return data.name; }

  KETRIL_HOST_READ(IPCB_Primitive, Ref<IPCB_Net>, LogicalNet, this)
  KETRIL_HOST_PROPERTY(IPCB_Net, std::u16string, Name, data.name)
  KETRIL_HOST_READ(IPCB_Net2, double, RoutedLength, RoutedLength())
  // Lengths and boxes are worked out when they are asked for: only the index holds places.
  KETRIL_HOST_METHOD(IPCB_Net2, UpdateNet, (), ForEach([](Primitive& primitive) { primitive.AfterWrite(); }))

 private:
  friend class Primitive;
  // Gaps are closed while nobody walks.
  class Walk {
   public:
    explicit Walk(const Net& net) : net_(net) { ++net_.walks_; }
    ~Walk() {
      if (--net_.walks_ == 0 && net_.gaps_ > net_.listed_.size() / 2) net_.CloseGaps();
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

   private:
    const Net& net_;
  };
  Status Register(Primitive* member) override;
  void UnregisterAll() override;
  void TakeMembersOffBoard() override;
  void Join(Primitive* primitive);
  void Leave(Primitive* primitive);
  void CloseGaps() const;

  mutable std::vector<Primitive*> listed_;  // null where an object left
  mutable std::uint32_t gaps_ = 0;
  mutable std::uint32_t walks_ = 0;
};

}  // namespace Ketril::Editor
