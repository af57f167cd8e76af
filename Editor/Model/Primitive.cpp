#include "Editor/Model/Primitive.h"

#include <random>
#include <string_view>
#include <utility>

#include "Editor/Model/Board.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

// `part` is null for the object itself, which must not hold itself alive.
struct EditPart {
  Ref<Primitive> part;
  std::unique_ptr<Snapshot> before;
};

struct Primitive::Rare {
  std::u16string unique_id;
  MaskData mask;
  std::int32_t edit_depth = 0;
  std::vector<EditPart> edit_parts;  // the states at the first begin
};

namespace {

template <class Visit>
void VisitWithMembers(Primitive& primitive, const Visit& visit) {
  visit(primitive);
  if (const auto* members = primitive.MemberList()) {
    for (const Ref<Primitive>& member : *members) VisitWithMembers(*member, visit);
  }
}

}  // namespace

std::u16string NewIdentifier() {
  thread_local std::mt19937_64 random{std::random_device{}()};
  constexpr std::string_view kForm = "xxxxxxxx-xxxx-4xxx-vxxx-xxxxxxxxxxxx";
  std::u16string id;
  for (const char c : kForm) {
    const auto digit = static_cast<unsigned>(random() >> 60);
    id += c == 'x' ? u"0123456789abcdef"[digit] : c == 'v' ? u"89ab"[digit % 4] : static_cast<char16_t>(c);
  }
  return id;
}

Primitive::Primitive(TObjectId kind) : kind(kind) {}

Primitive::~Primitive() {
  if (net_) net_->Leave(this);
  if (owner_) owner_->Forget(this);
  if (board && !on_board && kind != eBoardObject) board->StopTrying(*this);
}

Primitive::Rare& Primitive::EditRare() const {
  if (!rare_) rare_ = std::make_unique<Rare>();
  return *rare_;
}

void Primitive::SetNet(Net* net) {
  if (net == net_.Get()) return;
  if (net_) net_->Leave(this);
  net_ = Ref<Net>(net);
  if (net) net->Join(this);
}

std::u16string Primitive::UniqueId() const {
  if (rare_ && !rare_->unique_id.empty()) return rare_->unique_id;
  if (!source_id.IsEmpty() && board && source_id.end <= board->file.text.size()) {
    return Platform::ToUtf16(
        std::string_view(board->file.text).substr(source_id.begin, source_id.end - source_id.begin));
  }
  return EditRare().unique_id = NewIdentifier();
}

void Primitive::SetUniqueId(const std::u16string& id) {
  EditRare().unique_id = id;
}

void Primitive::AssignUniqueId(const std::u16string& id) {
  UniqueId();  // so that there is one to restore
  Write([&] { SetUniqueId(id); });
}

void Primitive::EnterBoard(Board& on) {
  board = &on;
  on_board = true;
  if (net_) net_->Join(this);
}

void Primitive::LeaveBoard() {
  if (!source_id.IsEmpty()) SetUniqueId(UniqueId());  // the text that has it stays with the board
  if (net_) net_->Leave(this);
  board = nullptr;
  on_board = false;
}

void Primitive::Record() {
  // A member may be off the board of its group.
  const Primitive* part = this;
  while (!part->board && part->owner_) part = part->owner_;
  if (part->board && part->board->journal.IsRecording()) part->board->journal.RecordBefore(*this);
}

void Primitive::BeforeWrite() {
  Record();
  for (Primitive* changed = this; changed; changed = changed->owner_) changed->file_changed = true;
}

void Primitive::AfterWrite() {
  if (on_board) board->index.Touch(*this);
}

void Primitive::BeforeWriteWithMembers() {
  VisitWithMembers(*this, [](Primitive& part) {
    part.Record();
    part.file_changed = true;
  });
  BeforeWrite();
}

void Primitive::AfterWriteWithMembers() {
  // The members may be on the board without their group.
  if (on_board || !MemberList()) return AfterWrite();
  VisitWithMembers(*this, [](Primitive& part) { part.AfterWrite(); });
}

void Primitive::SetFlag(std::uint32_t flag, bool on) {
  if ((flag & kScratchFlags) == 0) return Write([&] { Set(flag, on); });
  Set(flag, on);
  if (flag == kFlag_Selected && on_board) board->SelectionChanged();
}

void Primitive::MirrorLayers() {
  state.layer = MirroredLayer(state.layer, board);
}

void Primitive::ChangeLayer(TV7_Layer layer) {
  state.layer = layer;
}

Primitive::Saved Primitive::SaveCore() const {
  Saved saved{state, Ref<Primitive>(net_.Get()), file_changed, nullptr};
  if (rare_) saved.rare = std::make_unique<SavedRare>(SavedRare{rare_->unique_id, rare_->mask});
  return saved;
}

void Primitive::RestoreCore(const Saved& saved) {
  const std::uint32_t scratch = state.flags & kScratchFlags;
  state = saved.state;
  state.flags = (state.flags & ~kScratchFlags) | scratch;
  SetNet(As<Net>(saved.net.Get()));
  file_changed = saved.file_changed;
  // An identifier that was made since then stays: it was given out.
  if (saved.rare && !saved.rare->unique_id.empty()) SetUniqueId(saved.rare->unique_id);
  if (rare_) rare_->mask = saved.rare ? saved.rare->mask : MaskData{};
}

