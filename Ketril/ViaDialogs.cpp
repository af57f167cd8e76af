#include "Ketril/ViaDialogs.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "Editor/Model/Board.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Editor::Board;

constexpr DialogField kStitchFields[] = {
    {"--net", "Stitch_Net", "NAME", "The net whose copper is stitched; without it that of what is selected"},
    {"--grid", "Stitch_Grid", "X[,Y]", "Steps of the grid; without it 2.54mm"},
    {"--offset", "Stitch_Offset", "X,Y", "Of the grid from the board's origin"},
    {"--staggered", "Stitch_Staggered", nullptr, "Every other row is moved by half a step"},
    {"--area", "Stitch_Area", "X,Y,WIDTH,HEIGHT", "Nothing outside this box"},
    {"--layers", "Stitch_Layers", "NAMES", "Copper layers that have to cover each via; without it any two"},
    {"--via", "Stitch_Via", "SIZE/HOLE", "The vias; without it those of the default net class"},
    {"--clearance", "Stitch_Clearance", "GAP", "From other nets, where the rules ask for less"},
    {"--edge", "Stitch_Edge", "GAP", "From the board's edge; without it 0.5mm"},
};
constexpr DialogField kShieldFields[] = {
    {"--shield", "Shield_Shield", "NAME", "The net that is shielded; without it what is selected is"},
    {"--net", "Shield_Net", "NAME", "The net that shields; without it GND"},
    {"--distance", "Shield_Distance", "GAP", "From the shielded copper to the vias; without it 0.254mm"},
    {"--pitch", "Shield_Pitch", "LENGTH", "Along the fence; without it 1.27mm"},
    {"--rows", "Shield_Rows", "1..3", "Rows of vias, a pitch apart"},
    {"--copper", "Shield_Copper", nullptr, "Copper of the net that shields, along the fence"},
    {"--via", "Shield_Via", "SIZE/HOLE", "The vias; without it those of the default net class"},
    {"--clearance", "Shield_Clearance", "GAP", "From other nets, where the rules ask for less"},
    {"--edge", "Shield_Edge", "GAP", "From the board's edge; without it 0.5mm"},
};
constexpr DialogField kUnusedPadsFields[] = {
    {"--of", "UnusedPads_Of", "vias|pads|both", "Which objects; without it both"},
    {"--only-selected", "UnusedPads_OnlySelected", nullptr, "Only selected ones"},
    {"--keep-ends", "UnusedPads_PreserveStartEnd", nullptr, "Copper on the first and the last layer stays"},
    {"--mode", "UnusedPads_Mode", "remove|restore|both", "Without it remove; both restores first"},
};

struct Reader {
  Board& board;
  Editor::LengthUnit unit;

  std::optional<TCoord> Length(std::string_view text) const {
    const auto length = Editor::ParseLength(text, unit);
    if (!length || std::abs(*length) > 2147483647.0) return std::nullopt;
    return static_cast<TCoord>(std::lround(*length));
  }
  // As many lengths as are there, separated by `separator`; none when one is wrong.
  std::vector<TCoord> Lengths(const std::string& text, char separator = ',') const {
    std::vector<TCoord> lengths;
    for (std::size_t from = 0; from <= text.size();) {
      const std::size_t end = std::min(text.find(separator, from), text.size());
      const auto length = Length(std::string_view(text).substr(from, end - from));
      if (!length) return {};
      lengths.push_back(*length);
      from = end + 1;
    }
    return lengths;
  }
  Editor::Net* Net(const std::string& name) const { return board.FindNet(Platform::ToUtf16(name)); }
};

std::optional<bool> YesOrNo(const std::string& text) {
  if (text != "yes" && text != "no") return std::nullopt;
  return text == "yes";
}

// Fields of the part that both share; nothing for other fields.
std::optional<std::string> SetShared(const Reader& read, Editor::ViaSettings& settings,
                                     std::string_view field, const std::string& value) {
  if (field == "Net") {
    Editor::Net* const net = read.Net(value);
    if (!net) return "the board has no net \"" + value + "\"";
    settings.reference->SetNet(net);
    return "";
  }
  if (field == "Via") {
    const std::vector<TCoord> sizes = read.Lengths(value, '/');
    if (sizes.size() != 2 || sizes[1] <= 0 || sizes[0] <= sizes[1])
      return "expected SIZE/HOLE with a hole smaller than the via, as 0.6mm/0.3mm";
    settings.reference->data.size = sizes[0];
    settings.reference->data.hole = sizes[1];
    return "";
  }
  if (field != "Clearance" && field != "Edge") return std::nullopt;
  const auto gap = read.Length(value);
  if (!gap || *gap < 0) return "expected a length of at least 0";
  (field == "Edge" ? settings.edge : settings.clearance) = *gap;
  return "";
}

std::string SetLayers(const Board& board, std::vector<TV7_Layer>& layers, const std::string& value) {
  layers.clear();
  for (std::size_t from = 0; from <= value.size();) {
    const std::size_t end = std::min(value.find(',', from), value.size());
    const std::string name = value.substr(from, end - from);
    const Editor::BoardLayer* const layer = board.FindLayer(std::string_view(name));
    if (!layer || !Editor::IsCopper(layer->id)) return "the board has no copper layer \"" + name + "\"";
    Editor::Include(layers, layer->id, true);
    from = end + 1;
  }
  return "";
}

