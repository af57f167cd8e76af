#include "Ketril/Reports.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <optional>

#include "Editor/Client/Parameters.h"
#include "Editor/Client/ReportForms.h"
#include "Editor/Connectivity/Ratsnest.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Picture/Picture.h"
#include "Ketril/Answers.h"
#include "Ketril/Exit.h"
#include "Ketril/Footprints.h"
#include "Ketril/RunContext.h"
#include "Ketril/Session.h"
#include "Ketril/ToolsLibrary.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

namespace fs = std::filesystem;
using Editor::Board;

struct Format {
  const char* name;
  const char* style_sheet;
};
constexpr std::array kFormats{Format{"html", "report_html_default.xsl"}, Format{"csv", "report_csv.xsl"},
                              Format{"json", "report_json.xsl"}, Format{"xml", "report_xml.xsl"}};

// Empty for a form that is not made by one.
std::u16string StyleSheet(const std::string& format) {
  const auto found = std::ranges::find(kFormats, format, &Format::name);
  if (found == kFormats.end()) return {};
  return Platform::ToUtf16((InstallationFolder() / "Templates" / found->style_sheet).string());
}

// Everything but what is no part of its own.
Ref<IParameterList> AllParts(const Options& options) {
  const Ref<Editor::Parameters> list = Editor::MakeHost<Editor::Parameters>();
  for (int i = 0; i < kBoardReportOptionCount; ++i) {
    const bool on = i != eBoardReportOption_AppendFile &&
                    (i != eBoardReportOption_SelectedObjects || !options.select.empty());
    list->AddParameter(kBoardReportOptionTexts[i].Name, on ? u"True" : u"False");
  }
  return Ref<IParameterList>(list.Get());
}

// A tool on the board that writes a file of that name, with another extension for each form.
using Caller = void (*)(const ReportKind& kind, const Options& options, const ToolsLibrary& library,
                        Board& board, IReportOutputOptions* forms, const std::u16string& name);

void CallBoardReport(const ReportKind& kind, const Options& options, const ToolsLibrary& library,
                     Board& board, IReportOutputOptions* forms, const std::u16string& name) {
  const bool has_parameters = !options.parameters.empty() || options.ask;
  const Ref<IParameterList> parameters = has_parameters ? ParametersOf(options) : AllParts(options);
  using Tool = void(IParameterList*, IPCB_Board*, IReportOutputOptions*, const std::u16string&);
  library.Find<Tool>(kind.export_name)(parameters.Get(), &board, forms, name);
}

void CallNetReport(const ReportKind& kind, const Options&, const ToolsLibrary& library, Board& board,
                   IReportOutputOptions* forms, const std::u16string& name) {
  using Tool = void(IPCB_Board*, const std::u16string&, IReportOutputOptions*);
  library.Find<Tool>(kind.export_name)(&board, name, forms);
}

// It knows two forms of its own and writes the file of the very name.
void CallPlacement(const ReportKind& kind, const Options& options, const ToolsLibrary& library, Board& board,
                   IReportOutputOptions*, const std::u16string& name) {
  using Tool = void(IPCB_Board*, const std::u16string&, const std::u16string&);
  for (const std::string& format : options.formats)
    library.Find<Tool>(kind.export_name)(&board, fs::path(name).replace_extension(format).u16string(),
                                         format == "csv" ? u"CSV" : u"TXT");
}

fs::path Folder(const Options& options) {
  const fs::path beside = fs::absolute(options.board).parent_path();
  if (options.report_dir.empty()) return beside;
  std::error_code error;
  fs::create_directories(options.report_dir, error);
  if (!fs::is_directory(options.report_dir))
    throw Failure(kExit_Usage, "--report-dir: " + options.report_dir + " is no folder: " + error.message());
  return fs::absolute(options.report_dir);
}

std::optional<fs::file_time_type> TimeOf(const fs::path& file) {
  std::error_code error;
  const auto time = fs::last_write_time(file, error);
  return error ? std::nullopt : std::optional(time);
}

// On the board's footprints as a library, or on a library's folder.
void CallLibraryReport(const ReportKind& kind, const Options& options, const ToolsLibrary& library,
                       Board& board, IReportOutputOptions*, const std::u16string& name) {
  using Tool = void(IPCB_Board*, const std::u16string&, IPCB_Library*);
  const bool is_component = kind.what == ReportOn::Footprint;
  if (is_component && options.component.empty() && !options.board.ends_with(".kicad_mod"))
    throw Failure(kExit_Usage, "--component tells whose footprint is reported on");
  const Footprints footprints = IsFootprintPath(options.board)
                                    ? FootprintsIn(options.board, options.component)
                                    : FootprintsOf(board, options.component);
  footprints.editing->setup.display_unit = board.setup.display_unit;
  library.Find<Tool>(kind.export_name)(footprints.editing.Get(),
                                       fs::path(name).replace_extension("txt").u16string(),
                                       footprints.library.Get());
}

