#include "Ketril/Info.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>
#include <vector>

#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Editor::Board;
using Editor::Primitive;
using nlohmann::ordered_json;
using Platform::ToUtf8;

struct UnitFacts {
  const char* suffix;
  double per_unit;
  double rounding;  // digits that the file's own resolution of a nanometre can fill
};

UnitFacts FactsOf(LengthUnit unit) {
  switch (unit) {
    case LengthUnit::Mil:
      return {"mil", 1e-4, 1e3};
    case LengthUnit::Inch:
      return {"in", 1e-7, 1e6};
    case LengthUnit::Millimetre:
      break;
  }
  return {"mm", 2.54e-6, 1e5};
}

double Length(TCoord length, LengthUnit unit) {
  const UnitFacts facts = FactsOf(unit);
  return std::round(length * facts.per_unit * facts.rounding) / facts.rounding;
}

std::string LayerName(const Board& board, TV7_Layer layer) {
  if (layer == eV6_MultiLayer) return "all copper";
  const Editor::BoardLayer* entry = board.FindLayer(layer);
  return entry ? entry->file_name : "layer " + std::to_string(layer.ID);
}

struct NetFacts {
  std::int64_t pads = 0, vias = 0;
  double length = 0;
};

void AddNet(NetFacts& facts, const Primitive& object) {
  if (object.kind == ePadObject) ++facts.pads;
  if (object.kind == eViaObject) ++facts.vias;
  if (const auto* track = Editor::As<Editor::Track>(&object)) {
    facts.length +=
        std::hypot(double(track->data.p2.x) - track->data.p1.x, double(track->data.p2.y) - track->data.p1.y);
  }
}

ordered_json Outline(const Board& board, LengthUnit unit) {
  const auto outline = board.Outline();
  if (!outline) return nullptr;
  const TCoordRect box = outline->Bounds();
  return {{"width", Length(box.x2 - box.x1, unit)}, {"height", Length(box.y2 - box.y1, unit)}};
}

std::string Number(const ordered_json& value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.10g", value.get<double>());
  return text;
}

}  // namespace

std::string LengthText(TCoord length, LengthUnit unit) {
  char text[40];
  std::snprintf(text, sizeof text, "%.10g%s", Length(length, unit), FactsOf(unit).suffix);
  return text;
}

ordered_json BoardInfo(Board& board, LengthUnit unit) {
  std::array<std::int64_t, kObjectIdCount> kinds{};
  std::map<TV7_Layer, std::int64_t> layers;
  std::map<const Editor::Net*, NetFacts> nets;
  std::int64_t free_objects = 0, selected = 0, teardrops = 0;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    ++kinds[object.kind];
    if (const auto* net = Editor::As<Editor::Net>(&object)) {
      nets[net];
      return;
    }
    ++layers[object.state.layer];
    if (!object.Owner()) ++free_objects;
    if (object.Has(Editor::kFlag_Selected)) ++selected;
    if (object.Has(Editor::kFlag_TearDrop)) ++teardrops;
    if (object.GetNet()) AddNet(nets[object.GetNet()], object);
  });

  ordered_json info;
  info["file"] = board.file.path;
  info["version"] = board.file.version;
  if (!board.file.title.empty()) info["title"] = ToUtf8(board.file.title);
  info["unit"] = FactsOf(unit).suffix;
  info["outline"] = Outline(board, unit);
  info["copper_layers"] = board.CopperLayers().size();
  info["free_objects"] = free_objects;
  info["teardrops"] = teardrops;
  for (int kind = 0; kind < kObjectIdCount; ++kind) {
    if (kinds[kind]) info["kinds"][Editor::KindName(static_cast<TObjectId>(kind))] = kinds[kind];
  }
  for (const auto& [layer, count] : layers) info["layers"][LayerName(board, layer)] = count;

  std::vector<std::pair<std::string, const NetFacts*>> sorted;
  sorted.reserve(nets.size());
  for (const auto& [net, facts] : nets) sorted.emplace_back(ToUtf8(net->data.name), &facts);
  std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  info["nets"] = ordered_json::array();
  for (const auto& [name, facts] : sorted) {
    const double length = std::min(facts->length, 2147483647.0);
    info["nets"].push_back({{"name", name},
                            {"pads", facts->pads},
                            {"vias", facts->vias},
                            {"track_length", Length(static_cast<TCoord>(length), unit)}});
  }
  return info;
}

