#include "Ketril/Commands.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>

#include "Editor/Client/Parameters.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Files/SExpression.h"
#include "Editor/Picture/Picture.h"
#include "Editor/Rules/Clearance.h"
#include "Editor/Rules/ComponentChecks.h"
#include "Editor/Selection/Selection.h"
#include "Editor/Vias/ViaUnions.h"
#include "Ketril/Answers.h"
#include "Ketril/Display.h"
#include "Ketril/Exit.h"
#include "Ketril/Info.h"
#include "Ketril/Interrupts.h"
#include "Ketril/Microstrip.h"
#include "Ketril/Moves.h"
#include "Ketril/OverlapPicks.h"
#include "Ketril/PlacementSummary.h"
#include "Ketril/Reports.h"
#include "Ketril/RunContext.h"
#include "Ketril/Session.h"
#include "Ketril/Summary.h"
#include "Ketril/TeardropDialog.h"
#include "Ketril/TeardropSummary.h"
#include "Ketril/ViaSummary.h"
#include "Platform/TempFiles.h"
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

// Of --grid, one length or X,Y, and of --clearance.
void ChangeSettings(const Options& options, Board& board) {
  const auto length = [&](std::string_view text, const char* option, double lowest) {
    const auto parsed = Editor::ParseLength(text, options.unit);
    if (!parsed || *parsed < lowest || *parsed > 2147483647.0)
      throw Failure(kExit_Usage, std::string(option) + ": expected a length, as 0.5mm");
    return *parsed;
  };
  if (!options.grid.empty()) {
    const std::string_view text = options.grid;
    const std::size_t comma = text.find(',');
    board.setup.grid_x = length(text.substr(0, comma), "--grid", 1);
    board.setup.grid_y =
        comma == text.npos ? board.setup.grid_x : length(text.substr(comma + 1), "--grid", 1);
  }
  Ref<IPCB_AdvancedPlacerOptions> placer;
  if (options.clearance.empty() || Failed(board.GetState_AdvancedPlacerOptions(placer))) return;
  const auto clearance = static_cast<TCoord>(length(options.clearance, "--clearance", 0));
  (void)placer->SetState_PlaceLargeClear(clearance);
  (void)placer->SetState_PlaceSmallClear(clearance);
}

// Where the board goes; empty for nowhere. Raises Failure when the command line leaves it open.
std::string Destination(const Options& options) {
  if (options.dry_run) return {};
  if (options.in_place) return options.board;
  if (options.output.empty()) {
    throw Failure(kExit_Usage,
                  "where shall the changed board go? -o FILE, --in-place, or --dry-run to only see");
  }
  std::error_code ignored;
  if (std::filesystem::equivalent(options.output, options.board, ignored)) {
    throw Failure(kExit_Usage, options.output + " is the given board: say --in-place to write over it");
  }
  return options.output;
}

void DrawResult(const Options& options, Board& board, const std::vector<Editor::Change>& changes,
                const std::vector<Move>& moves) {
  std::set<const Primitive*> changed;
  for (const Editor::Change& change : changes) changed.insert(change.object.Get());
  Editor::PictureOptions look;
  if (!changed.empty())
    look.highlight = [&](const Primitive& object, const Board&) { return changed.contains(&object); };
  for (const Move& move : moves) look.ghosts.push_back({move.from_box, move.to_box});
  WriteOut(options.picture, Editor::DrawSvg(board, look));
}

// Raises Failure for a file that a tool could not read either.
void CheckReadable(const std::string& path) {
  std::ifstream file(path);
  file.peek();
  if (!file && !file.eof()) throw Failure(kExit_Unreadable, path + ": the file cannot be read");
  if (path.find('|') != path.npos)
    throw Failure(kExit_Usage, path + ": a name with | cannot be handed to the tool");
}

// Of two components that are named, each as the designator has it.
void SelectPair(Board& board, const Options& options) {
  Primitive* pair[2]{};
  for (const int i : {0, 1}) {
    const std::u16string name = Platform::ToUtf16(i == 0 ? options.first : options.second);
    Editor::Warehouse::Walk walk(board.objects, {eComponentObject});
    for (Primitive* object = walk.Next(); object && !pair[i]; object = walk.Next()) {
      if (Platform::EqualsIgnoringAsciiCase(object->Identifier(), name)) pair[i] = object;
    }
    if (!pair[i]) throw Failure(kExit_Usage, "the board has no component \"" + Platform::ToUtf8(name) + "\"");
  }
  if (pair[0] == pair[1]) throw Failure(kExit_Usage, options.first + " cannot be swapped with itself");
  for (Primitive* component : pair) component->SetFlag(Editor::kFlag_Selected, true);
}

