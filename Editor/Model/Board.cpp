#include "Editor/Model/Board.h"

#include <utility>

#include "Editor/Rules/Rule.h"
#include "Editor/Vias/ViaUnions.h"

namespace Ketril::Editor {

namespace {

std::int32_t NextBoardId() {
  static std::int32_t last_id = 0;
  return ++last_id;
}

class PlacerOptions final : public HostObject<IPCB_AdvancedPlacerOptions> {
 public:
  KETRIL_HOST_PAIR(IPCB_AdvancedPlacerOptions, TCoord, PlaceLargeClear, large_, void(large_ = value))
  KETRIL_HOST_PAIR(IPCB_AdvancedPlacerOptions, TCoord, PlaceSmallClear, small_, void(small_ = value))

 private:
  TCoord large_ = 1000000;  // 100 mil
  TCoord small_ = 200000;
};

}  // namespace

// What an undo brings back of the board itself.
struct Board::SavedBoard final : Snapshot {
  SavedBoard(Saved core, BoardSetup setup, std::vector<BoardLayer> layers)
      : core(std::move(core)), setup(setup), layers(std::move(layers)) {}
  Saved core;
  BoardSetup setup;
  std::vector<BoardLayer> layers;
};

Board::Board()
    : id_(NextBoardId()),
      iterators_(std::make_shared<IteratorLedger>(IteratorLedger{.board = this, .live = 0})),
      placer_options_(MakeHost<PlacerOptions>()),
      via_unions_(std::make_unique<ViaUnions>(*this)) {
  board = this;
}

Board::~Board() {
  iterators_->board = nullptr;
  view->LoseBoard();
  for (Primitive* primitive : tried_) primitive->board = nullptr;
  objects.ForEach(TObjectSet::All(), [](Primitive& primitive) { primitive.LoseBoard(); });
  board = nullptr;
}

std::unique_ptr<Snapshot> Board::Save() const {
  return std::make_unique<SavedBoard>(SaveCore(), setup, layers);
}

void Board::Restore(const Snapshot& snapshot) {
  const auto& saved = static_cast<const SavedBoard&>(snapshot);
  RestoreCore(saved.core);
  setup = saved.setup;
  layers = saved.layers;
}

void Board::Enter(Primitive& primitive) {
  if (primitive.board) primitive.board->StopTrying(primitive);
  objects.Add(&primitive);
  primitive.EnterBoard(*this);
  index.Add(primitive);
  if (primitive.Has(kFlag_Selected)) SelectionChanged();
}

void Board::Leave(Primitive& primitive) {
  index.Remove(primitive);
  primitive.LeaveBoard();
  SelectionChanged();
  objects.Remove(&primitive);
}

void Board::Load(Primitive* primitive) {
  if (primitive->on_board) return;
  Enter(*primitive);
  if (const std::vector<Ref<Primitive>>* members = primitive->MemberList()) {
    for (const Ref<Primitive>& member : *members) Load(member.Get());
  }
}

void Board::Add(Primitive* primitive) {
  if (primitive->on_board) return;
  journal.RecordPlace(*primitive);
  Enter(*primitive);
  document_changed = true;
  if (const std::vector<Ref<Primitive>>* members = primitive->MemberList()) {
    for (const Ref<Primitive>& member : *members) Add(member.Get());
  }
}

void Board::Remove(Primitive* primitive) {
  if (!primitive->on_board || primitive->board != this) return;
  const Ref<Primitive> hold(primitive);
  Group* owner = primitive->Owner();
  if (owner) owner->BeforeWrite();
  RemoveWithMembers(*primitive);
  if (!owner) return;
  owner->RemoveMember(primitive);
  owner->AfterWrite();
}

namespace {

std::vector<Primitive*> RoomsDrawnBy(const Board& board, const Primitive& zone) {
  std::vector<Primitive*> rooms;
  if (zone.kind != ePolyObject) return rooms;
  board.objects.ForEach({eRuleObject}, [&](Primitive& rule) {
    if (As<Rule>(&rule)->Zone() == &zone) rooms.push_back(&rule);
  });
  return rooms;
}

}  // namespace

void Board::RemoveWithMembers(Primitive& primitive) {
  if (!primitive.on_board || primitive.board != this) return;
  for (Primitive* room : RoomsDrawnBy(*this, primitive)) RemoveWithMembers(*room);
  journal.RecordPlace(primitive);
  RemoveMembers(primitive);
  Leave(primitive);
  document_changed = true;
}

void Board::RemoveMembers(Primitive& group) {
  const std::vector<Ref<Primitive>>* members = group.MemberList();
  if (!members) return;
  for (const Ref<Primitive>& member : *members) RemoveWithMembers(*member);
}

void Board::TryOn(Primitive& primitive) {
  if (primitive.on_board || primitive.board == this) return;
  if (primitive.board) primitive.board->StopTrying(primitive);
  primitive.board = this;
  tried_.insert(&primitive);
}

void Board::StopTrying(Primitive& primitive) {
  if (tried_.erase(&primitive) > 0) primitive.board = nullptr;
}

Status Board::RegisterWithPrimaryWarehouse(IPCB_Primitive* primitive) noexcept {
  return HostCall("IPCB_Board.RegisterWithPrimaryWarehouse", [&] {
    Primitive* object = FromInterface(primitive);
    if (!object || object->kind == eBoardObject) return Status::InvalidArgument;
    if (object->on_board && object->board != this) return Status::InvalidArgument;
    Add(object);
    return Status::Ok;
  });
}

Status Board::CancelPrimaryWarehouseRegistration(IPCB_Primitive* primitive) noexcept {
  return HostCall("IPCB_Board.CancelPrimaryWarehouseRegistration", [&] {
    Primitive* object = FromInterface(primitive);
    if (!object) return Status::InvalidArgument;
    Remove(object);
    return Status::Ok;
  });
}

Status Board::GraphicallyInvalidatePrimitive(IPCB_Primitive* primitive) noexcept {
  return HostCall("IPCB_Board.GraphicallyInvalidatePrimitive", [&] {
    const Primitive* object = FromInterface(primitive);
    if (!object) return Status::InvalidArgument;
    if (HasPlace(object->kind)) view->Invalidate(Ordered(object->Bounds()));
    return Status::Ok;
  });
}

}  // namespace Ketril::Editor
