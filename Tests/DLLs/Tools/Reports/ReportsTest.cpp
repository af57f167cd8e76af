#include "DLLs/Tools/Reports/Reports.h"

#include <cmath>
#include <limits>
#include <optional>

#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Connectivity/Ratsnest.h"
#include "Editor/Copper/CopperMeasure.h"
#include "Platform/Text.h"
#include "Tests/DLLs/Tools/Reports/ReportText.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Tools {
namespace {

using Editor::Pad;
using Tests::Find;
using Tests::Mil;
using Lines = std::vector<std::string>;

// The cells of each row of a table, with | between; those of its header first, with # ahead of numbers.
Lines RowsOf(IXMLNode report, const std::u16string& title) {
  Lines lines;
  for (const IXMLNode section : report.ChildNodes()) {
    for (const IXMLNode table : section.ChildNodes()) {
      if (table.NodeName() != u"table" || table.ChildNodes()[0].Text() != title) continue;
      if (!lines.empty()) lines.emplace_back("again");
      for (const IXMLNode row : table.ChildNodes()) {
        if (row.NodeName() == u"title") continue;
        std::string line;
        for (const IXMLNode cell : row.ChildNodes())
          line += (line.empty() ? "" : "|") + std::string(cell.Attribute(u"data_type") ? "#" : "") +
                  Platform::ToUtf8(cell.Text());
        lines.push_back(line);
      }
    }
  }
  return lines;
}

TBoardReportOptionSet Of(std::initializer_list<TBoardReportOption> options) {
  TBoardReportOptionSet set;
  for (const TBoardReportOption option : options) set.Set(option, true);
  return set;
}

class Reports : public testing::Test {
 protected:
  // A board and its wrapper in the open scope.
  TBoardReporter On(const std::string& text) {
    host = Tests::BoardFromText(text);
    board = TBoard::Create(host);
    return TBoardReporter(nullptr, board, u"", nullptr);
  }
  IXMLNode Write(TBoardReporter& reporter, TBoardReportOptionSet options) {
    reporter.Options = options;
    report.emplace();
    reporter.WriteSections(*report);
    return report->FCurrentNode;
  }

