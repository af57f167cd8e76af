// The table of exports: each function that the editor finds by name, the frame that it runs in, and the tool.
#include "DLLs/Tools/Convertors/MicrostripeBuilder.h"
#include "DLLs/Tools/Convertors/UnGroup.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Frame/Rule_Abstract.h"
#include "DLLs/Tools/Frame/ToolFrame.h"
#include "DLLs/Tools/Placement/AlignTool.h"
#include "DLLs/Tools/Placement/AutoPlaceNew.h"
#include "DLLs/Tools/Placement/AutoPlacementTool.h"
#include "DLLs/Tools/Placement/PlaceFromFile.h"
#include "DLLs/Tools/Placement/SwapComponents.h"
#include "DLLs/Tools/Reports/PickNPlace.h"
#include "DLLs/Tools/Reports/ReportsTool.h"
#include "DLLs/Tools/Reports/TextReportFile.h"
#include "DLLs/Tools/Teardrops/TeardropTools.h"
#include "DLLs/Tools/Vias/PadToVia.h"
#include "DLLs/Tools/Vias/UnusedPadsRemoval.h"
#include "DLLs/Tools/Vias/ViaShieldingManager.h"
#include "DLLs/Tools/Vias/ViaStitchingManager.h"
#include "Interfaces/Tools.h"

namespace Ketril {

using namespace Tools;

void Tools_ReplaceSelectedPadsWithVias(IPCB_Board* ABoard) {
  RunTool<kNothingWithoutBoard>(ReplaceSelectedPadsWithVias, ABoard);
}
void Tools_ReplaceSelectedViasWithPads(IPCB_Board* ABoard) {
  RunTool<kNothingWithoutBoard>(ReplaceSelectedViasWithPads, ABoard);
}

void Tools_ApplyViaStitching(IPCB_Board* ABoard, IServerDocumentView* AView, IParameterList* AParameters) {
  RunOnInterfaces(ApplyViaStitching, ABoard, AView, AParameters);
}
void Tools_GetViaStitchingCommandState(IPCB_Board* ABoard, IParameterList* AParameters, LongBool& AEnabled,
                                       LongBool& AChecked, LongBool& AVisible, char16_t* ACaption,
                                       char16_t* AImage) {
  TViaStitchingManager::GetPLState(ABoard, AParameters, AEnabled, AChecked, AVisible, ACaption, AImage);
}
void Tools_ApplyViaShielding(IPCB_Board* ABoard, IServerDocumentView* AView, IParameterList* AParameters) {
  RunOnInterfaces(ApplyViaShielding, ABoard, AView, AParameters);
}
void Tools_GetViaShieldingCommandState(IPCB_Board* ABoard, IParameterList* AParameters, LongBool& AEnabled,
                                       LongBool& AChecked, LongBool& AVisible, char16_t* ACaption,
                                       char16_t* AImage) {
  TViaShieldingManager::GetPLState(ABoard, AParameters, AEnabled, AChecked, AVisible, ACaption, AImage);
}
void Tools_RemoveUnusedPads(IPCB_Board* ABoard) {
  RunTool<kStandard>([](TBoard* board) { TUnusedPadsRemoval(board).Run(); }, ABoard);
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
void Tools_LegacyTearDrops(IPCB_Board* ABoard, IParameterList* AParameters) {
  RunTool<kStandard>(LegacyTearDrops, ABoard, AParameters);
}
void Tools_ShowTearDropsForNet(IPCB_Board* ABoard, IPCB_Net* ANet, bool AShow) {
  RunTool<kStandard>(ShowTearDropsForNet, ABoard, ANet, AShow);
}
void Tools_RemoveTearDropsFromPadVia(IPCB_Board* ABoard, IPCB_Primitive* APrimitive) {
  RunTool<kStandard>(RemoveTearDropsFromPadVia, ABoard, APrimitive);
}
void Tools_RemoveTearDropsFromComponent(IPCB_Board* ABoard, IPCB_Primitive* APrimitive) {
  RunTool<kStandard>(RemoveTearDropsFromComponent, ABoard, APrimitive);
}
void Tools_RemoveTearDropsFromConnectedTracks(IPCB_Board* ABoard, IPCB_Primitive* APrimitive) {
  RunTool<kStandard>(RemoveTearDropsFromConnectedTracks, ABoard, APrimitive);
}
void Tools_RemoveTearDropsFromTouch(IPCB_Board* ABoard, IPCB_Primitive* APrimitive) {
  RunTool<kStandard>(RemoveTearDropsFromTouch, ABoard, APrimitive);
}

void Tools_RunArrange(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, TArrangerMethod AMethod) {
  RunTool<kStandard>(ArrangeSelection, ABoard, AView, AMethod);
}
void Tools_AutoPlaceAlignLeft(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeLeft);
}
void Tools_AutoPlaceAlignRight(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeRight);
}
void Tools_AutoPlaceAlignTop(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeTop);
}
void Tools_AutoPlaceAlignBottom(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeBottom);
}
void Tools_AutoPlaceAlignLeftSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeLeftSideBySide);
}
void Tools_AutoPlaceAlignRightSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeRightSideBySide);
}
void Tools_AutoPlaceAlignTopSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeTopSideBySide);
}
void Tools_AutoPlaceAlignBottomSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeBottomSideBySide);
}
void Tools_AutoPlaceCentreHoriziontal(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeHorCenter);
}
void Tools_AutoPlaceCentreVertical(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeVertCenter);
}
void Tools_AutoPlaceExpandXComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeExpandX);
}
void Tools_AutoPlaceExpandYComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeExpandY);
}
void Tools_AutoPlaceContractXComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeContractX);
}
void Tools_AutoPlaceContractYComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeContractY);
}
void Tools_AutoPlaceSpreadXComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeSpreadX);
}
void Tools_AutoPlaceSpreadYComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceSelection, ABoard, AView, eArrangeSpreadY);
}
void Tools_AutoPlaceRunDialog(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceRunDialog, ABoard, AView);
}

