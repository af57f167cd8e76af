#include "Editor/Model/Iterators.h"

#include <optional>
#include <utility>
#include <vector>

#include "Editor/Model/Board.h"
#include "Editor/Model/LayerFilter.h"

namespace Ketril::Editor {

namespace {

// What all iterators share: the filters, and who made them.
class IteratorCore : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"Ketril::Editor::IteratorCore"};

  // `ledger` is empty for a group on no board.
  IteratorCore(const Primitive& maker, std::shared_ptr<IteratorLedger> ledger)
      : maker_(&maker), ledger_(std::move(ledger)) {
    if (ledger_) ++ledger_->live;
  }

  Status HandBack(const Primitive& maker) {
    if (maker_ != &maker) return Status::InvalidArgument;
    maker_ = nullptr;
    if (ledger_) --ledger_->live;
    layers_ = LayerFilter();
    Empty();
    return Status::Ok;
  }

 protected:
  ~IteratorCore() = default;

  virtual void Restart() = 0;
  virtual Primitive* Advance() = 0;  // null at the end
  virtual void Empty() = 0;          // lets go of everything

  Board* LivingBoard() const { return ledger_ ? ledger_->board : nullptr; }

  Ref<IPCB_Primitive> GiveFirst() {
    if (!maker_) return {};
    layers_.Restart();
    Restart();
    return GiveNext();
  }

  Ref<IPCB_Primitive> GiveNext() {
    if (!maker_) return {};
    while (Primitive* primitive = Advance()) {
      if (Passes(*primitive)) return primitive->AsInterface();
    }
    return {};
  }

  TObjectSet kinds_ = TObjectSet::All();
  LayerFilter layers_;
  std::optional<TCoordRect> area_;
  TIterationMethod method_ = eProcessAll;

 private:
  bool Passes(const Primitive& primitive) {
    return kinds_.Contains(primitive.kind) && PassesMethod(primitive, method_) &&
           layers_.Passes(primitive.state.layer) && (!area_ || Meet(*area_, Ordered(primitive.Bounds())));
  }

  const Primitive* maker_;  // null once handed back
  std::shared_ptr<IteratorLedger> ledger_;
};

// The filters and the steps behind the gate.
template <class Interface>
class HostIterator : public HostObject<Interface, IteratorCore> {
 public:
  using HostObject<Interface, IteratorCore>::HostObject;

  KETRIL_HOST_METHOD(IPCB_AbstractIterator, FilterAll, (), FilterNothing())
  KETRIL_HOST_METHOD(IPCB_AbstractIterator, FilterAllLayers, (), void(this->layers_ = LayerFilter()))
  KETRIL_HOST_METHOD(IPCB_AbstractIterator, FilterObjects, (TObjectSet objects), void(this->kinds_ = objects))
  KETRIL_HOST_METHOD(IPCB_AbstractIterator, FilterLayers, (IPCB_LayerSet * layers),
                     void(this->layers_ = LayerFilter(layers)))
  KETRIL_HOST_METHOD(IPCB_AbstractIterator, FilterArea, (TCoord x1, TCoord y1, TCoord x2, TCoord y2),
                     void(this->area_ = Ordered({x1, y1, x2, y2})))
  KETRIL_HOST_METHOD(IPCB_AbstractIterator, First, (Ref<IPCB_Primitive> & primitive),
                     void(primitive = this->GiveFirst()))
  KETRIL_HOST_METHOD(IPCB_AbstractIterator, Next, (Ref<IPCB_Primitive> & primitive),
                     void(primitive = this->GiveNext()))

 private:
  void FilterNothing() {
    this->kinds_ = TObjectSet::All();
    this->layers_ = LayerFilter();
  }
};

class BoardIterator final : public HostIterator<IPCB_BoardIterator> {
 public:
  explicit BoardIterator(Board& board)
      : HostIterator(std::in_place_type<IteratorCore>, board, board.Iterators()) {}

  KETRIL_HOST_METHOD(IPCB_BoardIterator, FilterMethod, (TIterationMethod method), void(method_ = method))

