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
#include "Interfaces/ParameterList.h"
#include "Interfaces/Teardrops.h"

#pragma GCC visibility push(default)
namespace Ketril {
extern "C" {

// Turn the selected through-hole pads that belong to no component into vias, and the selected vias into pads.
// An empty board: nothing happens.
void Tools_ReplaceSelectedPadsWithVias(IPCB_Board* ABoard);
void Tools_ReplaceSelectedViasWithPads(IPCB_Board* ABoard);

// Adds teardrops to the board, or removes them: what and where is told by the parameters, of the names
// TeardropParam_PercentForVias, ..ForPads, ..ForTracks, ..ForTJunctions with _Length or _Width behind them, in
// percent, and TeardropParam_FlagsEx, a sum of TTeardropFlag. Those that are missing have their default; when
// all are missing, AParameters empty included, the options come from the store and the editor's dialog.
void Tools_TearDrops(IPCB_Board* ABoard, IParameterList* AParameters);
// The options of the store, and the defaults for what it lacks.
TTeardropOptionsEx Tools_GetCurrentTeardropOptions(IPCB_Board* ABoard);
// Removes the teardrops that touch a selected arc, pad, via or track.
void Tools_RemoveTearDropsOnSelected(IPCB_Board* ABoard);
// Removes the teardrop regions that violate a rule, as of the last check of the board.
void Tools_RemoveDropsViolation(IPCB_Board* ABoard);

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
#pragma GCC visibility pop
