// Ungrouping, through the export.
#include "DLLs/Tools/Convertors/UnGroup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Copper/CopperMeasure.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/HostCall.h"
#include "Interfaces/Tools.h"
#include "Platform/Text.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tools {
namespace {

using Editor::HostGate;
using Lines = std::vector<std::string>;
using Tests::Mil;

constexpr TObjectSet kGroups = {eComponentObject, ePolyObject, eDimensionObject, eCoordinateObject};
constexpr const char* kSure = "Sure?";
constexpr const char* kSureWithLocked = "Sure?\r\n(There are locked primitives.)";
constexpr const char* kLocked = "This primitive is locked. Continue?";

// "Pad A", "Text R1 in Component": kind, text, net and owner of each object with a place, sorted.
Lines Objects(const Editor::Board& board) {
  Lines lines;
  board.objects.ForEach(TObjectSet::All(), [&](const Editor::Primitive& object) {
    if (object.kind == eNetObject) return;
    std::string line = Editor::KindName(object.kind);
    if (const auto* text = Editor::As<Editor::Text>(&object))
      line += " " + Platform::ToUtf8(text->data.string);
    if (object.GetNet()) line += " " + Platform::ToUtf8(object.GetNet()->data.name);
    if (object.Owner()) line += std::string(" in ") + Editor::KindName(object.Owner()->kind);
    lines.push_back(line);
  });
  std::ranges::sort(lines);
  return lines;
}

std::map<TV7_Layer, double> CopperOf(const Editor::Board& board) {
  return Editor::MakeHost<Editor::CopperBodies>(board)->areas;
}

void ExpectSameCopper(const std::map<TV7_Layer, double>& before, const Editor::Board& board) {
  const auto after = CopperOf(board);
  for (const auto& [layer, area] : before) EXPECT_NEAR(after.at(layer), area, 1e-5 * area) << layer.ID;
}

class Ungroup : public testing::Test {
 protected:
  ~Ungroup() override {
    HostGate::Disarm();
    ReleasePCBServer();
  }
  void Run(bool selected, TObjectSet kinds) {
    board->document_changed = false;
    Editor::ClientSetup setup;
    setup.confirm = [this](const std::u16string& text) {
      asked.push_back(Platform::ToUtf8(text));
      return asked.size() > answers.size() || answers[asked.size() - 1] == 'y';
    };
    setup.choose_location = [this](const std::u16string& prompt) -> std::optional<TCoordPoint> {
      EXPECT_EQ(prompt, u"Select Object");
      if (picks.empty()) return std::nullopt;
      const TCoordPoint pick = picks.front();
      picks.erase(picks.begin());
      return TCoordPoint{Mil(pick.x), Mil(pick.y)};
    };
    setup.choose_object = [this](const std::vector<Editor::Primitive*>& objects) {
      std::string names;
      for (const Editor::Primitive* object : objects)
        names += std::string(" ") + Editor::KindName(object->kind);
      asked.push_back("which:" + names);
      return choice;
    };
    setup.test_mode = test_mode;
    setup.log = [](const std::u16string&) {};
    if (cursor) setup.cursor = TCoordPoint{Mil(cursor->x), Mil(cursor->y)};
    const Editor::ClientInstallation installation(Editor::MakeHost<Editor::Client>(setup));
    asked.clear();
    Tools_UnGroup(board.Get(), selected, kinds, u"Sure?");
    EXPECT_EQ(board->LiveIterators(), 0);
    EXPECT_EQ(ObjectScopeDepth, 0);
    EXPECT_EQ(PrimitiveRegistry, nullptr);
  }