void Tools_RunArrangeToRectangle(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, TCoord ALowX,
                                 TCoord ALowY, TCoord AHighX, TCoord AHighY) {
  RunTool<kStandard>(ArrangeSelectionToRectangle, ABoard, AView, ALowX, ALowY, AHighX, AHighY);
}
void Tools_RunArrangeToRoom(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                            const std::u16string& ARoomName) {
  RunTool<kStandard>(ArrangeToRoomByName, ABoard, AView, ARoomName);
}
bool Tools_RunArrangeToRoomRule(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, IPCB_Rule* ARoom) {
  const auto arrange = [](TBoard* board, IPCBGraphicalViewInterface* view, IPCB_Rule* room) {
    return ArrangeToRoom(board, view, CheckedCast<TRule>(CreatePrimitiveWrapper(Ref<IPCB_Primitive>(room))));
  };
  return RunTool<kStandard>(arrange, ABoard, AView, ARoom);
}
void Tools_RunArrangeOutsideBoard(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(ArrangeOutsideBoard, ABoard, AView);
}
void Tools_AutoPlaceToRectangle(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                                IParameterList* AParameters) {
  RunTool<kStandard>(AutoPlaceToRectangle, ABoard, AView, AParameters);
}
void Tools_AutoPlaceToRoom(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                           IParameterList* AParameters) {
  RunTool<kStandard>(AutoPlaceToRoom, ABoard, AView, AParameters);
}
void Tools_AutoPlaceOutsideBoard(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(AutoPlaceOutsideBoard, ABoard, AView);
}
void Tools_RunRoomArrange(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                          IPCB_RoomArrangeOptions* AOptions) {
  const auto arrange = [](TBoard* board, IPCBGraphicalViewInterface* view, IPCB_RoomArrangeOptions* options) {
    ArrangeRooms(board, view, ReadRoomAlignParameters(options));
  };
  RunTool<kStandard>(arrange, ABoard, AView, AOptions);
}
void Tools_ArrangeRooms(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, IParameterList*) {
  RunTool<kStandard>(AutoPlaceRooms, ABoard, AView);
}

