// The style sheets that come with the tools, on a report that has everything.
#include <libxml/HTMLparser.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "Platform/Text.h"
#include "Tests/DLLs/Tools/Reports/ReportText.h"

namespace Ketril::Tools {
namespace {

using Report = TReadable<TPCBReport>;
using Strings = std::vector<std::u16string>;

// Fills a report with each element of the grammar.
void Fill(Report& r) {
  r.StartReport(eMetric);
  r.WriteFrontMatter(u"Revision", u"B \"2\"");
  r.WriteError(u"No <outline>");
  r.WriteReportSummary(u"Summary", Strings{u"sizes", u"gone"}, Strings{u"Sizes"});
  r.StartSection(u"Contents");
  r.WriteContents();
  r.EndSection();
  r.StartSection(u"Sizes, by side");
  r.StartTable(u"Holes", ctSuppressTitle | ctWriteNumericTotals);
  r.StartColumns(false);
  r.StartColumnHeader(ctNone);
  r.WriteText(u"Size");
  r.EndColumnHeader();
  r.StartColumnHeader(ctNumber);
  r.WriteText(u"Count");
  r.StartSubColumns();
  for (const char16_t* side : {u"Top", u"Bottom"}) {
    r.StartColumnHeader(ctNumber);
    r.WriteText(side);
    r.EndColumnHeader();
  }
  r.EndSubColumns();
  r.EndColumnHeader();
  r.EndColumns();
  r.WriteTableType(u"sizes");
  for (const TCoord size : {100000, 3937008}) {
    r.StartRow(u"odd");
    r.StartCell(u"color: red");
    r.WriteCoordinate(size);
    r.EndCell();
    r.WriteCell(u"2");
    r.WriteCell(u"0.5");
    r.EndRow();
  }
  r.EndTable();
  r.StartTable(u"None", Strings{u"A"}, 0);
  r.EndTable();
  r.EndSection();
  r.StartSection(u"Text");
  r.WriteHeading(u"One");
  r.WriteSectionHeading(u"Two");
  r.StartList();
  r.StartListElement();
  r.WriteText(u"a\nb", true);
  r.EndListElement();
  r.EndList();
  r.WriteHyperlinkText(u"https://example.org/?a=1&b", u"", true);
  r.WriteHyperlinkText(u"javascript:alert(1)", u"bad", false);
  r.WriteImage(u"/pictures/top side.png");
  r.WriteCallBackText(u"zoom", u"PCB:Zoom",
                      u"Action=AREA_DYNAMICZOOM|Location1.X=1000mil|Location2.X=2000mil|Location1.Y=-3000mil|"
                      u"Location2.Y=-2500mil|Absolute=True",
                      nullptr);
  r.WriteCallBackText(u"run", u"PCB:Other", u"X", nullptr);
  r.WriteHorizontalLine();
  r.WriteUnits();
  r.StartTable(u"Pair");
  r.WriteRow({u"a\\b\t", u"\"quoted\", with\nlines"});
  r.WriteRow({u"done", u"66.67%"});
  r.EndTable();
  r.EndSection();
  r.EndReport();
}

class StyleSheets : public testing::Test {
 protected:
  StyleSheets() { Fill(report); }
  std::string By(const char* sheet) const {
    return Platform::ToUtf8(
        report.WriteToString(Platform::ToUtf16(std::string(KETRIL_TEMPLATES "/") + sheet)));
  }
  Report report{u"Report <1>", u"/boards/one.two.kicad_pcb"};
};

// An HTML page, and what XPath finds in it.
class Page {
 public:
  explicit Page(const std::string& text)
      : document_(htmlReadMemory(text.data(), static_cast<int>(text.size()), "page", "UTF-8",
                                 HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET),
                  xmlFreeDoc) {
    if (const xmlError* error = xmlGetLastError(); error && error->domain == XML_FROM_HTML)
      error_ = error->message;
  }
  const std::string& Error() const { return error_; }
  // The string value of an expression.
  std::string operator()(const std::string& expression) const {
    const std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext*)> context(
        xmlXPathNewContext(document_.get()), xmlXPathFreeContext);
    const std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObject*)> object(
        xmlXPathEval(BAD_CAST("string(" + expression + ")").c_str(), context.get()), xmlXPathFreeObject);
    return object ? reinterpret_cast<const char*>(object->stringval) : "no expression";
  }

