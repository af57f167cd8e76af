#include "DLLs/Tools/Reports/RT_Report.h"

#include <chrono>
#include <functional>

#include "Editor/Client/Client.h"
#include "Editor/Client/Views.h"
#include "Editor/Model/Board.h"
#include "Platform/Text.h"
#include "Tests/DLLs/Tools/Reports/ReportText.h"

namespace Ketril::Tools {
namespace {

using Report = TReadable<TGeneralReport>;
using Strings = std::vector<std::u16string>;

struct Golden {
  const char* name;
  std::function<void(Report&)> write;
  std::string expected;
};

void ExpectAll(const std::vector<Golden>& rows) {
  for (const Golden& row : rows) {
    Report report;
    row.write(report);
    EXPECT_EQ(report.Body(), row.expected) << row.name;
    EXPECT_EQ(report.FCurrentNode.NodeName(), u"report") << row.name;
  }
}

const TStringList kTyped{{u"Layer", ctNone}, {u"Pads", ctNumber}};
const TStringList kEmpty;

TEST(RT_Report, TablesFollowTheGrammar) {
  ExpectAll({
      {"the title in place of columns",
       [](Report& r) {
         r.StartTable(u"General");
         r.EndTable();
       },
       R"(<table suppress_title="true"><title>General</title><columns use="title"/></table>)"},
      {"no option", [](Report& r) { r.StartTable(u"T", 0), r.EndTable(); },
       "<table><title>T</title></table>"},
      {"columns of strings under the title",
       [](Report& r) {
         r.StartTable(u"T", Strings{u"A", u"B"}, ctSpanTitleAcrossHeader | ctWriteNumericTotals);
         r.EndTable();
       },
       R"(<table numeric_totals="true"><title>T</title><columns use="title"><column><text>A</text></column>)"
       "<column><text>B</text></column></columns></table>"},
      {"typed columns",
       [](Report& r) {
         r.StartTableFromStringList(u"T", &kTyped, ctSuppressTitle | ctWriteNumericTotals);
         r.EndTable();
       },
       R"(<table suppress_title="true" numeric_totals="true"><title>T</title><columns><column><text>Layer)"
       R"(</text></column><column data_type="number"><text>Pads</text></column></columns></table>)"},
      {"no columns, no table",
       [](Report& r) {
         r.StartTableFromStringList(u"T", nullptr, 6);
         r.StartTableFromStringList(u"T", &kEmpty, 6);
       },
       ""},
      {"sub-columns, a type, rows and cells",
       [](Report& r) {
         r.StartTable(u"T", 0);
         r.StartColumns(false);
         r.StartColumnHeader(ctNumber);
         r.WriteText(u"Count");
         r.StartSubColumns();
         r.EndSubColumns();
         r.EndColumnHeader();
         r.EndColumns();
         r.WriteTableType(u"drills");
         r.StartRow(u"odd");
         r.StartCell(u"wide");
         r.WriteText(u"a");
         r.EndCell();
         r.WriteCell(u"b", u"narrow");
         r.WriteCell(u"c");
         r.EndRow();
         r.EndTable();
       },
       R"(<table><title>T</title><columns><column data_type="number"><text>Count</text><subcolumns/></column>)"
       R"(</columns><type>drills</type><row html_style="odd"><cell html_style="wide"><text>a</text></cell>)"
       R"(<cell html_style="narrow">b</cell><cell>c</cell></row></table>)"},
      {"rows of values, of whatever type, with fewer styles",
       [](Report& r) {
         const Strings styles{u"s"};
         r.WriteRow(std::vector<Variant>{u"x", 3, -2.5, true}, styles);
         r.WriteRow({u"y", 200000.0});
       },
       R"(<row><cell html_style="s"><text>x</text></cell><cell><text>3</text></cell><cell><text>-2.5</text>)"
       "</cell><cell><text>True</text></cell></row><row><cell><text>y</text></cell><cell><text>200000</text>"
       "</cell></row>"},
      {"a summary with fewer names than types",
       [](Report& r) {
         r.WriteReportSummary(u"S", Strings{u"errors", u"warnings"}, Strings{u"E"});
       },
       R"(<summary_table><title>S</title><columns><column type="errors">E</column><column type="warnings"/>)"
       "</columns></summary_table>"},
  });
}

TEST(RT_Report, TextsListsLinksFollowTheGrammar) {
  ExpectAll({
      {"lines kept", [](Report& r) { r.WriteText(u"a\r\n\r\nb", true); },
       "<text>a</text><linebreak/><text>b</text>"},
      {"all three line ends", [](Report& r) { r.WriteText(u"\na\rb\n\nc\r", true); },
       "<text>a</text><linebreak/><text>b</text><linebreak/><text>c</text>"},
      {"nothing remains", [](Report& r) { r.WriteText(u"\r\n", true); }, "<text/>"},
      {"lines not kept", [](Report& r) { r.WriteText(u"a\nb"); }, "<text>a\nb</text>"},
      {"a line, headings, a rule, a blank, contents, an image",
       [](Report& r) {
         r.WriteLine(u"l");
         r.WriteHeading(u"h");
         r.WriteSectionHeading(u"s");
         r.WriteHorizontalLine();
         r.WriteSpace();
         r.WriteContents();
         r.WriteImage(u"/a/b.png");
       },
       R"(<text>l</text><linebreak/><h1>h</h1><h2>s</h2><hr/><space/><contents/><image filename="/a/b.png"/>)"},
      {"a list",
       [](Report& r) {
         r.StartList();
         r.StartListElement();
         r.WriteText(u"1");
         r.EndListElement();
         r.EndList();
       },
       "<list><listelement><text>1</text></listelement></list>"},
      {"front matter in the report and in a section",
       [](Report& r) {
         r.WriteFrontMatter(u"Revision", 3);
         r.StartSection(u"S");
         r.StartFrontMatter(u"Inner");
         r.EndFrontMatter();
         r.EndSection();
         r.WriteError(u"bad <thing>");
       },
       "<frontmatter><name>Revision</name><text>3</text></frontmatter><section><title>S</title><frontmatter>"
       "<name>Inner</name></frontmatter></section><error>bad &lt;thing&gt;</error>"},
      {"links",
       [](Report& r) {
         r.WriteHyperlinkText(u"http://x/", u"d", false);
         r.WriteHyperlinkText(u"http://y/", u"", true);
         r.WriteJumpToOrvexDocument(u"b", u"/a/b");
         r.WriteCallBackText(u"go", u"P", u"Q=1", nullptr);
         r.WriteCallBackText(u"only", u"P", u"", nullptr);
         r.WriteCallBackText(u"none", u"", u"Q=1", nullptr);
       },
       R"(<hyperlink address="http://x/" description="d"/><hyperlink address="http://y/" description="" )"
       R"(open_In_New_Window="true"/><file filename="/a/b">b</file><callback process="P" parameters="Q=1">)"
       R"(<text>go</text></callback><callback process="P"><text>only</text></callback><callback><text>none)"
       "</text></callback>"},
  });
}

TEST(RT_Report, ALinkIntoAViewNamesItAndItsDocument) {
  const Ref<Editor::Board> board = Editor::MakeHost<Editor::Board>();
  Report report;
  report.WriteCallBackText(u"a", u"P", u"", board->view.Get());
  board->file.path = "/boards/one.kicad_pcb";
  report.WriteCallBackText(u"b", u"P", u"Q", board->view.Get());
  EXPECT_EQ(report.Body(),
            R"(<callback viewname="PCB" process="P"><text>a</text></callback><callback viewname="PCB" )"
            R"(document="/boards/one.kicad_pcb" process="P" parameters="Q"><text>b</text></callback>)");
}

TEST(RT_Report, CallsOutOfPlaceRaiseAndChangeNothing) {
  using Call = std::function<void(Report&)>;
  const struct {
    Call call;
    const char* message;
  } rows[] = {
      {[](Report& r) { r.EndColumns(); }, "Improperly placed EndColumns"},
      {[](Report& r) { r.EndColumnHeader(); }, "Improperly placed EndColumnHeader"},
      {[](Report& r) { r.EndSubColumns(); }, "Improperly placed EndColumns"},
      {[](Report& r) { r.EndTable(); }, "Improperly placed EndTable"},
      {[](Report& r) { r.EndList(); }, "Improperly placed EndList"},
      {[](Report& r) { r.EndListElement(); }, "Improperly placed EndListElement"},
      {[](Report& r) { r.EndRow(); }, "Improperly placed EndRow"},
      {[](Report& r) { r.EndCell(); }, "Improperly placed EndCell"},
      {[](Report& r) { r.EndFrontMatter(); }, "Improperly placed EndFrontMatter"},
      {[](Report& r) { r.EndCallBack(); }, "Improperly placed EndCallBackText"},
      {[](Report& r) { r.EndReport(); }, "Improperly placed EndReport"},
      {[](Report& r) { r.StartSection(u"inner"); }, "Improperly placed StartSection"},
      {[](Report& r) { r.WriteFrontMatter(u"n", u"v"); }, "Improperly placed WriteFrontMatter"},
      {[](Report& r) { r.WriteError(u"e"); }, "Improperly placed WriteError"},
      {[](Report& r) { r.WriteCell(u"c"); }, "Improperly placed WriteCell"},
      {[](Report& r) { r.WriteTableType(u"t"); }, "Improperly placed WriteTableType"},
  };
  Report report;
  EXPECT_THROW(report.EndSection(), EGeneralReportException);
  report.StartSection(u"S");
  const std::string before = report.Body();
  for (const auto& row : rows) {
    try {
      row.call(report);
      ADD_FAILURE() << row.message;
    } catch (const EGeneralReportException& failure) {
      EXPECT_STREQ(failure.what(), row.message);
    }
    EXPECT_EQ(report.FCurrentNode.NodeName(), u"section");
  }
  EXPECT_EQ(report.Body(), before);
}

TEST(RT_Report, TheEndOfATableFillsHtmlRowsUp) {
  Report report;
  report.StartTable(u"T", 0);
  const IXMLNode table = report.FCurrentNode;
  const auto row = [&](std::initializer_list<const char16_t*> cells) {
    const IXMLNode tr = table.AddChild(u"tr");
    for (const char16_t* cell : cells) tr.AddChild(cell);
  };
  row({u"th"});
  row({u"td", u"th", u"td"});
  row({u"td"});
  row({u"p", u"td", u"td"});
  row({});
  report.StartRow();
  report.EndRow();
  report.EndTable();
  EXPECT_EQ(
      report.Body(),
      R"(<table><title>T</title><tr><th colspan="3"/></tr><tr><td/><th/><td/></tr><tr><td/><td/><td/></tr>)"
      "<tr><p/><td/><td/><td/></tr><tr><td/><td/><td/></tr><row/></table>");
}

TEST(RT_Report, ItStartsWithWhatItIsOnAndEndsWithTheTimeItTook) {
  Editor::ClientSetup setup;
  setup.installation_folder = "/opt/editor";
  const auto client = Editor::MakeHost<Editor::Client>(setup);
  const Editor::ClientInstallation installation(client);
  Report report(u"A & B", u"/boards/one.kicad_pcb");
  report.StartReport();
  EXPECT_NE(report.Text().find("<report><title>A &amp; B</title><resource_path>/opt/editor/Templates/"
                               "</resource_path><date>"),
            std::string::npos)
      << report.Text();
  const std::string file = R"(</time><filename><file filename="/boards/one.kicad_pcb">)";
  EXPECT_NE(report.Body().find(file + "/boards/one.kicad_pcb</file></filename>"), std::string::npos);
  EXPECT_EQ(report.FCurrentNode.NodeName(), u"report");
  client->WriteOption(u"Client", u"HideDocumentPath", u"True");
  Report hidden(u"", u"/boards/one.kicad_pcb");
  hidden.StartReport();
  EXPECT_NE(hidden.Body().find(file + "one.kicad_pcb</file>"), std::string::npos);

  // As if it had run since the month before.
  using namespace std::chrono;
  const sys_days today = year(report.FStartDate.Year) / report.FStartDate.Month / report.FStartDate.Day;
  const year_month_day earlier(today - days(40));
  report.FStartDate = {int(earlier.year()), int(unsigned(earlier.month())), int(unsigned(earlier.day()))};
  report.FStartTime.Hundredth = 0;
  report.EndReport();
  EXPECT_NE(report.Body().find("<elapsed_time>960:00:0"), std::string::npos) << report.Body();
}

}  // namespace
}  // namespace Ketril::Tools
