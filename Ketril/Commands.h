// What the verbs do once the command line is read. Each raises Failure.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Editor/Selection/Length.h"
#include "Ketril/Verbs.h"

namespace Ketril::Command {

// Options that the verbs share; each verb reads those that it offers.
struct Options {
  std::string board;  // path of the board file
  std::string output;
  bool in_place = false;
  bool dry_run = false;
  bool json = false;
  bool yes = false;
  std::string select;
  std::string answers;
  std::string picture;
  std::string report_dir;
  std::string beside;
  std::vector<std::string> layers;
  std::string around;
  std::string highlight;
  std::vector<std::string> parameters;  // NAME=VALUE
  bool fail_on_violations = false;
  std::vector<std::string> picks;             // places
  bool picks_overlaps = false;                // components that overlap others are picked
  std::map<std::string, std::string> fields;  // of dialogs, by name; empty ones were not given
  std::string word;                           // of a saying
  std::vector<std::string> formats;           // of reports
  bool ask = false;
  std::string component;
  std::string into_room, into;
  std::string file;  // a pick-and-place file, or a report
  bool as_spread = false;
  std::string first, second;  // components
  bool outside = false;
  std::string grid, clearance;         // lengths; the grid may be two
  std::optional<std::int32_t> passes;  // of a shove
  unsigned seed = 1;
  std::string designator, comment;  // positions
  std::string coordinate;
  std::string cursor;              // a place
  std::vector<std::string> kinds;  // of groups
  Editor::LengthUnit unit = Editor::LengthUnit::Millimetre;
};

void ListTools(const Options& options);    // `ketril list`
void ListObjects(const Options& options);  // `ketril list BOARD`
void Info(const Options& options);
void Draw(const Options& options);
void Check(const Options& options);
void CurrentTeardropOptions(const Options& options);
void Arrange(const Options& options);       // `ketril arrange`
void Autoposition(const Options& options);  // `ketril autoposition`
void UnGroup(const Options& options);       // `ketril un-group`

// RunTool.cpp
void RunTool(const ToolVerb& verb, const Options& options);
void CorrectToGrid(const GridVerb& verb, const Options& options);

}  // namespace Ketril::Command
