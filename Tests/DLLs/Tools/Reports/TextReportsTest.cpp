// The net status report and the reports of plain text.
#include <ctime>
#include <fstream>
#include <optional>

#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Reports/ComponentReport.h"
#include "DLLs/Tools/Reports/NameOrder.h"
#include "DLLs/Tools/Reports/NetReporter.h"
#include "DLLs/Tools/Reports/PickNPlace.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Workspace.h"
#include "Editor/Model/Library.h"
#include "Platform/Dates.h"
#include "Platform/FileLocks.h"
#include "Platform/Text.h"
#include "Tests/DLLs/Tools/Reports/ReportText.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Tools {
namespace {

namespace fs = std::filesystem;

class TextReports : public testing::Test {
 protected:
  TextReports() { Install({}); }
  ~TextReports() override { ToolAborted = false; }
  void Install(Editor::ClientSetup setup) {
    setup.open_document = [this](const fs::path& file) { shown.push_back(file.filename().string()); };
    installation.reset();
    installation.emplace(Editor::MakeHost<Editor::Client>(std::move(setup)));
  }
  TBoard* Read(const std::string& text) {
    host = Tests::BoardFromText(text);
    return TBoard::Create(host);
  }
  std::string Get(const char* name) const { return Tests::TextOf(folder / name); }
  std::u16string Name(const char* name) const { return Platform::ToUtf16((folder / name).string()); }

  const Tests::TempFolder folder;
  std::optional<Editor::ClientInstallation> installation;
  std::vector<std::string> shown;
  const TObjectScope scope;
  Ref<Editor::Board> host;
};

TEST_F(TextReports, NamesCompareByRunsOfDigits) {
  const struct {
    const char16_t *low, *high;
  } rows[] = {{u"R2", u"R10"}, {u"R10", u"R10A"}, {u"R_1", u"R1"},  {u"R1", u"R12"},  {u"A", u"B"},
              {u"", u"A"},     {u"R1-2", u"R1A"}, {u"R19", u"R20"}, {u"R1A", u"R12"}, {u"[", u" "},
              {u"a:", u"A1"},  {u"~", u"A"},      {u"R1", u"r2"}};
  for (const auto& [low, high] : rows) {
    EXPECT_EQ(CompareNames(low, high), -1) << Platform::ToUtf8(low);
    EXPECT_EQ(CompareNames(high, low), 1) << Platform::ToUtf8(low);
  }
  EXPECT_EQ(CompareNames(u"r1", u"R1"), 0);
  EXPECT_EQ(SortedNames({u"R10", u"r2", u"R2", u"A"}),
            (std::vector<std::u16string>{u"A", u"R2", u"r2", u"R10"}));
}

TEST_F(TextReports, NetsHaveTheirLayerAndLength) {
  TBoard* const board = Read("track 0,0 100,0 w10 top net B; track 0,50 200,50 w10 top net A; net P");
  for (Editor::Net* net : {Tests::Find<Editor::Net>(*host, 2)}) net->state.layer = eV6_InternalPlane1;
  Editor::ClientSetup setup;
  setup.current_view = host->view;
  Install(std::move(setup));
  const auto report = TNetReporter(board).CreateReport();
  const fs::path sheet = folder / "copy.xsl";
  std::ofstream(sheet) << "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                          "<xsl:output method='xml' omit-xml-declaration='yes'/><xsl:template match='/'>"
                          "<xsl:copy-of select='report/table'/></xsl:template></xsl:stylesheet>";
  const std::string zoom =
      R"(<callback viewname="PCB" process="PCB:Zoom" parameters="Action=AREA_DYNAMICZOOM|)";
  EXPECT_EQ(
      Platform::ToUtf8(report->WriteToString(Platform::ToUtf16(sheet.string()))),
      R"(<table suppress_title="true"><title>Net Status</title><columns><column><text>Nets</text></column>)"
      "<column><text>Layer</text></column><column><text>Length</text></column></columns><row><cell>" +
          zoom +
          R"(Location1.X=-5mil|Location2.X=205mil|Location1.Y=45mil|Location2.Y=55mil|Absolute=True">)"
          "<text>A</text></callback></cell><cell>Signal Layers Only</cell><cell><coordinate>2000000"
          "</coordinate></cell></row><row><cell>" +
          zoom +
          R"(Location1.X=-5mil|Location2.X=105mil|Location1.Y=-5mil|Location2.Y=5mil|Absolute=True">)"
          "<text>B</text></callback></cell><cell>Signal Layers Only</cell><cell><coordinate>1000000"
          "</coordinate></cell></row><row><cell>" +
          zoom +
          R"(Location1.X=0mil|Location2.X=0mil|Location1.Y=0mil|Location2.Y=0mil|Absolute=True">)"
          "<text>P</text></callback></cell><cell>Internal Plane 1</cell><cell><coordinate>0"
          "</coordinate></cell></row></table>\n");
}

