// Via stitching: copper is flooded with vias of its net, which the editor keeps together as one object. The
// editor has the settings, their dialog, the flood and the removal; this is the order of its calls.
#pragma once

#include "Interfaces/Board.h"
#include "Interfaces/ParameterList.h"

namespace Ketril::Tools {

class TViaStitchingManager {
 public:
  // Raises Exception when the board offers no IPCB_Board2.
  explicit TViaStitchingManager(IPCB_Board* ABoard);

  // By the parameter "Mode", in any case: "Remove" takes stitchings off, "Outline" does nothing, anything
  // else floods. A cancelled dialog and a flood without a via end quietly, and nothing is on the board.
  // Raises EHostError when the host fails; what was done stays done.
  void Run(IServerDocumentView* AView, IParameterList* AParameters);

  // Leaves the state of the command as it is.
  static void GetPLState(IPCB_Board* ABoard, IParameterList* AParameters, LongBool& AEnabled,
                         LongBool& AChecked, LongBool& AVisible, char16_t* ACaption, char16_t* AImage);

 private:
  void Flood(IServerDocumentView* view);

  Ref<IPCB_Board2> FBoard;
};

void ApplyViaStitching(IPCB_Board* board, IServerDocumentView* view, IParameterList* parameters);

}  // namespace Ketril::Tools