void Tools_MoveAllCompsToGrid(IPCB_Board* ABoard) {
  RunTool<kStandard>(MoveAllCompsToGrid, ABoard);
}
void Tools_MoveAllRoomsToGrid(IPCB_Board* ABoard) {
  RunTool<kStandard>(MoveAllRoomsToGrid, ABoard);
}
TCoord Tools_CompGridCorrectUpX(IPCB_Board* ABoard, TCoord ACoord) {
  return RunTool<kStandard>(CompGridCorrectUpX, ABoard, ACoord);
}
TCoord Tools_CompGridCorrectDownX(IPCB_Board* ABoard, TCoord ACoord) {
  return RunTool<kStandard>(CompGridCorrectDownX, ABoard, ACoord);
}
TCoord Tools_CompGridCorrectUpY(IPCB_Board* ABoard, TCoord ACoord) {
  return RunTool<kStandard>(CompGridCorrectUpY, ABoard, ACoord);
}
TCoord Tools_CompGridCorrectDownY(IPCB_Board* ABoard, TCoord ACoord) {
  return RunTool<kStandard>(CompGridCorrectDownY, ABoard, ACoord);
}
void Tools_ShoveComponents(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunTool<kStandard>(ShoveComponents, ABoard, AView);
}
void Tools_AutopositionText(IPCB_Board* ABoard, TTextAutoposition ANamePosition,
                            TTextAutoposition ACommentPosition, bool ASkipName, bool ASkipComment) {
  RunTool<kStandard>(AutopositionText, ABoard, ANamePosition, ACommentPosition, ASkipName, ASkipComment);
}

void Tools_PlaceFromFile(IPCB_Board* ABoard, const std::u16string& AFileName) {
  RunTool<kStandard>(PlaceFromFile, ABoard, AFileName);
}
void Tools_SwapComponents(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView) {
  RunOnInterfaces(SwapComponents, ABoard, AView);
}

void Tools_UnGroup(IPCB_Board* ABoard, bool ASelected, TObjectSet AObjectSet,
                   const std::u16string& AQuestion) {
  RunTool<kStandard>(UnGroup, ABoard, ASelected, AObjectSet, AQuestion);
}

// The scope is opened, but the board is not wrapped: the tool does so for each net.
void Tools_MakeMicrostripe(IPCB_Board* ABoard, const TMicrostripeSettings* ASettings) {
  const Ref<IPCB_Board> board(ABoard);
  const TObjectScope scope;
  MakeMicrostripe(board, ASettings);
}

void Tools_ReportSpecs(IParameterList* AParameters, IPCB_Board* ABoard, IReportOutputOptions* AOptions,
                       const std::u16string& AFileName) {
  RunTool<kStandard>(ReportSpecs, ABoard, AParameters, AOptions, AFileName);
}

void Tools_ReportNetlistStatus(IPCB_Board* ABoard, const std::u16string& AFileName,
                               IReportOutputOptions* AOptions) {
  RunTool<kStandard>(ReportNetlistStatus, ABoard, AFileName, AOptions);
}
void Tools_ReportPickNPlace(IPCB_Board* ABoard, const std::u16string& AFileName,
                            const std::u16string& AFormat) {
  RunTool<kStandard>(ReportPickNPlace, ABoard, AFileName, AFormat);
}
void Tools_CreateReportForComponent(IPCB_Board* ABoard, const std::u16string& AFileName,
                                    IPCB_Library* ALibrary) {
  RunTool<kStandard>(CreateReportForComponent, ABoard, AFileName, ALibrary);
}
void Tools_CreateReportForLibrary(IPCB_Board* ABoard, const std::u16string& AFileName,
                                  IPCB_Library* ALibrary) {
  RunTool<kStandard>(CreateReportForLibrary, ABoard, AFileName, ALibrary);
}
void Tools_DisplayReportFile(const std::u16string& AFileName, bool AAsSpread) {
  const std::u16string file_name = AFileName;
  const TObjectScope scope;
  DisplayReportFile(file_name, AAsSpread);
}

}  // namespace Ketril
