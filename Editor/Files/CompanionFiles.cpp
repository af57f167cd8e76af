#include "Editor/Files/CompanionFiles.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "Editor/Files/FileStyle.h"
#include "Editor/Files/RulesJson.h"
#include "Editor/Files/Units.h"
#include "Editor/Vias/ViaUnions.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

using Json = nlohmann::json;

std::filesystem::path Beside(std::filesystem::path board, const char* extension) {
  return board.replace_extension(extension);
}

TCoord LengthIn(const Json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_number()) return 0;
  const double nm = found->get<double>() * 1e6;
  return std::abs(nm) <= kMaxNanometres ? ToUnits(std::llround(nm)) : 0;
}

std::u16string TextOf(const Json& value) {
  return Platform::ToUtf16(value.get<std::string>());
}

// The list or object of that name; an empty one when there is none, or null.
const Json& PartOf(const Json& object, const char* name) {
  static const Json kNone = Json::array();
  const auto found = object.find(name);
  return found == object.end() || found->is_null() ? kNone : *found;
}

}  // namespace

std::filesystem::path ProjectPath(const std::filesystem::path& board) {
  return Beside(board, ".kicad_pro");
}

std::filesystem::path ExtrasPath(const std::filesystem::path& board) {
  return Beside(board, ".ketril.json");
}

void ReadProject(Board& board, const std::string& text) {
  const Json project = Json::parse(text);
  const Json& rules = PartOf(PartOf(PartOf(project, "board"), "design_settings"), "rules");
  if (rules.contains("min_hole_clearance"))
    board.setup.hole_clearance = LengthIn(rules, "min_hole_clearance");
  const Json& settings = PartOf(project, "net_settings");
  std::vector<Ref<ObjectClass>> classes;
  const auto class_named = [&](const std::u16string& name) -> ObjectClass* {
    for (const Ref<ObjectClass>& known : classes) {
      if (known->data.name == name) return known.Get();
    }
    return nullptr;
  };
  for (const Json& entry : PartOf(settings, "classes")) {
    const Ref<ObjectClass> net_class = MakeHost<ObjectClass>();
    ObjectClassData& data = net_class->data;
    data.name = TextOf(entry.at("name"));
    data.sizes = {LengthIn(entry, "clearance"), LengthIn(entry, "track_width"),
                  LengthIn(entry, "via_diameter"), LengthIn(entry, "via_drill")};
    for (const Json& net : PartOf(entry, "nets")) data.members.push_back(TextOf(net));
    classes.push_back(net_class);
  }
  for (const Json& entry : PartOf(settings, "netclass_patterns")) {
    ObjectClass* const net_class = class_named(TextOf(entry.at("netclass")));
    if (net_class) net_class->data.patterns.push_back(TextOf(entry.at("pattern")));
  }
  for (const auto& [net, names] : PartOf(settings, "netclass_assignments").items()) {
    for (const Json& name : names.is_array() ? names : Json::array({names})) {
      ObjectClass* const net_class = name.is_string() ? class_named(TextOf(name)) : nullptr;
      if (net_class) net_class->data.members.push_back(Platform::ToUtf16(net));
    }
  }
  for (const Ref<ObjectClass>& net_class : classes) board.Load(net_class.Get());
}

