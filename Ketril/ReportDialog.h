// The dialog of the board information report as names and values.
#pragma once

#include <string>

#include "Interfaces/Reports.h"

namespace Ketril::Command {

// BoardReport_ with the option's name behind it, as BoardReport_RoutingInfo, and yes or no. False when there
// is no such name, or the value is neither.
bool SetBoardReportField(TBoardReportOptionSet& options, const std::string& name, const std::string& value);

// The names with their values, for the terminal.
std::string BoardReportFields(const TBoardReportOptionSet& options);

}  // namespace Ketril::Command
