// The net status report: each net with its layer and how long it is routed.
#pragma once

#include <memory>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Reports/PCBReport.h"

namespace Ketril::Tools {

class TNetReporter {
 public:
  explicit TNetReporter(TBoard* board) : FBoard(board) {}
  // The report, finished; nets ascend by name, and their names lead to them. It cannot be interrupted. Needs
  // an open object scope; raises EHostError when the host fails.
  std::unique_ptr<TPCBReport> CreateReport();

 private:
  TBoard* FBoard;
};

}  // namespace Ketril::Tools
