// The one place where lengths of the board file, decimal millimetres with at most six decimals, become units
// (1 unit = 2.54 nm, y upwards) and back. The file counts y downwards; its angles are counter-clockwise on
// the screen, as ours are, so they stay as they are.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Interfaces/Types.h"

namespace Ketril::Editor {

using Nanometres = std::int64_t;

// The format holds lengths as 32-bit nanometres; with this limit the sum of two lengths fits a TCoord.
constexpr Nanometres kMaxNanometres = 2147483647;

// 50 units are 127 nm. Both round to the nearest, halves away from zero, so that a sign can be turned before
// or after. A unit is wider than a nanometre: units, nanometres, units gives back the same units.
constexpr TCoord ToUnits(Nanometres nm) {
  return static_cast<TCoord>((nm * 50 + (nm < 0 ? -63 : 63)) / 127);
}
// Of the nanometres that read as these units the roundest: what came as 1.8 mm is written as 1.8, not as
// 1.799999. Of the nearest and its two neighbours one at most ends in 0.
constexpr Nanometres ToNanometres(std::int64_t units) {
  const Nanometres nearest = (units * 127 + (units < 0 ? -25 : 25)) / 50;
  const Nanometres digit = nearest % 10;
  const int step = digit == 9 || digit == -1 ? 1 : digit == 1 || digit == -9 ? -1 : 0;
  return step != 0 && ToUnits(nearest + step) == units ? nearest + step : nearest;
}
constexpr TCoord kMaxUnits = ToUnits(kMaxNanometres);
static_assert(ToUnits(25400) == 10000 && ToNanometres(10000) == 25400);
static_assert(ToNanometres(ToUnits(1800000)) == 1800000 && ToNanometres(-708661) == -1800000);

enum class NumberError : std::uint8_t { None, NotANumber, OutOfRange };

// Decimal text ("12", "-0.05", "1.5e-05") as nanometres: exact up to six decimals, further ones rounded.
NumberError ParseMillimetres(std::string_view text, Nanometres& nm);
// Decimal text as a finite number.
NumberError ParseNumber(std::string_view text, double& value);

// The format has no word for a length beyond 2147.483647 mm: a program that reads it would lose the board.
class LengthOutOfRange : public std::range_error {
 public:
  LengthOutOfRange() : std::range_error("a length is beyond 2147 mm") {}
};

// Without trailing zeros; zero is "0". Raises LengthOutOfRange.
std::string FormatMillimetres(Nanometres nm);
void AppendMillimetres(std::string& text, Nanometres nm);
// The same for angles and ratios: six decimals at most.
std::string FormatNumber(double value);

// Into the range from 0 up to but without 360.
double NormalAngle(double degrees);
// The same to the file's six decimals.
constexpr double kSameAngle = 5e-7;
bool IsSameAngle(double a, double b);

// Where places of the file are counted from: the board's zero, or a footprint, whose members are stored
// relative to it and turned back by its angle. Members are rounded relative to it, so that a footprint that
// moves leaves the places of its members in the file as they are.
class Placement {
 public:
  Placement() = default;
  // `turned` tells that the angle is not the one that the file was written with: then a place that was turned
  // with the footprint may be off by a unit, and IsAt is that tolerant.
  Placement(TCoordPoint origin, double degrees, bool turned = false);

  // False when the place is beyond the range of lengths.
  bool ToBoard(Nanometres x, Nanometres y, TCoordPoint& place) const;
  void ToFile(TCoordPoint place, Nanometres& x, Nanometres& y) const;
  bool IsAt(TCoordPoint read, TCoordPoint place) const;
  bool Turned() const { return turned_; }
  // True when x of the file is x or y of the board: then either can be replaced without the other.
  bool IsPlain() const { return sine_ == 0 && cosine_ == 1; }

 private:
  TCoordPoint origin_;
  double cosine_ = 1;
  double sine_ = 0;
  bool turned_ = false;
};

}  // namespace Ketril::Editor
