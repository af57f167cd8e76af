#include "Ketril/Commands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <nlohmann/json.hpp>

#include "Editor/Picture/Picture.h"
#include "Editor/Rules/Clearance.h"
#include "Editor/Rules/ComponentChecks.h"
#include "Editor/Selection/Selection.h"
#include "Ketril/Answers.h"
#include "Ketril/Display.h"
#include "Ketril/Exit.h"
#include "Ketril/Info.h"
#include "Ketril/Reports.h"
#include "Ketril/RunContext.h"
#include "Ketril/Session.h"
#include "Ketril/TeardropDialog.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Editor::Board;
using Editor::Primitive;
using nlohmann::ordered_json;

// "X,Y,WIDTH,HEIGHT" of a box whose corner (X, Y) is the upper left one, as the board file has places.
TCoordRect ParseBox(const std::string& text, Editor::LengthUnit unit, const char* option) {
  std::array<double, 4> numbers{};
  std::size_t from = 0;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::size_t comma = std::min(text.find(',', from), text.size());
    const auto length =
        Editor::ParseLength(std::string_view(text).substr(std::min(from, text.size()), comma - from), unit);
    if (!length || (i == 3) != (comma == text.size()) || (i >= 2 && *length <= 0)) {
      throw Failure(kExit_Usage, std::string(option) + ": expected X,Y,WIDTH,HEIGHT, as 100,80,20mm,15mm");
    }
    numbers[i] = *length;
    from = comma + 1;
  }
  const auto unit_of = [](double v) {
    return static_cast<TCoord>(std::clamp(std::round(v), -2147483647.0, 2147483647.0));
  };
  return {unit_of(numbers[0]), unit_of(-numbers[1] - numbers[3]), unit_of(numbers[0] + numbers[2]),
          unit_of(-numbers[1])};
}

std::vector<TV7_Layer> ParseLayers(const Board& board, const std::vector<std::string>& names) {
  std::vector<TV7_Layer> layers;
  for (const std::string& name : names) {
    const auto found =
        std::find_if(board.layers.begin(), board.layers.end(), [&](const Editor::BoardLayer& layer) {
          return Platform::EqualsIgnoringAsciiCase(Platform::ToUtf16(layer.file_name),
                                                   Platform::ToUtf16(name)) ||
                 Platform::EqualsIgnoringAsciiCase(layer.user_name, Platform::ToUtf16(name));
        });
    if (found == board.layers.end()) {
      std::string known;
      for (const Editor::BoardLayer& layer : board.layers)
        known += (known.empty() ? "" : ", ") + layer.file_name;
      throw Failure(kExit_Usage, "--layers: the board has no layer \"" + name + "\"; it has " + known);
    }
    layers.push_back(found->id);
  }
  return layers;
}

}  // namespace

void ListTools(const Options& options) {
  struct Listed {
    std::string verb;
    const char *export_name, *group, *help;
  };
  std::vector<Listed> tools;
  for (const ToolVerb& tool : ToolVerbs())
    tools.push_back({tool.verb, tool.export_name, tool.group, tool.help});
  for (const ReportKind& kind : ReportKinds())
    tools.push_back({std::string("report ") + kind.word, kind.export_name, kReportGroup, kind.help});
  tools.push_back({"display-report-file", "Tools_DisplayReportFile", kReportGroup, kDisplayHelp});
  ordered_json list = ordered_json::array();
  for (const auto& [verb, export_name, group, help] : tools) {
    list.push_back({{"verb", verb}, {"export", export_name}, {"group", group}, {"help", help}});
    if (!options.json) std::cout << verb << "\n    " << help << "\n";
  }
  if (options.json) std::cout << list.dump(2) << "\n";
}

void ListObjects(const Options& options) {
  const auto selection = ParseSelection(options.select.empty() ? "all" : options.select, options.unit);
  const Ref<Board> board = Open(options.board);
  board->setup.display_unit = options.unit == Editor::LengthUnit::Millimetre ? eMetric : eImperial;
  if (options.json) {
    std::cout << ObjectTable(*board, selection, options.unit).dump(2) << "\n";
  } else {
    std::cout << ObjectLines(*board, selection);
  }
}

