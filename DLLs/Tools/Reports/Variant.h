// A value of a report of whatever type, as the text that the report shows.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <type_traits>

#include "DLLs/Tools/Frame/NumberText.h"

namespace Ketril::Tools {

// Texts stay, numbers take their shortest form with a point, Booleans are True and False. It keeps the text,
// so it may outlive what it was made from.
class Variant {
 public:
  Variant() = default;                                      // an empty text
  Variant(std::u16string text) : text_(std::move(text)) {}  // NOLINT: values are given as they are
  Variant(std::u16string_view text) : text_(text) {}        // NOLINT
  Variant(const char16_t* text) : text_(text) {}            // NOLINT
  template <class Number>
  requires std::is_arithmetic_v<Number> Variant(Number number) {  // NOLINT
    if constexpr (std::same_as<Number, bool>) {
      text_ = number ? u"True" : u"False";
    } else if constexpr (std::integral<Number>) {
      text_ = Int64ToText(static_cast<std::int64_t>(number));
    } else {
      text_ = PlainDoubleToText(static_cast<double>(number));  // cells are read again as numbers
    }
  }

  const std::u16string& ToString() const { return text_; }

 private:
  std::u16string text_;
};

}  // namespace Ketril::Tools
