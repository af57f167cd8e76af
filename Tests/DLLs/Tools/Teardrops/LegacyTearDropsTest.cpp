// Teardrops of the older builder on whole boards, through the exports. Numbers are mil.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <random>

#include "Editor/Copper/Distance.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Rules/Clearance.h"
#include "Platform/Messages.h"
#include "Tests/DLLs/Tools/Teardrops/TearDropsBoard.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril {
namespace {

using Editor::Board;
using Editor::Primitive;
using Tests::DescribeBoard;
using Tests::Find;
using Tests::Mil;
using Tests::TextOf;

std::string Text(double mil) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", std::round(mil * 100) / 100 + 0.0);
  return text;
}
std::string Text(TCoordPoint p) {
  return Text(p.x / 1e4) + "," + Text(p.y / 1e4);
}

constexpr const char16_t *kArcs = u"0", *kTracks = u"1", *kFillets = u"5";

class LegacyTearDrops : public TearDropsBoard {
 protected:
  using Pairs = std::vector<std::pair<const char16_t*, const char16_t*>>;
  static void Run(Board& board, const Pairs& pairs, decltype(Tools_TearDrops)* tool = Tools_LegacyTearDrops) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    for (const auto& [name, value] : pairs) parameters->AddParameter(name, value);
    tool(&board, parameters.Get());
  }
  static void Add(Board& board, const char16_t* style, const char16_t* force = u"no") {
    Run(board, {{u"Style", style}, {u"Report", u"no"}, {u"Force", force}});
  }
  static void Remove(Board& board) { Run(board, {{u"Action", u"remove"}}); }

  static std::vector<Primitive*> Drops(const Board& board) {
    std::vector<Primitive*> drops;
    board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
      if (object.Has(Editor::kFlag_TearDrop)) drops.push_back(&object);
    });
    return drops;
  }
  static std::size_t Count(const Board& board) { return Drops(board).size(); }
  // Of each fan the ends in the pad and the anchor, of each arc the centre, the radius and the first angle.
  static std::string Shapes(const Board& board) {
    std::string text, anchor;
    for (const Primitive* drop : Drops(board)) {
      if (const auto* track = Editor::As<Editor::Track>(drop)) {
        if (const std::string at = Text(track->data.p2); at != anchor) text += "from " + (anchor = at) + ": ";
        text += Text(track->data.p1) + " ";
      } else if (const auto* arc = Editor::As<Editor::Arc>(drop)) {
        text += Text(arc->data.center) + " r" + Text(arc->data.radius / 1e4) + " " +
                std::to_string(std::lround(arc->data.angle1)) + "; ";
      }
    }
    return text;
  }

  const Tests::TempFolder folder_;
};