void Info(const Options& options) {
  const Ref<Board> board = Open(options.board);
  const ordered_json info = BoardInfo(*board, options.unit);
  std::cout << (options.json ? info.dump(2) + "\n" : BoardInfoText(info));
}

void Draw(const Options& options) {
  Editor::PictureOptions look;
  if (!options.around.empty()) look.around = ParseBox(options.around, options.unit, "--around");
  std::optional<Editor::Selection> bright;
  if (!options.highlight.empty()) bright = ParseSelection(options.highlight, options.unit);
  const Ref<Board> board = Open(options.board);
  look.layers = ParseLayers(*board, options.layers);
  const Ref<Board> other = options.beside.empty() ? nullptr : Open(options.beside);
  if (bright)
    look.highlight = [&](const Primitive& object, const Board& of) { return bright->Matches(object, of); };
  WriteOut(options.output,
           other ? Editor::DrawBesideSvg(*board, *other, look) : Editor::DrawSvg(*board, look));
  std::cout << "draw: written to " << options.output << "\n";
}

void Check(const Options& options) {
  const Ref<Board> board = Open(options.board);
  board->setup.display_unit = options.unit == Editor::LengthUnit::Millimetre ? eMetric : eImperial;
  std::vector<Editor::Violation> violations = board->Clearances().CheckBoard();
  std::ranges::move(
      Editor::CheckComponentRules(*board, {eRule_ComponentClearance, eRule_ConfinementConstraint}),
      std::back_inserter(violations));
  if (options.json) {
    ordered_json list = ordered_json::array();
    for (const Editor::Violation& violation : violations)
      list.push_back(ViolationRecord(violation, options.unit));
    std::cout << ordered_json{{"board", options.board}, {"violations", list}}.dump(2) << "\n";
  } else {
    for (const Editor::Violation& violation : violations)
      std::cout << Platform::ToUtf8(Editor::DescribeViolation(violation)) << "\n";
    std::cout << "check: " << violations.size() << (violations.size() == 1 ? " violation" : " violations")
              << "\n";
  }
  if (options.fail_on_violations && !violations.empty())
    throw Failure(kExit_Failed, std::to_string(violations.size()) + " violations");
}

void CurrentTeardropOptions(const Options& options) {
  Answers answers(true, nullptr, std::cerr);
  const ToolsLibrary library;
  const Ref<Board> board = Open(options.board);
  const Session session(answers);
  const TTeardropOptionsEx teardrops =
      library.Find<TTeardropOptionsEx(IPCB_Board*)>("Tools_GetCurrentTeardropOptions")(board.Get());
  ordered_json values;
  for (const auto& [key, value] : TeardropFields(teardrops)) values[key] = value;
  std::cout << values.dump(2) << "\n";
}

void Arrange(const Options& options) {
  Options run = options;
  if (options.outside) return RunTool(FindToolVerb("auto-place-outside-board"), run);
  if (!options.into_room.empty()) {
    run.parameters = {"RoomName=" + options.into_room};
    return RunTool(FindToolVerb("run-arrange-to-room-rule"), run);
  }
  const TCoordRect box = ParseBox(options.into, options.unit, "--into");
  const auto pair = [](const char* name, TCoord value) { return name + std::to_string(value); };
  run.parameters = {pair("Location1.x=", box.x1), pair("Location1.y=", box.y1), pair("Location2.x=", box.x2),
                    pair("Location2.y=", box.y2)};
  RunTool(FindToolVerb("auto-place-to-rectangle"), run);
}

void Autoposition(const Options& options) {
  Options run = options;
  if (!options.designator.empty()) run.parameters.push_back("NamePosition=" + options.designator);
  if (!options.comment.empty()) run.parameters.push_back("CommentPosition=" + options.comment);
  RunTool(FindToolVerb("autoposition-text"), run);
}

// By picks, unless something is selected or pointed at.
void UnGroup(const Options& options) {
  Options run = options;
  std::string kinds;
  for (const std::string& kind : options.kinds) kinds += (kinds.empty() ? "" : ",") + kind;
  if (!kinds.empty()) run.parameters.push_back("Kinds=" + kinds);
  if (options.select.empty() && options.cursor.empty()) run.parameters.emplace_back("Selected=False");
  RunTool(FindToolVerb("un-group"), run);
}

}  // namespace Ketril::Command
