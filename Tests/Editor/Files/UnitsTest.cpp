#include "Editor/Files/Units.h"

#include <gtest/gtest.h>

#include <random>

namespace Ketril::Editor {
namespace {

TEST(Units, DecimalTextIsNanometres) {
  struct Case {
    const char* text;
    NumberError error;
    Nanometres nm;
    const char* formatted;
  };
  constexpr NumberError kNone = NumberError::None;
  const Case cases[] = {
      {"0", kNone, 0, "0"},
      {"-0", kNone, 0, "0"},
      {"-0.000001", kNone, -1, "-0.000001"},
      {"0.1", kNone, 100000, "0.1"},
      {".5", kNone, 500000, "0.5"},
      {"+12.", kNone, 12000000, "12"},
      {"123.456789", kNone, 123456789, "123.456789"},
      {"-0.0000005", kNone, -1, "-0.000001"},
      {"0.00000049999", kNone, 0, "0"},
      {"1e-05", kNone, 10, "0.00001"},
      {"-2.5E1", kNone, -25000000, "-25"},
      {"2147.483647", kNone, 2147483647, "2147.483647"},
      {"2147.483648", NumberError::OutOfRange, 0, ""},
      {"99999999999999999999999", NumberError::OutOfRange, 0, ""},
      {"1e300", NumberError::OutOfRange, 0, ""},
      {"1e999", NumberError::OutOfRange, 0, ""},
      {"", NumberError::NotANumber, 0, ""},
      {"-", NumberError::NotANumber, 0, ""},
      {".", NumberError::NotANumber, 0, ""},
      {"1.2.3", NumberError::NotANumber, 0, ""},
      {"12mm", NumberError::NotANumber, 0, ""},
      {"nan", NumberError::NotANumber, 0, ""},
      {"0x10", NumberError::NotANumber, 0, ""},
  };
  for (const Case& c : cases) {
    Nanometres nm = 0;
    EXPECT_EQ(ParseMillimetres(c.text, nm), c.error) << c.text;
    if (c.error != kNone) continue;
    EXPECT_EQ(nm, c.nm) << c.text;
    EXPECT_EQ(FormatMillimetres(nm), c.formatted) << c.text;
  }
}

TEST(Units, SurviveNanometresAndPlacements) {
  std::mt19937 random(3);
  std::uniform_int_distribution<TCoord> any(-kMaxUnits / 2, kMaxUnits / 2);
  std::uniform_real_distribution<double> angles(-720, 720);
  for (int i = 0; i < 2000; ++i) {
    const TCoordPoint place = {any(random), any(random)};
    EXPECT_EQ(ToUnits(ToNanometres(place.x)), place.x);
    const double angle = i % 3 == 0 ? 90 * (i % 7 - 3) : angles(random);
    const Placement placement({any(random) / 2, any(random) / 2}, angle);
    Nanometres x = 0, y = 0;
    TCoordPoint back;
    placement.ToFile(place, x, y);
    if (placement.ToBoard(x, y, back)) {
      EXPECT_EQ(back, place) << angle;
    }
  }
}

TEST(Units, FootprintsTurnCounterClockwiseOnTheScreen) {
  // One millimetre right and two down in the file, about (100, 200).
  struct Case {
    double angle;
    TCoordPoint at;
  };
  const Case cases[] = {
      {0, {393801, -787202}}, {90, {787502, 393901}}, {180, {-393601, 787602}}, {-90, {-787302, -393501}}};
  for (const Case& c : cases) {
    TCoordPoint at;
    ASSERT_TRUE(Placement({100, 200}, c.angle).ToBoard(1000000, 2000000, at));
    EXPECT_EQ(at, c.at) << c.angle;
  }
}

}  // namespace
}  // namespace Ketril::Editor
