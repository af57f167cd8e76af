// Numbers as text, the same on every system: the decimal separator is the point, whatever the locale.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Platform/Text.h"

namespace Ketril::Tools {

// Characters up to the blank are passed over at both ends, and one leading + is taken. Nothing else may stand
// beside the number: "12.0" is no integer; hexadecimal digits, thousands separators, "inf" and "nan" are no
// numbers. The result is empty, too, for a number beyond the range of the type and for a text of blanks.
std::optional<std::int64_t> TextToInt64(std::u16string_view text);
std::optional<double> TextToDouble(std::u16string_view text);

// The shortest texts that read back as the same number. `number` is finite.
std::u16string Int64ToText(std::int64_t number);
std::u16string DoubleToText(double number);
std::u16string PlainDoubleToText(double number);  // never with an exponent

// Reads the value of a parameter: as above, but a text of blanks, or of nothing, is 0. False leaves `number`
// alone.
template <class Number>
requires std::integral<Number> || std::same_as<Number, double>
bool ReadNumber(std::u16string_view text, Number& number) {
  if (Platform::Trim(text).empty()) {
    number = 0;
    return true;
  }
  if constexpr (std::integral<Number>) {
    const std::optional<std::int64_t> found = TextToInt64(text);
    if (!found || !std::in_range<Number>(*found)) return false;
    number = static_cast<Number>(*found);
  } else {
    const std::optional<double> found = TextToDouble(text);
    if (!found) return false;
    number = *found;
  }
  return true;
}

}  // namespace Ketril::Tools
