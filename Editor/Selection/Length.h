// Lengths as people type them.
#pragma once

#include <optional>
#include <string_view>

namespace Ketril::Editor {

// The unit of a number that names none.
enum class LengthUnit { Millimetre, Mil, Inch };

// "1.27", "1.27mm", "50mil", "0.05in" in board units (1/10000 mil), not rounded; nothing for what is no
// finite length.
std::optional<double> ParseLength(std::string_view text, LengthUnit default_unit);

}  // namespace Ketril::Editor
