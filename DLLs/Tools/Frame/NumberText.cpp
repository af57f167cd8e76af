#include "DLLs/Tools/Frame/NumberText.h"

#include <charconv>

namespace Ketril::Tools {
namespace {

template <class Number>
std::optional<Number> Convert(std::u16string_view text) {
  text = Platform::Trim(text);
  if (text.starts_with(u'+')) {
    text.remove_prefix(1);
    if (text.starts_with(u'-')) return {};
  }
  std::string digits;
  for (const char16_t unit : text) {
    // Letters but that of the exponent go out here: they would pass as "inf" or "nan".
    if (unit > u'9' && unit != u'e' && unit != u'E') return {};
    digits.push_back(static_cast<char>(unit));
  }
  Number number{};
  const char* const end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || rest != end) return {};
  return number;
}

template <class Number, class... Format>
std::u16string ToText(Number number, Format... format) {
  char buffer[1100];  // the smallest double has 1077 characters without an exponent
  char* const end = std::to_chars(buffer, buffer + sizeof buffer, number, format...).ptr;
  return std::u16string(buffer + 0, end);
}

}  // namespace

std::optional<std::int64_t> TextToInt64(std::u16string_view text) {
  return Convert<std::int64_t>(text);
}

std::optional<double> TextToDouble(std::u16string_view text) {
  return Convert<double>(text);
}

std::u16string Int64ToText(std::int64_t number) {
  return ToText(number);
}

std::u16string DoubleToText(double number) {
  return ToText(number);
}

std::u16string PlainDoubleToText(double number) {
  return ToText(number, std::chars_format::fixed);
}

}  // namespace Ketril::Tools
