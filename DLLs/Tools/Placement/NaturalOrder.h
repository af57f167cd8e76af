// The order in which people list names that hold numbers: R2 before R10.
#pragma once

#include <string_view>

namespace Ketril::Tools {

// -1, 0 or 1. Two numbers compare as numbers. Otherwise, where both texts hold a digit or a point, their
// blanks are passed over and they are compared chunk by chunk, runs of digits and points against runs of
// other characters, of which a sign at the very start stays with the first; the first chunks that differ
// decide, as numbers if both are some. Letters compare without regard to ASCII case, and of two texts of
// which one begins the other the shorter comes first.
int CompareNatural(std::u16string_view a, std::u16string_view b);

}  // namespace Ketril::Tools