void Primitive::CopyCoreFrom(const Primitive& other) {
  state = other.state;
  SetNet(other.net_.Get());
  if (other.rare_ && other.rare_->mask != MaskData{}) EditRare().mask = other.rare_->mask;
}

const MaskData& Primitive::Mask() const {
  static const MaskData none;
  return rare_ ? rare_->mask : none;
}

MaskData& Primitive::EditMask() {
  return EditRare().mask;
}

void Primitive::SetMaskValue(TCoord MaskData::*field, TCoord value) {
  if (Mask().*field != value) Write([&] { EditMask().*field = value; });
}

void Primitive::SetMaskMode(TMaskExpansionMode MaskData::*field, TMaskExpansionMode value) {
  if (Mask().*field != value) Write([&] { EditMask().*field = value; });
}

Ref<IPCB_Net> Primitive::NetInterface() const {
  return Ref<IPCB_Net>(net_.Get());
}

Status Primitive::AssignNet(IPCB_Net* value) {
  Net* net = As<Net>(FromInterface(value));
  if (value && !net) return Status::InvalidArgument;
  if (net && (kind == eNetObject || kind == eBoardObject)) return Status::InvalidArgument;
  if (net == GetNet()) return Status::Ok;
  Write([&] { SetNet(net); });
  return Status::Ok;
}

Ref<IPCB_Board> Primitive::BoardInterface() const {
  return Ref<IPCB_Board>(board);
}

Status Primitive::AssignBoard(IPCB_Board* value) {
  Board* other = As<Board>(FromInterface(value));
  if ((value && !other) || kind == eBoardObject) return Status::InvalidArgument;
  if (other == board) return Status::Ok;
  if (on_board) return Status::Failure;
  if (board) board->StopTrying(*this);
  if (other) other->TryOn(*this);
  return Status::Ok;
}

IInterface* Primitive::QueryOwner(const InterfaceId& id) const {
  return owner_ ? owner_->AsInterface()->QueryInterface(id) : nullptr;
}

Status Primitive::AssignOwner(const InterfaceId& id, IPCB_Primitive* value) {
  Primitive* primitive = FromInterface(value);
  if (value && (!primitive || !primitive->MemberList())) return Status::InvalidArgument;
  auto* group = static_cast<Group*>(primitive);
  if (group == owner_) return Status::Ok;
  if (!group && !Ref<IInterface>::Adopt(QueryOwner(id))) return Status::Ok;
  if (group && !group->CanOwn(*this)) return Status::InvalidArgument;
  const Ref<Primitive> keep(this);
  Group* old_owner = owner_;
  if (old_owner) old_owner->BeforeWrite();
  BeforeWrite();
  if (old_owner) old_owner->Forget(this);
  if (group) group->NoteOwned(this);
  AfterWrite();
  if (old_owner) old_owner->AfterWrite();
  return Status::Ok;
}

void Primitive::TurnBy(double degrees) {
  if (degrees == 0) return;
  WriteWithMembers([&] { Transform(PlaneMap::Rotation(Reference(), degrees)); });
}

bool Primitive::IsMoveable() const {
  return !Has(kFlag_Locked) && !(owner_ && owner_->Has(kFlag_Locked));
}

void Primitive::MoveBy(std::int64_t dx, std::int64_t dy) {
  if (dx == 0 && dy == 0) return;
  WriteWithMembers([&] { Transform(PlaneMap::Translation(dx, dy)); });
}

void Primitive::MoveTo(TCoordPoint place) {
  const TCoordPoint from = Reference();
  MoveBy(std::int64_t{place.x} - from.x, std::int64_t{place.y} - from.y);
}

void Primitive::BeginEdit() {
  Rare& rare = EditRare();
  if (rare.edit_depth++ > 0) return;
  VisitWithMembers(*this, [&](Primitive& part) {
    rare.edit_parts.push_back({&part == this ? Ref<Primitive>() : Ref<Primitive>(&part), part.Save()});
  });
}

// Without a begin there is nothing to end.
void Primitive::EndEdit() {
  if (rare_ && rare_->edit_depth > 0 && --rare_->edit_depth == 0) rare_->edit_parts.clear();
}

void Primitive::CancelEdit() {
  if (!rare_ || rare_->edit_depth == 0) return;
  for (const EditPart& saved : rare_->edit_parts) {
    Primitive& part = saved.part ? *saved.part : *this;
    part.Restore(*saved.before);
    part.AfterWrite();
  }
  EndEdit();
}

const char* KindName(TObjectId kind) {
  static constexpr const char* kNames[kObjectIdCount] = {"Object",
                                                         "Arc",
                                                         "Pad",
                                                         "Via",
                                                         "Track",
                                                         "Text",
                                                         "Fill",
                                                         "Connection",
                                                         "Net",
                                                         "Component",
                                                         "Polygon",
                                                         "Region",
                                                         "Component Body",
                                                         "Dimension",
                                                         "Coordinate",
                                                         "Class",
                                                         "Rule",
                                                         "From-To",
                                                         "Differential Pair",
                                                         "Violation",
                                                         "Embedded Object",
                                                         "Embedded Board",
                                                         "Split Plane",
                                                         "Trace",
                                                         "Spare Via",
                                                         "Board",
                                                         "Board Outline"};
  return kind < kObjectIdCount ? kNames[kind] : kNames[eNoObject];
}

Primitive* FromInterface(IInterface* object) {
  return Probe<Primitive>(object).Get();
}

}  // namespace Ketril::Editor
