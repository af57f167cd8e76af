// Teardrops of the older builder on whole boards, through the exports. Numbers are mil unless they say so.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <random>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Copper/Distance.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Rules/Clearance.h"
#include "Interfaces/Tools.h"
#include "Platform/Messages.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril {
namespace {

using Editor::Board;
using Editor::Primitive;
using Tests::BoardFromText;
using Tests::DescribeBoard;
using Tests::Find;
using Tests::Mil;

std::string Number(double mil) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", std::round(mil * 100) / 100 + 0.0);
  return text;
}
std::string Place(TCoordPoint p) {
  return Number(p.x / 1e4) + "," + Number(p.y / 1e4);
}

class LegacyTearDrops : public testing::Test {
 protected:
  ~LegacyTearDrops() override { Tools::ReleasePCBServer(); }

  using Pairs = std::vector<std::pair<const char16_t*, const char16_t*>>;
  static void Run(Board& board, const Pairs& pairs) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    for (const auto& [name, value] : pairs) parameters->AddParameter(name, value);
    Tools_LegacyTearDrops(&board, parameters.Get());
  }
  static void Add(Board& board, const char16_t* style, bool force = false) {
    Run(board, {{u"Style", style}, {u"Report", u"no"}, {u"Force", force ? u"true" : u"no"}});
  }
  static void RunOther(Board& board, const char16_t* flags) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    parameters->AddParameter(u"TeardropParam_FlagsEx", flags);
    Tools_TearDrops(&board, parameters.Get());
  }
  static void Remove(Board& board) { Run(board, {{u"Action", u"remove"}}); }

  // Tracks as "end in the pad > anchor", arcs as "centre r radius angles".
  static std::vector<std::string> Drops(const Board& board) {
    std::vector<std::string> lines;
    board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
      if (!object.Has(Editor::kFlag_TearDrop)) return;
      if (const auto* track = Editor::As<Editor::Track>(&object)) {
        lines.push_back(Place(track->data.p1) + " > " + Place(track->data.p2));
      } else if (const auto* arc = Editor::As<Editor::Arc>(&object)) {
        lines.push_back(Place(arc->data.center) + " r" + Number(arc->data.radius / 1e4) + " " +
                        Number(arc->data.angle1) + ".." + Number(arc->data.angle2));
      } else {
        lines.push_back("region");
      }
    });
    return lines;
  }
  static bool Failed(const Board& board) {
    bool failed = false;
    board.objects.ForEach({ePadObject, eViaObject},
                          [&](const Primitive& place) { failed |= place.Has(Editor::kFlag_Misc1); });
    return failed;
  }

  bool accepts_ = false, confirms_ = false;
  TTearDropOptions shown_;
  std::string opened_;
  Editor::ClientSetup ClientOfThis() {
    Editor::ClientSetup setup;
    setup.legacy_teardrop_dialog = [this](TTearDropOptions& options) {
      shown_ = options;
      options.Style = eTrackTearDrop;
      options.Selected = true;
      return accepts_;
    };
    setup.confirm = [this](const std::u16string&) { return std::optional(confirms_); };
    setup.open_document = [this](const std::filesystem::path& file) { opened_ = file.string(); };
    return setup;
  }
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(ClientOfThis())};
};

constexpr const char16_t *kArcs = u"0", *kTracks = u"1", *kFillets = u"5";

