#include "Editor/Selection/Selection.h"

#include <gtest/gtest.h>

namespace Ketril::Editor {
namespace {

TEST(ParseLength, TakesUnitsAndRefusesWhatIsNoLength) {
  EXPECT_DOUBLE_EQ(*ParseLength("1.27", LengthUnit::Millimetre), 500000);
  EXPECT_DOUBLE_EQ(*ParseLength("-50mil", LengthUnit::Millimetre), -500000);
  EXPECT_DOUBLE_EQ(*ParseLength("0.05in", LengthUnit::Millimetre), 500000);
  EXPECT_DOUBLE_EQ(*ParseLength("50", LengthUnit::Mil), 500000);
  for (const char* bad : {"", "mm", "1.5 mm", "1,5", "1e400", "nan", "inf", "5cm"}) {
    EXPECT_FALSE(ParseLength(bad, LengthUnit::Mil)) << bad;
  }
}

TEST(MatchesPattern, StarsAndMarks) {
  struct Row {
    const char16_t *name, *pattern;
    bool matches;
  };
  for (const Row& row : {Row{u"R12", u"R*", true}, Row{u"R", u"R*", true}, Row{u"R12", u"R?", false},
                         Row{u"abcabd", u"*ab?", true}, Row{u"abcab", u"*ab?", false}, Row{u"", u"*", true},
                         Row{u"", u"?", false}, Row{u"a*b", u"a*b", true}, Row{u"GND", u"gnd", false}}) {
    EXPECT_EQ(MatchesPattern(row.name, row.pattern), row.matches) << reinterpret_cast<const void*>(row.name);
  }
}

TEST(Selection, SaysWhereAnExpressionIsWrong) {
  struct Row {
    std::string text;
    std::size_t column;
  };
  const std::string deep(100000, '(');
  for (const Row& row : {Row{"", 1}, Row{"vias", 1}, Row{"via and", 8}, Row{"via pad", 5}, Row{"(via", 1},
                         Row{"net:", 5}, Row{"net:\"GND", 5}, Row{"colour:red", 1}, Row{"in:1,2,3", 4},
                         Row{"in:1,2,3,4,5", 4}, Row{"in:1,2,3,x", 4}, Row{"not", 4}, Row{deep, 202}}) {
    try {
      Selection selection(row.text);
      ADD_FAILURE() << "taken: " << row.text.substr(0, 40);
    } catch (const SelectionError& error) {
      EXPECT_EQ(error.Column(), row.column) << error.what();
    }
  }
}

}  // namespace
}  // namespace Ketril::Editor