 private:
  std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document_;
  std::string error_;
};

TEST_F(StyleSheets, TheHtmlPageIsWholeAndHasAFormForEverything) {
  xmlResetLastError();
  const std::string text = By("report_html_default.xsl");
  const Page page(text);
  EXPECT_EQ(page.Error(), "");
  const std::pair<const char*, const char*> rows[] = {
      {"//h1/text()[1]", "Report <1>"},
      {"//title", "Report <1> - one.two.kicad_pcb"},
      {"//dt[.='Revision']/following-sibling::dd[1]", "B \"2\""},
      {"//*[@role='alert']", "No <outline>"},
      // Links of the contents lead to what is there.
      {"count(//*[@class='contents']//a)", "4"},
      {"count(//*[@class='contents']//a[substring(@href, 2) = //*/@id])", "4"},
      {"count(//table[contains(@class, 'summary')]//a[substring(@href, 2) = //*/@id])", "1"},
      {"//table[contains(@class, 'summary')]//tr[1]/td", "2"},
      {"//table[contains(@class, 'summary')]//tr[2]/td", "0"},
      {"//th[@rowspan='2']", "Size"},
      {"//th[@colspan='2'][.='Count']/@class", "over"},
      {"//thead/tr[2]/th[2]", "Bottom"},
      {"//tr[@class='odd'][1]/td[1]/@style", "color: red"},
      {"//tr[@class='odd'][2]/td[1]/@data-sort", "3937008"},
      {"//tr[@class='odd'][2]//*[@class='length']/@data-length", "3937008"},
      {"//tr[@class='odd'][2]//*[@class='length']", "10\xc2\xa0mm"},
      {"//tr[@class='odd'][1]//*[@class='length']/text()", "0.254"},
      {"//tr[@class='odd'][1]/td[2]/@class", "num"},
      {"//tfoot//td[2]", "4"},
      {"//tfoot//td[3]", "1"},
      {"count(//tfoot)", "1"},
      {"//caption[.='None']", "None"},
      {"//tr[@class='title']/th[.='Pair']/@colspan", "2"},
      {"//li[br]", "ab"},
      {"//a[@target='_blank']/@href", "https://example.org/?a=1&b"},
      {"count(//a[.='bad'])", "0"},
      {"//img/@alt", "top side.png"},
      // 1000 to 2000 by -3000 to -2500 mil with 2 mm around; y goes down in the picture.
      {"//a[.='zoom']/@href", "one.two.svg#svgView(viewBox(23.4,61.5,29.4,16.7))"},
      {"//*[@class='command']/@title", "PCB:Other X"},
      {"//*[@class='units']", "mm"},
      {"//*[@class='part']/span/@style", "width:66.67%"},
      {"count(//link | //script/@src | //style/@src)", "0"},
  };
  for (const auto& [expression, expected] : rows) EXPECT_EQ(page(expression), expected) << expression;
  EXPECT_EQ(text.find("&amp;&amp;"), std::string::npos);  // scripts are not escaped
}

TEST_F(StyleSheets, CsvHasABlockForEachTable) {
  const std::string text = By("report_csv.xsl");
  const std::size_t begin = text.find("Revision,");
  ASSERT_NE(begin, std::string::npos) << text;
  EXPECT_TRUE(text.starts_with("Report,Report <1>\r\nDocument,/boards/one.two.kicad_pcb\r\nDate,")) << text;
  EXPECT_EQ(text.substr(begin),
            "Revision,\"B \"\"2\"\"\"\r\nError,No <outline>\r\n"
            "\r\n,Summary\r\nSizes,2\r\ngone,0\r\n"
            "\r\n\"Sizes, by side\",Holes\r\nSize [mm],Top,Bottom\r\n0.254,2,0.5\r\n10,2,0.5\r\n"
            "\r\n\"Sizes, by side\",None\r\nA\r\n"
            "\r\nText,Pair\r\n\"a\\b\t\",\"\"\"quoted\"\", with\nlines\"\r\ndone,66.67%\r\n");
}