TEST_F(LegacyTearDrops, FansOfTracks) {
  const struct {
    const char* name;
    const char* board;
    std::vector<std::string> drops;
  } rows[] = {
      {"centred, from the centre: not the track once more",
       "pad 0,0 60x60 round top ; track 0,0 200,0 w10 top",
       {"5.21,24.45 > 60.00,0.00", "5.21,-24.45 > 60.00,0.00", "1.88,14.88 > 60.00,0.00",
        "1.88,-14.88 > 60.00,0.00"}},
      {"centred, from beside the centre, on a via",
       "via 0,0 60/30 ; track 200,0 10,0 w10 top",
       {"5.21,24.45 > 60.00,0.00", "5.21,-24.45 > 60.00,0.00", "1.88,14.88 > 60.00,0.00",
        "1.88,-14.88 > 60.00,0.00", "0.00,0.00 > 60.00,0.00"}},
      {"off the centre",
       "pad 0,0 60x60 round top ; track 0,10 200,10 w10 top",
       {"1.02,24.98 > 61.18,10.00", "8.92,-23.35 > 61.18,10.00", "-0.61,14.99 > 61.18,10.00",
        "4.19,-14.40 > 61.18,10.00", "0.00,0.00 > 61.18,10.00"}},
      {"out of the corner of the box",
       "pad 0,0 60x60 round top ; track 0,0 200,200 w10 top",
       {"-14.36,20.46 > 51.21,51.21", "20.46,-14.36 > 51.21,51.21", "-9.45,11.65 > 51.21,51.21",
        "11.65,-9.45 > 51.21,51.21"}},
      {"through the pad, from the foot of its centre",
       "pad 0,0 60x60 round top ; track -200,0 200,0 w20 top",
       {"2.22,19.88 > 90.00,0.00", "2.22,-19.88 > 90.00,0.00", "-2.22,-19.88 > -90.00,0.00",
        "-2.22,19.88 > -90.00,0.00"}},
      {"too short: from its end",
       "pad 0,0 60x60 round top ; track 0,0 45,0 w10 top",
       {"6.94,24.02 > 45.00,0.00", "6.94,-24.02 > 45.00,0.00", "2.50,14.79 > 45.00,0.00",
        "2.50,-14.79 > 45.00,0.00"}},
      {"too wide: one track to the centre",
       "pad 0,0 60x60 round top ; track 5,0 400,0 w40 top",
       {"0.00,0.00 > 150.00,0.00"}},
      {"too wide and from the centre", "pad 0,0 60x60 round top ; track 0,0 400,0 w40 top", {}},
      {"narrower than 2000 units", "pad 0,0 60x60 round top ; track 0,0 200,0 w0.1999 top", {}},
      {"within the pad", "pad 0,0 60x60 round top ; track 0,0 20,0 w10 top", {}},
      {"rectangle", "pad 0,0 60x60 rect top ; track 0,0 200,0 w10 top", {}},
      {"leaving a wider track",
       "track -200,0 200,0 w40 top ; track 0,0 0,200 w10 top",
       {"-14.83,2.25 > 0.00,50.00", "14.83,2.25 > 0.00,50.00"}},
      {"both of one width", "track -200,0 200,0 w10 top ; track 0,0 0,200 w10 top", {}},
      {"oval, out of its side",
       "pad 0,0 80x40 round top ; track 10,0 10,200 w10 top",
       {"-4.83,2.25 > 10.00,50.00", "24.83,2.25 > 10.00,50.00"}},
      {"oval, out of its round end",
       "pad 0,0 80x40 round top ; track 0,0 200,0 w10 top",
       {"22.25,14.83 > 70.00,0.00", "22.25,-14.83 > 70.00,0.00"}},
      {"oval, along and twice",
       "pad 0,0 80x40 round top ; track -200,0 200,0 w10 top",
       {"-22.25,-14.83 > -70.00,0.00", "-22.25,14.83 > -70.00,0.00", "22.25,14.83 > 70.00,0.00",
        "22.25,-14.83 > 70.00,0.00"}},
      {"oval, turned",
       "pad 0,0 80x40 round top rot 90 ; track 0,0 0,200 w10 top",
       {"-14.83,22.25 > 0.00,70.00", "14.83,22.25 > 0.00,70.00"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Board> board = BoardFromText(row.board);
    Add(*board, kTracks);
    EXPECT_EQ(Drops(*board), row.drops);
    EXPECT_FALSE(Failed(*board));
  }
}

TEST_F(LegacyTearDrops, SetsOfArcs) {
  const struct {
    const char* name;
    const char* board;
    std::vector<std::string> drops;
    bool fails = false;
  } rows[] = {
      {"centred",
       "via 0,0 60/30 ; track 0,0 200,0 w10 top",
       {"60.36,-60.36 r60.36 90.00..135.00", "36.21,-36.21 r36.21 90.00..135.00",
        "60.36,60.36 r60.36 225.00..270.00", "36.21,36.21 r36.21 225.00..270.00"}},
      {"off the centre",
       "pad 0,0 60x60 round top ; track 0,10 200,10 w10 top",
       {"84.50,-84.50 r94.50 90.00..135.00", "60.36,-60.36 r70.36 90.00..135.00",
        "36.21,-36.21 r46.21 90.00..135.00", "36.21,36.21 r26.21 225.00..270.00"}},
      {"off it to the other side",
       "pad 0,0 60x60 round top ; track 0,-10 200,-10 w10 top",
       {"36.21,-36.21 r26.21 90.00..135.00", "84.50,84.50 r94.50 225.00..270.00",
        "60.36,60.36 r70.36 225.00..270.00", "36.21,36.21 r46.21 225.00..270.00"}},
      {"upwards, the angles as they come",
       "pad 0,0 60x60 round top ; track 0,0 0,200 w10 top",
       {"60.36,60.36 r60.36 180.00..225.00", "36.21,36.21 r36.21 180.00..225.00",
        "-60.36,60.36 r60.36 315.00..360.00", "-36.21,36.21 r36.21 315.00..360.00"}},
      {"a short track: narrower, up to its end",
       "pad 0,0 60x60 round top ; track 0,0 45,0 w10 top",
       {"45.00,-28.00 r28.00 90.00..148.11", "45.00,28.00 r28.00 211.89..270.00"}},
      {"shorter than the pad", "pad 0,0 60x60 round top ; track 0,25 29.9,25 w10 top", {}, true},
      {"leaving a wider track",
       "track -200,0 200,0 w40 top ; track 0,0 0,200 w10 top",
       {"36.21,36.21 r36.21 180.00..225.00", "-36.21,36.21 r36.21 315.00..360.00"}},
      {"narrower than 2000 units", "pad 0,0 60x60 round top ; track 0,0 200,0 w0.1999 top", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Board> board = BoardFromText(row.board);
    Add(*board, kArcs);
    EXPECT_EQ(Drops(*board), row.drops);
    EXPECT_EQ(Failed(*board), row.fails);
  }
}

TEST_F(LegacyTearDrops, HowMany) {
  const struct {
    const char* name;
    const char* board;
    std::size_t arcs, tracks;
  } rows[] = {
      {"twenty candidates, the last to the centre among those that are lost",
       "pad 0,0 600x600 round top ; track 10,0 900,0 w10 top", 36, 20},
      {"an arc that begins in a pad", "pad 0,0 60x60 round top ; arc 0,200 r200 270..360 w10 top", 4, 4},
      {"an arc through a pad", "pad 0,0 60x60 round top ; arc 0,200 r200 180..360 w10 top", 8, 8},
      {"an arc that leaves a wider track", "track -300,0 300,0 w40 top ; arc 0,-100 r150 30..90 w10 top", 4,
       6},
      {"an arc is the narrower partner only", "arc 0,0 r200 0..90 w40 top ; track 141,141 400,400 w10 top", 0,
       0},
      {"an arc on an oval", "pad 0,0 60x120 round top ; arc 200,0 r200 100..180 w10 top", 3, 5},
      {"another layer", "pad 0,0 60x60 round bottom ; track 0,0 200,0 w10 top", 0, 0},
      {"two tracks on one via", "via 0,0 60/30 ; track 0,0 200,0 w10 top ; track 0,0 0,200 w10 bottom", 8, 8},
  };
  for (const auto& row : rows) {
    for (const char16_t* style : {kArcs, kTracks, kFillets}) {
      const Ref<Board> board = BoardFromText(row.board);
      Add(*board, style);
      EXPECT_EQ(Drops(*board).size(), style == kArcs     ? row.arcs
                                      : style == kTracks ? row.tracks
                                                         : 0u)
          << row.name << " " << static_cast<char>(style[0]);
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
  int arcs = 0, tracks = 0;
  for (int round = 0; round < 300; ++round) {
    const double radius = number(15, 80), angle = number(0, 2 * std::numbers::pi), width = number(2, radius);
    const double aside = number(-0.4, 0.4) * radius, from = number(-0.3, 0.3) * radius,
                 to = number(1, 8) * radius;
    const auto at = [&](double along) {
      return Number(along * std::cos(angle) - aside * std::sin(angle)) + "," +
             Number(along * std::sin(angle) + aside * std::cos(angle));
    };
    const std::string text = "pad 0,0 " + Number(2 * radius) + "x" + Number(2 * radius) +
                             " round top net A ; track " + at(from) + " " + at(to) + " w" + Number(width) +
                             " top net A";
    SCOPED_TRACE(text);
    for (const char16_t* style : {kArcs, kTracks}) {
      const Ref<Board> board = BoardFromText(text);
      Add(*board, style);
      const auto& pad = *Find<Editor::Pad>(*board);
      const auto& track = *Find<Editor::Track>(*board);
      const double pad_radius = pad.data.stack[0].x_size / 2;
      const TCoordPoint p = track.data.p1, q = track.data.p2;
      board->objects.ForEach({eArcObject}, [&](Primitive& object) {
        ++arcs;
        const auto& arc = Editor::As<Editor::Arc>(&object)->data;
        // The circle of this arc is some track widths within the first one, which is half of one within the
        // pad.
        const double inner = std::hypot(arc.center.x, arc.center.y) - arc.radius;
        const double steps = (pad_radius - track.data.width / 2 - inner) / track.data.width;
        EXPECT_LE(std::abs(steps - std::round(steps)) * track.data.width, 1.3);
        const double length = std::hypot(double{1} * q.x - p.x, double{1} * q.y - p.y);
        const double off = (double{1} * (q.x - p.x) * (arc.center.y - p.y) -
                            double{1} * (q.y - p.y) * (arc.center.x - p.x)) /
                           length;
        // The line of the whole coordinates is a little off the one that the angle gives.
        EXPECT_NEAR(std::abs(off), arc.radius, 1.3);
      });
      board->objects.ForEach({eTrackObject}, [&](Primitive& object) {
        if (!object.Has(Editor::kFlag_TearDrop)) return;
        ++tracks;
        const auto& fan = Editor::As<Editor::Track>(&object)->data;
        EXPECT_LE(std::hypot(fan.p1.x, fan.p1.y), pad_radius - track.data.width / 2 + 2);
      });
      board->objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
        if (!object.Has(Editor::kFlag_TearDrop)) return;
        EXPECT_TRUE(Editor::Touch(object, pad));
        EXPECT_TRUE(Editor::Touch(object, track));
        EXPECT_EQ(object.GetNet(), track.GetNet());
        EXPECT_FALSE(object.Has(Editor::kFlag_UserRouted));
      });
    }
  }
  EXPECT_GT(arcs, 300);
  EXPECT_GT(tracks, 300);
}

TEST_F(LegacyTearDrops, WhatBreaksAClearanceIsNotPlacedUnlessForced) {
  constexpr const char* kBoard =
      "via 0,0 60/30 net A ; track 0,0 200,0 w10 top net A ; track 45,22 200,22 w6 top net B ;"
      "via 400,0 60/30 net A ; track 400,0 600,0 w10 top net A";
  for (const char16_t* style : {kArcs, kTracks}) {
    for (const bool force : {false, true}) {
      const Ref<Board> board = BoardFromText(kBoard);
      board->setup.clearance = Mil(12);
      Add(*board, style, force);
      EXPECT_EQ(Drops(*board).size(), force ? 8u : 4u);
      EXPECT_EQ(board->Clearances().CheckBoard().empty(), !force);
      EXPECT_EQ(Find<Editor::Via>(*board)->Has(Editor::kFlag_Misc1), !force);
      EXPECT_FALSE(Find<Editor::Via>(*board, 1)->Has(Editor::kFlag_Misc1));
    }
  }
}

constexpr const char* kMixed = R"(
  via 0,0 60/30 net A
  pad 300,0 90x60 round top net A rot 30
  pad 600,0 60x60 round hole 25 net A
  track -300,0 300,0 w10 top net A
  track 300,0 600,0 w10 top net A
  track 150,0 150,300 w8 top net A
  track -300,0 -300,300 w40 top net A
  track 150,300 450,300 w10 top net A
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
    EXPECT_GT(Drops(*board).size(), 20u);
    Add(*board, style);
    EXPECT_EQ(DescribeBoard(*board, true), once);
    Remove(*board);
    EXPECT_EQ(DescribeBoard(*board, true), before);

    // Each command that removes takes regions, tracks and arcs.
    for (const bool by_the_older : {true, false}) {
      RunOther(*board, u"1000");
      Add(*board, style);
      const std::vector<std::string> drops = Drops(*board);
      EXPECT_GT(std::ranges::count(drops, "region"), 0);
      EXPECT_LT(std::ranges::count(drops, "region"), std::ssize(drops) - 20);
      if (by_the_older) {
        Remove(*board);
      } else {
        RunOther(*board, u"968");
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
      ASSERT_EQ(Drops(*board).size(), 17u);
      board->is_library = is_library;
      Editor::Warehouse::Walk walk(board->objects, {row.kind});
      Primitive* object = walk.Next();
      for (int i = 0; i < row.which; ++i) object = walk.Next();
      row.tool(board.Get(), object->AsInterface());
      EXPECT_EQ(Drops(*board).size(), is_library ? 17u : row.left) << row.name;
    }
  }
}

TEST_F(LegacyTearDrops, ThoseOfANetAreShownOrNot) {
  const Ref<Board> board = BoardFromText(kMixed);
  Add(*board, kArcs);
  const auto hidden = [&] {
    std::size_t count = 0;
    board->objects.ForEach(TObjectSet::All(), [&](const Primitive& object) {
      count += object.Has(Editor::kFlag_EnableDraw) ? 0 : 1;
    });
    return count;
  };
  Tools_ShowTearDropsForNet(board.Get(), nullptr, false);
  EXPECT_EQ(hidden(), 0u);
  Tools_ShowTearDropsForNet(board.Get(), board->FindNet(u"A"), false);
  EXPECT_EQ(hidden(), Drops(*board).size());
  Tools_ShowTearDropsForNet(board.Get(), board->FindNet(u"A"), true);
  EXPECT_EQ(hidden(), 0u);
}

TEST_F(LegacyTearDrops, OptionsSelectionAndEscape) {
  constexpr const char* kBoard =
      "via 0,0 60/30 net A selected ; via 400,0 60/30 net A ; track 0,0 400,0 w10 top net A ;"
      "track 600,0 700,0 w10 top net B selected";
  const Ref<Board> board = BoardFromText(kBoard);
  Tools_LegacyTearDrops(board.Get(), nullptr);
  EXPECT_TRUE(Drops(*board).empty()) << "cancelled";
  EXPECT_EQ(shown_.Style, eArcTearDrop);
  EXPECT_FALSE(shown_.Report) << "the store asks for none";
  EXPECT_TRUE(Find<Editor::Via>(*board)->Has(Editor::kFlag_Selected));
  accepts_ = true;
  Tools_LegacyTearDrops(board.Get(), nullptr);
  EXPECT_EQ(Drops(*board).size(), 4u) << "of the selected via alone";
  EXPECT_TRUE(board->Selected().empty());
  Tools_LegacyTearDrops(board.Get(), nullptr);
  EXPECT_EQ(shown_.Style, eTrackTearDrop) << "as stored";
  EXPECT_TRUE(shown_.Selected);

  for (const bool confirms : {false, true}) {
    confirms_ = confirms;
    const Ref<Board> other = BoardFromText(kBoard);
    Platform::PostMessage({.Kind = Platform::WM_KEYDOWN, .WParam = Platform::VK_ESCAPE});
    Add(*other, kTracks);
    EXPECT_EQ(Drops(*other).size(), confirms ? 4u : 8u);
  }
}

TEST_F(LegacyTearDrops, TheReportListsWhatFailed) {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("ketril-legacy-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const Ref<Board> board = BoardFromText(
      "via 0,0 60/30 net A ; track 0,0 200,0 w10 top net A ; track 45,22 200,22 w6 top net B ;"
      "pad 400,0 60x120 round top net C ; track 400,0 700,0 w10 top net C ; pad 400,400 60x60 rect top net C "
      ";"
      "track 400,400 700,400 w10 top net C");
  board->setup.clearance = Mil(12);
  board->file.path = (folder / "Main.kicad_pcb").string();
  const struct {
    Pairs parameters;
    std::string text;  // without the line of the date; none: no report
  } rows[] = {
      {{{u"Style", u"0"}},
       "Teardrop Report Main.kicad_pcb\n\nPads visited                : 1\n\n"
       "Vias visited                : 1\n\nPad teardrops failed : 0\n\n"
       "Via teardrops failed : 1\n\nVia (0mil,0mil) on Top Layer - Bottom Layer\n\n"},
      {{{u"AllVias", u"False"}, {u"Report", u"TRUE"}},
       "Teardrop Report Main.kicad_pcb\n\nPads visited                : 1\n\nPad teardrops failed : 0\n\n"},
      {{{u"Report", u"1"}}, ""},
      {{{u"Action", u"Remove"}, {u"Report", u"True"}}, ""},
  };
  for (const auto& row : rows) {
    opened_.clear();
    Run(*board, row.parameters);
    EXPECT_EQ(opened_, row.text.empty() ? "" : (folder / "Main.REP").string());
    std::ifstream file(opened_);
    std::string text((std::istreambuf_iterator<char>(file)), {});
    const std::size_t date = text.find("On ");
    if (date != text.npos) text.erase(date, text.find('\n', date) + 1 - date);
    EXPECT_EQ(text, row.text);
  }
  std::filesystem::remove_all(folder);
}

// The marks are beside the board, by identifiers: elsewhere one teardrop is taken away and another object put
// there, and that mark alone is lost. The oldest version has an arc in pieces.
TEST_F(LegacyTearDrops, MarksOutliveTheFile) {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("ketril-marks-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const std::filesystem::path path = folder / "b.kicad_pcb", marks = folder / "b.ketril.json";
  const auto text_of = [](const std::filesystem::path& file) {
    std::ifstream in(file);
    return std::string(std::istreambuf_iterator<char>(in), {});
  };
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
      EXPECT_GE(Drops(*board).size(), 4u);
      Editor::SaveBoard(*board, path);
      const Ref<Board> again = Editor::ReadBoard(path);
      const std::size_t count = Drops(*again).size();
      EXPECT_EQ(count + 1, again->objects.Count(eTrackObject) + again->objects.Count(eArcObject));

      std::string other = text_of(path), id = text_of(marks);
      id = id.substr(id.find('[') + 1);
      id = id.substr(id.find('"') + 1);
      id = id.substr(0, id.find('"'));
      std::size_t gone = 0;
      for (std::size_t at = 0; (at = other.find(id, at)) != other.npos; ++gone)
        other[at] = other[at] == '0' ? '1' : '0';
      EXPECT_GE(gone, 1u);
      std::ofstream(path) << other;
      EXPECT_EQ(Drops(*Editor::ReadBoard(path)).size(), count - gone);

      Remove(*again);
      Editor::SaveBoard(*again, path);
      EXPECT_EQ(text_of(path), text);
      EXPECT_FALSE(std::filesystem::exists(marks));
    }
  }
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace Ketril