// Pads of 60 and tracks of 10: the circles of a fan are of 25 and 15, the arcs touch those of 25, 15 and 5.
TEST_F(LegacyTearDrops, Shapes) {
  constexpr const char *kVia = "via 0,0 60/30", *kOval = "pad 0,0 80x40 round top",
                       *kWide = "track -200,0 200,0 w40 top";
  const struct {
    const char* name;
    const char16_t* style;
    const char *pad, *track, *shapes;
    bool fails = false;
  } rows[] = {
      {"from the centre: not the track once more", kTracks, kVia, "0,0 200,0 w10",
       "from 60.00,0.00: 5.21,24.45 5.21,-24.45 1.88,14.88 1.88,-14.88 "},
      {"from beside the centre", kTracks, "pad 0,0 60x60 round top", "200,0 10,0 w10",
       "from 60.00,0.00: 5.21,24.45 5.21,-24.45 1.88,14.88 1.88,-14.88 0.00,0.00 "},
      {"off the centre", kTracks, kVia, "0,10 200,10 w10",
       "from 61.18,10.00: 1.02,24.98 8.92,-23.35 -0.61,14.99 4.19,-14.40 0.00,0.00 "},
      {"out of the corner of the box", kTracks, kVia, "0,0 200,200 w10",
       "from 51.21,51.21: -14.36,20.46 20.46,-14.36 -9.45,11.65 11.65,-9.45 "},
      {"through, from the foot of the centre", kTracks, kVia, "-200,0 200,0 w20",
       "from 90.00,0.00: 2.22,19.88 2.22,-19.88 from -90.00,0.00: -2.22,-19.88 -2.22,19.88 "},
      {"too short: from its end", kTracks, kVia, "0,0 45,0 w10",
       "from 45.00,0.00: 6.94,24.02 6.94,-24.02 2.50,14.79 2.50,-14.79 "},
      {"too wide: one track", kTracks, kVia, "5,0 400,0 w40", "from 150.00,0.00: 0.00,0.00 "},
      {"too wide and from the centre", kTracks, kVia, "0,0 400,0 w40", ""},
      {"narrower than 2000 units", kTracks, kVia, "0,0 200,0 w0.1999", ""},
      {"within the pad", kTracks, kVia, "0,0 20,0 w10", ""},
      {"rectangle", kTracks, "pad 0,0 60x60 rect top", "0,0 200,0 w10", ""},
      {"leaving a wider track", kTracks, kWide, "0,0 0,200 w10", "from 0.00,50.00: -14.83,2.25 14.83,2.25 "},
      {"oval, out of its side", kTracks, kOval, "10,0 10,200 w10",
       "from 10.00,50.00: -4.83,2.25 24.83,2.25 "},
      {"oval, turned, out of its round end", kTracks, "pad 0,0 80x40 round top rot 90", "0,0 0,200 w10",
       "from 0.00,70.00: -14.83,22.25 14.83,22.25 "},
      {"oval, along and twice", kTracks, kOval, "-200,0 200,0 w10",
       "from -70.00,0.00: -22.25,-14.83 -22.25,14.83 from 70.00,0.00: 22.25,14.83 22.25,-14.83 "},
      {"arcs", kArcs, kVia, "0,0 200,0 w10",
       "60.36,-60.36 r60.36 90; 36.21,-36.21 r36.21 90; 60.36,60.36 r60.36 225; 36.21,36.21 r36.21 225; "},
      {"arcs off the centre: it lies to the right", kArcs, kVia, "0,10 200,10 w10",
       "84.50,-84.50 r94.50 90; 60.36,-60.36 r70.36 90; 36.21,-36.21 r46.21 90; 36.21,36.21 r26.21 225; "},
      {"and to the left", kArcs, kVia, "0,-10 200,-10 w10",
       "36.21,-36.21 r26.21 90; 84.50,84.50 r94.50 225; 60.36,60.36 r70.36 225; 36.21,36.21 r46.21 225; "},
      {"arcs of a short track: up to its end", kArcs, kVia, "0,0 45,0 w10",
       "45.00,-28.00 r28.00 90; 45.00,28.00 r28.00 212; "},
      {"shorter than the pad", kArcs, kVia, "0,25 29.9,25 w10", "", true},
  };
  for (const auto& row : rows) {
    const Ref<Board> board = BoardFromText(std::string(row.pad) + " ; track " + row.track + " top");
    Add(*board, row.style);
    EXPECT_EQ(Shapes(*board), row.shapes) << row.name;
    const Primitive* via = Find<Editor::Via>(*board);
    EXPECT_EQ(via && via->Has(Editor::kFlag_Misc1), row.fails) << row.name;
  }
}

TEST_F(LegacyTearDrops, HowMany) {
  const struct {
    const char* name;
    const char* board;
    std::size_t arcs, tracks;
  } rows[] = {
      {"twenty candidates, and not the one to the centre",
       "pad 0,0 600x600 round top ; track 10,0 900,0 w10 top", 36, 20},
      {"an arc that begins in a pad", "pad 0,0 60x60 round top ; arc 0,200 r200 270..360 w10 top", 4, 4},
      {"an arc through a pad", "pad 0,0 60x60 round top ; arc 0,200 r200 180..360 w10 top", 8, 8},
      {"an arc across a wider track", "track -300,0 300,0 w40 top ; arc 0,-100 r150 30..90 w10 top", 4, 6},
      {"an arc is the narrower one only", "arc 0,0 r200 0..90 w40 top ; track 141,141 400,400 w10 top", 0, 0},
      {"an arc on an oval", "pad 0,0 60x120 round top ; arc 200,0 r200 100..180 w10 top", 3, 5},
      {"another layer", "pad 0,0 60x60 round bottom ; track 0,0 200,0 w10 top", 0, 0},
      {"of one width", "track -200,0 200,0 w10 top ; track 0,0 0,200 w10 top", 0, 0},
      {"on the silkscreen", "track -200,0 200,0 w40 topoverlay ; track 0,0 0,200 w10 topoverlay", 0, 0},
      {"two layers", "via 0,0 60/30 ; track 0,0 200,0 w10 top ; track 0,0 0,200 w10 bottom", 8, 8},
  };
  for (const auto& row : rows) {
    for (const char16_t* style : {kArcs, kTracks, kFillets}) {
      const Ref<Board> board = BoardFromText(row.board);
      Add(*board, style);
      const std::size_t expected = style == kArcs ? row.arcs : style == kTracks ? row.tracks : 0;
      EXPECT_EQ(Count(*board), expected) << row.name << " " << static_cast<char>(style[0]);
    }
  }
}

