#include "Editor/Model/Journal.h"

#include <utility>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

namespace {

// On the board, a member of what is, or the board itself.
bool IsPart(const Primitive& primitive, const Board& board) {
  if (&primitive == &board || (primitive.on_board && primitive.board == &board)) return true;
  return primitive.Owner() && IsPart(*primitive.Owner(), board);
}

}  // namespace

struct Journal::Record {
  Ref<Primitive> object;
  bool was_on_board;
  std::uint64_t order;
  Ref<Group> owner;
  std::unique_ptr<Snapshot> before;  // null for what was no part of the board
};

// Objects that are on the board are held by it or, once they left, by their record.
struct Journal::NetOrder {
  Ref<Net> net;
  std::vector<Primitive*> objects;
};

Journal::Journal(Board& board) : board_(board) {}
Journal::~Journal() = default;

void Journal::Begin() {
  static std::uint32_t last_mark = 0;  // of all boards: an object may go from one to another
  mark_ = ++last_mark;
  Forget();
  document_changed_ = board_.document_changed;
  recording_ = true;
}

void Journal::End() {
  recording_ = false;
}

void Journal::RecordBefore(Primitive& primitive) {
  if (!recording_) return;
  for (Group* owner = primitive.Owner(); owner; owner = owner->Owner()) {
    if (!owner->file_changed) changed_in_file_.emplace_back(owner);
  }
  if (primitive.journal_mark != mark_ && IsPart(primitive, board_)) RecordPlace(primitive);
}

void Journal::RecordPlace(Primitive& primitive) {
  if (!recording_ || primitive.journal_mark == mark_) return;
  const bool was_part = IsPart(primitive, board_);
  records_.push_back({&primitive, primitive.on_board || &primitive == &board_, primitive.order,
                      primitive.Owner(), was_part ? primitive.Save() : nullptr});
  primitive.journal_mark = mark_;
  if (!was_part) return;
  RecordNetOrder(primitive.GetNet());
  // Members that are off the board stop being a part with their group.
  const std::vector<Ref<Primitive>>* members = primitive.MemberList();
  for (std::size_t i = 0; members && i < members->size(); ++i) {
    if (!(*members)[i]->on_board) RecordPlace(*(*members)[i]);
  }
}

void Journal::RecordNetOrder(Net* net) {
  if (!net || !ordered_nets_.insert(net).second) return;
  NetOrder& order = net_orders_.emplace_back();
  order.net = Ref<Net>(net);
  net->ForEach([&](Primitive& object) {
    if (object.on_board) order.objects.push_back(&object);
  });
}

std::vector<Change> Journal::Changes() const {
  std::vector<Change> changes;
  for (const Record& record : records_) {
    const bool is_there = record.object->on_board || record.object.Get() == &board_;
    if (!record.was_on_board && !is_there) continue;
    const ChangeKind kind = !record.was_on_board ? ChangeKind::Added
                            : !is_there          ? ChangeKind::Removed
                                                 : ChangeKind::Modified;
    changes.push_back({kind, record.object});
  }
  return changes;
}

std::vector<Ref<Primitive>> Journal::Withdrawn() const {
  std::vector<Ref<Primitive>> objects;
  for (const Record& record : records_) {
    if (!record.was_on_board && !record.object->on_board && record.object.Get() != &board_)
      objects.push_back(record.object);
  }
  return objects;
}

void Journal::Undo() {
  recording_ = false;
  RestorePlaces();
  for (const Record& record : records_) {
    if (record.before) record.object->Restore(*record.before);
  }
  RestoreOwners();
  for (const Ref<Primitive>& object : changed_in_file_) object->file_changed = false;
  for (const NetOrder& order : net_orders_) order.net->RestoreOrder(order.objects);
  for (const Record& record : records_) board_.index.Touch(*record.object);
  board_.document_changed = document_changed_;
  board_.SelectionChanged();
  Forget();
}

// Members came back with their groups; what is left are owners that were only noted.
void Journal::RestoreOwners() {
  for (const Record& record : records_) {
    Primitive& object = *record.object;
    if (!record.before || object.Owner() == record.owner.Get()) continue;
    if (Group* owner = object.Owner()) owner->RemoveMember(&object);
    if (record.owner) record.owner->NoteOwned(&object);
  }
}

void Journal::Forget() {
  records_.clear();
  net_orders_.clear();
  ordered_nets_.clear();
  changed_in_file_.clear();
}

// Who came goes, and who went comes back to the old place; also who went and came back to another.
void Journal::RestorePlaces() {
  std::vector<Ref<Primitive>> went;
  for (const Record& record : records_) {
    Primitive& object = *record.object;
    if (&object == &board_) continue;
    const bool stayed = record.was_on_board && object.on_board && object.order == record.order;
    if (object.on_board && !stayed) board_.Leave(object);
    if (!record.was_on_board || stayed) continue;
    object.order = record.order;
    went.push_back(record.object);
  }
  if (went.empty()) return;
  board_.objects.PutBack(went);
  for (const Ref<Primitive>& object : went) object->EnterBoard(board_);
  board_.index.Rebuild();
}

}  // namespace Ketril::Editor
