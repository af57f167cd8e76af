#include "DLLs/Tools/Placement/RoomContents.h"

#include "DLLs/Tools/Frame/CountedObject.h"

namespace Ketril::Tools {

namespace {

// A list for the board to fill.
class TInterfaceList final : public CountedObject<IInterfaceList> {
 public:
  explicit TInterfaceList(const TPrimitiveList& primitives) {
    for (const TPrimitive* primitive : primitives) items_.emplace_back(primitive->IPrimitive());
  }
  Status GetState_Count(std::int32_t& value) noexcept override {
    value = static_cast<std::int32_t>(items_.size());
    return Status::Ok;
  }
  Status GetState_At(std::int32_t index, Ref<IInterface>& item) noexcept override {
    const auto place = static_cast<std::size_t>(index);  // a negative one is beyond every end
    item = place < items_.size() ? items_[place] : Ref<IInterface>();
    return Status::Ok;
  }
  Status Add(IInterface* item) noexcept override try {
    items_.emplace_back(item);
    return Status::Ok;
  } catch (const std::bad_alloc&) {
    return Status::OutOfMemory;
  }
  Status Clear() noexcept override {
    items_.clear();
    return Status::Ok;
  }

  void WrapInto(TPrimitiveList& primitives) const {
    primitives.clear();
    for (const Ref<IInterface>& item : items_) {
      if (Ref<IPCB_Primitive> primitive = Probe<IPCB_Primitive>(item))
        primitives.push_back(TPrimitive::Create(std::move(primitive)));
    }
  }

 private:
  std::vector<Ref<IInterface>> items_;
};

}  // namespace

void GetRoomContents(TBoard* board, bool only_selected, bool by_scope, TConfinementConstraint* room,
                     TPrimitiveList& components, TPrimitiveList& others, TPrimitiveList& free_objects,
                     TPrimitiveList* unions, bool unions_apart, bool reserved) {
  TPrimitiveList* const given[] = {&components, &others, &free_objects, unions};
  Ref<TInterfaceList> lists[4];
  for (int i = 0; i < 4; ++i) {
    if (given[i]) lists[i] = MakeCounted<TInterfaceList>(*given[i]);
  }
  On(CheckedCast<IPCB_BoardRooms>(board->IPrimitive()))
      .Call(&IPCB_BoardRooms::GetState_RoomContents, only_selected, by_scope,
            room->IConfinementConstraint().Get(), lists[0].Get(), lists[1].Get(), lists[2].Get(),
            lists[3].Get(), unions_apart, reserved);
  for (int i = 0; i < 4; ++i) {
    if (given[i]) lists[i]->WrapInto(*given[i]);
  }
}

}  // namespace Ketril::Tools
