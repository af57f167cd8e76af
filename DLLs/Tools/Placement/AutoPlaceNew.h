// Shoving components out of the way of one that was put among them.
//
// The push spreads in waves. In the first one the component that was picked pushes those that overlap it, in
// the next one each of these pushes what it came to lie on, and so on; who has pushed is not pushed again.
// The editor's options say after how many waves it ends. A component for which no place is found stays where
// it overlaps, and so does a locked one. ESC ends the shove after the push in hand; what has moved stays so.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesGroups.h"

namespace Ketril::Tools {

// Lets the user pick a component and shoves from it, again and again until he cancels. Where two components
// have the same centre along an axis, chance decides the way: std::rand.
void ShoveComponents(TBoard* ABoard, IPCBGraphicalViewInterface* AView);

// The shove from one component, under an hourglass. The marks stay on the components afterwards.
void ShoveFrom(TBoard* board, TComp* start);

}  // namespace Ketril::Tools
