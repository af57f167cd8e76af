// The report of an add run of either builder: a text file beside the board.
#pragma once

#include "DLLs/Tools/Frame/FunctionRef.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// What the report tells of pads or of vias.
struct TTeardropReportPart {
  bool Told = false;
  std::int32_t Visited = 0;
  std::int32_t Failed = 0;
};

// Writes the report, with the extension REP, and has the editor open it. Below the numbers of a part it lists
// the objects that `lists` picks, by their descriptors. Raises EHostError, and as ReplaceReportFile does.
void WriteTeardropReport(TBoard* board, const TTeardropReportPart& pads, const TTeardropReportPart& vias,
                         FunctionRef<bool(const TPrimitive*)> lists);

}  // namespace Ketril::Tools
