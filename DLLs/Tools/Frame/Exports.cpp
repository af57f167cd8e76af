// The table of exports: each function that the editor finds by name, the frame that it runs in, and the tool.
#include "DLLs/Tools/Frame/ToolFrame.h"
#include "DLLs/Tools/Teardrops/TeardropTools.h"
#include "DLLs/Tools/Vias/PadToVia.h"
#include "Interfaces/Tools.h"

namespace Ketril {

using namespace Tools;

void Tools_ReplaceSelectedPadsWithVias(IPCB_Board* ABoard) {
  RunTool<kNothingWithoutBoard>(ReplaceSelectedPadsWithVias, ABoard);
}
void Tools_ReplaceSelectedViasWithPads(IPCB_Board* ABoard) {
  RunTool<kNothingWithoutBoard>(ReplaceSelectedViasWithPads, ABoard);
}

void Tools_TearDrops(IPCB_Board* ABoard, IParameterList* AParameters) {
  RunTool<kStandard>(TearDrops, ABoard, AParameters);
}
TTeardropOptionsEx Tools_GetCurrentTeardropOptions(IPCB_Board* ABoard) {
  return RunTool<kNoScope>(GetCurrentTeardropOptions, ABoard);
}
void Tools_RemoveTearDropsOnSelected(IPCB_Board* ABoard) {
  RunTool<kStandard>(RemoveTearDropsOnSelected, ABoard);
}
void Tools_RemoveDropsViolation(IPCB_Board* ABoard) {
  RunTool<kStandard>(RemoveDropsViolation, ABoard);
}

}  // namespace Ketril