 private:
  void Restart() override {
    if (const Board* board = LivingBoard()) walk_ = Warehouse::Walk(board->objects, kinds_);
  }
  Primitive* Advance() override { return LivingBoard() ? walk_.Next() : nullptr; }
  void Empty() override { walk_ = {}; }

  Warehouse::Walk walk_;
};

// A list that was made at the start, from which those are skipped that left meanwhile.
template <class Interface>
class ListIterator : public HostIterator<Interface> {
 public:
  using HostIterator<Interface>::HostIterator;

 protected:
  struct Item {
    Ref<Primitive> object;
    std::uint64_t order;  // that it had; another one when it left the board and came back
  };
  virtual void List(std::vector<Item>& items) = 0;
  virtual bool IsThere(const Item& item) const = 0;

 private:
  void Restart() override {
    Empty();
    List(items_);
  }
  Primitive* Advance() override {
    while (place_ < items_.size()) {
      const Item& item = items_[place_++];
      if (IsThere(item)) return item.object.Get();
    }
    return nullptr;
  }
  void Empty() override {
    items_.clear();
    place_ = 0;
  }

  std::vector<Item> items_;
  std::size_t place_ = 0;
};

class SpatialIterator final : public ListIterator<IPCB_SpatialIterator> {
 public:
  explicit SpatialIterator(Board& board)
      : ListIterator(std::in_place_type<IteratorCore>, board, board.Iterators()) {}

 private:
  void List(std::vector<Item>& items) override {
    constexpr TCoord kLow = std::numeric_limits<TCoord>::min(), kHigh = std::numeric_limits<TCoord>::max();
    Board* board = LivingBoard();
    if (!board) return;
    for (Primitive* object : board->index.Find(area_.value_or(TCoordRect{kLow, kLow, kHigh, kHigh}))) {
      if (kinds_.Contains(object->kind)) items.push_back({object, object->order});
    }
  }
  bool IsThere(const Item& item) const override {
    return item.object->on_board && item.object->board == LivingBoard() && item.object->order == item.order;
  }
};

// Holds its group.
class GroupIterator final : public ListIterator<IPCB_GroupIterator> {
 public:
  explicit GroupIterator(Group& group)
      : ListIterator(std::in_place_type<IteratorCore>, group,
                     group.board ? group.board->Iterators() : nullptr),
        group_(&group) {}

 private:
  void List(std::vector<Item>& items) override {
    for (Primitive* member : group_->ListMembers()) items.push_back({member, member->order});
  }
  bool IsThere(const Item& item) const override {
    // A net lists what is on no board too.
    const bool is_listed =
        group_->kind != eNetObject || (item.object->on_board && item.object->order == item.order);
    return is_listed && group_->HasMember(*item.object);
  }

  const Ref<Group> group_;
};

}  // namespace

bool PassesMethod(const Primitive& primitive, TIterationMethod method) {
  const Group* owner = primitive.Owner();
  switch (method) {
    case eProcessFree:
      return !owner;
    case eProcessComponent:
      return primitive.kind == eComponentObject || (owner && owner->kind == eComponentObject);
    default:
      return true;
  }
}

Ref<IPCB_BoardIterator> MakeBoardIterator(Board& board) {
  return Ref<IPCB_BoardIterator>(MakeHost<BoardIterator>(board));
}

Ref<IPCB_SpatialIterator> MakeSpatialIterator(Board& board) {
  return Ref<IPCB_SpatialIterator>(MakeHost<SpatialIterator>(board));
}

Ref<IPCB_GroupIterator> MakeGroupIterator(Group& group) {
  return Ref<IPCB_GroupIterator>(MakeHost<GroupIterator>(group));
}

Status HandBackIterator(IInterface* iterator, const Primitive& maker) {
  const Ref<IteratorCore> core = Probe<IteratorCore>(iterator);
  return core ? core->HandBack(maker) : Status::InvalidArgument;
}

}  // namespace Ketril::Editor
