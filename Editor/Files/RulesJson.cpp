#include "Editor/Files/RulesJson.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "Editor/Files/LayerNames.h"
#include "Editor/Files/Units.h"
#include "Editor/Model/Board.h"
#include "Interfaces/LayerTypes.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

using Json = nlohmann::json;

constexpr std::pair<TRuleKind, const char*> kKinds[] = {
    {eRule_Clearance, "clearance"},
    {eRule_ComponentClearance, "component-clearance"},
    {eRule_ConfinementConstraint, "room"},
};
// As TObjectClearanceId numbers them.
constexpr const char* kClearanceNames[kObjectClearanceIdCount] = {
    "arc",     "track",       "smd-pad",     "hole-pad",      "via",
    "fill",    "polygon",     "region",      "text",          "hole",
    "outline", "cavity-edge", "cutout-edge", "split-barrier", "split-continuation",
};
constexpr const char* kNetScopes[] = {"different-nets", "same-net", "any-net", "different-pairs",
                                      "same-pair"};

template <std::size_t N>
int IndexOf(const char* const (&names)[N], const std::string& name, const char* what) {
  const auto found = std::ranges::find(names, name);
  if (found == std::end(names)) throw std::runtime_error("\"" + name + "\" is no " + what);
  return static_cast<int>(found - std::begin(names));
}

TCoord Units(const Json& value, const std::string& name) {
  if (!value.is_number()) throw std::runtime_error("\"" + name + "\" needs a number of millimetres");
  const double nm = value.get<double>() * 1e6;
  if (!(std::abs(nm) <= kMaxNanometres)) throw std::runtime_error("\"" + name + "\" is out of range");
  return ToUnits(std::llround(nm));
}
double Millimetres(TCoord units) {
  return static_cast<double>(ToNanometres(units)) / 1e6;
}

void TakeLength(const Json& value, const char* name, TCoord& length) {
  if (value.contains(name)) length = Units(value.at(name), name);
}
void TakeText(const Json& value, const char* name, std::u16string& text) {
  if (value.contains(name)) text = Platform::ToUtf16(value.at(name).get<std::string>());
}

void TakeGaps(const Json& gaps, RuleData& data) {
  for (const auto& [pair, gap] : gaps.items()) {
    // Names have dashes of their own: the one between is where both sides are names.
    for (std::size_t dash = pair.find('-');; dash = pair.find('-', dash + 1)) {
      if (dash == std::string::npos) throw std::runtime_error("\"" + pair + "\" names no two kinds");
      const auto first = std::ranges::find(kClearanceNames, pair.substr(0, dash));
      const auto second = std::ranges::find(kClearanceNames, pair.substr(dash + 1));
      if (first == std::end(kClearanceNames) || second == std::end(kClearanceNames)) continue;
      const auto id = [](const char* const* name) {
        return static_cast<TObjectClearanceId>(name - std::begin(kClearanceNames));
      };
      data.gaps[std::minmax(id(first), id(second))] = Units(gap, pair);
      break;
    }
  }
}

void TakeRoom(const Board& board, const Json& value, RuleData& data) {
  for (const Json& point : value.at("points")) {
    if (!point.is_array() || point.size() != 2) throw std::runtime_error("a point needs two numbers");
    data.region.points.push_back({Units(point[0], "points"), -Units(point[1], "points")});
  }
  if (data.region.points.size() < 3) throw std::runtime_error("a room needs three points or more");
  if (value.contains("layer")) {
    const std::string name = value.at("layer").get<std::string>();
    const TV7_Layer layer = LayerNames(board).Find(name);
    if (layer == TV7_Layer(eV6_NoLayer)) throw std::runtime_error("the board has no layer \"" + name + "\"");
    data.region_layer = layer == TV7_Layer(eV6_BottomLayer) ? eV6_BottomLayer : eV6_TopLayer;
  }
  data.confinement = value.value("confine", "in") == "out" ? eConfineOut : eConfineIn;
  data.lock_components = value.value("lock_components", false);
}

}  // namespace

Ref<Rule> RuleFromJson(const Board& board, const Json& value) {
  const std::string name = value.at("kind").get<std::string>();
  const auto kind = std::ranges::find_if(kKinds, [&](const auto& entry) { return entry.second == name; });
  if (kind == std::end(kKinds)) throw std::runtime_error("\"" + name + "\" is no kind of rule");
  const Ref<Rule> rule = MakeRule(kind->first);
  RuleData& data = rule->data;
  TakeText(value, "name", data.name);
  TakeText(value, "comment", data.comment);
  TakeText(value, "scope1", data.scope1);
  TakeText(value, "scope2", data.scope2);
  data.enabled = value.value("enabled", true);
  data.priority = std::clamp(value.value("priority", 1), 1, 65535);
  if (value.contains("net_scope")) {
    data.net_scope = static_cast<TNetScope>(
        IndexOf(kNetScopes, value.at("net_scope").get<std::string>(), "scope of nets"));
  }
  TakeLength(value, "gap", data.gap);
  TakeLength(value, "horizontal_gap", data.horizontal_gap);
  TakeLength(value, "vertical_gap", data.vertical_gap);
  if (value.contains("gaps")) TakeGaps(value.at("gaps"), data);
  if (kind->first == eRule_ConfinementConstraint) TakeRoom(board, value, data);
  return rule;
}

Json RuleToJson(const Board& board, const RuleData& rule) {
  const auto kind =
      std::ranges::find_if(kKinds, [&](const auto& entry) { return entry.first == rule.rule_kind; });
  if (kind == std::end(kKinds)) return nullptr;
  Json value = {{"kind", kind->second},
                {"name", Platform::ToUtf8(rule.name)},
                {"priority", rule.priority},
                {"enabled", rule.enabled}};
  const auto put = [&](const char* name, const std::u16string& text) {
    if (!text.empty()) value[name] = Platform::ToUtf8(text);
  };
  put("comment", rule.comment);
  put("scope1", rule.scope1);
  put("scope2", rule.scope2);
  if (rule.rule_kind == eRule_Clearance) {
    value["gap"] = Millimetres(rule.gap);
    if (rule.net_scope != eNetScope_DifferentNetsOnly) value["net_scope"] = kNetScopes[rule.net_scope];
    for (const auto& [ids, gap] : rule.gaps) {
      value["gaps"][std::string(kClearanceNames[ids.first]) + "-" + kClearanceNames[ids.second]] =
          Millimetres(gap);
    }
  } else if (rule.rule_kind == eRule_ComponentClearance) {
    value["horizontal_gap"] = Millimetres(rule.horizontal_gap);
    value["vertical_gap"] = Millimetres(rule.vertical_gap);
  } else {
    value["layer"] = LayerNames(board).NameOf(TV7_Layer(rule.region_layer));
    value["confine"] = rule.confinement == eConfineOut ? "out" : "in";
    value["lock_components"] = rule.lock_components;
    for (const TCoordPoint& point : rule.region.points)
      value["points"].push_back({Millimetres(point.x), Millimetres(-point.y)});
  }
  return value;
}

}  // namespace Ketril::Editor
