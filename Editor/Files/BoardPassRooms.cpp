// Rooms of the format's own: rule areas by which components are placed, and what tells their components.
#include <algorithm>
#include <iterator>

#include "Editor/Files/BoardPass.h"
#include "Editor/Rules/Rule.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

constexpr int kDeepestGroup = 100;  // a damaged file may have a group within itself

// A name as a value of a selection.
std::u16string Quoted(const std::u16string& name) {
  std::u16string text = u"\"";
  for (const char16_t c : name) {
    if (c == u'"' || c == u'\\') text += u'\\';
    text += c;
  }
  return text + u"\"";
}

// `in:` a box, y down. It stays the same when the room moves, so that what was in it belongs to it still.
std::u16string WithinText(const TCoordRect& box) {
  std::string text;
  for (const TCoord at : {box.x1, -box.y2, box.x2, -box.y1})
    text += (text.empty() ? "in:" : ",") + FormatMillimetres(ToNanometres(at));
  return Platform::ToUtf16(text);
}

std::u16string ScopeOf(const PlacementArea& area, const TCoordRect& box) {
  if (area.name.empty()) return u"component and " + WithinText(box);
  constexpr const char16_t* kKeys[] = {u"sheet:", u"component-class:", u"group:"};
  static_assert(std::size(kKeys) == std::size(kPlacementWords));
  return std::u16string(u"component and ") + kKeys[static_cast<int>(area.by)] + Quoted(area.name);
}

// The format places by a room and checks nothing against it.
Ref<Rule> RoomOf(Polygon& zone) {
  const PlacementArea& area = zone.data.placement;
  const Ref<Rule> room = MakeRule(eRule_ConfinementConstraint);
  room->DrawBy(zone);
  RuleData& data = room->data;
  data.name = !zone.data.name.empty() ? zone.data.name : !area.name.empty() ? area.name : u"Room";
  data.scope1 = ScopeOf(area, room->Bounds());
  data.enabled = false;
  if (zone.state.layer == TV7_Layer(eV6_BottomLayer)) data.region_layer = eV6_BottomLayer;
  return room;
}

}  // namespace

// `(placement (enabled yes) (sheetname "/Power/"))`
void BoardPass::PlacementFields(PlacementArea& area) {
  area.is_told = true;
  const Enter level(*this);
  EachOnce([&](const Item& item, std::uint64_t key) {
    if (key == "enabled"_word) area.enabled = !in_.HasWord() || in_.Word("yes or no").text != "no";
    const auto by = std::ranges::find(kPlacementWords, item.word.text);
    if (!item.is_list || by == std::end(kPlacementWords) || !in_.HasWord()) return;
    area.by = static_cast<PlacementBy>(by - std::begin(kPlacementWords));
    area.name = Resolved(in_.Word("a name"));
  });
}

// `(component_classes (class "A") (class "B"))`
void BoardPass::ComponentClasses(std::vector<std::u16string>& classes) {
  const Enter level(*this);
  Each([&](const Item&, std::uint64_t key) {
    if (key == "class"_word && in_.HasWord()) classes.push_back(Resolved(in_.Word("a class")));
  });
}

void BoardPass::GroupItem() {
  if (edits_) return;
  FileGroup& group = groups_.emplace_back();
  const Enter level(*this);
  if (in_.HasWord()) group.name = Resolved(in_.Word("a name"));
  EachOnce([&](const Item&, std::uint64_t key) {
    switch (key) {
      case "id"_word:
      case "uuid"_word:
        if (in_.HasWord()) group.id = in_.Word("an identifier").text;
        break;
      case "members"_word:
        while (in_.HasWord()) group.members.push_back(in_.Word("an identifier").text);
        break;
      default:
        break;
    }
  });
}

void BoardPass::NameGroups() {
  std::unordered_map<std::string_view, const FileGroup*> group_of;
  for (const FileGroup& group : groups_) {
    for (const std::string_view member : group.members) group_of.emplace(member, &group);
  }
  const std::string_view text = board_.file.text;
  board_.objects.ForEach({eComponentObject}, [&](Primitive& object) {
    std::vector<std::u16string>& names = As<Component>(&object)->origin.groups;
    std::string_view id = text.substr(object.source_id.begin, object.source_id.end - object.source_id.begin);
    for (int depth = 0; depth < kDeepestGroup && !id.empty(); ++depth) {
      const auto found = group_of.find(id);
      if (found == group_of.end()) break;
      names.push_back(found->second->name);
      id = found->second->id;
    }
  });
}

void BoardPass::AddRooms() {
  if (!groups_.empty()) NameGroups();
  board_.objects.ForEach({ePolyObject}, [&](Primitive& object) {
    Polygon& zone = *As<Polygon>(&object);
    if (zone.data.placement.enabled && !zone.Owner() && !zone.data.rings.empty())
      board_.Load(RoomOf(zone).Get());
  });
}

}  // namespace Ketril::Editor
