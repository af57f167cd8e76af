// Placement from a pick-and-place file.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// Puts each component that the file names where it says: moves it so that the centre of the box of its pads
// is on the given place, counted from the board's origin, turns it over to the given side and to the given
// rotation about that place, and sets its comment. A component that the board does not have, or that is
// locked, is passed over without a word. Layouts are told in PickAndPlaceFile.h.
//
// In a headed file a line with a missing or surplus field, without one of its values or with a coordinate
// that is none goes to the message panel and is skipped; a dialog tells about them at the end. In fixed
// columns a coordinate that is none ends the run before that component is touched, a line that ends before
// its side ends it when the component was moved. What ends a run is told in a dialog, whatever it is, and is
// no exception; what was placed stays.
void PlaceFromFile(TBoard* ABoard, const std::u16string& AFileName);

}  // namespace Ketril::Tools
