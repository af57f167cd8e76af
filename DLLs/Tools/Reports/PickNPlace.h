// The pick-and-place file: where each component is to be put, for the machine that assembles the board.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// Writes the file and shows it to the user. The format "CSV" gives quoted values with commas between,
// anything else fixed columns. Components come in a walk from the board's origin to the nearest each;
// coordinates are from the origin, with the unit of the board behind them. While `ToolAborted` is set no
// component is written. Needs an open object scope; raises EHostError when the host fails.
void ReportPickNPlace(TBoard* board, const std::u16string& file_name, const std::u16string& format);

}  // namespace Ketril::Tools
