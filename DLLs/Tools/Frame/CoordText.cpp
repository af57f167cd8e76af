#include "DLLs/Tools/Frame/CoordText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {
namespace {

constexpr double kUnitsPerMil = 10000;

double MilsToUnits(double mils) {
  return mils * kUnitsPerMil;
}

double MMsToUnits(double millimetres) {
  return millimetres * kUnitsPerMil / 0.0254;
}

// The whole number nearest to the quotient, of two halves the even one; `divisor` is positive.
std::int64_t RoundedQuotient(std::int64_t dividend, std::int64_t divisor) {
  std::int64_t quotient = dividend / divisor;
  const std::int64_t twice = 2 * std::abs(dividend % divisor);
  if (twice > divisor || (twice == divisor && quotient % 2 != 0)) quotient += dividend < 0 ? -1 : 1;
  return quotient;
}

// `number` divided by ten to the power of `digits`, without trailing zeros.
std::u16string DecimalText(std::int64_t number, std::size_t digits) {
  std::u16string text = Int64ToText(std::abs(number));
  if (text.size() <= digits) text.insert(0, digits + 1 - text.size(), u'0');
  text.insert(text.size() - digits, 1, u'.');
  text.erase(text.find_last_not_of(u'0') + 1);
  if (text.back() == u'.') text.pop_back();
  return number < 0 ? u"-" + text : text;
}

std::int64_t FractionalDigits_mm() {
  constexpr std::int64_t kFewest = 3;
  constexpr std::int64_t kMost = 5;
  const Ref<IClient> client = Client();
  if (!client) return kFewest;
  std::u16string value;
  bool found = false;
  On(client).Call(&IClient::ReadOption, u"SystemOptions", u"FractionalDigits_mm", value, found);
  return std::clamp(TextToInt64(value).value_or(kFewest), kFewest, kMost);
}

}  // namespace

double CoordToMils(TCoord c) {
  return static_cast<double>(RoundedQuotient(c, 10)) / 1000;
}

TCoord MilsToCoord(double mils) {
  return Round(MilsToUnits(mils));
}

TCoord MMsToCoord(double millimetres) {
  return Round(MMsToUnits(millimetres));
}

std::u16string CoordUnitToString(TCoord c, TUnit unit) {
  if (unit == eImperial) return DecimalText(RoundedQuotient(c, 10), 3) + u"mil";
  // A unit is 254 times the eighth decimal digit of a millimetre, so whole numbers suffice.
  const std::int64_t digits = FractionalDigits_mm();
  std::int64_t divisor = 1;
  for (std::int64_t digit = 8; digit > digits; --digit) divisor *= 10;
  return DecimalText(RoundedQuotient(std::int64_t{c} * 254, divisor), static_cast<std::size_t>(digits)) +
         u"mm";
}

bool StringToCoordUnit(std::u16string_view text, TUnit default_unit, TCoord& c, TUnit& unit) {
  text = Platform::Trim(text);
  TUnit found_unit = default_unit;
  const auto cut = [&](std::u16string_view suffix, TUnit suffix_unit) {
    if (text.size() < suffix.size()) return false;
    const std::size_t rest = text.size() - suffix.size();
    if (!Platform::EqualsIgnoringAsciiCase(text.substr(rest), suffix)) return false;
    text = text.substr(0, rest);
    found_unit = suffix_unit;
    return true;
  };
  if (!cut(u"MM", eMetric)) cut(u"MIL", eImperial);

  const std::optional<double> number = TextToDouble(text);
  if (!number) return false;
  const double units = std::nearbyint(found_unit == eMetric ? MMsToUnits(*number) : MilsToUnits(*number));
  if (units < kLowestCoord || units > kHighestCoord) return false;
  c = static_cast<TCoord>(units);
  unit = found_unit;
  return true;
}

}  // namespace Ketril::Tools