constexpr const char* kComponents = R"(
  component LONGDESIGNATOR at 500,500 bottom rot 90 { pad -50,0 60x60 name 2 ; pad 50,0 60x60 name 1 }
  component U1 at 100,100 { pad 0,0 60x60 name 2 ; pad 30,10 60x60 name 3 }
  component R1 at 200,200 { pad 0,0 60x60 name 1 ; pad 20,0 60x60 name 1 ; pad 41,0 60x60 name 7 }
  component X1 at 900,900 { }
)";

TEST_F(TextReports, PickAndPlaceAsQuotedValues) {
  TBoard* const board = Read(kComponents);
  host->setup.display_unit = eImperial;
  host->setup.origin = {Tests::Mil(10), Tests::Mil(20)};
  Tests::Find<Editor::Component>(*host, 1)->data.pattern = u"A \"quoted\" pattern";
  Tests::Find<Editor::Component>(*host, 3)->data.rotation = -90;
  ReportPickNPlace(board, Name("a.csv"), u"CSV");
  EXPECT_EQ(
      Get("a.csv"),
      "\"Designator\",\"Pattern\",\"Mid X\",\"Mid Y\",\"Ref X\",\"Ref Y\",\"Pad X\",\"Pad Y\",\"Layer\","
      "\"Rotation\"\r\n\"\"\r\n"
      "\"U1\",\"A \"quoted\" pattern\",\"105mil\",\"85mil\",\"90mil\",\"80mil\",\"90mil\",\"80mil\",\"T\","
      "\"0.00\"\r\n"
      "\"R1\",\"\",\"210.5mil\",\"180mil\",\"190mil\",\"180mil\",\"210mil\",\"180mil\",\"T\",\"0.00\"\r\n"
      "\"LONGDESIGNATOR\",\"\",\"490mil\",\"480mil\",\"490mil\",\"480mil\",\"490mil\",\"530mil\",\"B\","
      "\"90.00\"\r\n"
      "\"X1\",\"\",\"-10mil\",\"-20mil\",\"890mil\",\"880mil\",\"-10mil\",\"-20mil\",\"T\",\"270.00\"\r\n"
      "\r\n");
  EXPECT_EQ(shown, std::vector<std::string>{"a.csv"});
}

TEST_F(TextReports, PickAndPlaceInFixedColumns) {
  TBoard* const board = Read("component LONGDESIGNATOR at 100,100 { pad 0,0 60x60 name 1 }");
  host->setup.display_unit = eImperial;
  Tests::Find<Editor::Component>(*host)->data.pattern = u"TWENTYCHARACTERSLONG";
  Tests::Find<Editor::Component>(*host)->data.rotation = 360;
  ReportPickNPlace(board, Name("b.txt"), u"csv");
  const std::string value = std::string(8, ' ') + "100mil";
  const std::string heading = std::string("Designator Pattern       ") + "         Mid X         Mid Y" +
                              "         Ref X         Ref Y         Pad X         Pad Y TB      Rotation\r\n";
  EXPECT_EQ(Get("b.txt"), heading + "\r\nLONGDESIGN TWENTYCHARACTERSLONG" + value + value + value + value +
                              value + value + "  T        360.00\r\n\r\n");
  // Who gave up gets no lines and sees nothing.
  ToolAborted = true;
  shown.clear();
  ReportPickNPlace(board, Name("b.txt"), u"");
  EXPECT_EQ(Get("b.txt"), heading + "\r\n\r\n");
  EXPECT_TRUE(shown.empty());
}

TEST_F(TextReports, ALockedFileStaysAndIsShownAllTheSame) {
  TBoard* const board = Read(kComponents);
  std::ofstream(folder / "c.csv") << "old";
  std::ofstream(Platform::LockFileOf(folder / "c.csv")) << "ComputerName=b\nUserName=eve\nProcessID=1\n";
  ReportPickNPlace(board, Name("c.csv"), u"CSV");
  EXPECT_EQ(Get("c.csv"), "old");
  EXPECT_EQ(shown, std::vector<std::string>{"c.csv"});
}