// Round pads with straight tracks in every direction: what each candidate promises, whatever the numbers.
TEST_F(LegacyTearDrops, ShapesTouchWhatTheyLink) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const auto number = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  std::size_t count = 0;
  for (int round = 0; round < 300; ++round) {
    const double radius = number(15, 80), angle = number(0, 2 * std::numbers::pi);
    const double aside = number(-0.4, 0.4) * radius;
    const auto at = [&](double along) {
      return Text(along * std::cos(angle) - aside * std::sin(angle)) + "," +
             Text(along * std::sin(angle) + aside * std::cos(angle));
    };
    const std::string text = "via 0,0 " + Text(2 * radius) + "/10 net A ; track " +
                             at(number(-0.3, 0.3) * radius) + " " + at(number(1, 8) * radius) + " w" +
                             Text(number(2, radius)) + " top net A";
    SCOPED_TRACE(text);
    for (const char16_t* style : {kArcs, kTracks}) {
      const Ref<Board> board = BoardFromText(text);
      Add(*board, style);
      const auto& via = *Find<Editor::Via>(*board);
      const auto& track = *Find<Editor::Track>(*board);
      const auto [p, q] = std::pair(track.data.p1, track.data.p2);
      const double outermost = via.data.size / 2 - track.data.width / 2;
      for (const Primitive* drop : Drops(*board)) {
        ++count;
        EXPECT_TRUE(Editor::Touch(*drop, via) && Editor::Touch(*drop, track));
        EXPECT_EQ(drop->GetNet(), track.GetNet());
        if (const auto* fan = Editor::As<Editor::Track>(drop)) {
          EXPECT_LE(std::hypot(fan->data.p1.x, fan->data.p1.y), outermost + 2);
          continue;
        }
        // It touches a circle that is some track widths within the outermost, and the track's middle line,
        // but for the rounding of its centre, its radius and the track's angle.
        const auto& arc = Editor::As<Editor::Arc>(drop)->data;
        const double within = outermost - (std::hypot(arc.center.x, arc.center.y) - arc.radius);
        EXPECT_LE(std::abs(std::remainder(within, track.data.width)), 1.3);
        const double cross =
            double{1} * (q.x - p.x) * (arc.center.y - p.y) - double{1} * (q.y - p.y) * (arc.center.x - p.x);
        EXPECT_NEAR(std::abs(cross) / track.Length(), arc.radius, 1.3);
      }
    }
  }
  EXPECT_GT(count, 600u);
}

constexpr const char* kCrowded =
    "via 0,0 60/30 net A ; track 0,0 200,0 w10 top net A ; track 45,22 200,22 w6 top net B ;"
    "via 400,0 60/30 net A ; track 400,0 600,0 w10 top net A ; pad 400,400 60x120 round top net C ;"
    "track 400,400 700,400 w10 top net C ; pad 400,800 60x60 rect top net C ; track 400,800 700,800 w10 top "
    "net C";

TEST_F(LegacyTearDrops, ClearancesForceAndTheReport) {
  for (const char16_t* style : {kArcs, kTracks}) {
    for (const bool force : {false, true}) {
      const Ref<Board> board = BoardFromText(kCrowded);
      board->setup.clearance = Mil(12);
      board->file.path = (folder_ / "Main.kicad_pcb").string();
      Run(*board, {{u"Style", style}, {u"Force", force ? u"TRUE" : u"yes"}});
      EXPECT_EQ(Count(*board), force ? 12u : 8u);
      EXPECT_EQ(board->Clearances().CheckBoard().empty(), !force);
      EXPECT_EQ(Report(),
                std::string("Teardrop Report Main.kicad_pcb\n\nPads visited                : 1\n\n"
                            "Vias visited                : 2\n\nPad teardrops failed : 0\n\n") +
                    (force ? "Via teardrops failed : 0\n\n\n"
                           : "Via teardrops failed : 1\n\nVia (0mil,0mil) on Top Layer - Bottom Layer\n\n"));
      opened_.clear();
      Run(*board, {{u"Action", u"Remove"}, {u"Report", u"True"}});
      EXPECT_EQ(opened_, "");
    }
  }
}

