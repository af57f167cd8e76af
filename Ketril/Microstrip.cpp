#include "Ketril/Microstrip.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "Editor/Model/Net.h"
#include "Editor/Model/Shapes.h"
#include "Interfaces/Microstrip.h"
#include "Ketril/Exit.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using nlohmann::ordered_json;

constexpr DialogField kMiterFields[] = {
    {"--inside-miter", "InsideMiter", "FRACTION",
     "How far the inner corner is filled along either track, in track widths: 0 to below 1; without it 0"},
    {"--outside-miter", "OutsideMiter", "FRACTION",
     "The share of the bend's diagonal cut off at the outer corner: 0 to below 1; without it 0"},
};

std::optional<double> Fraction(IParameterList* parameters, const char16_t* name) {
  std::u16string value;
  if (!parameters || !parameters->GetParameter(name, value)) return std::nullopt;
  const std::string text = Platform::ToUtf8(value);
  double fraction = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), fraction);
  if (error != std::errc() || end != text.data() + text.size() || !(fraction >= 0 && fraction < 1))
    throw Failure(kExit_Usage,
                  Platform::ToUtf8(name) + "=" + text + ": expected a fraction from 0 to below 1");
  return fraction;
}

struct AreaUnit {
  const char* name;
  double side;  // of one of it, in board units
};

AreaUnit AreaUnitOf(Editor::LengthUnit unit) {
  switch (unit) {
    case Editor::LengthUnit::Mil:
      return {"mil2", 1e4};
    case Editor::LengthUnit::Inch:
      return {"in2", 1e7};
    default:
      return {"mm2", 1e7 / 25.4};
  }
}

// To three digits behind the point, as few as say the same.
std::string AreaText(double area, Editor::LengthUnit unit) {
  const auto [name, side] = AreaUnitOf(unit);
  const double rounded = std::round(area / (side * side) * 1000) / 1000;
  return ordered_json(rounded).dump() + name;
}

}  // namespace

std::span<const DialogField> MiterFields() {
  return kMiterFields;
}

void MakeMicrostripe(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                     IParameterList* parameters) {
  const auto inside = Fraction(parameters, u"InsideMiter"), outside = Fraction(parameters, u"OutsideMiter");
  if (!inside && !outside) throw Failure(kExit_Usage, "expected --inside-miter, --outside-miter or both");
  const TMicrostripeSettings settings{inside.value_or(0), outside.value_or(0)};
  library.Find<void(IPCB_Board*, const TMicrostripeSettings*)>(export_name)(board, &settings);
}

ordered_json MicrostripSummary(const Editor::Board& board, const std::vector<Editor::Change>& changes,
                               Editor::LengthUnit unit) {
  ordered_json summary{{"outlines", ordered_json::array()}, {"left", 0}};
  for (const Editor::Change& change : changes) {
    const auto* region = Editor::As<Editor::Region>(change.object.Get());
    if (change.kind != Editor::ChangeKind::Added || !region || region->data.rings.empty()) continue;
    const Editor::Net* net = region->GetNet();
    summary["outlines"].push_back({{"layer", Platform::ToUtf8(region->LayerText())},
                                   {"net", net ? Platform::ToUtf8(net->data.name) : ""},
                                   {"corners", region->data.rings.front().points.size()},
                                   {"area", AreaText(Editor::AreaOf(region->data.rings), unit)}});
  }
  std::size_t left = 0;
  board.objects.ForEach({eTrackObject}, [&](const Editor::Primitive& track) {
    if (track.Has(Editor::kFlag_Selected)) ++left;
  });
  summary["left"] = left;
  return summary;
}

std::string MicrostripSummaryText(const ordered_json& summary) {
  std::string text;
  for (const ordered_json& outline : summary["outlines"]) {
    const std::string net = outline["net"].get<std::string>();
    text += "  " + outline["layer"].get<std::string>() + ", " + (net.empty() ? "no net" : net) + ": " +
            outline["corners"].dump() + " corners, " + outline["area"].get<std::string>() + "\n";
  }
  const auto left = summary["left"].get<std::size_t>();
  if (left > 0)
    text += "  " + std::to_string(left) + (left == 1 ? " selected track stays" : " selected tracks stay") +
            ": no right angle with another one of the net and layer\n";
  return text;
}

}  // namespace Ketril::Command
