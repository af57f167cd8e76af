#include "DLLs/Tools/Placement/NaturalOrder.h"

#include <gtest/gtest.h>

#include "Platform/Text.h"

namespace Ketril::Tools {
namespace {

TEST(NaturalOrder, NumbersInNamesCount) {
  const struct {
    const char16_t *a, *b;
    int order;
  } rows[] = {
      {u"R2", u"R10", -1},      {u"r2", u"R2", 0},     {u"2", u"10", -1},      {u"-5", u"+3", -1},
      {u"", u"0", 0},           {u"", u"A", -1},       {u"A", u"AB", -1},      {u"a_b", u"A", 1},
      {u"R 2", u"R2", 0},       {u"-A2", u"-A10", -1}, {u"1.5k", u"1.25k", 1}, {u"Ch1 A", u"Ch1", 1},
      {u"+5", u"5.0", 0},       {u"10.1", u"9", 1},    {u"A1B", u"A1", 1},     {u"R01", u"R1", 0},
      {u"x 1y2", u"X1 Y3", -1}, {u"-", u"-1", -1},     {u"A1", u"A", 1},       {u"Ch1", u"1Ch", 1},
      {u"A1B2", u"A1B10", -1},  {u"A2", u"B", -1},     {u"1.2.3", u"1.2", 1},  {u"U1-3", u"U1-10", -1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CompareNatural(row.a, row.b), row.order)
        << Platform::ToUtf8(row.a) << " " << Platform::ToUtf8(row.b);
    EXPECT_EQ(CompareNatural(row.b, row.a), -row.order)
        << Platform::ToUtf8(row.a) << " " << Platform::ToUtf8(row.b);
  }
}

}  // namespace
}  // namespace Ketril::Tools