// What is within a selected object goes with it.
void KeepOutermostSelected(Board& board) {
  for (Primitive* object : std::vector<Primitive*>(board.Selected())) {
    const Editor::Group* owner = object->Owner();
    while (owner && !owner->Has(Editor::kFlag_Selected)) owner = owner->Owner();
    if (owner) object->SetFlag(Editor::kFlag_Selected, false);
  }
}

// The folder of what a tool writes beside its board, as reports: --report-dir, else that of the changed
// board; with nothing to be written, a folder of its own that goes with the object.
class ReportFolder {
 public:
  ReportFolder(const Options& options, const std::string& destination) {
    std::error_code error;
    if (!options.report_dir.empty()) {
      folder_ = options.report_dir;
      std::filesystem::create_directories(folder_, error);
      if (!std::filesystem::is_directory(folder_))
        throw Failure(kExit_Usage,
                      "--report-dir: " + options.report_dir + " is no folder: " + error.message());
    } else if (!destination.empty()) {
      folder_ = std::filesystem::path(destination).parent_path();
    } else {
      folder_ = Platform::MakeTempFile("ketril-dry-run-");
      std::filesystem::remove(folder_);
      std::filesystem::create_directory(folder_);
      temporary_ = true;
    }
  }
  ReportFolder(const ReportFolder&) = delete;
  ReportFolder& operator=(const ReportFolder&) = delete;
  ~ReportFolder() {
    std::error_code ignored;
    if (temporary_) std::filesystem::remove_all(folder_, ignored);
  }
  const std::filesystem::path& Path() const { return folder_; }
  bool IsKept() const { return !temporary_; }

 private:
  std::filesystem::path folder_;
  bool temporary_ = false;
};

