// `ketril display-report-file`: a written report in the terminal.
#pragma once

#include <string>
#include <string_view>

#include "Ketril/Commands.h"

namespace Ketril::Command {

inline constexpr const char* kDisplayHelp = "Show a written report in the terminal";

// Has the tool show the file: its text, or, as a spreadsheet, its values in columns. Raises Failure when the
// file cannot be read.
void DisplayFile(const Options& options);

// Comma separated values (RFC 4180) in columns, numbers to the right; semicolons or tabs may part them as
// well, which is seen from the first line that has any. Empty lines part blocks with columns of their own.
std::string InColumns(std::string_view values);

}  // namespace Ketril::Command
