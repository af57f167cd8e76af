#include "DLLs/Tools/Reports/PCBReport.h"

#include "Tests/DLLs/Tools/Frame/ScopedBoard.h"
#include "Tests/DLLs/Tools/Reports/ReportText.h"

namespace Ketril::Tools {
namespace {

using Editor::Track;
using Report = TReadable<TPCBReport>;
using DesignerReport = TReadable<TPCBDesignerReport>;

class PCBReport : public ScopedBoard {
 protected:
  Track* const track = Put<Track>([](Track& t) { t.data = {{1005000, -15000}, {3007500, -15000}, 10000}; });
};

TEST_F(PCBReport, LengthsAreTextsOfMils) {
  const std::pair<TCoord, const char16_t*> rows[] = {
      {10000, u"1mil"},      {12500, u"1.25mil"}, {0, u"0mil"},
      {1000000, u"100mil"},  {-5, u"0mil"},       {-12346, u"-1.235mil"},
      {12345, u"1.234mil"},  {9999, u"1mil"},     {2147483647, u"214748.365mil"},
      {kNoGap, u"99999mil"},
  };
  for (const auto& [coord, text] : rows) EXPECT_EQ(MilText(coord), text) << coord;
}

TEST_F(PCBReport, CoordinatesStayWhateverTheUnit) {
  for (const TUnit unit : {eMetric, eImperial}) {
    Report report;
    report.StartReport(unit);
    report.WriteUnits();
    report.WriteCoordinate(-5);
    const std::string body = report.Body();
    EXPECT_NE(body.find(std::string("</time><units default=\"") + (unit == eMetric ? "mm" : "mil") +
                        "\"/><units/><coordinate>-5</coordinate>"),
              std::string::npos)
        << body;
  }
}

TEST_F(PCBReport, LinksZoomToTheObject) {
  ASSERT_EQ(track->Bounds(), (TCoordRect{1000000, -20000, 3012500, -10000}));
  const std::string link =
      R"(<callback process="PCB:Zoom" parameters="Action=AREA_DYNAMICZOOM|Location1.X=100mil|Location2.X=301.25mil|)"
      R"(Location1.Y=-2mil|Location2.Y=-1mil|Absolute=True"><text>go</text></callback>)";
  Report report;
  TPrimitive* const wrapper = TPrimitive::Create(track->AsInterface());
  report.WriteJumpToPrimitiveText(u"go", wrapper, nullptr);
  EXPECT_EQ(report.Body(), link);

  Report nothing;
  nothing.WriteJumpToPrimitiveText(u"go", nullptr, nullptr);
  EXPECT_EQ(nothing.Body(), "");
  DesignerReport text;
  text.WriteJumpToPrimitiveText(u"go", nullptr, nullptr);
  EXPECT_EQ(text.Body(), "<text>go</text>");

  Report rows;
  const std::vector<Variant> values{u"go", 2, u"go", u"beyond"};
  const std::vector<const TPrimitive*> linked{wrapper, nullptr, wrapper};
  const std::vector<std::u16string> styles{u"a", u"b"};
  rows.WriteRowWithJumpToPrimitives(values, linked, styles, nullptr);
  EXPECT_EQ(rows.Body(), R"(<row><cell html_style="a">)" + link +
                             R"(</cell><cell html_style="b"><text>2</text></cell><cell>)" + link +
                             "</cell><cell><text>beyond</text></cell></row>");
  Editor::HostGate::Arm(false, 1);
  EXPECT_THROW(rows.WriteJumpToPrimitiveText(u"go", wrapper, nullptr), EHostError);
}

}  // namespace
}  // namespace Ketril::Tools