void Report(const Options& options, const ToolVerb& verb, Board& board, const std::string& destination,
            const std::vector<Editor::Change>& changes, const std::vector<Move>& moves,
            const std::vector<std::string>& unanswered, const PlacementLog& log) {
  ordered_json summary = Summary(changes);
  if (verb.operands == Operands::File) summary["placement"] = PlacementSummary(board, log);
  if (verb.ungroups) summary["ungrouped"] = UnGroupSummary(board, changes);
  if (verb.call == MakeMicrostripe) summary["microstrips"] = MicrostripSummary(board, changes, options.unit);
  if (!moves.empty()) summary["moved"] = MoveTable(moves, options.unit);
  const ordered_json teardrops = TeardropSummary(board);
  const ordered_json legacy = verb.export_name == std::string_view("Tools_LegacyTearDrops")
                                  ? LegacyTeardropSummary(board)
                                  : ordered_json(nullptr);
  const ordered_json vias = ViaSummary(board.Unions().LastRun(), options.unit);
  if (options.json) {
    if (!teardrops.is_null()) summary["teardrops"] = teardrops;
    if (!legacy.is_null()) summary["teardrops"] = legacy;
    if (!vias.is_null()) summary["vias"] = vias;
    summary["tool"] = verb.export_name;
    summary["board"] = options.board;
    summary["written"] = destination.empty() ? ordered_json(nullptr) : ordered_json(destination);
    summary["unanswered"] = unanswered;
    std::cout << summary.dump(2) << "\n";
    return;
  }
  std::cout << verb.verb << ": " << SummaryText(summary);
  if (!destination.empty()) std::cout << "; written to " << destination;
  std::cout << "\n" << MoveLines(moves, options.unit);
  if (!teardrops.is_null()) std::cout << TeardropSummaryText(teardrops) << "\n";
  if (!legacy.is_null()) std::cout << LegacyTeardropSummaryText(legacy) << "\n";
  if (!vias.is_null()) std::cout << ViaSummaryText(vias);
  if (verb.ungroups) std::cout << UnGroupSummaryText(summary["ungrouped"]);
  if (summary.contains("microstrips")) std::cout << MicrostripSummaryText(summary["microstrips"]);
  if (summary.contains("placement")) std::cout << PlacementSummaryText(summary["placement"]);
  for (const std::string& question : unanswered) {
    std::cerr << "ketril: nobody answered \"" << question << "\": taken as a cancel; see -y and --answers\n";
  }
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

void RunTool(const ToolVerb& verb, const Options& options) {
  const std::string destination = Destination(options);
  std::optional<Editor::Selection> selection;
  if (!options.select.empty()) selection = ParseSelection(options.select, options.unit);
  Answers answers(options.yes, isatty(STDIN_FILENO) ? &std::cin : nullptr, std::cerr);
  if (!options.answers.empty()) answers.ReadFile(options.answers);
  if (!options.file.empty()) CheckReadable(options.file);

  const ToolsLibrary library;
  Ref<Board> board = Open(options.board);
  ChangeSettings(options, *board);
  std::srand(options.seed);
  answers.SetPlaces([&](const std::string& text) { return PlaceOf(*board, text, options.unit); },
                    options.picks);
  if (options.picks_overlaps) answers.SetPickSource(OverlapPicks(*board));
  if (!options.cursor.empty()) answers.SetCursor(options.cursor);
  for (const std::string& text : options.parameters) {
    const std::size_t equals = std::min(text.find('='), text.size() - 1);
    answers.AddField(text.substr(0, equals), text.substr(equals + 1));
  }
  for (const auto& [name, value] : options.fields) {
    if (!value.empty()) answers.AddField(name, value);
  }
  answers.CheckViaFields(*board, options.unit);
  const ReportFolder reports(options, destination);
  const std::filesystem::path shown_as = destination.empty() ? options.board : destination;
  board->file.path = reports.Path() / shown_as.filename();
  const Session session(answers, board.Get(), reports.IsKept(), options.passes);
  const ComponentPlaces places(*board);
  if (selection && selection->Apply(*board) == 0) {
    std::cerr << "ketril: no object matches --select " << options.select << "\n";
  }
  if (!options.first.empty()) SelectPair(*board, options);
  if (verb.ungroups) KeepOutermostSelected(*board);
  if (verb.operands == Operands::File)
    board->setup.display_unit = options.unit == Editor::LengthUnit::Mil ? eImperial : eMetric;
  const Ref<IParameterList> parameters = ParametersOf(options);
  board->journal.Begin();
  try {
    const EscapeOnInterrupt escape;
    verb.call(library, verb.export_name, board.Get(), parameters.Get());
  } catch (const Failure&) {
    throw;
  } catch (const std::exception& error) {
    throw Failure(kExit_Failed, std::string(verb.verb) + ": " + error.what() + "; nothing is written");
  }
  const std::vector<Editor::Change> changes = board->journal.Changes();
  const std::vector<Move> moves = places.Moves();
  if (answers.Aborted()) {
    Report(options, verb, *board, {}, changes, moves, answers.Unanswered(), session.Placement());
    throw Failure(kExit_Aborted, "stopped; nothing is written");
  }
  if (session.Placement().failed) {
    throw Failure(kExit_Failed, PlacementFailure(options.file, session.Placement()) + "; nothing is written");
  }
  if (!destination.empty()) {
    try {
      Editor::SaveBoard(*board, destination);
    } catch (const std::exception& error) {
      throw Failure(kExit_Failed, error.what());
    }
  }
  if (!options.picture.empty()) DrawResult(options, *board, changes, moves);
  Report(options, verb, *board, destination, changes, moves, answers.Unanswered(), session.Placement());
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

void CorrectToGrid(const GridVerb& verb, const Options& options) {
  const auto coordinate = Editor::ParseLength(options.coordinate, options.unit);
  if (!coordinate || std::abs(*coordinate) > 2147483647.0)
    throw Failure(kExit_Usage, "\"" + options.coordinate + "\" is no length: expected one as 12.7mm");
  const ToolsLibrary library;
  const Ref<Board> board = Open(options.board);
  ChangeSettings(options, *board);
  const TCoord corrected = library.Find<TCoord(IPCB_Board*, TCoord)>(verb.export_name)(
      board.Get(), static_cast<TCoord>(std::round(*coordinate)));
  std::cout << LengthText(corrected, options.unit) << "\n";
}

}  // namespace Ketril::Command