constexpr std::array kKinds{
    ReportKind{
        "board", "report-specs", "Tools_ReportSpecs",
        "What is on the board, how far it is routed, copper by layer, holes and other sizes with their "
        "counts; -D RoutingInfo=True and the like for some of it",
        "html,csv,json,xml", ReportOn::Board},
    ReportKind{"nets", "report-netlist-status", "Tools_ReportNetlistStatus",
               "The nets, with their routed lengths", "html,csv,json,xml", ReportOn::Nets},
    ReportKind{"placement", "report-pick-n-place", "Tools_ReportPickNPlace",
               "The pick-and-place file: where each component goes", "csv,txt", ReportOn::Placement},
    ReportKind{"component", "create-report-for-component", "Tools_CreateReportForComponent",
               "A footprint of a board, or of a folder of .kicad_mod files: its size, its objects by layer",
               "txt", ReportOn::Footprint},
    ReportKind{"library", "create-report-for-library", "Tools_CreateReportForLibrary",
               "The footprints of a board, or of a folder of .kicad_mod files, by name", "txt",
               ReportOn::Library},
};

Caller CallerOf(ReportOn what) {
  switch (what) {
    case ReportOn::Board:
      return CallBoardReport;
    case ReportOn::Nets:
      return CallNetReport;
    case ReportOn::Placement:
      return CallPlacement;
    case ReportOn::Footprint:
    case ReportOn::Library:
      break;
  }
  return CallLibraryReport;
}

// The board that is reported on; an empty one for a library's folder.
Ref<Board> OpenFor(const ReportKind& kind, const Options& options) {
  const Ref<Board> board =
      kind.TakesFolder() && IsFootprintPath(options.board) ? Editor::MakeHost<Board>() : Open(options.board);
  board->setup.display_unit = options.unit == Editor::LengthUnit::Millimetre ? eMetric : eImperial;
  board->file.path = fs::absolute(options.board).string();  // as it stands in the report
  return board;
}

// Files of a report and when they were written last.
class WrittenFiles {
 public:
  void Expect(const fs::path& file) { files_.emplace_back(file, TimeOf(file)); }
  // Names them; raises Failure when one was not written since.
  void Tell() const {
    for (const auto& [file, before] : files_) {
      const auto now = TimeOf(file);
      if (!now || now == before) throw Failure(kExit_Failed, file.string() + " was not written");
      std::cout << "report: written to " << file.string() << "\n";
    }
  }

 private:
  std::vector<std::pair<fs::path, std::optional<fs::file_time_type>>> files_;
};

}  // namespace

std::span<const ReportKind> ReportKinds() {
  return kKinds;
}

std::vector<std::string> ReportKind::Formats() const {
  std::vector<std::string> names(1);
  for (const char* c = formats; *c; ++c) {
    if (*c == ',') {
      names.emplace_back();
    } else {
      names.back() += *c;
    }
  }
  return names;
}

fs::path InstallationFolder() {
  Dl_info editor{};
  if (dladdr(reinterpret_cast<void*>(&Editor::WriteBoardText), &editor) == 0 || !editor.dli_fname) return {};
  const fs::path start = fs::absolute(editor.dli_fname).lexically_normal().parent_path();
  fs::path folder = start;
  for (int up = 0; up < 3; ++up) {
    folder = folder.parent_path();
    if (fs::exists(folder / "share" / "ketril" / "Templates")) return folder / "share" / "ketril";
  }
  return start;
}

void Report(const ReportKind& kind, const Options& given) {
  Options options = given;
  if (options.formats.empty()) options.formats = {kind.Formats().front()};
  const fs::path folder = Folder(options);
  Answers answers(options.yes, isatty(STDIN_FILENO) ? &std::cin : nullptr, std::cerr);
  if (!options.answers.empty()) answers.ReadFile(options.answers);
  const ToolsLibrary library;
  const Ref<Board> board = OpenFor(kind, options);
  const Session session(answers, board.Get(), false);
  if (!options.select.empty()) {
    if (ParseSelection(options.select, options.unit).Apply(*board) == 0)
      std::cerr << "ketril: no object matches --select " << options.select << "\n";
  }
  Editor::RefreshConnections(*board);

  const std::string stem = fs::path(board->file.path).lexically_normal().replace_extension().stem().string();
  const fs::path name = folder / (stem + "-" + kind.word + ".report");
  const auto forms = Editor::MakeHost<Editor::ReportForms>(Platform::ToUtf16(kind.word));
  WrittenFiles files;
  for (const std::string& format : options.formats) {
    forms->Add({Platform::ToUtf16(format), StyleSheet(format)});
    files.Expect(fs::path(name).replace_extension(format));
  }
  try {
    CallerOf(kind.what)(kind, options, library, *board, forms.Get(), Platform::ToUtf16(name.string()));
  } catch (const Failure&) {
    throw;
  } catch (const std::exception& error) {
    throw Failure(kExit_Failed, std::string("report ") + kind.word + ": " + error.what());
  }
  if (!answers.Unanswered().empty())
    throw Failure(kExit_Failed, "nobody answered \"" + answers.Unanswered().front() +
                                    "\": taken as a cancel; see -D, -y and --answers");
  files.Tell();
  if (std::ranges::find(options.formats, "html") == options.formats.end()) return;
  Editor::PictureOptions look;
  look.fills_window = true;
  WriteOut((folder / (stem + ".svg")).string(), Editor::DrawSvg(*board, look));
}

}  // namespace Ketril::Command
