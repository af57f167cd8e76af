// Pads and vias without the copper that nothing connects to, and with it again. The user says in the editor's
// dialog which objects are treated and how; the objects themselves know what is unused.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "Interfaces/Vias.h"

namespace Ketril::Tools {

class TUnusedPadsRemoval {
 public:
  explicit TUnusedPadsRemoval(TBoard* Board) : FBoard(Board) {}

  // Vias come before pads; back-drilled vias are left alone. A cancelled dialog changes nothing. Raises
  // EHostError when the host fails; what was done stays done.
  void Run();

 private:
  void ProcessObject(TPrimitive* object) const;

  TBoard* FBoard;
  TUnusedPadsOptions Options;
};

}  // namespace Ketril::Tools