namespace {

// {"channel": ["room", …]}
void ReadChannels(Board& board, const Json& channels) {
  for (const auto& [name, rooms] : channels.items()) {
    const Ref<ObjectClass> channel = MakeHost<ObjectClass>();
    channel->data.name = Platform::ToUtf16(name);
    channel->data.member_kind = eClassMemberKind_DesignChannel;
    for (const Json& room : rooms) channel->data.members.push_back(TextOf(room));
    board.Load(channel.Get());
  }
}

Json ChannelsOf(const Board& board) {
  Json channels = Json::object();
  board.objects.ForEach({eClassObject}, [&](const Primitive& object) {
    const ObjectClassData& data = As<ObjectClass>(&object)->data;
    if (data.member_kind != eClassMemberKind_DesignChannel) return;
    Json& rooms = channels[Platform::ToUtf8(data.name)] = Json::array();
    for (const std::u16string& room : data.members) rooms.push_back(Platform::ToUtf8(room));
  });
  return channels;
}

constexpr const char* kStitching = "stitching";
constexpr const char* kShielding = "shielding";

// Several have one identifier where the file has an arc in pieces.
using ObjectsById = std::unordered_multimap<std::string_view, Primitive*>;

template <class Visit>
void ForEachNamed(const ObjectsById& objects, const std::string& id, Visit visit) {
  const auto [begin, end] = objects.equal_range(id);
  for (auto object = begin; object != end; ++object) visit(*object->second);
}

void ReadViaUnions(Board& board, const Json& unions, const ObjectsById& objects) {
  for (const Json& value : unions) {
    const std::string kind = value.value("kind", "");
    Ref<Primitive> made;
    if (kind == kStitching) {
      const Ref<Stitching> stitching = MakeHost<Stitching>();
      stitching->data.options =
          MakeHost<StitchOptions>(board.Iterators(), board.Unions().StitchDefaults()->Copy());
      made = Ref<Primitive>(stitching.Get());
    } else if (kind == kShielding) {
      const Ref<Shielding> shielding = MakeHost<Shielding>();
      shielding->data.options =
          MakeHost<ShieldOptions>(board.Iterators(), board.Unions().ShieldDefaults()->Copy());
      ShieldSettings& settings = shielding->data.options->settings;
      settings.net = board.FindNet(Platform::ToUtf16(value.value("net", "")));
      for (const Json& id : PartOf(value, "objects")) {
        const auto object = objects.find(id.get_ref<const std::string&>());
        if (object != objects.end()) settings.primitives.emplace_back(object->second);
      }
      made = Ref<Primitive>(shielding.Get());
    } else {
      continue;
    }
    made->state.union_index = value.at("index").get<std::int32_t>();
    board.Unions().Load(made);
  }
}

Json ViaUnionsOf(const Board& board) {
  Json unions = Json::array();
  for (ViaUnion* object : board.Unions().List()) {
    Json value = {{"index", object->Self().state.union_index}, {"kind", kStitching}};
    if (const auto* shielding = dynamic_cast<const Shielding*>(&object->Self())) {
      const ShieldSettings& settings = shielding->data.options->settings;
      value["kind"] = kShielding;
      if (settings.net) value["net"] = Platform::ToUtf8(settings.net->data.name);
      Json& objects = value["objects"] = Json::array();
      for (const Ref<Primitive>& primitive : settings.primitives) {
        if (primitive->on_board) objects.push_back(Platform::ToUtf8(primitive->UniqueId()));
      }
    }
    unions.push_back(std::move(value));
  }
  return unions;
}

}  // namespace

void ReadExtras(Board& board, const std::string& text) {
  const Json extras = Json::parse(text);
  if (!extras.is_object() || extras.value("version", 0) != 1) {
    throw std::runtime_error("it is of another version than 1");
  }
  board.file.extras = text;
  std::size_t number = 0;
  for (const Json& value : PartOf(extras, "rules")) {
    ++number;
    try {
      board.Load(RuleFromJson(board, value).Get());
    } catch (const std::exception& error) {
      throw std::runtime_error("rule " + std::to_string(number) + ": " + error.what());
    }
  }
  ObjectsById objects;
  const std::string_view board_text = board.file.text;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    const SourceSpan id = object.source_id;
    if (!id.IsEmpty()) objects.emplace(board_text.substr(id.begin, id.end - id.begin), &object);
  });
  for (const auto& [id, index] : PartOf(extras, "unions").items()) {
    const auto union_index = index.get<std::int32_t>();
    ForEachNamed(objects, id, [&](Primitive& object) { object.state.union_index = union_index; });
  }
  for (const Json& id : PartOf(extras, "teardrops")) {
    ForEachNamed(objects, id.get_ref<const std::string&>(),
                 [](Primitive& object) { object.Set(kFlag_TearDrop, true); });
  }
  ReadChannels(board, PartOf(extras, "channels"));
  ReadViaUnions(board, PartOf(extras, "via_unions"), objects);
}

std::string ExtrasText(const Board& board) {
  Json unions = Json::object(), teardrops = Json::array(), rules = Json::array();
  std::unordered_set<std::string> told;
  board.objects.ForEach(TObjectSet::All(), [&](const Primitive& object) {
    if (const Rule* rule = As<Rule>(&object); rule && rule->data.net_class.empty() && !rule->Zone()) {
      Json value = RuleToJson(board, rule->data);
      if (!value.is_null()) rules.push_back(std::move(value));
    }
    if (!FileWords::NeedsIdentifier(object)) return;
    const std::string id = Platform::ToUtf8(object.UniqueId());
    if (object.state.union_index != 0) unions[id] = object.state.union_index;
    const bool is_line = object.kind == eTrackObject || object.kind == eArcObject;
    if (is_line && object.Has(kFlag_TearDrop) && told.insert(id).second) teardrops.push_back(id);
  });
  Json extras = board.file.extras.empty() ? Json::object() : Json::parse(board.file.extras);
  const auto put = [&](const char* name, Json value) {
    if (value.empty()) {
      extras.erase(name);
    } else {
      extras[name] = std::move(value);
    }
  };
  put("rules", std::move(rules));
  put("unions", std::move(unions));
  put("teardrops", std::move(teardrops));
  put("channels", ChannelsOf(board));
  put("via_unions", ViaUnionsOf(board));
  extras.erase("version");
  if (extras.empty()) return {};
  extras["version"] = 1;
  return extras.dump(2) + "\n";
}

}  // namespace Ketril::Editor