constexpr const char* kMixed = R"(
  via 0,0 60/30 net A
  pad 300,0 90x60 round top net A rot 30
  track -300,0 600,0 w10 top net A
  track 150,0 150,300 w8 top net A
  track -300,0 -300,300 w40 top net A
  arc 600,300 r300 180..270 w10 top net A
  via 150,300 60/30 net A
  pad 900,0 60x40 rect top net B
  track 900,0 1200,0 w10 top net B
)";

TEST_F(LegacyTearDrops, AgainIsTheSameAndRemovingTakesBothKinds) {
  for (const char16_t* style : {kArcs, kTracks}) {
    const Ref<Board> board = BoardFromText(kMixed);
    const std::vector<std::string> before = DescribeBoard(*board, true);
    Add(*board, style);
    const std::vector<std::string> once = DescribeBoard(*board, true);
    EXPECT_GT(Count(*board), 15u);
    Tools_ShowTearDropsForNet(board.Get(), nullptr, false);
    Tools_ShowTearDropsForNet(board.Get(), board->FindNet(u"A"), false);
    for (const Primitive* drop : Drops(*board)) EXPECT_FALSE(drop->Has(Editor::kFlag_EnableDraw));
    Add(*board, style);
    EXPECT_EQ(DescribeBoard(*board, true), once);
    // Either command that removes takes regions, tracks and arcs.
    for (const char16_t* flags : {u"968", u""}) {
      Run(*board, {{u"TeardropParam_FlagsEx", u"1000"}}, Tools_TearDrops);
      Add(*board, style);
      EXPECT_GT(board->objects.Count(eRegionObject), 0u);
      EXPECT_GT(Count(*board), board->objects.Count(eRegionObject) + 10);
      if (*flags) {
        Run(*board, {{u"TeardropParam_FlagsEx", flags}}, Tools_TearDrops);
      } else {
        Remove(*board);
      }
      EXPECT_EQ(DescribeBoard(*board, true), before);
    }
  }
}

// Eight tracks of teardrops are on the via, four on each of the pads, one on the overlay.
TEST_F(LegacyTearDrops, SingleObjects) {
  constexpr const char* kBoard = R"(
    via 0,0 60/30 net A
    pad 200,0 60x60 round top net A
    track 0,0 200,0 w10 top net A
    track 0,0 0,300 w10 top net A
    arc 0,600 r300 180..270 w10 top net A
    text 0,0 "drop" h60 top
    component U1 at 800,0 { pad 0,0 60x60 round top name 1 net B }
    track 800,0 1100,0 w10 top net B
    track -400,0 -300,0 w10 topoverlay
    track -400,0 -450,0 w10 topoverlay teardrop
  )";
  const struct {
    const char* name;
    void (*tool)(IPCB_Board*, IPCB_Primitive*);
    TObjectId kind;
    int which;
    std::size_t left;
  } rows[] = {
      {"via", Tools_RemoveTearDropsFromPadVia, eViaObject, 0, 9},
      {"pad", Tools_RemoveTearDropsFromPadVia, ePadObject, 0, 13},
      {"a pad of a component keeps them", Tools_RemoveTearDropsFromPadVia, ePadObject, 1, 17},
      {"the component", Tools_RemoveTearDropsFromComponent, eComponentObject, 0, 13},
      {"no component", Tools_RemoveTearDropsFromComponent, ePadObject, 0, 17},
      {"track, and those that touch it", Tools_RemoveTearDropsFromConnectedTracks, eTrackObject, 0, 5},
      {"the tracks that touch a via", Tools_RemoveTearDropsFromConnectedTracks, eViaObject, 0, 5},
      {"touch: a via", Tools_RemoveTearDropsFromTouch, eViaObject, 0, 9},
      {"touch: a track", Tools_RemoveTearDropsFromTouch, eTrackObject, 0, 5},
      {"touch: an arc, what is on the track at its end", Tools_RemoveTearDropsFromTouch, eArcObject, 0, 11},
      {"touch: a text has none", Tools_RemoveTearDropsFromTouch, eTextObject, 0, 17},
      {"touch: the overlay keeps its own", Tools_RemoveTearDropsFromTouch, eTrackObject, 3, 17},
  };
  for (const auto& row : rows) {
    for (const bool is_library : {false, true}) {
      const Ref<Board> board = BoardFromText(kBoard);
      Add(*board, kTracks);
      ASSERT_EQ(Count(*board), 17u);
      board->is_library = is_library;
      Editor::Warehouse::Walk walk(board->objects, {row.kind});
      Primitive* object = walk.Next();
      for (int i = 0; i < row.which; ++i) object = walk.Next();
      row.tool(board.Get(), object->AsInterface());
      EXPECT_EQ(Count(*board), is_library ? 17u : row.left) << row.name;
    }
  }
}

