#include "Editor/Model/Rooms.h"

#include "Editor/Files/LayerNames.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/HitTest.h"

namespace Ketril::Editor {

namespace {

bool LiesIn(const Primitive& object, const CopperShape& room) {
  const TCoordRect box = Ordered(object.Bounds());
  for (const TCoordPoint corner :
       {TCoordPoint{box.x1, box.y1}, {box.x2, box.y1}, {box.x1, box.y2}, {box.x2, box.y2}}) {
    if (!Covers(room, corner)) return false;
  }
  return true;
}

// What may go along with a room: of the rest either a group moves it, or nobody should.
bool MayGoAlong(const Primitive& object) {
  return !object.Owner() && HasPlace(object.kind) && object.kind != eConnectionObject &&
         object.state.layer != kEdgeLayer;
}

bool IsUnion(Primitive& object) {
  return bool(Probe<IPCB_SmartUnionObject>(object.AsInterface()));
}

Status AddAll(IInterfaceList* list, const std::vector<Primitive*>& objects) {
  if (!list) return Status::Ok;
  for (Primitive* object : objects) {
    if (const Status status = list->Add(object->AsInterface()); Failed(status)) return status;
  }
  return Status::Ok;
}

}  // namespace

CopperShape ShapeOfRoom(const Rule& rule) {
  const Ring& region = rule.Region();
  if (rule.data.rule_kind != eRule_ConfinementConstraint || region.points.empty()) return {};
  Area area;
  Spots& ring = area.outer.emplace_back();
  for (const TCoordPoint point : region.points) ring.push_back({double(point.x), double(point.y)});
  return ShapeOf({std::move(area)});
}

RoomContents ContentsOf(const Board& board, const Rule& room, bool by_scope, bool only_selected) {
  RoomContents contents;
  const CopperShape shape = ShapeOfRoom(room);
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    if (&object == room.Zone() || (only_selected && !object.Has(kFlag_Selected))) return;
    if (object.kind == eComponentObject) {
      const bool lies_in = LiesIn(object, shape);
      if (by_scope ? room.Scope1Has(&object) : lies_in)
        contents.components.push_back(&object);
      else if (lies_in)
        contents.others.push_back(&object);
    } else if (MayGoAlong(object) && LiesIn(object, shape)) {
      (IsUnion(object) ? contents.unions : contents.free_objects).push_back(&object);
    }
  });
  return contents;
}

Status TellRoomContents(const Board& board, IPCB_ConfinementConstraint* room, bool by_scope,
                        bool only_selected, bool unions_apart, IInterfaceList* components,
                        IInterfaceList* others, IInterfaceList* free_objects, IInterfaceList* unions) {
  const Rule* const rule = As<Rule>(FromInterface(room));
  if (!rule) return Status::InvalidArgument;
  const RoomContents contents = ContentsOf(board, *rule, by_scope, only_selected);
  Status status = AddAll(components, contents.components);
  if (!Failed(status)) status = AddAll(others, contents.others);
  if (!Failed(status)) status = AddAll(free_objects, contents.free_objects);
  if (!Failed(status)) status = AddAll(unions_apart ? unions : free_objects, contents.unions);
  return status;
}

LooseGroup::LooseGroup() = default;

std::vector<Primitive*> LooseGroup::ListMembers() const {
  std::vector<Primitive*> members;
  for (const Ref<Primitive>& member : listed_) members.push_back(member.Get());
  return members;
}

Primitive* LooseGroup::MemberAt(std::int32_t index) const {
  const auto place = static_cast<std::size_t>(index);
  return place < listed_.size() ? listed_[place].Get() : nullptr;
}

bool LooseGroup::HasMember(const Primitive& primitive) const {
  return known_.contains(&primitive);
}

TCoordRect LooseGroup::Bounds() const {
  Extent extent;
  for (const Ref<Primitive>& member : listed_) extent.Add(Ordered(member->Bounds()));
  return extent.Rect();
}

void LooseGroup::Transform(const PlaneMap& map) {
  for (const Ref<Primitive>& member : listed_) member->Transform(map);
}

Status LooseGroup::Register(Primitive* member) {
  if (!member || !CanOwn(*member)) return Status::InvalidArgument;
  if (known_.insert(member).second) listed_.emplace_back(member);
  return Status::Ok;
}

}  // namespace Ketril::Editor
