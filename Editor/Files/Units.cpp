#include "Editor/Files/Units.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <numbers>

namespace Ketril::Editor {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Lists of points are the bulk of a board file: two digits at a time.
constexpr auto kPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

void AppendMillionths(std::string& result, std::int64_t value) {
  char text[32];
  char* end = text;
  if (value < 0) *end++ = '-';
  const std::int64_t size = std::abs(value);
  end = std::to_chars(end, std::end(text), size / 1000000).ptr;
  if (const auto rest = static_cast<std::uint32_t>(size % 1000000); rest != 0) {
    *end++ = '.';
    for (const std::uint32_t pair : {rest / 10000, rest / 100 % 100, rest % 100})
      end = std::copy_n(&kPairs[std::size_t{2} * pair], 2, end);
    while (end[-1] == '0') --end;
  }
  result.append(text, end);
}

std::string FormatMillionths(std::int64_t value) {
  std::string text;
  AppendMillionths(text, value);
  return text;
}

}  // namespace

NumberError ParseNumber(std::string_view text, double& value) {
  const char* const end = text.data() + text.size();
  const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (error == std::errc::result_out_of_range) return NumberError::OutOfRange;
  if (error != std::errc() || stop != end) return NumberError::NotANumber;
  return std::isfinite(value) ? NumberError::None : NumberError::NotANumber;
}

NumberError ParseMillimetres(std::string_view text, Nanometres& nm) {
  std::size_t i = 0;
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) ++i;
  std::int64_t whole = 0;
  std::size_t digits = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i, ++digits) {
    if (whole <= kMaxNanometres) whole = whole * 10 + (text[i] - '0');
  }
  std::int64_t millionths = 0;
  bool round_up = false;
  bool rounded = false;  // by the seventh decimal
  if (i < text.size() && text[i] == '.') {
    std::int64_t weight = 100000;
    for (++i; i < text.size() && IsDigit(text[i]); ++i, ++digits) {
      millionths += weight * (text[i] - '0');
      if (weight == 0 && !rounded) round_up = text[i] >= '5';
      rounded = weight == 0;
      weight /= 10;
    }
  }
  if (digits == 0) return NumberError::NotANumber;
  if (i == text.size()) {
    if (whole > kMaxNanometres) return NumberError::OutOfRange;
    nm = whole * 1000000 + millionths + (round_up ? 1 : 0);
  } else {
    double value = 0;
    if (const NumberError error = ParseNumber(text, value); error != NumberError::None) return error;
    if (std::abs(value) > 1e6) return NumberError::OutOfRange;
    nm = std::llround(std::abs(value) * 1e6);
  }
  if (nm > kMaxNanometres) return NumberError::OutOfRange;
  if (negative) nm = -nm;
  return NumberError::None;
}

void AppendMillimetres(std::string& text, Nanometres nm) {
  if (std::abs(nm) > kMaxNanometres) throw LengthOutOfRange();
  AppendMillionths(text, nm);
}

std::string FormatMillimetres(Nanometres nm) {
  std::string text;
  AppendMillimetres(text, nm);
  return text;
}

std::string FormatNumber(double value) {
  return FormatMillionths(std::llround(value * 1e6));
}

double NormalAngle(double degrees) {
  const double rest = std::fmod(degrees, 360.0);
  const double angle = rest < 0 ? rest + 360.0 : rest;
  return angle < 360.0 ? angle + 0.0 : 0.0;  // a tiny negative rest ends at 360; "+ 0.0" for minus zero
}

bool IsSameAngle(double a, double b) {
  const double difference = NormalAngle(a - b);
  return difference < kSameAngle || difference > 360 - kSameAngle;
}

Placement::Placement(TCoordPoint origin, double degrees, bool turned) : origin_(origin), turned_(turned) {
  const double angle = NormalAngle(degrees);
  const double quarters = angle / 90.0;
  if (quarters == std::floor(quarters)) {
    static constexpr int kSines[] = {0, 1, 0, -1, 0};
    sine_ = kSines[static_cast<int>(quarters)];
    cosine_ = kSines[static_cast<int>(quarters) + 1];
  } else {
    cosine_ = std::cos(angle * std::numbers::pi / 180.0);
    sine_ = std::sin(angle * std::numbers::pi / 180.0);
  }
}

bool Placement::ToBoard(Nanometres x, Nanometres y, TCoordPoint& place) const {
  std::int64_t dx = 0;
  std::int64_t dy = 0;
  if (IsPlain()) {
    dx = ToUnits(x);
    dy = -std::int64_t{ToUnits(y)};
  } else {
    const double right = static_cast<double>(x);
    const double up = -static_cast<double>(y);
    dx = std::llround((right * cosine_ - up * sine_) * 50 / 127);
    dy = std::llround((right * sine_ + up * cosine_) * 50 / 127);
  }
  dx += origin_.x;
  dy += origin_.y;
  if (std::abs(dx) > kMaxUnits || std::abs(dy) > kMaxUnits) return false;
  place = {static_cast<TCoord>(dx), static_cast<TCoord>(dy)};
  return true;
}

void Placement::ToFile(TCoordPoint place, Nanometres& x, Nanometres& y) const {
  const std::int64_t dx = std::int64_t{place.x} - origin_.x;
  const std::int64_t dy = std::int64_t{place.y} - origin_.y;
  if (IsPlain()) {
    x = ToNanometres(dx);
    y = -ToNanometres(dy);
  } else {
    const double right = static_cast<double>(dx);
    const double up = static_cast<double>(dy);
    x = std::llround((right * cosine_ + up * sine_) * 127 / 50);
    y = -std::llround((up * cosine_ - right * sine_) * 127 / 50);
  }
}

bool Placement::IsAt(TCoordPoint read, TCoordPoint place) const {
  if (read == place) return true;
  return turned_ && std::abs(std::int64_t{read.x} - place.x) <= 2 &&
         std::abs(std::int64_t{read.y} - place.y) <= 2;
}

}  // namespace Ketril::Editor