TEST_F(LegacyTearDrops, DialogSelectionAndEscape) {
  constexpr const char* kBoard =
      "via 0,0 60/30 net A selected ; via 400,0 60/30 net A ; track 0,0 400,0 w10 top net A ;"
      "track 600,0 700,0 w10 top net B selected";
  const Ref<Board> board = BoardFromText(kBoard);
  Tools_LegacyTearDrops(board.Get(), nullptr);
  EXPECT_EQ(Count(*board), 0u) << "cancelled";
  EXPECT_FALSE(legacy_shown_.Report || legacy_shown_.Selected || legacy_shown_.Style != eArcTearDrop)
      << "as the store has them";
  EXPECT_EQ(board->Selected().size(), 2u);
  accept_ = true;
  Tools_LegacyTearDrops(board.Get(), nullptr);
  EXPECT_EQ(Count(*board), 4u) << "of the selected via alone";
  EXPECT_TRUE(board->Selected().empty());
  Tools_LegacyTearDrops(board.Get(), nullptr);
  EXPECT_TRUE(legacy_shown_.Selected && legacy_shown_.Style == eTrackTearDrop) << "stored";

  for (const bool confirms : {false, true}) {
    confirms_ = confirms;
    const Ref<Board> other = BoardFromText(kBoard);
    Platform::PostMessage({.Kind = Platform::WM_KEYDOWN, .WParam = Platform::VK_ESCAPE});
    Add(*other, kTracks);
    EXPECT_EQ(Count(*other), confirms ? 4u : 8u);
  }
}

// The marks are beside the board, by identifiers: elsewhere one teardrop is taken away and another object put
// there, and that mark alone is lost. The oldest version has an arc in pieces.
TEST_F(LegacyTearDrops, MarksOutliveTheFile) {
  const std::filesystem::path path = folder_ / "b.kicad_pcb", marks = folder_ / "b.ketril.json";
  for (const char* version : {"20171130", "20211014", "20221018", "20240108", "20241229"}) {
    for (const char16_t* style : {kArcs, kTracks}) {
      SCOPED_TRACE(version);
      const std::string text = std::string("(kicad_pcb (version ") + version + R"() (generator "test")
  (layers (0 "F.Cu" signal) (31 "B.Cu" signal)) (net 0 "") (net 1 "A")
  (segment (start 100 100) (end 110 100) (width 0.25) (layer "F.Cu") (net 1))
  (via (at 100 100) (size 1.6) (drill 0.8) (layers "F.Cu" "B.Cu") (net 1))
)
)";
      const Ref<Board> board = Editor::ReadBoardText(text);
      Add(*board, style);
      Editor::SaveBoard(*board, path);
      const Ref<Board> again = Editor::ReadBoard(path);
      const std::size_t count = Count(*again);
      EXPECT_GE(count, Count(*board));
      EXPECT_EQ(count + 1, again->objects.Count(eTrackObject) + again->objects.Count(eArcObject));

      std::string other = TextOf(path), id = TextOf(marks);
      id = id.substr(id.find('"', id.find('[')) + 1);
      id = id.substr(0, id.find('"'));
      std::size_t gone = 0;
      for (std::size_t at = 0; (at = other.find(id, at)) != other.npos; ++gone)
        other[at] = other[at] == '0' ? '1' : '0';
      EXPECT_GE(gone, 1u);
      std::ofstream(path) << other;
      EXPECT_EQ(Count(*Editor::ReadBoard(path)), count - gone);

      Remove(*again);
      Editor::SaveBoard(*again, path);
      EXPECT_EQ(TextOf(path), text);
      EXPECT_FALSE(std::filesystem::exists(marks));
    }
  }
}

}  // namespace
}  // namespace Ketril
