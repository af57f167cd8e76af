#include "Editor/Picture/Svg.h"

#include <charconv>
#include <cmath>

namespace Ketril::Editor {

Svg& Svg::operator<<(Num number) {
  const double rounded = std::round(number.value * 1e4) / 1e4;
  char buffer[40];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, rounded == 0 ? 0.0 : rounded, std::chars_format::fixed);
  return *this << std::string_view(buffer, static_cast<std::size_t>(end.ptr - buffer));
}

Svg& Svg::operator<<(Mm length) {
  constexpr double kMillimetre = 2.54e-6;
  return *this << Num(length.units * kMillimetre);
}

Svg& Svg::operator<<(At place) {
  return *this << Mm(static_cast<double>(place.point.x)) << "," << Mm(-static_cast<double>(place.point.y));
}

Svg& Svg::operator<<(Xml text) {
  for (const char c : text.text) {
    switch (c) {
      case '&':
        text_ += "&amp;";
        break;
      case '<':
        text_ += "&lt;";
        break;
      case '>':
        text_ += "&gt;";
        break;
      case '"':
        text_ += "&quot;";
        break;
      default:
        // Control characters have no place in XML.
        text_ += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
  }
  return *this;
}

}  // namespace Ketril::Editor
