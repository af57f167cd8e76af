// ketril: runs board tools on board files from a shell.
#include <CLI/CLI.hpp>
#include <iostream>
#include <map>

#include "Editor/Files/FileStyle.h"
#include "Ketril/Commands.h"
#include "Ketril/Completion.h"
#include "Ketril/Display.h"
#include "Ketril/Exit.h"
#include "Ketril/Manual.h"
#include "Ketril/Reports.h"

namespace Ketril::Command {

namespace {

constexpr const char* kSelectionHelp =
    "Objects by an expression: a kind (track, arc, via, pad, text, fill, region, zone, component, net, "
    "...),\n"
    "all, free, locked, teardrop, smd, through, room, net:NAME, class:NAME, layer:NAME, component:NAME, "
    "name:NAME,\n"
    "sheet:NAME, component-class:NAME, group:NAME (of the components),\n"
    "in:X1,Y1,X2,Y2, combined by and, or, not and parentheses; * and ? in names. Quote it for the shell:\n"
    "  --select 'via and net:GND'   --select 'pad and component:U*'   --select 'free and in:10,10,40mm,1in'";

void AddUnits(CLI::App& verb, Options& options) {
  using Editor::LengthUnit;
  static const std::map<std::string, LengthUnit> kUnits{
      {"mm", LengthUnit::Millimetre}, {"mil", LengthUnit::Mil}, {"in", LengthUnit::Inch}};
  verb.add_option("--units", options.unit, "Unit of lengths shown, and of numbers that name none")
      ->transform(CLI::CheckedTransformer(kUnits).description("{mm,mil,in}"))
      ->type_name("UNIT")
      ->default_str("mm");
}

void AddBoard(CLI::App& verb, Options& options) {
  verb.add_option("BOARD", options.board, "Board file (.kicad_pcb)")->required();
}

// An option that may be given again: each time adds a value.
void AddRepeatable(CLI::App& verb, const char* name, std::vector<std::string>& values, const char* type,
                   const char* help) {
  verb.add_option(name, values, help)->type_name(type)->expected(1)->take_all()->allow_extra_args(false);
}

void AddParameters(CLI::App& verb, Options& options) {
  AddRepeatable(verb, "-D", options.parameters, "NAME=VALUE",
                "A named parameter of the tool; may be given again");
}

void AddLook(CLI::App& app, Options& options) {
  CLI::App* list = app.add_subcommand("list", "The tools that are there, or the objects of a board");
  list->add_option("BOARD", options.board, "Board file (.kicad_pcb)");
  list->add_option("--select", options.select, kSelectionHelp)->type_name("SELECTION");
  list->add_flag("--json", options.json, "For programs to read");
  AddUnits(*list, options);
  list->callback([&options] { options.board.empty() ? ListTools(options) : ListObjects(options); });

  CLI::App* info = app.add_subcommand("info", "What is on a board: by kind, layer and net");
  AddBoard(*info, options);
  info->add_flag("--json", options.json, "For programs to read");
  AddUnits(*info, options);
  info->callback([&options] { Info(options); });

  CLI::App* draw = app.add_subcommand("draw", "A picture of a board");
  AddBoard(*draw, options);
  draw->add_option("-o,--output", options.output, "Picture to write (.svg)")->required()->type_name("FILE");
  draw->add_option("--layers", options.layers,
                   "Layers to show, as F.Cu,F.SilkS; without it copper, silkscreen, edge")
      ->delimiter(',')
      ->type_name("NAMES");
  draw->add_option("--around", options.around,
                   "Part to show: X,Y,WIDTH,HEIGHT of a box, places as in the board file")
      ->type_name("BOX");
  draw->add_option("--highlight", options.highlight, "Show the objects of a selection brightly")
      ->type_name("SELECTION");
  draw->add_option("--beside", options.beside,
                   "Another state of the board (.kicad_pcb), to its right and at the same places")
      ->type_name("BOARD");
  AddUnits(*draw, options);
  draw->callback([&options] { Draw(options); });

  CLI::App* check =
      app.add_subcommand("check", "Clearances: what is nearer than its net classes and rules ask");
  AddBoard(*check, options);
  check->add_flag("--json", options.json, "For programs to read");
  check->add_flag("--exit-code-violations", options.fail_on_violations, "Exit with 1 when there are any");
  AddUnits(*check, options);
  check->callback([&options] { Check(options); });

  CLI::App* teardrops = app.add_subcommand("get-current-teardrop-options",
                                           "The stored options of tear-drops, as JSON of its -D names");
  AddBoard(*teardrops, options);
  teardrops->group("Teardrops");
  teardrops->callback([&options] { CurrentTeardropOptions(options); });
  for (CLI::App* verb : {list, info, draw, check}) verb->group("Look at a board");
}

void AddGrid(CLI::App* verb, Options& options) {
  verb->add_option("--grid", options.grid, "The component grid, one length or X,Y; without it 25mil")
      ->type_name("LENGTH");
}

void AddSettings(CLI::App* verb, Options& options, Settings settings) {
  if (settings == Settings::None) return;
  AddGrid(verb, options);
  if (settings != Settings::Shove) return;
  verb->add_option("--clearance", options.clearance,
                   "The gap between shoved components, half of it from each; without it 100mil for one of 14 "
                   "pads or more, 20mil for a smaller one")
      ->type_name("LENGTH");
  verb->add_option("--passes", options.passes, "How far the push spreads: the most waves; without it 10")
      ->check(CLI::NonNegativeNumber);
  verb->add_option("--seed", options.seed,
                   "Of the chance that decides where two components have the same centre; without it 1");
}

// What every verb that runs a tool takes.
void AddToolOptions(CLI::App* verb, Options& options, bool takes_parameters, bool picks,
                    Settings settings = Settings::None) {
  AddBoard(*verb, options);
  verb->add_option("--select", options.select, kSelectionHelp)->type_name("SELECTION");
  CLI::Option* output =
      verb->add_option("-o,--output", options.output, "Where the changed board (.kicad_pcb) goes")
          ->type_name("FILE");
  CLI::Option* in_place =
      verb->add_flag("--in-place", options.in_place, "Write the changed board over the given one");
  CLI::Option* dry_run =
      verb->add_flag("--dry-run", options.dry_run, "Tell what would change, write nothing");
  output->excludes(in_place)->excludes(dry_run);
  in_place->excludes(dry_run);
  verb->add_option("--picture", options.picture,
                   "A picture of the result, with what changed shown brightly (.svg)")
      ->type_name("FILE");
  verb->add_option("--report-dir", options.report_dir,
                   "Where a tool's report goes; without it beside the changed board")
      ->type_name("DIR");
  if (picks) {
    AddRepeatable(
        *verb, "--pick", options.picks, "PLACE",
        "A place to pick, X,Y as in the board file, or the name of a component, room or zone; may be "
        "given again");
  }
  if (takes_parameters) AddParameters(*verb, options);
  AddSettings(verb, options, settings);
  verb->add_flag("-y,--yes", options.yes, "Answer every question with yes");
  verb->add_option("--answers", options.answers, "Answers to questions, a line each: question = yes|no")
      ->type_name("FILE");
  verb->add_flag("--json", options.json, "The summary for programs to read");
  AddUnits(*verb, options);
}

void AddOperands(CLI::App& verb, Options& options, Operands operands) {
  if (operands == Operands::File) {
    verb.add_option("FILE", options.file,
                    "Pick-and-place file; numbers in it that name no unit are mm, or mils with --units mil")
        ->required();
  } else if (operands == Operands::TwoComponents) {
    CLI::Option* first = verb.add_option("U1", options.first, "A component, instead of --select or --pick");
    CLI::Option* second = verb.add_option("U2", options.second, "The other one");
    first->needs(second);
    first->excludes("--select")->excludes("--pick");
  }
}

void AddUnGroup(CLI::App& verb, Options& options) {
  verb.add_option("--at", options.cursor, "What is at this place, when nothing is selected; as --pick")
      ->type_name("PLACE")
      ->excludes("--select");
  verb.add_option("--kinds", options.kinds, "Of these kinds only: component,zone,dimension,coordinate")
      ->delimiter(',')
      ->check(CLI::IsMember(GroupKinds()))
      ->type_name("KINDS");
}

void AddTools(CLI::App& app, Options& options) {
  for (const ToolVerb& tool : ToolVerbs()) {
    CLI::App* verb = app.add_subcommand(tool.verb, tool.help);
    verb->group(tool.group);
    AddToolOptions(verb, options, tool.takes_parameters, tool.picks, tool.settings);
    for (const DialogField& field : tool.fields) {
      std::string& value = options.fields[field.name];
      if (field.type) {
        verb->add_option(field.option, value, field.help)->type_name(field.type);
      } else {
        verb->add_flag_callback(
            field.option, [&value] { value = "yes"; }, field.help);
      }
    }
    for (const DialogField& field : tool.named) {
      const auto add = [&options, name = field.name](const std::string& value) {
        options.parameters.push_back(std::string(name) + "=" + value);
      };
      verb->add_option_function<std::string>(field.option, add, field.help)->type_name(field.type);
    }
    AddOperands(*verb, options, tool.operands);
    if (tool.ungroups) AddUnGroup(*verb, options);
    verb->callback([&tool, &options] { tool.ungroups ? UnGroup(options) : RunTool(tool, options); });
  }
}

// The verbs that people say: a word chooses the tool.
void AddSayings(CLI::App& app, Options& options) {
  static const std::map<std::string, const char*> kHelp{
      {"align", "Line the selected components or objects up: left, right, top, bottom, or side by side"},
      {"center", "Centre the selection along x or y on the object at --pick"},
      {"expand", "Move the selection apart along x or y"},
      {"contract", "Move the selection together along x or y"},
      {"spread", "Spread the selection along x or y in equal steps"},
      {"to-grid", "Move the selected components or rooms to the component grid"}};
  for (const auto& [name, help] : kHelp) {
    CLI::App* verb = app.add_subcommand(name, help);
    verb->group("Arranging");
    std::map<std::string, const ToolVerb*> tools;
    std::vector<std::string> words;
    for (const Saying& saying : Sayings()) {
      if (name != saying.verb) continue;
      tools[saying.word] = &FindToolVerb(saying.tool);
      words.emplace_back(saying.word);
    }
    verb->add_option("HOW", options.word, "Which way")->required()->check(CLI::IsMember(words));
    AddToolOptions(verb, options, false, name == "center", tools.begin()->second->settings);
    verb->callback([tools, &options] { RunTool(*tools.at(options.word), options); });
  }
}

void AddArrange(CLI::App& app, Options& options) {
  CLI::App* arrange =
      app.add_subcommand("arrange", "Pack components: into a room, into a box, beside the board");
  arrange->group("Arranging");
  AddToolOptions(arrange, options, false, false);
  CLI::Option_group* where = arrange->add_option_group("Where to");
  where->add_option("--into-room", options.into_room, "The room whose components are packed into it")
      ->type_name("NAME");
  where
      ->add_option("--into", options.into,
                   "The selected components into a box, X,Y,WIDTH,HEIGHT as in the board file")
      ->type_name("BOX");
  where->add_flag("--outside", options.outside, "The selected components above the board and to its right");
  where->require_option(1);
  arrange->callback([&options] { Arrange(options); });
}

void AddShove(CLI::App& app, Options& options) {
  CLI::App* shove = app.add_subcommand("shove", "Shove what overlaps a component out of its way, and on");
  shove->group("Arranging");
  AddRepeatable(*shove, "--at", options.picks, "PLACE",
                "The component that stays, or a place on it, X,Y as in the board file; may be given again");
  shove
      ->add_flag("--all", options.picks_overlaps,
                 "Shove from every component that overlaps another of its side, as long as that helps")
      ->excludes("--at");
  AddToolOptions(shove, options, false, false, Settings::Shove);
  shove->callback([&options] { RunTool(FindToolVerb("shove-components"), options); });
}

void AddAutoposition(CLI::App& app, Options& options) {
  CLI::App* autoposition =
      app.add_subcommand("autoposition", "Put the texts of the selected components beside them");
  autoposition->group("Arranging");
  const CLI::IsMember known(TextPositionWords());
  autoposition->add_option("--designator", options.designator, "Where the designators go")->check(known);
  autoposition->add_option("--comment", options.comment, "Where the comments go")->check(known);
  AddToolOptions(autoposition, options, false, false);
  autoposition->callback([&options] { Autoposition(options); });
}

void AddGridCorrections(CLI::App& app, Options& options) {
  for (const GridVerb& grid : GridVerbs()) {
    CLI::App* verb = app.add_subcommand(grid.verb, grid.help);
    verb->group("Arranging");
    AddBoard(*verb, options);
    verb->add_option("COORDINATE", options.coordinate, "A length")->required();
    AddGrid(verb, options);
    AddUnits(*verb, options);
    verb->callback([&grid, &options] { CorrectToGrid(grid, options); });
  }
}

void AddBoardReportOptions(CLI::App& verb, Options& options) {
  verb.add_option("--select", options.select, "Only what a selection matches counts; as with other verbs")
      ->type_name("SELECTION");
  AddParameters(verb, options);
  verb.add_flag("--ask", options.ask, "By the stored choice and the dialog");
  verb.add_flag("-y,--yes", options.yes, "Accept the dialog as it is");
  verb.add_option("--answers", options.answers, "Answers to questions, a line each")->type_name("FILE");
}

void AddReport(CLI::App* verb, const ReportKind& kind, Options& options) {
  if (kind.TakesFolder()) {
    verb->add_option("BOARD", options.board,
                     "Board file (.kicad_pcb), a folder of footprints, or one (.kicad_mod)")
        ->required();
  } else {
    AddBoard(*verb, options);
  }
  verb->add_option("--format", options.formats, "One or several with commas between")
      ->delimiter(',')
      ->check(CLI::IsMember(kind.Formats()))
      ->type_name("FORMATS");
  verb->add_option("--report-dir", options.report_dir, "Where it goes; without it beside the board")
      ->type_name("DIR");
  if (kind.what == ReportOn::Board) AddBoardReportOptions(*verb, options);
  if (kind.what == ReportOn::Footprint) {
    verb->add_option("--component", options.component,
                     "Whose footprint: a component by its designator, of a folder a footprint by its name")
        ->type_name("NAME");
  }
  AddUnits(*verb, options);
  verb->callback([&kind, &options] { Report(kind, options); });
}

void AddReports(CLI::App& app, Options& options) {
  CLI::App* report = app.add_subcommand("report", "Write a report on a board or a footprint library");
  report->group(kReportGroup);
  report->require_subcommand(1);
  for (const ReportKind& kind : ReportKinds()) {
    AddReport(report->add_subcommand(kind.word, kind.help), kind, options);
    CLI::App* verb = app.add_subcommand(kind.verb, std::string("The same as ketril report ") + kind.word);
    verb->group(kReportGroup);
    AddReport(verb, kind, options);
  }
  CLI::App* display = app.add_subcommand("display-report-file", kDisplayHelp);
  display->group(kReportGroup);
  display->add_option("FILE", options.file, "A file of text")->required();
  display->add_flag("--spread", options.as_spread,
                    "As a spreadsheet: values that commas, semicolons or tabs part, in columns");
  display->callback([&options] { DisplayFile(options); });
}

// What the command tells about itself.
void AddAbout(CLI::App& app, Options& options) {
  CLI::App* completion = app.add_subcommand(
      "completion", "The completion for a shell, as for bash: source <(ketril completion bash)");
  completion->add_option("SHELL", options.word, "Whose")->required()->check(CLI::IsMember(Shells()));
  completion->callback([&] { std::cout << Completion(options.word, OfferedVerbs(app)); });
  CLI::App* manual = app.add_subcommand("manual", "The manual page: ketril manual | man -l -");
  manual->callback([&] { std::cout << Manual(OfferedVerbs(app)); });
  for (CLI::App* verb : {completion, manual}) verb->group("The command itself");
}

std::string ExitStatus() {
  std::string text = "Exit status: ";
  for (int code = 0; const char* meaning : kExitTexts)
    text += (code ? ", " : "") + std::to_string(code) + " " + meaning, ++code;
  return text + ".";
}

int Main(int argc, char** argv) {
  CLI::App app{"Board tools: run them on a board file, or look at one."};
  app.name("ketril");
  app.require_subcommand(1);
  app.set_help_flag("-h,--help", "This help; ketril VERB --help tells a verb's options");
  app.set_version_flag("--version",
                       std::string("ketril " KETRIL_VERSION "\nBoard files (.kicad_pcb) of the versions ") +
                           Editor::kKnownVersions,
                       "The version, and those of the board files that it reads and writes");
  app.footer(ExitStatus() + "\nThe given board is never overwritten unless --in-place says so.");
  Options options;
  AddLook(app, options);
  AddTools(app, options);
  AddSayings(app, options);
  AddArrange(app, options);
  AddShove(app, options);
  AddAutoposition(app, options);
  AddGridCorrections(app, options);
  AddReports(app, options);
  AddAbout(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    // CLI11 prints the help or what is wrong; its own exit codes are not ours.
    return app.exit(error) == 0 ? kExit_Done : kExit_Usage;
  }
  return kExit_Done;
}

}  // namespace

}  // namespace Ketril::Command

int main(int argc, char** argv) {
  using namespace Ketril::Command;
  try {
    return Main(argc, argv);
  } catch (const Failure& failure) {
    std::cerr << "ketril: " << failure.what() << "\n";
    return failure.Code();
  } catch (const std::exception& error) {
    std::cerr << "ketril: " << error.what() << "\n";
    return kExit_Failed;
  }
}
