#include "DLLs/Tools/Placement/PickAndPlaceFile.h"

#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

constexpr std::u16string_view kTitle = u"Norvan Studio Pick and Place Locations";
constexpr std::u16string_view kUnitsUsed = u"Units used: ";
constexpr std::u16string_view kBlanks = u"\t ";

bool StartsWith(std::u16string_view text, std::u16string_view start) {
  return text.size() >= start.size() &&
         Platform::EqualsIgnoringAsciiCase(text.substr(0, start.size()), start);
}

bool EndsWith(std::u16string_view text, std::u16string_view end) {
  return text.size() >= end.size() &&
         Platform::EqualsIgnoringAsciiCase(text.substr(text.size() - end.size()), end);
}

bool HasExtension(std::u16string_view file_name, std::u16string_view extension) {
  const std::size_t name = file_name.find_last_of(u"/\\");
  return EndsWith(file_name.substr(name == file_name.npos ? 0 : name), extension);
}

// Takes up to `length` characters off the front, and `behind` more.
std::u16string_view Take(std::u16string_view& rest, std::size_t length, std::size_t behind) {
  const std::u16string_view taken = rest.substr(0, length);
  rest.remove_prefix(std::min(rest.size(), taken.size() + behind));
  return taken;
}

void SkipAny(std::u16string_view& rest, std::u16string_view characters) {
  rest.remove_prefix(std::min(rest.size(), rest.find_first_not_of(characters)));
}

struct TColumn {
  std::u16string_view name;
  bool may_go_on;
  std::u16string TPickPlaceLine::*value;
  bool is_coordinate;
};
constexpr TColumn kColumnTable[] = {
    {u"Designator", false, &TPickPlaceLine::Designator, false},
    {u"Center-X", true, &TPickPlaceLine::X, true},
    {u"Center-Y", true, &TPickPlaceLine::Y, true},
    {u"Layer", false, &TPickPlaceLine::Side, false},
    {u"Rotation", false, &TPickPlaceLine::Rotation, false},
    {u"Comment", false, &TPickPlaceLine::Comment, false},
};

}  // namespace

TPickPlaceLayout PickPlaceLayoutOf(std::u16string_view first_line, std::u16string_view file_name) {
  if (first_line == kTitle) return TPickPlaceLayout::Headed;
  if (StartsWith(first_line, u"Designator")) return TPickPlaceLayout::Blanks;
  if (StartsWith(first_line, u"\"Designator\",") && HasExtension(file_name, u".csv"))
    return TPickPlaceLayout::CSV;
  return TPickPlaceLayout::Unknown;
}

bool TPickPlaceFields::Next(std::u16string_view& field) {
  SkipAny(rest_, kBlanks);
  if (rest_.empty()) return false;
  if (const char16_t quote = rest_.front(); quote == u'"' || quote == u'\'') {
    rest_.remove_prefix(1);
    field = Take(rest_, rest_.find(quote), 2);
  } else {
    field = Take(rest_, rest_.find_first_of(kBlanks), 1);
  }
  return true;
}

std::u16string_view TPickPlaceTokens::Next() {
  const std::u16string_view separators = is_csv_ ? u"\t ," : kBlanks;
  SkipAny(rest_, separators);
  if (is_csv_ && rest_.starts_with(u'"')) {
    rest_.remove_prefix(1);
    return Take(rest_, rest_.find(u'"'), 1);
  }
  return Take(rest_, rest_.find_first_of(separators), 1);
}

TPickPlaceLine ReadFixedLine(std::u16string_view line, bool is_csv) {
  TPickPlaceTokens tokens(line, is_csv);
  const auto skip = [&](int columns) {
    for (int i = 0; i < columns; ++i) tokens.Next();
  };
  TPickPlaceLine values;
  values.Designator = tokens.Next();
  skip(1);
  values.X = tokens.Next();
  values.Y = tokens.Next();
  skip(4);
  values.Side = tokens.Next();
  values.Rotation = tokens.Next();
  values.Comment = is_csv ? tokens.Next() : tokens.Rest();
  return values;
}

TPickPlaceColumns::TPickPlaceColumns(std::u16string_view names, std::u16string units)
    : units_(std::move(units)) {
  static_assert(std::size(kColumnTable) == kColumns);
  at_.fill(-1);
  TPickPlaceFields fields(names);
  for (std::u16string_view field; fields.Next(field); ++count_) {
    for (std::size_t i = 0; i < kColumns; ++i) {
      const auto& [name, may_go_on, value, is_coordinate] = kColumnTable[i];
      const bool fits = StartsWith(field, name) && (may_go_on || field.size() == name.size());
      if (fits && at_[i] < 0) at_[i] = count_;
    }
  }
}

std::u16string TPickPlaceColumns::Missing() const {
  std::u16string text;
  for (std::size_t i = 0; i < kColumns; ++i) {
    if (at_[i] < 0) text.append(u"\r").append(kColumnTable[i].name).append(u" column data not found.");
  }
  return text;
}

std::u16string TPickPlaceColumns::Prepared(std::u16string_view coordinate) const {
  std::u16string text(coordinate);
  std::replace(text.begin(), text.end(), u',', u'.');
  if (!EndsWith(text, units_)) text += units_;
  return text;
}

bool TPickPlaceColumns::Read(std::u16string_view line, TPickPlaceLine& values) const {
  values = {};
  int number = 0;
  TPickPlaceFields fields(line);
  for (std::u16string_view field; fields.Next(field); ++number) {
    for (std::size_t i = 0; i < kColumns; ++i) {
      const TColumn& column = kColumnTable[i];
      if (at_[i] == number)
        values.*column.value = column.is_coordinate ? Prepared(field) : std::u16string(field);
    }
  }
  return number == count_;
}

std::u16string_view UnitsOfHeaderLine(std::u16string_view line) {
  return StartsWith(line, kUnitsUsed) ? line.substr(kUnitsUsed.size()) : std::u16string_view();
}

std::optional<TCoord> ReadPickPlaceCoord(std::u16string_view text, TUnit unit) {
  const std::u16string upper = Platform::AsciiUpper(text);
  const bool says_mm = upper.find(u"MM") != upper.npos;
  const bool says_mil = !says_mm && upper.find(u"MIL") != upper.npos;
  text.remove_suffix(says_mm ? 2 : says_mil ? 3 : 0);
  const std::optional<double> number = TextToDouble(text);
  if (!number) return std::nullopt;
  const bool is_metric = says_mm || (!says_mil && unit == eMetric);
  const double units = is_metric ? *number * 10000 / 0.0254 : *number * 10000;
  if (!(std::abs(units) <= kHighestCoord)) return std::nullopt;
  return Round(units);
}

}  // namespace Ketril::Tools
