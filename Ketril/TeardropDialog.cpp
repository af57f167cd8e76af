#include "Ketril/TeardropDialog.h"

#include <algorithm>
#include <charconv>
#include <istream>
#include <ostream>
#include <string_view>

namespace Ketril::Command {

namespace {

constexpr const char* kRows[] = {"TeardropParam_PercentForVias", "TeardropParam_PercentForPads",
                                 "TeardropParam_PercentForTracks", "TeardropParam_PercentForTJunctions"};
constexpr const char* kFlags = "TeardropParam_FlagsEx";

constexpr DialogField kLegacyFields[] = {
    {"--style", "LegacyTeardrop_Style", "arcs|tracks", "What they are made of; without it arcs"},
    {"--of", "LegacyTeardrop_Of", "KINDS", "Of pads,vias,tracks those that are visited; without it all"},
    {"--only-selected", "LegacyTeardrop_OnlySelected", nullptr, "Only selected ones"},
    {"--remove", "LegacyTeardrop_Remove", nullptr, "Remove teardrops, also those of tear-drops"},
    {"--force", "LegacyTeardrop_Force", nullptr, "Also those that violate a clearance"},
    {"--report", "LegacyTeardrop_Report", nullptr, "A report beside the changed board"},
};

// Of words with commas between; false when one is none of the three.
bool SetVisited(TTearDropOptions& options, std::string_view value) {
  options.AllPads = options.AllVias = options.AllTracks = false;
  for (std::size_t from = 0; from <= value.size();) {
    const std::size_t end = std::min(value.find(',', from), value.size());
    const std::string_view word = value.substr(from, end - from);
    from = end + 1;
    bool* const kind = word == "pads"     ? &options.AllPads
                       : word == "vias"   ? &options.AllVias
                       : word == "tracks" ? &options.AllTracks
                                          : nullptr;
    if (!kind) return false;
    *kind = true;
  }
  return true;
}

std::string Trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r");
  if (begin == text.npos) return {};
  return std::string(text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin));
}

}  // namespace

std::vector<std::pair<std::string, double>> TeardropFields(const TTeardropOptionsEx& options) {
  std::vector<std::pair<std::string, double>> fields;
  for (int row = 0; row < 4; ++row) {
    fields.emplace_back(std::string(kRows[row]) + "_Length", options.SizePercentArray[row].Length);
    fields.emplace_back(std::string(kRows[row]) + "_Width", options.SizePercentArray[row].Width);
  }
  fields.emplace_back(kFlags, options.Flags);
  return fields;
}

bool SetTeardropField(TTeardropOptionsEx& options, const std::string& name, const std::string& text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  if (name == kFlags) {
    if (value < 0 || value > 1023 || value != static_cast<int>(value)) return false;
    options.Flags = static_cast<std::int32_t>(value);
    return true;
  }
  for (int row = 0; row < 4; ++row) {
    TTeardropObjectSize& size = options.SizePercentArray[row];
    if (name == std::string(kRows[row]) + "_Length") return size.Length = value, true;
    if (name == std::string(kRows[row]) + "_Width") return size.Width = value, true;
  }
  return false;
}

bool EditTeardropOptions(TTeardropOptionsEx& options, std::istream& in, std::ostream& out) {
  TTeardropOptionsEx edited = options;
  out << "Teardrops. Sizes in percent: of a via's diameter, of the track's width. Flags are a sum of\n"
         "1 keep violations, 2 selected only, 4 report, 8 scale the width, 16 straight, 32 add (else "
         "remove),\n"
         "64 vias and through-hole pads, 128 surface pads, 256 wider tracks, 512 junctions.\n";
  for (const auto& [name, value] : TeardropFields(edited)) out << "  " << name << "=" << value << "\n";
  out << "NAME=VALUE changes one, an empty line accepts, cancel cancels.\n" << std::flush;
  for (std::string line; out << "> " << std::flush, std::getline(in, line);) {
    line = Trimmed(line);
    if (line == "cancel") return false;
    if (line.empty()) {
      options = edited;
      return true;
    }
    const std::size_t equals = line.find('=');
    if (equals == line.npos ||
        !SetTeardropField(edited, Trimmed(line.substr(0, equals)), Trimmed(line.substr(equals + 1))))
      out << "  this is no NAME=VALUE of the list above\n";
  }
  return false;
}

std::span<const DialogField> LegacyTeardropFields() {
  return kLegacyFields;
}

std::string SetLegacyTeardropField(TTearDropOptions& options, const std::string& name,
                                   const std::string& value) {
  const std::string_view field = std::string_view(name).substr(name.find('_') + 1);
  if (field == "Style") {
    if (value != "arcs" && value != "tracks") return "expected arcs or tracks";
    options.Style = value == "arcs" ? eArcTearDrop : eTrackTearDrop;
    return {};
  }
  if (field == "Of")
    return SetVisited(options, value) ? "" : "expected pads, vias, tracks with commas between";
  if (value != "yes" && value != "no") return "expected yes or no";
  const bool yes = value == "yes";
  if (field == "OnlySelected") options.Selected = yes;
  if (field == "Remove") options.Action = yes ? eRemoveTearDrop : eAddTearDrop;
  if (field == "Force") options.Force = yes;
  if (field == "Report") options.Report = yes;
  return {};
}

}  // namespace Ketril::Command