class ComponentReports : public TextReports {
 protected:
  TPCBComponentLibrary* MakeLibrary(std::initializer_list<const char16_t*> patterns) {
    const auto library = Editor::MakeHost<Editor::Library>();
    for (const char16_t* pattern : patterns) {
      library->components.push_back(Editor::MakeHost<Editor::LibComponent>());
      library->components.back()->data.pattern = pattern;
    }
    return new TPCBComponentLibrary(Ref<IPCB_Library>(library.Get()));
  }
  // Lines ahead of the date, and behind the time.
  static std::pair<std::string, std::string> Around(const std::string& text) {
    const std::size_t date = text.find("Date        : "), time = text.find("Time        : ");
    return {text.substr(0, date), text.substr(text.find("\r\n", time) + 2)};
  }
};

TEST_F(ComponentReports, AComponentIsCountedByLayer) {
  TBoard* const board = Read(R"(
    edge 0,0 1000,0 1000,500 0,500
    pad 0,0 60x60 round top
    pad 100,0 60x60 round top
    track 0,0 100,0 w10 topoverlay
    text 0,0 "R" h60 topoverlay
    arc 0,0 r50 0..90 w10 bottom
  )");
  host->file.path = "/lib/some.lib";
  host->setup.display_unit = eImperial;
  TComponentReport report(board, Name("d.txt"), MakeLibrary({u"SOT-23"}));
  report.CreateComponentReport();
  const auto [head, tail] = Around(Get("d.txt"));
  EXPECT_EQ(head, "Component   : SOT-23\r\nPCB Library : some.lib\r\n");
  const std::string dashes(68, '-');
  // The edge is four lines on a mechanical layer.
  EXPECT_EQ(tail,
            "\r\n\r\n\r\nDimension : 1 x 0.5 in\r\n\r\n"
            " Layer(s)              Pads(s)  Tracks(s)  Fill(s)  Arc(s)  Text(s)\r\n" +
                dashes +
                "\r\n"
                " Top Layer                   2          0        0       0        0\r\n"
                " Bottom Layer                0          0        0       1        0\r\n"
                " Top Overlay                 0          1        0       0        1\r\n"
                " Mechanical Layer 1          0          4        0       0        0\r\n" +
                dashes +
                "\r\n"
                " Total                       2          5        0       1        1\r\n");
  host->setup.display_unit = eMetric;
  TComponentReport metric(board, Name("e.txt"), MakeLibrary({}));
  metric.CreateComponentReport();
  EXPECT_EQ(Get("e.txt").find("Component   : \r\n"), 0u);
  EXPECT_NE(Get("e.txt").find("Dimension : 25.4 x 12.7 mm\r\n"), std::string::npos);
  metric.LoadReportIntoTextEditor();
  EXPECT_EQ(shown, std::vector<std::string>{"e.txt"});
}

TEST_F(ComponentReports, ALibraryListsItsNames) {
  TBoard* const board = Read("");
  host->file.path = "/lib/some.lib";
  TComponentReport report(board, Name("f.txt"), MakeLibrary({u"R10", u"C1", u"R2"}));
  report.CreateLibraryReport();
  const auto [head, tail] = Around(Get("f.txt"));
  EXPECT_EQ(head, "PCB Library : some.lib\r\n");
  EXPECT_EQ(tail, "\r\n\r\n\r\nComponent Count : 3\r\n\r\nComponent Name\r\n" + std::string(47, '-') +
                      "\r\n\r\nC1\r\nR2\r\nR10\r\n");
}

TEST_F(TextReports, AFileIsShownWhereItIsOpenOrInItsEditor) {
  Editor::ClientSetup setup;
  setup.open_documents = {Editor::MakeHost<Editor::ServerDocument>(Name("text.txt"), u"TEXTEDIT"),
                          Editor::MakeHost<Editor::ServerDocument>(Name("other.txt"), u"Other")};
  Install(std::move(setup));
  const auto shown_for = [&](const char* name, bool as_spread) {
    shown.clear();
    DisplayReportFile(Name(name), as_spread);
    return shown.size();
  };
  EXPECT_EQ(shown_for("text.txt", false), 0u);  // the file is not there
  for (const char* name : {"text.txt", "other.txt", "closed.txt"}) std::ofstream(folder / name) << "text";
  EXPECT_EQ(shown_for("text.txt", false), 1u);
  EXPECT_EQ(shown_for("other.txt", false), 2u);  // once more, in the text editor
  EXPECT_EQ(shown_for("closed.txt", false), 1u);
  EXPECT_EQ(shown_for("gone.txt", true), 1u);  // the spreadsheet's business
}

}  // namespace
}  // namespace Ketril::Tools
