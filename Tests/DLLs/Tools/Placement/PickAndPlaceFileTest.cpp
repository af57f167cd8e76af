#include "DLLs/Tools/Placement/PickAndPlaceFile.h"

#include <gtest/gtest.h>

#include <optional>

#include "Platform/Text.h"

namespace Ketril::Tools {
namespace {

TEST(PickAndPlaceFile, KnowsItsLayoutByItsFirstLine) {
  const char16_t* const quoted = u"\"designator\",x";
  EXPECT_EQ(PickPlaceLayoutOf(quoted, u"a.b/parts.CSV"), TPickPlaceLayout::CSV);
  EXPECT_EQ(PickPlaceLayoutOf(quoted, u"a.csv/parts"), TPickPlaceLayout::Unknown);
  EXPECT_EQ(PickPlaceLayoutOf(u"\"Designator\" ,", u"parts.csv"), TPickPlaceLayout::Unknown);
  EXPECT_EQ(PickPlaceLayoutOf(u"DESIGNATORS", u"parts.csv"), TPickPlaceLayout::Blanks);
}

TEST(PickAndPlaceFile, ReadsCoordinates) {
  const struct {
    const char16_t* text;
    TUnit unit;
    std::optional<TCoord> value;
  } rows[] = {
      {u"1mm", eImperial, 393701},
      {u"1 mM", eImperial, 393701},
      {u"-1.5mil", eMetric, -15000},
      {u"2", eImperial, 20000},
      {u"2", eMetric, 787402},
      {u".00005", eImperial, 0},
      {u".00075", eImperial, 8},
      {u"1milmm", eImperial, {}},
      {u"", eMetric, {}},
      {u"mm", eMetric, {}},
      {u"1,5mm", eMetric, {}},
      {u"nan", eMetric, {}},
      {u"214748.3647mil", eMetric, INT32_MAX},
      {u"214748.3648mil", eMetric, {}},
      {u"-1e300", eMetric, {}},
      {u"1e999", eMetric, {}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ReadPickPlaceCoord(row.text, row.unit), row.value) << Platform::ToUtf8(row.text);
}

}  // namespace
}  // namespace Ketril::Tools