TEST_F(StyleSheets, JsonHoldsTheTables) {
  const auto json = nlohmann::json::parse(By("report_json.xsl"));
  EXPECT_EQ(json["title"], "Report <1>");
  EXPECT_EQ(json["document"], "/boards/one.two.kicad_pcb");
  EXPECT_EQ(json["unit"], "mm");
  EXPECT_EQ(json["frontmatter"], nlohmann::json::parse(R"([{"name": "Revision", "text": "B \"2\""}])"));
  EXPECT_EQ(json["errors"], nlohmann::json::parse(R"(["No <outline>"])"));
  ASSERT_EQ(json["tables"].size(), 3u);
  EXPECT_EQ(json["tables"][0], nlohmann::json::parse(R"({"section": "Sizes, by side", "title": "Holes",
    "type": "sizes", "columns": ["Size", "Top", "Bottom"],
    "rows": [[{"coordinate": 100000, "mm": 0.254, "mil": 10}, 2, 0.5],
             [{"coordinate": 3937008, "mm": 10, "mil": 393.701}, 2, 0.5]]})"));
  EXPECT_EQ(json["tables"][2]["rows"],
            nlohmann::json::parse(R"([["a\\b\t", "\"quoted\", with\nlines"], ["done", "66.67%"]])"));
}

// 10,000 nets of names that every form has to write in its own way, right to left and beyond 16 bits among
// them.
TEST_F(StyleSheets, AnyNameComesThroughInEachForm) {
  const std::string names[] = {"<&>\"'",           "]]>",   "a,b;c", "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d",
                               "\xf0\x9f\x98\x80", "/D+\\N"};
  Report nets{u"N", u"/boards/" + Platform::ToUtf16(names[4]) + u".kicad_pcb"};
  nets.StartReport(eMetric);
  nets.StartTable(u"Nets", Strings{u"Name", u"Length"}, 0);
  constexpr std::size_t kNets = 10000;
  for (std::size_t i = 0; i < kNets; ++i) {
    nets.StartRow();
    nets.StartCell();
    nets.WriteCallBackText(Platform::ToUtf16(names[i % 6] + std::to_string(i)), u"P", u"<\"&'>", nullptr);
    nets.EndCell();
    nets.StartCell();
    nets.WriteCoordinate(static_cast<TCoord>(i));
    nets.EndCell();
    nets.EndRow();
  }
  nets.EndTable();
  nets.EndReport();
  const auto by = [&](const char* sheet) {
    return Platform::ToUtf8(nets.WriteToString(Platform::ToUtf16(std::string(KETRIL_TEMPLATES "/") + sheet)));
  };
  const auto json = nlohmann::json::parse(by("report_json.xsl"));
  const auto document = Platform::IXMLDocument::Parse(by("report_xml.xsl"), "copy");
  const auto copy = document.DocumentElement().ChildNodes();
  const auto table = std::ranges::find(copy, u"table", &IXMLNode::NodeName);
  ASSERT_NE(table, copy.end());
  const auto rows = (*table).ChildNodes();
  const std::string csv = by("report_csv.xsl");
  const Page page(by("report_html_default.xsl"));
  EXPECT_EQ(page("count(//tbody/tr)"), "10000");
  ASSERT_EQ(json["tables"][0]["rows"].size(), kNets);
  ASSERT_EQ(rows.size(), kNets + 2);  // behind the title and the columns
  for (std::size_t i = 0; i < kNets; i += i < 6 ? 1 : 997) {
    const std::string name = names[i % 6] + std::to_string(i), at = std::to_string(i + 1);
    EXPECT_EQ(json["tables"][0]["rows"][i][0], name);
    EXPECT_EQ(Platform::ToUtf8(rows[i + 2].ChildNodes()[0].ChildNodes()[0].ChildNodes()[0].Text()), name);
    EXPECT_EQ(page("//tbody/tr[" + at + "]/td[1]"), name);
    const std::string field = i % 6 == 0   ? "\"<&>\"\"'" + std::to_string(i) + "\""
                              : i % 6 == 2 ? "\"" + name + "\""
                                           : name;
    EXPECT_NE(csv.find("\r\n" + field + ","), std::string::npos) << field;
  }
}

TEST_F(StyleSheets, XmlIsTheReportItself) {
  const auto copy = Platform::IXMLDocument::Parse(By("report_xml.xsl"), "copy");
  EXPECT_EQ(copy.DocumentElement().ChildNodes().size(), report.FCurrentNode.ChildNodes().size());
  EXPECT_EQ(copy.DocumentElement().ChildNodes()[0].Text(), u"Report <1>");
}

}  // namespace
}  // namespace Ketril::Tools