  const TObjectScope scope;
  Ref<Editor::Board> host;
  TBoard* board = nullptr;
  std::optional<TReadable<TPCBReport>> report;
};

TEST_F(Reports, SectionsStandWhateverTheOptionsSay) {
  TBoardReporter reporter = On("track 0,0 100,0 w10 top");
  Write(reporter, {});
  std::string expected = "<section><title>Contents</title><contents/></section>";
  for (const char* title : {"Board Specification", "Routing", "Layer Information", "Copper Area",
                            "Board Holes", "Board Slots", "Board Square Holes", "Other"})
    expected += std::string("<section><title>") + title + "</title></section>";
  EXPECT_EQ(report->Body(), expected);

  // Tables without rows; a list of sizes that is empty has no table.
  const IXMLNode root = Write(reporter, Of({eBoardReportOption_PlatedSlots, eBoardReportOption_ArcRadius,
                                            eBoardReportOption_PolygonClearance}));
  EXPECT_EQ(RowsOf(root, u"Plated Slot Size"), Lines{"Plated Slot Size / Length|#Pads"});
  EXPECT_EQ(RowsOf(root, u"Arc Radius"), Lines());
  EXPECT_EQ(RowsOf(root, u"Polygon Clearance"), Lines());
}

TEST_F(Reports, TheBoardItsLayersItsDrillPairsAndItsCopper) {
  TBoardReporter reporter = On(R"(
    layers 4
    edge 0,0 1000,0 1000,500 0,500
    component U1 at 500,300 { pad 0,0 60x60 name 1 net A selected }
    component U2 at 700,300 { pad 0,0 60x60 name 1 net A }
    via 100,100 30/15 net A
    via 200,100 30/15 net A selected
    via 300,100 30/15 mid1..bottom net A
    fill 400,100 500,200 bottom
    text 100,300 "Hello" h60 topoverlay
  )");
  const auto options = Of({eBoardReportOption_BoardSpecs, eBoardReportOption_LayerInfo,
                           eBoardReportOption_LayerPair, eBoardReportOption_CopperArea});
  IXMLNode root = Write(reporter, options);
  EXPECT_NE(
      report->Body().find("<columns use=\"title\"/><row><cell>Board Size</cell><cell><coordinate>10000000"
                          "</coordinate><space/><text>x</text><space/><coordinate>5000000</coordinate>"),
      std::string::npos)
      << report->Body();
  EXPECT_EQ(RowsOf(root, u"General")[2], "Components on board|2");
  const Lines layers = RowsOf(root, u"Layer Information");
  ASSERT_GT(layers.size(), 4u);
  EXPECT_EQ(layers[0], "Layer|#Arcs|#Pads|#Vias|#Tracks|#Texts|#Fills|#Regions|#ComponentBodies");
  const auto row = [&](const std::string& name) {
    for (const std::string& line : layers) {
      if (line.starts_with(name + "|")) return line.substr(name.size());
    }
    return std::string("no row");
  };
  EXPECT_EQ(row("Multi Layer"), "|0|2|3|0|0|0|0|0");
  EXPECT_EQ(row("Bottom Layer"), "|0|0|0|0|0|1|0|0");
  EXPECT_EQ(row("Mid Layer 1"), "|0|0|0|0|0|0|0|0");
  EXPECT_EQ(RowsOf(root, u"Drill Pairs"),
            (Lines{"Drill Pairs|#Vias", "Top Layer - Bottom Layer|2", "Mid Layer 1 - Bottom Layer|1"}));
  // The fill of 100 by 100 mil, pads and vias on it; each square millimetre is 1/645.16 square inch.
  const Lines copper = RowsOf(root, u"Copper Area");
  ASSERT_EQ(copper.size(), 5u);
  EXPECT_EQ(copper[0], "Layer|#Sq.In.|#Sq.MM.|Percent of layer");
  const double area = Editor::CopperArea(*host, eV6_BottomLayer) / 1e14;  // square inches
  EXPECT_EQ(copper[4], "Bottom Layer|" + Platform::ToUtf8(DoubleToText(std::round(area * 1e3) / 1e3)) + "|" +
                           Platform::ToUtf8(DoubleToText(std::round(area * 645.16 * 1e3) / 1e3)) + "|" +
                           std::to_string(std::lround(area / 0.5 * 100)) + "%");

  auto selected = options;
  selected.Set(eBoardReportOption_SelectedObjects, true);
  root = Write(reporter, selected);
  EXPECT_EQ(RowsOf(root, u"General")[2], "Components on board|0");
  EXPECT_EQ(RowsOf(root, u"Drill Pairs"), (Lines{"Drill Pairs|#Vias", "Top Layer - Bottom Layer|1"}));
}

TEST_F(Reports, RoutingCountsWhatIsLeft) {
  TBoardReporter reporter = On(R"(
    pad 0,0 60x60 round top net A
    pad 100,0 60x60 round top net A
    pad 200,0 60x60 round top net A
    pad 900,0 60x60 round top net A
    track 0,0 200,0 w10 top net A
    pad 0,300 60x60 round top net B
    pad 100,300 60x60 round bottom net B
    pad 0,600 60x60 round top net C
  )");
  Editor::RefreshConnections(*host);
  Editor::RefreshConnections(*host);  // in the place of those that are there
  IXMLNode root = Write(reporter, Of({eBoardReportOption_RoutingInfo}));
  EXPECT_EQ(RowsOf(root, u"Routing Information"), (Lines{"", "Routing completion|50.00%", "Connections|4",
                                                         "Connections routed|2", "Connections remaining|2"}));
  TBoardReporter empty = On("track 0,0 100,0 w10 top");
  root = Write(empty, Of({eBoardReportOption_RoutingInfo}));
  EXPECT_EQ(RowsOf(root, u"Routing Information")[1], "Routing completion|100.00%");
}

TEST_F(Reports, HolesComeBySizeAndUnselectedSizesStay) {
  TBoardReporter reporter = On(R"(
    pad 0,0 60x60 round top
    pad 100,0 60x60 round hole 10 selected
    pad 200,0 60x60 round hole 10
    pad 300,0 60x60 round hole 30
    via 400,0 30/20
    pad 500,0 60x60 round hole 40
  )");
  Find<Pad>(*host, 4)->data.plated = false;
  auto options = Of({eBoardReportOption_PlatedHoles, eBoardReportOption_NonPlatedHoles});
  IXMLNode root = Write(reporter, options);
  EXPECT_EQ(RowsOf(root, u"Plated Hole Size"),
            (Lines{"Plated Hole Size|#Pads|#Vias", "0|1|0", "100000|2|0", "200000|0|1", "300000|1|0"}));
  EXPECT_EQ(RowsOf(root, u"Non-Plated Hole Size"), (Lines{"Non-Plated Hole Size|#Pads|#Vias", "400000|1|0"}));
  options.Set(eBoardReportOption_SelectedObjects, true);
  root = Write(reporter, options);
  EXPECT_EQ(RowsOf(root, u"Plated Hole Size"),
            (Lines{"Plated Hole Size|#Pads|#Vias", "0|0|0", "100000|1|0", "200000|0|0", "300000|0|0"}));
}

TEST_F(Reports, SlotsComeBySizeAndLengthAndSquareHolesAlone) {
  TBoardReporter reporter = On(R"(
    pad 0,0 90x90 round hole 20
    pad 100,0 90x90 round hole 20
    pad 200,0 90x90 round hole 20
    pad 300,0 90x90 round hole 15
    pad 400,0 90x90 round hole 25
  )");
  const auto shape = [&](std::size_t n, TExtendedHoleType type, double width) {
    Find<Pad>(*host, n)->data.hole_type = type;
    Find<Pad>(*host, n)->data.hole_width = Mil(width);
  };
  shape(0, eSlotHole, 50);
  shape(1, eSlotHole, 40.25);
  shape(2, eSlotHole, 50);
  shape(3, eSlotHole, 60);
  shape(4, eSquareHole, 0);
  const IXMLNode root =
      Write(reporter, Of({eBoardReportOption_PlatedSlots, eBoardReportOption_PlatedSquareHoles,
                          eBoardReportOption_NonPlatedSquareHoles, eBoardReportOption_PlatedHoles}));
  EXPECT_EQ(RowsOf(root, u"Plated Slot Size"), (Lines{"Plated Slot Size / Length|#Pads", "15mil / 60mil|1",
                                                      "20mil / 40.25mil|1", "20mil / 50mil|2"}));
  EXPECT_EQ(RowsOf(root, u"Plated Square Hole Size"), (Lines{"Plated Square Hole Size|#Pads", "250000|1"}));
  EXPECT_EQ(RowsOf(root, u"Non-Plated Square Hole Size"), Lines{"Non-Plated Square Hole Size|#Pads"});
  EXPECT_EQ(RowsOf(root, u"Plated Hole Size"), Lines{"Plated Hole Size|#Pads|#Vias"});
}

TEST_F(Reports, SizesAreListedWithTheirCounts) {
  TBoardReporter reporter = On(R"(
    pad 0,0 60x50 rect hole 30
    pad 100,0 70x70 rect top
    via 200,0 40/15
    track 0,300 100,300 w12 top selected
    track 0,400 100,400 w8 top
    track 0,500 100,500 w12 top
    arc 500,500 r50 350..10 w10 top
    arc 500,700 r50 0..90 w10 top
    text 100,300 "Hello" h60 topoverlay
    net A
  )");
  TBoardReportOptionSet all = TBoardReportOptionSet::All();
  all.Set(eBoardReportOption_SelectedObjects, false);
  IXMLNode root = Write(reporter, all);
  EXPECT_EQ(RowsOf(root, u"Top Layer Annular Ring Size"),
            (Lines{"Top Layer Annular Ring Size|#Count", "200000|1", "250000|1"}));
  EXPECT_EQ(RowsOf(root, u"Mid Layer Annular Ring Size").size(), 3u);
  EXPECT_EQ(RowsOf(root, u"Bottom Layer Annular Ring Size").size(), 3u);
  EXPECT_EQ(RowsOf(root, u"Track Width"), (Lines{"Track Width|#Count", "80000|1", "120000|2"}));
  EXPECT_EQ(RowsOf(root, u"Arc Line Width"), (Lines{"Arc Line Width|#Count", "100000|2"}));
  EXPECT_EQ(RowsOf(root, u"Arc Radius"), (Lines{"Arc Radius|#Count", "500000|2"}));
  EXPECT_EQ(RowsOf(root, u"Arc Degrees"), (Lines{"Arc Degrees|#Count", "20|1", "90|1"}));
  EXPECT_EQ(RowsOf(root, u"Text Height"), (Lines{"Text Height|#Count", "600000|1"}));
  EXPECT_EQ(RowsOf(root, u"Pad Relief Entries"), (Lines{"Pad Relief Entries|#Count", "0|2"}));
  EXPECT_EQ(RowsOf(root, u"Net Track Width").size(), 2u);
  for (const char16_t* title :
       {u"Pad Paste Mask", u"Pad Pwr/Gnd Expansion", u"Pad Relief Conductor Width", u"Pad Relief Air Gap",
        u"Via Pwr/Gnd Expansion", u"Text Width", u"Net Via Size"})
    EXPECT_EQ(RowsOf(root, title).size(), 2u) << Platform::ToUtf8(title);

  root = Write(reporter, Of({eBoardReportOption_TrackWidth, eBoardReportOption_ArcWidth,
                             eBoardReportOption_SelectedObjects}));
  EXPECT_EQ(RowsOf(root, u"Track Width"), (Lines{"Track Width|#Count", "120000|1"}));
  EXPECT_EQ(RowsOf(root, u"Arc Line Width"), Lines());
}

TEST_F(Reports, SolderMasksSplitWhereTheSidesDiffer) {
  TBoardReporter reporter = On("pad 0,0 60x60 round top; pad 100,0 60x60 round hole 30; via 200,0 40/15");
  const auto open_by = [&](std::size_t n, double mil) {
    Find<Pad>(*host, n)->data.mask.solder_mode = eMaskExpansion_Manual;
    Find<Pad>(*host, n)->data.mask.solder = Mil(mil);
  };
  const auto options = Of({eBoardReportOption_PadSolderMask, eBoardReportOption_ViaSolderMask});
  open_by(1, 4);
  IXMLNode root = Write(reporter, options);
  EXPECT_EQ(RowsOf(root, u"Pad Solder Mask"), (Lines{"Pad Solder Mask|#Count", "0|1", "40000|1"}));
  EXPECT_EQ(RowsOf(root, u"Via Solder Mask"), (Lines{"Via Solder Mask|#Count", "0|1"}));
  open_by(0, 4);  // a surface pad has no opening on the other side
  root = Write(reporter, options);
  EXPECT_EQ(RowsOf(root, u"Pad Solder Mask"),
            (Lines{"Pad Solder Mask|#CountTop Solder MaskBottom Solder Mask", "0|0|1", "40000|2|1"}));
  EXPECT_NE(report->Body().find("<column data_type=\"number\"><text>Count</text><subcolumns><column "
                                "data_type=\"number\"><text>Top Solder Mask</text></column>"),
            std::string::npos);
}

TEST_F(Reports, RoundingKeepsToTheRangeOfAnInteger) {
  EXPECT_EQ(ClampedRound(2.5), 2);
  EXPECT_EQ(ClampedRound(-2147483648.0), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ClampedRound(2147483647.5), 2147483647);
  EXPECT_EQ(ClampedRound(1e300), 2147483647);
  EXPECT_EQ(ClampedRound(-1e300), -2147483647);
  EXPECT_EQ(ClampedRound(std::nan("")), -2147483647);
}

TEST_F(Reports, ParametersChoose) {
  TBoardReporter reporter = On("track 0,0 100,0 w10 top");
  const auto read = [&](const char16_t* text) {
    const auto list = Editor::MakeHost<Editor::Parameters>();
    list->SetFromWide(text);
    reporter.SetAllOptions(false);
    const bool found = reporter.GetState_Parameter(list.Get());
    return std::pair(found, reporter.Options);
  };
  const auto all = TBoardReportOptionSet::All();
  EXPECT_EQ(all.Bits(), 0x1FFFFFFFFu);
  EXPECT_EQ(read(u"All=True|TrackWidth=False"), std::pair(true, all));
  EXPECT_EQ(read(u"All=tRUE"), std::pair(true, all));
  EXPECT_EQ(read(u"All=False|TrackWidth=True"), std::pair(true, TBoardReportOptionSet()));
  EXPECT_EQ(read(u"TrackWidth=True|ArcWidth=true|CopperArea=True"),
            std::pair(true, Of({eBoardReportOption_TrackWidth, eBoardReportOption_CopperArea})));
  EXPECT_EQ(read(u"AppendFile=False"), std::pair(true, TBoardReportOptionSet()));
  EXPECT_EQ(read(u"Other=True"), std::pair(false, TBoardReportOptionSet()));
  EXPECT_FALSE(reporter.GetState_Parameter(nullptr));
}

TEST_F(Reports, WithoutParametersTheStoreAndTheDialogChoose) {
  const Tests::TempFolder folder;
  Editor::ClientSetup setup;
  setup.options_folder = folder;
  setup.test_mode = true;  // plain XML
  bool accept = false;
  TBoardReportOptionSet shown;
  setup.dialogs.board_report = [&](TBoardReportOptionSet& options) {
    shown = options;
    options.Set(eBoardReportOption_TrackWidth, true);
    return accept;
  };
  const auto client = Editor::MakeHost<Editor::Client>(setup);
  const Editor::ClientInstallation installation(client);
  client->WriteOption(u"BoardReportOptions", u"Drill Pair", u"-1");
  client->WriteOption(u"BoardReportOptions", u"SelectedObjects", u"0");
  TBoardReporter reporter = On("track 0,0 100,0 w10 top");
  host->file.path = (folder / "one.kicad_pcb").string();
  const auto stored = [&] { return Tests::TextOf(folder / "KETRIL.INI"); };
  const std::string before = stored();
  reporter.Execute();  // cancelled
  EXPECT_EQ(shown, Of({eBoardReportOption_LayerPair}));
  EXPECT_EQ(stored(), before);
  EXPECT_FALSE(std::filesystem::exists(folder / "one.xml"));

  accept = true;
  reporter.Execute();
  EXPECT_NE(stored().find("Track Width=-1\n"), std::string::npos);
  EXPECT_NE(stored().find("CopperArea=0\n"), std::string::npos);
  const IXMLDocument written = IXMLDocument::Load(folder / "one.xml");
  EXPECT_EQ(written.DocumentElement().ChildNodes()[0].Text(), u"Board Information Report");
  EXPECT_EQ(RowsOf(written.DocumentElement(), u"Track Width").size(), 2u);
  EXPECT_EQ(RowsOf(written.DocumentElement(), u"Drill Pairs").size(), 1u);
}

}  // namespace
}  // namespace Ketril::Tools