std::string BoardInfoText(const ordered_json& info) {
  std::ostringstream out;
  const std::string unit = info["unit"];
  out << info["file"].get<std::string>() << "  (version " << info["version"] << ")\n";
  if (info.contains("title")) out << "Title           " << info["title"].get<std::string>() << "\n";
  if (!info["outline"].is_null()) {
    out << "Size            " << Number(info["outline"]["width"]) << " x "
        << Number(info["outline"]["height"]) << " " << unit << "\n";
  } else {
    out << "Size            not known: the board has no closed outline\n";
  }
  out << "Copper layers   " << info["copper_layers"] << "\n";
  const auto table = [&](const char* title, const ordered_json& rows) {
    out << "\n" << title << "\n";
    for (const auto& [name, count] : rows.items()) {
      char line[120];
      std::snprintf(line, sizeof line, "  %-24s %8lld\n", name.c_str(),
                    static_cast<long long>(count.get<std::int64_t>()));
      out << line;
    }
  };
  if (info.contains("kinds")) table("Objects", info["kinds"]);
  if (info.contains("layers")) table("By layer", info["layers"]);
  if (!info["nets"].empty()) {
    out << "\nNets                            pads     vias   tracks (" << unit << ")\n";
    for (const auto& net : info["nets"]) {
      char line[400];
      std::snprintf(
          line, sizeof line, "  %-24.200s %8lld %8lld %13s\n", net["name"].get<std::string>().c_str(),
          static_cast<long long>(net["pads"].get<std::int64_t>()),
          static_cast<long long>(net["vias"].get<std::int64_t>()), Number(net["track_length"]).c_str());
      out << line;
    }
  }
  return out.str();
}

ordered_json ViolationRecord(const Editor::Violation& violation, LengthUnit unit) {
  constexpr const char* kKinds[] = {"clearance", "hole clearance", "keep-out", "component clearance", "room"};
  return {{"kind", kKinds[static_cast<int>(violation.kind)]},
          {"first", ToUtf8(violation.first->Describe())},
          {"second", ToUtf8(violation.second->Describe())},
          {"layer", LayerName(*violation.first->board, violation.layer)},
          {"gap", Length(static_cast<TCoord>(violation.gap), unit)},
          {"asked", Length(violation.asked, unit)}};
}

ordered_json ObjectTable(Board& board, const Editor::Selection& selection, LengthUnit unit) {
  ordered_json table = ordered_json::array();
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    if (!selection.Matches(object, board)) return;
    ordered_json row{{"kind", Editor::KindName(object.kind)},
                     {"name", ToUtf8(object.Identifier())},
                     {"layer", LayerName(board, object.state.layer)}};
    if (object.GetNet()) row["net"] = ToUtf8(object.GetNet()->data.name);
    if (Editor::HasPlace(object.kind)) {
      // Places as the board file has them: y down.
      const TCoordRect box = object.Bounds();
      row["box"] = {Length(box.x1, unit), Length(-box.y2, unit), Length(box.x2, unit), Length(-box.y1, unit)};
    }
    table.push_back(std::move(row));
  });
  return table;
}

std::string ObjectLines(Board& board, const Editor::Selection& selection) {
  std::string lines;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    if (!selection.Matches(object, board)) return;
    lines += ToUtf8(object.Describe()) + "\n";
  });
  return lines;
}

}  // namespace Ketril::Command
