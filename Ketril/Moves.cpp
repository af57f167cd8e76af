#include "Ketril/Moves.h"

#include <algorithm>
#include <cmath>

#include "Editor/Model/HitTest.h"
#include "Editor/Rules/Rule.h"
#include "Ketril/Info.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Editor::As;
using Editor::Primitive;

TCoord ToCoord(double value) {
  return static_cast<TCoord>(std::clamp(std::round(value), -2147483647.0, 2147483647.0));
}

TCoordPoint MiddleOf(const TCoordRect& box) {
  return {ToCoord((double(box.x1) + box.x2) / 2), ToCoord((double(box.y1) + box.y2) / 2)};
}

bool HasName(const Primitive& object, const std::string& name) {
  return Platform::EqualsIgnoringAsciiCase(object.Identifier(), Platform::ToUtf16(name));
}

// Its middle, unless something smaller lies there; then that of one of its members. A place where nothing
// else is meant is best; one where no other component is serves those who ask for components.
TCoordPoint ClickOn(Editor::Board& board, const Editor::Component& component) {
  std::vector<TCoordPoint> places = {MiddleOf(component.Bounds())};
  for (const auto& member : component.Members()) places.push_back(MiddleOf(member->Bounds()));
  for (const TObjectSet kinds : {TObjectSet::All(), TObjectSet{eComponentObject}}) {
    const auto place = std::ranges::find_if(places, [&](TCoordPoint at) {
      Editor::HitOptions click;
      click.method = eProcessComponent;
      click.kinds = kinds;
      return Editor::HitObject(board, at, click) == &component;
    });
    if (place != places.end()) return *place;
  }
  return places.front();
}

// As the board file shows a place: y downwards.
nlohmann::ordered_json Numbers(TCoordPoint place, Editor::LengthUnit unit) {
  const double per_unit = unit == Editor::LengthUnit::Millimetre ? 1e7 / 25.4
                          : unit == Editor::LengthUnit::Mil      ? 1e4
                                                                 : 1e7;
  const auto rounded = [&](double value) { return std::round(value / per_unit * 1e6) / 1e6 + 0.0; };
  return {rounded(place.x), rounded(-double(place.y))};
}

std::string Text(TCoordPoint place, Editor::LengthUnit unit) {
  return "(" + LengthText(place.x, unit) + "," + LengthText(-place.y, unit) + ")";
}

}  // namespace

std::optional<TCoordPoint> PlaceOf(Editor::Board& board, const std::string& text, Editor::LengthUnit unit) {
  if (const std::size_t comma = text.find(','); comma != text.npos) {
    const auto x = Editor::ParseLength(std::string_view(text).substr(0, comma), unit);
    const auto y = Editor::ParseLength(std::string_view(text).substr(comma + 1), unit);
    if (x && y) return TCoordPoint{ToCoord(*x), ToCoord(-*y)};
  }
  Editor::Warehouse::Walk walk(board.objects, {eComponentObject, eRuleObject, ePolyObject});
  while (const Primitive* object = walk.Next()) {
    if (!HasName(*object, text)) continue;
    if (const auto* component = As<Editor::Component>(object)) return ClickOn(board, *component);
    if (object->kind == ePolyObject) return object->Reference();
    const auto* rule = As<Editor::Rule>(object);
    if (rule->data.rule_kind == eRule_ConfinementConstraint) return MiddleOf(rule->Bounds());
  }
  return std::nullopt;
}

ComponentPlaces::ComponentPlaces(const Editor::Board& board) {
  board.objects.ForEach({eComponentObject}, [&](Primitive& component) {
    places_.push_back({Ref<Primitive>(&component), component.Reference(), component.Bounds()});
  });
}

std::vector<Move> ComponentPlaces::Moves() const {
  std::vector<Move> moves;
  for (const auto& [component, from, box] : places_) {
    const TCoordPoint to = component->Reference();
    if (component->on_board && to != from)
      moves.push_back({Platform::ToUtf8(component->Identifier()), from, to, box, component->Bounds()});
  }
  return moves;
}

nlohmann::ordered_json MoveTable(const std::vector<Move>& moves, Editor::LengthUnit unit) {
  auto table = nlohmann::ordered_json::array();
  for (const Move& move : moves) {
    table.push_back(
        {{"component", move.component}, {"from", Numbers(move.from, unit)}, {"to", Numbers(move.to, unit)}});
  }
  return table;
}

std::string MoveLines(const std::vector<Move>& moves, Editor::LengthUnit unit) {
  std::string lines;
  for (const Move& move : moves)
    lines += "  " + move.component + " " + Text(move.from, unit) + " -> " + Text(move.to, unit) + "\n";
  return lines;
}

}  // namespace Ketril::Command