  Ref<Editor::Board> board;
  std::string answers;             // y or n each; then yes
  std::vector<TCoordPoint> picks;  // in mil, in their order; then the user cancels
  std::optional<std::size_t> choice;
  std::optional<TCoordPoint> cursor;  // in mil
  bool test_mode = false;
  Lines asked;
};

// A component, a zone, a dimension and a coordinate.
constexpr const char* kBoard = R"(
  component U1 at 500,500 bottom rot 90 { pad -50,0 60x40 rect name 1 net A ; pad 50,0 60x40 hole 30 name 2 net B
    pad 0,90 60x40 top ; track 0,0 50,50 w5 topoverlay ; arc 0,0 r20 0..90 w5 top ; text 0,80 "${REFERENCE} in" topoverlay
    region 200,0 250,0 250,50 top ; zone 300,0 400,0 400,100 top net B { region 310,10 390,10 390,90 top net B } }
  zone 0,0 2000,0 2000,2000 0,2000 bottom net GND { region 10,10 1990,10 1990,1990 10,1990 bottom ; track 0,0 9,9 w9 bottom net A }
  dimension 3000,0 3100,0 mech1 { track 3000,50 3100,50 mech1 net A ; text 3050,60 "100" mech1 }
  coordinate 4000,100 mech1 { text 4000,100 "x" mech1 }
)";
// As they are, and what becomes of them.
const Lines kParts[][2] = {
    {{"Component", "Pad A in Component", "Pad B in Component", "Pad in Component", "Track in Component",
      "Arc in Component", "Text U1 in Component", "Text ${REFERENCE} in in Component", "Region in Component",
      "Polygon B in Component", "Region B in Polygon"},
     {"Pad A", "Pad B", "Pad", "Track", "Arc", "Text U1", "Text U1 in", "Region", "Polygon B",
      "Region B in Polygon"}},
    {{"Polygon GND", "Region in Polygon", "Track A in Polygon"}, {"Region GND", "Track GND"}},
    {{"Dimension", "Track A in Dimension", "Text 100 in Dimension"}, {"Track", "Text 100"}},
    {{"Coordinate", "Text x in Coordinate"}, {"Text x"}},
};

