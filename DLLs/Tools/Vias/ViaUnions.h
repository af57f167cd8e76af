// What via stitching and via shielding share: they drive the editor's own objects, through its interfaces
// alone.
#pragma once

#include <string_view>

#include "DLLs/Tools/Frame/HostLink.h"
#include "Interfaces/Board.h"
#include "Interfaces/ParameterList.h"

namespace Ketril::Tools {

// Raises Exception when the board offers no IPCB_Board2, also when there is none.
Ref<IPCB_Board2> BoardForVias(IPCB_Board* board);

// True when the parameter "Mode" is there and is that word, in any case of ASCII letters.
bool ModeIs(IParameterList* parameters, std::u16string_view word);

// Has the editor draw the board and the object anew.
void RefreshUnion(const Ref<IPCB_Board2>& board, const Ref<IPCB_SmartUnionObject>& object);

// Clears the union index of the reference via and closes the edit: the vias that are built from here on join
// no union until they are given one.
template <class Options>
void ReleaseReferenceVia(const Ref<Options>& working) {
  const auto via = On(working).Read(&Options::GetReferenceVia);
  On(via).Call(&IPCB_Primitive::SetState_UnionIndex, 0);
  On(working).Call(&Options::EndOptionsEdit);
}

}  // namespace Ketril::Tools
