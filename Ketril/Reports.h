// `ketril report`: the report tools, and where their reports go.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "Ketril/Commands.h"

namespace Ketril::Command {

inline constexpr const char* kReportGroup = "Reports";  // the heading of the help

enum class ReportOn : std::uint8_t { Board, Nets, Placement, Footprint, Library };

// One report that the tools make: `ketril report WORD`, or by the verb that is named after the tool.
struct ReportKind {
  const char* word;         // "board"
  const char* verb;         // "report-specs"
  const char* export_name;  // "Tools_ReportSpecs"
  const char* help;
  const char* formats;  // with commas between; the first is the one that is written when none is named
  ReportOn what;

  std::vector<std::string> Formats() const;
  // Is it one on footprints, which may come from a library's folder in the place of a board.
  bool TakesFolder() const { return what == ReportOn::Footprint || what == ReportOn::Library; }
};
std::span<const ReportKind> ReportKinds();

// Writes a report on the board, or the library, into --report-dir, else beside the board, in each of the
// forms, and names the files. The tables of an HTML page lead to a picture of the board, which is written
// beside it. Raises Failure.
void Report(const ReportKind& kind, const Options& options);

// The folder that holds the style sheets' folder: beside the command, where it was installed or built.
std::filesystem::path InstallationFolder();

}  // namespace Ketril::Command
