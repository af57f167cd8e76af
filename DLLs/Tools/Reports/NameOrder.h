// The order of footprints in the report on a library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Ketril::Tools {

// -1, 0 or 1. Case plays no part, for the ASCII letters; punctuation comes ahead of blanks, digits and
// letters, but for what ASCII has ahead of the digits. Runs of digits compare by their length first, so R2 is
// below R10; of names of which one begins the other the longer one is greater.
int CompareNames(std::u16string_view a, std::u16string_view b);

// Ascending; of equal names the later one of the list comes first.
std::vector<std::u16string> SortedNames(const std::vector<std::u16string>& names);

}  // namespace Ketril::Tools
