// One run of a tool by a verb: the board is opened and set up as the command line says, the tool called, the
// result written, drawn and told.
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>

#include "Editor/Client/Parameters.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Picture/Picture.h"
#include "Editor/Selection/Selection.h"
#include "Editor/Vias/ViaUnions.h"
#include "Ketril/Answers.h"
#include "Ketril/Commands.h"
#include "Ketril/Exit.h"
#include "Ketril/Info.h"
#include "Ketril/Interrupts.h"
#include "Ketril/Microstrip.h"
#include "Ketril/Moves.h"
#include "Ketril/OverlapPicks.h"
#include "Ketril/PlacementSummary.h"
#include "Ketril/RunContext.h"
#include "Ketril/Session.h"
#include "Ketril/Summary.h"
#include "Ketril/TeardropSummary.h"
#include "Ketril/ViaSummary.h"
#include "Platform/TempFiles.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Editor::Board;
using Editor::Primitive;
using nlohmann::ordered_json;

// What a run of a tool came to.
struct ToolRun {
  std::vector<Editor::Change> changes;
  std::vector<Move> moves;
  std::vector<std::string> unanswered;  // questions
  const PlacementLog& placement;
};

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

void DrawResult(const std::string& picture, Board& board, const ToolRun& run) {
  std::set<const Primitive*> changed;
  for (const Editor::Change& change : run.changes) changed.insert(change.object.Get());
  Editor::PictureOptions look;
  if (!changed.empty())
    look.highlight = [&](const Primitive& object, const Board&) { return changed.contains(&object); };
  for (const Move& move : run.moves) look.ghosts.push_back({move.from_box, move.to_box});
  WriteOut(picture, Editor::DrawSvg(board, look));
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

// What the run did, to the user or, with --json, to a program. An empty destination: nothing was written.
void Report(const Options& options, const ToolVerb& verb, Board& board, const std::string& destination,
            const ToolRun& run) {
  ordered_json summary = Summary(run.changes);
  if (verb.operands == Operands::File) summary["placement"] = PlacementSummary(board, run.placement);
  if (verb.ungroups) summary["ungrouped"] = UnGroupSummary(board, run.changes);
  if (verb.call == MakeMicrostripe)
    summary["microstrips"] = MicrostripSummary(board, run.changes, options.unit);
  if (!run.moves.empty()) summary["moved"] = MoveTable(run.moves, options.unit);
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
    summary["unanswered"] = run.unanswered;
    std::cout << summary.dump(2) << "\n";
    return;
  }
  std::cout << verb.verb << ": " << SummaryText(summary);
  if (!destination.empty()) std::cout << "; written to " << destination;
  std::cout << "\n" << MoveLines(run.moves, options.unit);
  if (!teardrops.is_null()) std::cout << TeardropSummaryText(teardrops) << "\n";
  if (!legacy.is_null()) std::cout << LegacyTeardropSummaryText(legacy) << "\n";
  if (!vias.is_null()) std::cout << ViaSummaryText(vias);
  if (verb.ungroups) std::cout << UnGroupSummaryText(summary["ungrouped"]);
  if (summary.contains("microstrips")) std::cout << MicrostripSummaryText(summary["microstrips"]);
  if (summary.contains("placement")) std::cout << PlacementSummaryText(summary["placement"]);
  for (const std::string& question : run.unanswered) {
    std::cerr << "ketril: nobody answered \"" << question << "\": taken as a cancel; see -y and --answers\n";
  }
}

// What the command line says for the user: places, fields of dialogs.
void GiveAnswers(const Options& options, Board& board, Answers& answers) {
  answers.SetPlaces(
      [&board, unit = options.unit](const std::string& text) { return PlaceOf(board, text, unit); },
      options.picks);
  if (options.picks_overlaps) answers.SetPickSource(OverlapPicks(board));
  if (!options.cursor.empty()) answers.SetCursor(options.cursor);
  for (const std::string& text : options.parameters) {
    const std::size_t equals = std::min(text.find('='), text.size() - 1);
    answers.AddField(text.substr(0, equals), text.substr(equals + 1));
  }
  for (const auto& [name, value] : options.fields) {
    if (!value.empty()) answers.AddField(name, value);
  }
  answers.CheckViaFields(board, options.unit);
}

void SelectObjects(const Options& options, const ToolVerb& verb,
                   const std::optional<Editor::Selection>& selection, Board& board) {
  if (selection && selection->Apply(board) == 0) {
    std::cerr << "ketril: no object matches --select " << options.select << "\n";
  }
  if (!options.first.empty()) SelectPair(board, options);
  if (verb.ungroups) KeepOutermostSelected(board);
}

// With the board's journal open from here on.
void CallTool(const ToolsLibrary& library, const ToolVerb& verb, const Options& options, Board& board) {
  const Ref<IParameterList> parameters = ParametersOf(options);
  board.journal.Begin();
  try {
    const EscapeOnInterrupt escape;
    verb.call(library, verb.export_name, &board, parameters.Get());
  } catch (const Failure&) {
    throw;
  } catch (const std::exception& error) {
    throw Failure(kExit_Failed, std::string(verb.verb) + ": " + error.what() + "; nothing is written");
  }
}

void Save(Board& board, const std::string& destination) {
  try {
    Editor::SaveBoard(board, destination);
  } catch (const std::exception& error) {
    throw Failure(kExit_Failed, error.what());
  }
}

}  // namespace

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
  GiveAnswers(options, *board, answers);
  const ReportFolder reports(options, destination);
  const std::filesystem::path shown_as = destination.empty() ? options.board : destination;
  board->file.path = reports.Path() / shown_as.filename();
  const Session session(answers, board.Get(), reports.IsKept(), options.passes);
  const ComponentPlaces places(*board);
  SelectObjects(options, verb, selection, *board);
  if (verb.operands == Operands::File)
    board->setup.display_unit = options.unit == Editor::LengthUnit::Mil ? eImperial : eMetric;
  CallTool(library, verb, options, *board);

  const ToolRun run{board->journal.Changes(), places.Moves(), answers.Unanswered(), session.Placement()};
  if (answers.Aborted()) {
    Report(options, verb, *board, {}, run);
    throw Failure(kExit_Aborted, "stopped; nothing is written");
  }
  if (run.placement.failed) {
    throw Failure(kExit_Failed, PlacementFailure(options.file, run.placement) + "; nothing is written");
  }
  if (!destination.empty()) Save(*board, destination);
  if (!options.picture.empty()) DrawResult(options.picture, *board, run);
  Report(options, verb, *board, destination, run);
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
