#include "Ketril/PlacementSummary.h"

#include <fstream>
#include <set>
#include <utility>

#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using nlohmann::ordered_json;
using Platform::ToUtf8;

constexpr struct {
  TPlacementOutcome outcome;
  const char* list;  // null: a bad line
  const char* text;
} kOutcomes[] = {
    {ePlacement_Placed, "placed", "placed"},
    {ePlacement_Unknown, "not_on_board", "not on the board"},
    {ePlacement_Locked, "locked", "locked, not placed"},
    {ePlacement_WrongColumns, nullptr, "it has another number of columns than the header"},
    {ePlacement_InvalidData, nullptr, "a value is missing, or a coordinate is no number"},
};

constexpr const char* kNotInFile = "not_in_file";

const char* TextOf(TPlacementOutcome outcome) {
  return kOutcomes[outcome].text;
}

// A name of a file that is anything: without control characters, and cut where nobody would read on.
std::string Shown(std::string name) {
  constexpr std::size_t kLongest = 60;
  for (char& c : name) {
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  }
  if (name.size() <= kLongest) return name;
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
  return name.substr(0, end) + "...";
}

std::string BadLineText(std::int32_t line, const std::string& component, const std::string& why) {
  return "line " + std::to_string(line) + (component.empty() ? "" : ", " + Shown(component)) + ": " + why;
}

}  // namespace

ordered_json PlacementSummary(const Editor::Board& board, const PlacementLog& log) {
  ordered_json summary;
  for (const char* list : {"placed", "not_on_board", kNotInFile, "locked", "bad_lines"})
    summary[list] = ordered_json::array();
  std::set<std::u16string> named;
  std::set<std::pair<TPlacementOutcome, std::u16string>> told;  // a name once in each list
  for (const auto& [line, designator, outcome] : log.lines) {
    const auto& row = kOutcomes[outcome];
    named.insert(Platform::AsciiUpper(designator));
    if (row.list) {
      if (told.emplace(outcome, designator).second) summary[row.list].push_back(ToUtf8(designator));
    } else {
      summary["bad_lines"].push_back({{"line", line}, {"component", ToUtf8(designator)}, {"why", row.text}});
    }
  }
  board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& component) {
    const std::u16string name = component.Identifier();
    if (!named.contains(Platform::AsciiUpper(name))) summary[kNotInFile].push_back(ToUtf8(name));
  });
  return summary;
}

std::string PlacementSummaryText(const ordered_json& summary) {
  std::string text;
  const auto add = [&](const char* list, const char* what) {
    std::string names;
    for (const auto& name : summary.at(list)) names += (names.empty() ? "" : ", ") + Shown(name);
    if (!names.empty()) text += std::string("  ") + what + ": " + names + "\n";
  };
  add("placed", TextOf(ePlacement_Placed));
  add("not_on_board", TextOf(ePlacement_Unknown));
  add(kNotInFile, "not in the file");
  add("locked", TextOf(ePlacement_Locked));
  for (const auto& bad : summary.at("bad_lines"))
    text += "  " + BadLineText(bad.at("line"), bad.at("component"), bad.at("why")) + "\n";
  return text;
}

std::string PlacementFailure(const std::string& file, const PlacementLog& log) {
  if (!log.lines.empty() && log.lines.back().outcome == ePlacement_InvalidData) {
    const Editor::PlacementLine& last = log.lines.back();
    return file + ": " +
           BadLineText(last.line, ToUtf8(last.designator),
                       "a coordinate is no number, or the line ends before its side");
  }
  std::string start(3, '\0');
  std::ifstream(file, std::ios::binary).read(start.data(), 3);
  if (start == "\xEF\xBB\xBF" || start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF"))
    return file + ": it begins with a byte-order mark; save it as UTF-8 without one";
  return file;
}

}  // namespace Ketril::Command