std::string SetGrid(const Reader& read, Editor::StitchSettings& settings, const std::string& value) {
  const std::vector<TCoord> steps = read.Lengths(value);
  if (steps.empty() || steps.size() > 2 || std::ranges::min(steps) <= 0)
    return "expected one or two lengths above 0, as 2mm or 2mm,3mm";
  settings.grid_x = steps.front();
  settings.grid_y = steps.back();
  return "";
}

std::string SetArea(const Reader& read, Editor::StitchSettings& settings, const std::string& value) {
  const std::vector<TCoord> box = read.Lengths(value);
  if (box.size() != 4 || box[2] <= 0 || box[3] <= 0) return "expected X,Y,WIDTH,HEIGHT, as 100,80,20,15";
  const auto unit_of = [](std::int64_t v) { return Editor::ToCoord(v); };
  settings.area = TCoordRect{box[0], unit_of(-std::int64_t{box[1]} - box[3]), unit_of(std::int64_t{box[0]} + box[2]),
                   unit_of(-std::int64_t{box[1]})};
  return "";
}

std::string_view FieldOf(const std::string& name, std::string_view prefix) {
  return std::string_view(name).substr(std::min(prefix.size(), name.size()));
}

}  // namespace

std::span<const DialogField> StitchFields() {
  return kStitchFields;
}
std::span<const DialogField> ShieldFields() {
  return kShieldFields;
}
std::span<const DialogField> UnusedPadsFields() {
  return kUnusedPadsFields;
}

std::string SetStitchField(Board& board, Editor::StitchSettings& settings, Editor::LengthUnit unit,
                           const std::string& name, const std::string& value) {
  const Reader read{board, unit};
  const std::string_view field = FieldOf(name, "Stitch_");
  if (auto told = SetShared(read, settings, field, value)) return *told;
  if (field == "Grid") return SetGrid(read, settings, value);
  if (field == "Area") return SetArea(read, settings, value);
  if (field == "Layers") return SetLayers(board, settings.layers, value);
  if (field == "Staggered") {
    const auto yes = YesOrNo(value);
    settings.staggered = yes.value_or(settings.staggered);
    return yes ? "" : "expected yes or no";
  }
  if (field != "Offset") return "the dialog has no such field";
  const std::vector<TCoord> offset = read.Lengths(value);
  if (offset.size() != 2) return "expected X,Y";
  settings.offset = {offset[0], Editor::ToCoord(-std::int64_t{offset[1]})};
  return "";
}

std::string SetShieldField(Board& board, Editor::ShieldSettings& settings, Editor::LengthUnit unit,
                           const std::string& name, const std::string& value) {
  const Reader read{board, unit};
  const std::string_view field = FieldOf(name, "Shield_");
  if (auto told = SetShared(read, settings, field, value)) return *told;
  if (field == "Shield") {
    settings.net = read.Net(value);
    return settings.net ? "" : "the board has no net \"" + value + "\"";
  }
  if (field == "Distance" || field == "Pitch") {
    const auto length = read.Length(value);
    if (!length || *length < (field == "Pitch" ? 1 : 0)) return "expected a length above 0";
    (field == "Pitch" ? settings.pitch : settings.distance) = *length;
    return "";
  }
  if (field == "Rows") {
    if (value.size() != 1 || value[0] < '1' || value[0] > '3') return "expected 1, 2 or 3";
    settings.rows = value[0] - '0';
    return "";
  }
  if (field != "Copper") return "the dialog has no such field";
  const auto yes = YesOrNo(value);
  settings.copper = yes.value_or(settings.copper);
  return yes ? "" : "expected yes or no";
}

Editor::Net* NetByDefault(const Board& board, bool of_selection) {
  if (of_selection) {
    for (const Editor::Primitive* object : board.Selected()) {
      if (object->GetNet()) return object->GetNet();
    }
  }
  if (Editor::Net* const ground = board.FindNet(u"GND")) return ground;
  Editor::Net* found = nullptr;
  board.objects.ForEach({eNetObject}, [&](Editor::Primitive& object) {
    auto* const net = Editor::As<Editor::Net>(&object);
    if (!found && net->data.name.find(u"GND") != net->data.name.npos) found = net;
  });
  return found;
}

std::string SetUnusedPadsField(TUnusedPadsOptions& options, const std::string& name,
                               const std::string& value) {
  const std::string_view field = FieldOf(name, "UnusedPads_");
  if (field == "Of") {
    if (value != "vias" && value != "pads" && value != "both") return "expected vias, pads or both";
    options.ProcessVias = value != "pads";
    options.ProcessPads = value != "vias";
    return "";
  }
  if (field == "Mode") {
    if (value != "remove" && value != "restore" && value != "both") return "expected remove, restore or both";
    options.Mode = value == "remove"    ? eUnusedPads_Remove
                   : value == "restore" ? eUnusedPads_Restore
                                        : eUnusedPads_RestoreAndRemove;
    return "";
  }
  const auto yes = YesOrNo(value);
  if (field != "OnlySelected" && field != "PreserveStartEnd") return "the dialog has no such field";
  if (!yes) return "expected yes or no";
  (field == "OnlySelected" ? options.OnlySelected : options.PreserveStartEnd) = *yes;
  return "";
}

}  // namespace Ketril::Command
