// The functions that libKetrilTools.so exports. An editor finds them by name:
//
//   void* library = dlopen("libKetrilTools.so", RTLD_NOW);
//   auto* replace = reinterpret_cast<decltype(&Ketril::Tools_ReplaceSelectedPadsWithVias)>(
//       dlsym(library, "Tools_ReplaceSelectedPadsWithVias"));
//   replace(board);
//
// All are called on the editor's main thread and may be called from within each other, through messages that
// a running tool delivers. They catch nothing: when a host call fails, or a tool does, an exception derived
// from std::exception reaches the caller, and every reference that the library took has been given back.
// Interfaces are borrowed for the call. What a tool changed before it failed stays changed. The library has
// to stay loaded as long as such an exception, or an object that the library made, is held.
#pragma once

#include "Interfaces/Board.h"
#include "Interfaces/Microstrip.h"
#include "Interfaces/ParameterList.h"
#include "Interfaces/Picks.h"
#include "Interfaces/Reports.h"
#include "Interfaces/Teardrops.h"

#pragma GCC visibility push(default)
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"  // a record of fixed layout is handed back
#endif
namespace Ketril {
extern "C" {

// Turn the selected through-hole pads that belong to no component into vias, and the selected vias into pads.
// An empty board: nothing happens.
void Tools_ReplaceSelectedPadsWithVias(IPCB_Board* ABoard);
void Tools_ReplaceSelectedViasWithPads(IPCB_Board* ABoard);

// Floods copper with stitching vias of its net, as the editor's dialog says. The parameter "Mode" with the
// value "Remove" takes stitchings away again; with "Outline" nothing happens.
void Tools_ApplyViaStitching(IPCB_Board* ABoard, IServerDocumentView* AView, IParameterList* AParameters);
// Fences the selected objects, or a net, with vias, as the editor's dialog says. The parameter "Mode" with
// the value "RemoveShielding" takes shieldings away again.
void Tools_ApplyViaShielding(IPCB_Board* ABoard, IServerDocumentView* AView, IParameterList* AParameters);
// The state of these commands is the editor's: they leave it as it is.
void Tools_GetViaStitchingCommandState(IPCB_Board* ABoard, IParameterList* AParameters, LongBool& AEnabled,
                                       LongBool& AChecked, LongBool& AVisible, char16_t* ACaption,
                                       char16_t* AImage);
void Tools_GetViaShieldingCommandState(IPCB_Board* ABoard, IParameterList* AParameters, LongBool& AEnabled,
                                       LongBool& AChecked, LongBool& AVisible, char16_t* ACaption,
                                       char16_t* AImage);
// Takes the copper of pads and vias away on layers where nothing connects to it, or gives it back, as the
// editor's dialog says.
void Tools_RemoveUnusedPads(IPCB_Board* ABoard);

// Adds teardrops to the board, or removes them: what and where is told by the parameters, of the names
// TeardropParam_PercentForVias, ..ForPads, ..ForTracks, ..ForTJunctions with _Length or _Width behind them,
// in percent, and TeardropParam_FlagsEx, a sum of TTeardropFlag. Those that are missing have their default;
// when all are missing, AParameters empty included, the options come from the store and the editor's dialog.
void Tools_TearDrops(IPCB_Board* ABoard, IParameterList* AParameters);
// The options of the store, and the defaults for what it lacks.
TTeardropOptionsEx Tools_GetCurrentTeardropOptions(IPCB_Board* ABoard);
// Removes the teardrops that touch a selected arc, pad, via or track.
void Tools_RemoveTearDropsOnSelected(IPCB_Board* ABoard);
// Removes the teardrop regions that violate a rule, as of the last check of the board.
void Tools_RemoveDropsViolation(IPCB_Board* ABoard);

// The older builder, whose teardrops are tracks and arcs on round pads, vias and wider tracks. Parameters
// AllPads, AllVias, AllTracks, Selected, Report and Force with the value True, Style (0 arcs, 1 tracks) and
// Action (Add, Remove); those that are missing have their default, as told in Interfaces/Teardrops.h; when
// all are missing, AParameters empty included, the options come from the store and the editor's dialog.
void Tools_LegacyTearDrops(IPCB_Board* ABoard, IParameterList* AParameters);
// The teardrops of a net, of either builder, are drawn or not; with an empty net nothing happens.
void Tools_ShowTearDropsForNet(IPCB_Board* ABoard, IPCB_Net* ANet, bool AShow);
// Remove the teardrops of either builder: those that touch the object, unless that is part of a component;
// that touch a pad of the component; that touch the object, if it is a track, or a track that touches it. The
// last does the first of these for a pad or via, the third for a track or arc, and nothing for anything else.
// On a library nothing happens.
void Tools_RemoveTearDropsFromPadVia(IPCB_Board* ABoard, IPCB_Primitive* APrimitive);
void Tools_RemoveTearDropsFromComponent(IPCB_Board* ABoard, IPCB_Primitive* APrimitive);
void Tools_RemoveTearDropsFromConnectedTracks(IPCB_Board* ABoard, IPCB_Primitive* APrimitive);
void Tools_RemoveTearDropsFromTouch(IPCB_Board* ABoard, IPCB_Primitive* APrimitive);

// Arrange the selection: components, free objects, or, where only texts are selected, these. Locked objects
// stay. `AView` may be empty but where the user points at something: only then it is asked what is there.
void Tools_RunArrange(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, TArrangerMethod AMethod);
// The same by name, for the user: under an hourglass, except for centring, where he picks the object that the
// others are centred on.
void Tools_AutoPlaceAlignLeft(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceAlignRight(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceAlignTop(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceAlignBottom(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceAlignLeftSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceAlignRightSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceAlignTopSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceAlignBottomSideBySide(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceCentreHoriziontal(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceCentreVertical(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceExpandXComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceExpandYComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceContractXComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceContractYComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceSpreadXComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
void Tools_AutoPlaceSpreadYComps(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
// As the editor's alignment dialog says.
void Tools_AutoPlaceRunDialog(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);

// Pack components into rows: the selected ones into a rectangle, given or by parameters or picked; those of a
// room, selected or not, into the room; the selected ones beside the board. Lengths are in units. The Boolean
// is false, and nothing is done, for a rule that is no room.
void Tools_RunArrangeToRectangle(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, TCoord ALowX,
                                 TCoord ALowY, TCoord AHighX, TCoord AHighY);
void Tools_RunArrangeToRoom(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                            const std::u16string& ARoomName);
bool Tools_RunArrangeToRoomRule(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, IPCB_Rule* ARoom);
void Tools_RunArrangeOutsideBoard(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
// Parameters "Location1.x", "Location1.y", "Location2.x" and "Location2.y"; the list may be empty.
void Tools_AutoPlaceToRectangle(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                                IParameterList* AParameters);
// Parameters "RoomName", or "RoomsToUpdateCount" with "Room1", "Room2" and so on; the list may be empty.
void Tools_AutoPlaceToRoom(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                           IParameterList* AParameters);
void Tools_AutoPlaceOutsideBoard(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);

// Lay the selected rooms out in rows and columns, each with what it holds: by the options given, and as the
// editor's dialog says. The parameters are not read.
void Tools_RunRoomArrange(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView,
                          IPCB_RoomArrangeOptions* AOptions);
void Tools_ArrangeRooms(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView, IParameterList* AParameters);

// Move the reference points of the selected components, or the low corners of the selected rooms, to the
// board's component grid. Where locked components are selected the user is asked whether to go on, and on Yes
// they move too; where rooms are, whether what they hold moves along. ESC stops between two objects. A grid
// out of range is changed on the board: 100 to 100000000 units for components, 10000 to 10000000 for rooms.
void Tools_MoveAllCompsToGrid(IPCB_Board* ABoard);
void Tools_MoveAllRoomsToGrid(IPCB_Board* ABoard);
// A coordinate on the component grid: down towards zero, up from there to what is not below the coordinate. A
// coordinate on the grid stays.
TCoord Tools_CompGridCorrectUpX(IPCB_Board* ABoard, TCoord ACoord);
TCoord Tools_CompGridCorrectDownX(IPCB_Board* ABoard, TCoord ACoord);
TCoord Tools_CompGridCorrectUpY(IPCB_Board* ABoard, TCoord ACoord);
TCoord Tools_CompGridCorrectDownY(IPCB_Board* ABoard, TCoord ACoord);
// The user picks components until he cancels; from each one those that overlap it are shoved out of its way,
// and those that they come to lie on, as many waves on as the editor's options say.
void Tools_ShoveComponents(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);
// Puts the designators and comments of the selected components where the positions say.
void Tools_AutopositionText(IPCB_Board* ABoard, TTextAutoposition ANamePosition,
                            TTextAutoposition ACommentPosition, bool ASkipName, bool ASkipComment);
// Reads a pick-and-place file and puts the components that it names where it says: the centre of a
// component's pads on the given place, on the given side, turned to the given rotation, with the given
// comment. What goes wrong is told in an error dialog, and line by line in the message panel of the
// workspace; components that were placed before stay placed. A failure of the editor ends it in the same
// dialog and does not reach the caller, unless it is the dialog that fails.
void Tools_PlaceFromFile(IPCB_Board* ABoard, const std::u16string& AFileName);
// Two components exchange their places, sides, rotations, the places of their texts and their unions: the two
// that are selected, when nothing else is, otherwise pairs that the user picks until he cancels.
void Tools_SwapComponents(IPCB_Board* ABoard, IPCBGraphicalViewInterface* AView);

// Dissolves groups of the kinds of AObjectSet into free primitives: with ASelected the selected ones, or,
// when nothing is selected, the one under the cursor; else those that the user picks until he cancels.
// AQuestion is what he is asked before. The board offers IPCB_BoardPicks (Interfaces/Picks.h) for what is
// pointed at.
void Tools_UnGroup(IPCB_Board* ABoard, bool ASelected, TObjectSet AObjectSet,
                   const std::u16string& AQuestion);

// Turns selected tracks that meet at right angles into copper regions, an outline for all that hang together
// of a net and layer, with mitred bends and free ends cut square. Nothing happens without settings, or when
// neither is from 0 to below 1.
void Tools_MakeMicrostripe(IPCB_Board* ABoard, const TMicrostripeSettings* ASettings);

// The board information report. Parameters of the names of TBoardReportOption, without their prefix and with
// the value True, choose what it tells, or All all of it; without any of them the stored choice and the
// board's dialog. AOptions are the forms in which it is written; empty: by the default style sheet. AFileName
// is the path after which it is named; empty: the board's.
void Tools_ReportSpecs(IParameterList* AParameters, IPCB_Board* ABoard, IReportOutputOptions* AOptions,
                       const std::u16string& AFileName);

// The net status report: each net, its layer and its routed length.
void Tools_ReportNetlistStatus(IPCB_Board* ABoard, const std::u16string& AFileName,
                               IReportOutputOptions* AOptions);
// The pick-and-place file, as quoted values for the format "CSV", else in fixed columns; it is shown.
void Tools_ReportPickNPlace(IPCB_Board* ABoard, const std::u16string& AFileName,
                            const std::u16string& AFormat);
// Texts on a footprint library and its current component, which lies on ABoard; they are shown.
void Tools_CreateReportForComponent(IPCB_Board* ABoard, const std::u16string& AFileName,
                                    IPCB_Library* ALibrary);
void Tools_CreateReportForLibrary(IPCB_Board* ABoard, const std::u16string& AFileName,
                                  IPCB_Library* ALibrary);
// Shows a written report, as a spreadsheet or in the text editor.
void Tools_DisplayReportFile(const std::u16string& AFileName, bool AAsSpread);

// Gives a view of the library's memory, for diagnostics; the values are those of the moment in which they are
// read. Returns 0.
std::int32_t GetMemoryInfo(Ref<IServerMemoryInfo>& AInfo);

// Two names that debuggers look for in a module: where a call of a method that is made at run time could be
// intercepted, and the address of a function through which a debugger could call into the module. This
// library makes no methods at run time and has no such function: the first does nothing, the second is null.
void TMethodImplementationIntercept();
extern void* dbkFCallWrapperAddr;

}  // extern "C"
}  // namespace Ketril
#ifdef __clang__
#pragma clang diagnostic pop
#endif
#pragma GCC visibility pop
