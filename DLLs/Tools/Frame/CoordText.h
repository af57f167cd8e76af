// Coordinates as mils, as millimetres and as text. One mil has 10000 units, one millimetre 10000 / 0.0254.
#pragma once

#include <string>
#include <string_view>

#include "Interfaces/Types.h"

namespace Ketril::Tools {

// In mils, rounded to 3 decimal digits, a half to the even neighbour.
double CoordToMils(TCoord c);
// To the nearest unit, a half to the even neighbour. What is beyond the range of a coordinate becomes the end
// of the range; what is no number becomes 0.
TCoord MilsToCoord(double mils);
TCoord MMsToCoord(double millimetres);

// "12.5mil" with up to 3 decimal digits, or "0.318mm" with as many as the editor is set to; a half goes to
// the even neighbour, trailing zeros go. For millimetres the editor's option is read at each call: raises
// EHostError when the client fails.
std::u16string CoordUnitToString(TCoord c, TUnit unit);

// Reads a number with or without "mm" or "mil" behind it, in any case; blanks may stand at both ends of the
// number. Without such a suffix the number is in `default_unit`. `unit` becomes the unit that held. False,
// and both results left alone, when there is no number or when it is beyond the range of a coordinate.
bool StringToCoordUnit(std::u16string_view text, TUnit default_unit, TCoord& c, TUnit& unit);

}  // namespace Ketril::Tools
