#include "Ketril/PlacementDialogs.h"

#include <charconv>
#include <istream>
#include <optional>
#include <ostream>

#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using IHost = IPCB_RoomArrangeOptions;

std::optional<bool> YesOrNo(const std::string& text) {
  if (text == "yes" || text == "no") return text == "yes";
  return std::nullopt;
}

std::optional<std::int32_t> WholeNumber(const std::string& text) {
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

constexpr struct {
  const char* word;
  TArrangerMethod horizontal, vertical;
} kWays[] = {
    {"none", eArrangeNoChangeX, eArrangeNoChangeY}, {"left", eArrangeLeft, eArrangeRectangle},
    {"right", eArrangeRight, eArrangeRectangle},    {"top", eArrangeRectangle, eArrangeTop},
    {"bottom", eArrangeRectangle, eArrangeBottom},  {"center", eArrangeHorCenter, eArrangeVertCenter},
    {"spread", eArrangeSpreadX, eArrangeSpreadY},
};

constexpr struct {
  const char* name;
  Status (IHost::*set)(std::int32_t) noexcept;
  std::int32_t least;
} kNumbers[] = {
    {"RowCount", &IHost::SetState_RowCount, 0},       {"ColCount", &IHost::SetState_ColCount, 1},
    {"OriginX", &IHost::SetState_OriginX, INT32_MIN}, {"OriginY", &IHost::SetState_OriginY, INT32_MIN},
    {"SpacingX", &IHost::SetState_SpacingX, 0},       {"SpacingY", &IHost::SetState_SpacingY, 0},
};
constexpr struct {
  const char* name;
  Status (IHost::*set)(bool) noexcept;
} kSwitches[] = {
    {"AutoSpacing", &IHost::SetState_AutoSpacing},
    {"MoveToGrid", &IHost::SetState_MoveToGrid},
    {"Ascending", &IHost::SetState_Ascending},
};

std::string Trimmed(const std::string& text) {
  return Platform::ToUtf8(Platform::Trim(Platform::ToUtf16(text)));
}

}  // namespace

bool SetAlignmentField(Editor::AlignmentAnswer& answer, const std::string& name, const std::string& value) {
  if (name == "Alignment_MoveToGrid") {
    const auto yes = YesOrNo(value);
    if (yes) answer.move_to_grid = *yes;
    return yes.has_value();
  }
  for (const auto& way : kWays) {
    if (value != way.word) continue;
    const bool horizontal = name == "Alignment_Horizontal";
    const TArrangerMethod method = horizontal ? way.horizontal : way.vertical;
    if ((!horizontal && name != "Alignment_Vertical") || method == eArrangeRectangle) return false;
    (horizontal ? answer.horizontal : answer.vertical) = method;
    return true;
  }
  return false;
}

bool SetRoomArrangeField(IPCB_RoomArrangeOptions& options, const std::string& name,
                         const std::string& value) {
  constexpr std::string_view kPrefix = "RoomArrange_";
  if (!name.starts_with(kPrefix)) return false;
  const std::string field = name.substr(kPrefix.size());
  for (const auto& number : kNumbers) {
    if (field != number.name) continue;
    const auto whole = WholeNumber(value);
    return whole && *whole >= number.least && !Failed((options.*number.set)(*whole));
  }
  for (const auto& which : kSwitches) {
    if (field != which.name) continue;
    const auto yes = YesOrNo(value);
    return yes && !Failed((options.*which.set)(*yes));
  }
  return field == "SortName" && !Failed(options.SetState_SortName(Platform::ToUtf16(value)));
}

bool EditFields(const char* title, const FieldSetter& set, std::istream& in, std::ostream& out) {
  out << title << "\nNAME=VALUE changes one, an empty line accepts, cancel cancels.\n";
  for (std::string line; out << "> " << std::flush, std::getline(in, line);) {
    line = Trimmed(line);
    if (line == "cancel") return false;
    if (line.empty()) return true;
    const std::size_t equals = line.find('=');
    if (equals == line.npos || !set(Trimmed(line.substr(0, equals)), Trimmed(line.substr(equals + 1))))
      out << "  this is no NAME=VALUE of this dialog\n";
  }
  return false;
}

}  // namespace Ketril::Command
