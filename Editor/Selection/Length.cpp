#include "Editor/Selection/Length.h"

#include <charconv>
#include <cmath>

namespace Ketril::Editor {

namespace {

double UnitsOf(LengthUnit unit) {
  constexpr double kMil = 10000.0;
  switch (unit) {
    case LengthUnit::Mil:
      return kMil;
    case LengthUnit::Inch:
      return kMil * 1000;
    case LengthUnit::Millimetre:
      break;
  }
  return kMil / 0.0254;
}

}  // namespace

std::optional<double> ParseLength(std::string_view text, LengthUnit default_unit) {
  double factor = UnitsOf(default_unit);
  const auto cut = [&](std::string_view suffix, LengthUnit unit) {
    if (!text.ends_with(suffix)) return false;
    text.remove_suffix(suffix.size());
    factor = UnitsOf(unit);
    return true;
  };
  (void)(cut("mm", LengthUnit::Millimetre) || cut("mil", LengthUnit::Mil) || cut("in", LengthUnit::Inch));
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value * factor))
    return std::nullopt;
  return value * factor;
}

}  // namespace Ketril::Editor