TEST_F(Ungroup, TheSelection) {
  const struct {
    const char* name;
    TObjectSet selected, kinds;
    const char* answers;
    std::size_t asked;
    std::array<bool, 4> free;  // of kParts
  } rows[] = {
      {"a component", {eComponentObject}, kGroups, "y", 1, {true, false, false, false}},
      {"all but it",
       {ePolyObject, eDimensionObject, eCoordinateObject},
       kGroups,
       "y",
       1,
       {false, true, true, true}},
      {"of one kind only", kGroups, {eDimensionObject}, "y", 1, {false, false, true, false}},
      {"answered with No", kGroups, kGroups, "n", 1, {}},
      {"of other kinds", {eTrackObject, eCoordinateObject}, {eComponentObject}, "y", 0, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    board = Tests::BoardFromText(kBoard);
    const auto copper = CopperOf(*board);
    board->objects.ForEach(row.selected, [](Editor::Primitive& object) {
      if (!object.OwnerAs<Editor::Component>()) object.SetFlag(Editor::kFlag_Selected, true);
    });
    answers = row.answers;
    cursor = {500, 500};  // does not count, as something is selected
    Run(true, row.kinds);
    EXPECT_EQ(asked, Lines(row.asked, kSure));
    Lines after;
    for (std::size_t i = 0; i < row.free.size(); ++i)
      after.insert(after.end(), kParts[i][row.free[i]].begin(), kParts[i][row.free[i]].end());
    std::ranges::sort(after);
    EXPECT_EQ(Objects(*board), after);
    EXPECT_EQ(board->document_changed, row.free != decltype(row.free){});
    ExpectSameCopper(copper, *board);
  }
}

TEST_F(Ungroup, LocksAndTheCursor) {
  constexpr const char* kTwo =
      "component U1 at 100,100 { pad 0,0 60x60 } ; component U2 at 500,100 locked { pad 0,0 60x60 }"
      "track 900,0 900,200 w10";
  const struct {
    const char* name;
    int selected;  // components
    std::optional<TCoordPoint> cursor;
    bool test_mode;
    Lines asked;
    std::size_t left;  // components
  } rows[] = {
      {"one of two is locked", 2, {}, false, {kSureWithLocked}, 0},
      {"nobody is asked in test mode", 2, {}, true, {}, 0},
      {"the first alone", 1, {}, false, {kSure}, 1},
      {"the one under the cursor", 0, {{480, 100}}, false, {kSureWithLocked}, 1},
      {"no group under the cursor", 0, {{900, 100}}, false, {}, 2},
      {"no cursor", 0, {}, false, {}, 2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    board = Tests::BoardFromText(kTwo);
    for (int i = 0; i < row.selected; ++i)
      Tests::Find<Editor::Component>(*board, static_cast<std::size_t>(i))
          ->SetFlag(Editor::kFlag_Selected, true);
    cursor = row.cursor;
    test_mode = row.test_mode;
    Run(true, kGroups);
    EXPECT_EQ(asked, row.asked);
    EXPECT_EQ(board->objects.Count(eComponentObject), row.left);
    EXPECT_EQ(board->objects.Count(ePadObject), 2u);
    EXPECT_EQ(board->document_changed, row.left < 2);
  }
}

TEST_F(Ungroup, Picks) {
  constexpr TCoordPoint kU1{100, 100}, kU2{500, 100}, kInZone{1500, 1500}, kBoth{900, 900},
      kNowhere{5000, 5000};
  constexpr const char* kPicked =
      "component U1 at 100,100 { pad 0,0 60x60 } ; component U2 at 500,100 locked { pad 0,0 60x60 }"
      "zone 800,800 2000,800 2000,2000 bottom { region 800,800 2000,800 2000,2000 bottom }"
      "component U3 at 900,850 { pad 0,0 200x200 }";
  const std::string kWhich = "which: Component Polygon";
  const struct {
    const char* name;
    std::vector<TCoordPoint> picks;
    TObjectSet kinds;
    std::optional<std::size_t> choice;
    const char* answers;
    Lines asked;
    const char* left;  // components and zones
    bool changed;
  } rows[] = {
      {"cancelled at once", {}, kGroups, {}, "", {}, "31", false},
      {"one after the other", {kU1, kNowhere, kInZone}, kGroups, {}, "", {kSure, kSure}, "20", true},
      {"outside of the zone's outline", {{1000, 1900}}, kGroups, {}, "", {}, "31", false},
      {"No, and on", {kU1, kInZone}, kGroups, {}, "n", {kSure, kSure}, "30", true},
      {"No alone", {kU1}, kGroups, {}, "n", {kSure}, "31", true},
      {"a locked one", {kU2, kU1}, kGroups, {}, "", {kLocked, kSure, kSure}, "11", true},
      {"No to the locked one ends it", {kU1, kU2, kInZone}, kGroups, {}, "yn", {kSure, kLocked}, "21", true},
      {"the second of two", {kBoth}, kGroups, 1, "", {kWhich, kSure}, "30", true},
      {"none of two, and on", {kBoth, kU1}, kGroups, {}, "", {kWhich, kSure}, "21", true},
      {"one kind of two", {kBoth}, {ePolyObject}, {}, "", {kSure}, "30", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    board = Tests::BoardFromText(kPicked);
    const auto copper = CopperOf(*board);
    picks = row.picks;
    choice = row.choice;
    answers = row.answers;
    Run(false, row.kinds);
    EXPECT_EQ(asked, row.asked);
    const auto count = [&](TObjectId kind) { return std::to_string(board->objects.Count(kind)); };
    EXPECT_EQ(count(eComponentObject) + count(ePolyObject), row.left);
    EXPECT_EQ(board->document_changed, row.changed);
    ExpectSameCopper(copper, *board);
  }
}

TEST_F(Ungroup, CopiesComeFirstAndTheRemovalLast) {
  board = Tests::BoardFromText(
      "zone 0,0 900,0 900,900 top net A selected { region 0,0 900,0 900,900 top ; track 0,0 9,9 top net B }");
  test_mode = true;
  HostGate::Arm(true);
  Run(true, kGroups);
  HostGate::Disarm();
  std::string writes;
  for (const std::string& call : HostGate::Record()) {
    const std::string name = call.substr(call.find('.') + 1);
    if (!name.starts_with("Get") && name != "First" && name != "Next" && !name.starts_with("Filter") &&
        name != "WriteLog")
      writes += name.substr(name.find('_') + 1) + " ";
  }
  const std::string copy =
      "Replicate InPolygon Polygon InComponent Component InCoordinate Coordinate InDimension Dimension InNet "
      "Net Net ";
  const std::string put = "RegisterWithPrimaryWarehouse GraphicallyInvalidatePrimitive ";
  EXPECT_EQ(writes, "DocumentHasChanged GraphicallyInvalidatePrimitive Create " + copy +
                        "SynchronizeShapeFromGPCPoly " + put + copy + put +
                        "Destroy CancelPrimaryWarehouseRegistration ");
}

// What came free is of the format's own kinds, in every version of it.
TEST_F(Ungroup, FilesHoldWhatCameFree) {
  const std::string layers = R"(
    (layers (0 "F.Cu" signal) (2 "B.Cu" signal) (37 "F.SilkS" user) (25 "Edge.Cuts" user) (40 "Dwgs.User" user))
    (net 0 "") (net 1 "GND") (net 2 "A")
    (footprint "L:R" (layer "F.Cu") (at 20 20 30) (solder_mask_margin 0.1)
      (fp_text reference "R1" (at 0 -2 30) (layer "F.SilkS") (effects (font (size 1 1) (thickness 0.15))))
      (fp_text value "10k" (at 0 2 30) (layer "F.Cu") hide (effects (font (size 1 1) (thickness 0.15))))
      (fp_text user "${REFERENCE}" (at 0 0 200) (layer "F.SilkS") (effects (font (size 1 1) (thickness 0.15))))
      (fp_line (start -1 0) (end 1 0) (layer "F.SilkS") (width 0.1))
      (fp_line (start -1 3) (end 1 3) (layer "F.Cu") (width 0.2))
      (fp_circle (center 0 5) (end 0.5 5) (layer "F.Cu") (width 0.1))
      (pad "1" smd rect (at -1 0 30) (size 1 0.8) (layers "F.Cu" "F.Paste" "F.Mask") (net 1 "GND"))
      (pad "2" thru_hole oval (at 1 0 30) (size 1 1.8) (drill oval 0.6 1.2 (offset 0.1 0)) (layers "*.Cu" "*.Mask") (net 2 "A")))
    (zone (net 1) (net_name "GND") (layer "B.Cu") (hatch edge 0.5) (connect_pads (clearance 0.2)) (min_thickness 0.25)
      FILLED (fill yes (thermal_gap 0.5) (thermal_bridge_width 0.5))
      (polygon (pts (xy 0 0) (xy 60 0) (xy 60 60) (xy 0 60)))
      (filled_polygon LAYER (pts (xy 10 1) (xy 59 1) (xy 59 59) (xy 1 59) (xy 1 1) (xy 10 1) (xy 10 20) (xy 30 20)
        (xy 30 10) (xy 10 10)))
      (filled_polygon LAYER (pts (xy 12 12) (xy 28 12) (xy 28 18) (xy 12 18))))
    (dimension (type aligned) (layer "Dwgs.User") (pts (xy 0 0) (xy 40 0)) (height -10)
      (gr_text "40" (at 20 -10) (layer "Dwgs.User") (effects (font (size 1 1) (thickness 0.15))))
      (format (units 2)) (style (thickness 0.2) (arrow_length 1) (extension_height 0.5) (extension_offset 0.5)))
  )";
  const auto text_of = [&](int version) {
    std::string text = "(kicad_pcb (version " + std::to_string(version) + ")" + layers + ")\n";
    const auto put = [&](const std::string& word, const std::string& value) {
      for (std::size_t at; (at = text.find(word)) != text.npos;) text.replace(at, word.size(), value);
    };
    const bool is_old = version < 20200628;
    put("FILLED", is_old || version == 20211014 ? "" : "(filled_areas_thickness no)");
    put("LAYER", is_old ? "" : "(layer \"B.Cu\")");
    return text;
  };
  test_mode = true;
  for (const int version : {20171130, 20211014, 20221018, 20240108, 20241229}) {
    SCOPED_TRACE(version);
    board = Editor::ReadBoardText(text_of(version));
    const auto copper = CopperOf(*board);
    board->objects.ForEach(kGroups, [](Editor::Primitive& o) { o.SetFlag(Editor::kFlag_Selected, true); });
    Run(true, kGroups);
    const Lines after = Objects(*board);
    EXPECT_EQ(std::ranges::count(after, "Pad GND") + std::ranges::count(after, "Pad A"), 2);
    EXPECT_EQ(std::ranges::count(after, "Region GND"), 2);
    EXPECT_EQ(std::ranges::count(after, "Text R1"), 2);
    board->objects.ForEach({eTextObject}, [](const Editor::Primitive& text) {
      EXPECT_NE(static_cast<const Editor::Text&>(text).data.rotation, 200) << "it stood upright";
    });
    // Two of the footprint; of the dimension two that lead to its bar, the bar around its text, four at its
    // ends.
    EXPECT_EQ(std::ranges::count(after, "Track"), 2 + 8);
    EXPECT_EQ(board->objects.Count(eComponentObject) + board->objects.Count(ePolyObject), 0u);
    ExpectSameCopper(copper, *board);
    const Ref<Editor::Board> again = Editor::ReadBoardText(Editor::WriteBoardText(*board));
    EXPECT_EQ(Tests::Differences(Tests::DescribeBoard(*board, true), Tests::DescribeBoard(*again, true)), "");
    ExpectSameCopper(copper, *again);
    EXPECT_EQ(Editor::WriteBoardText(*again), again->file.text);
  }
}

}  // namespace
}  // namespace Ketril::Tools
