// Microstrips through the export, against outlines and areas worked out by hand.
#include "DLLs/Tools/Convertors/MicrostripeBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "DLLs/Tools/Convertors/MicrostripeChain.h"
#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Model/Copper.h"
#include "Editor/Model/Shapes.h"
#include "Interfaces/Tools.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Tools {
namespace {

using Tests::BoardFromText;
using Corners = std::vector<std::pair<double, double>>;  // in mil

// One of the eight ways to turn by right angles and mirror.
struct Symmetry {
  int turns;
  bool mirrored;
  std::pair<double, double> operator()(std::pair<double, double> p) const {
    if (mirrored) p.first = -p.first;
    for (int i = 0; i < turns; ++i) p = {-p.second, p.first};
    return {p.first + 1000, p.second + 700};
  }
  Corners operator()(Corners corners) const {
    for (auto& corner : corners) corner = (*this)(corner);
    return corners;
  }
};

std::string Text(std::pair<double, double> p) {
  char text[60];
  std::snprintf(text, sizeof text, "%g,%g ", std::round(p.first * 100) / 100 + 0.0,
                std::round(p.second * 100) / 100 + 0.0);
  return text;
}

// Counter-clockwise from the lowest of the leftmost corners; steps of a few units are smoothed away.
std::string Outline(Corners corners) {
  const auto turn = [&](std::size_t i) {
    const auto n = corners.size();
    const auto &a = corners[(i + n - 1) % n], &b = corners[i], &c = corners[(i + 1) % n];
    return (b.first - a.first) * (c.second - b.second) - (b.second - a.second) * (c.first - b.first);
  };
  for (std::size_t i = 0; i < corners.size();) {
    if (std::abs(turn(i)) < 0.5) {
      corners.erase(corners.begin() + static_cast<std::ptrdiff_t>(i));
      i = 0;
    } else {
      ++i;
    }
  }
  const auto lowest = std::ranges::min_element(corners);
  std::rotate(corners.begin(), lowest, corners.end());
  if (!corners.empty() && turn(0) < 0) std::reverse(corners.begin() + 1, corners.end());
  std::string text;
  for (const auto& corner : corners) text += Text(corner);
  return text;
}

class Microstrip : public testing::Test {
 protected:
  ~Microstrip() override { ReleasePCBServer(); }

  void Make(const std::string& text, double outside, double inside) {
    board = BoardFromText(text);
    board->objects.ForEach(TObjectSet::All(),
                           [](Editor::Primitive& p) { p.Set(Editor::kFlag_Selected, true); });
    const TMicrostripeSettings settings{inside, outside};
    Tools_MakeMicrostripe(board.Get(), &settings);
    EXPECT_EQ(ObjectScopeDepth, 0);
  }
  std::vector<Corners> Regions() const {
    std::vector<Corners> regions;
    board->objects.ForEach({eRegionObject}, [&](const Editor::Primitive& p) {
      Corners& corners = regions.emplace_back();
      for (const TCoordPoint v : Editor::As<Editor::Region>(&p)->data.rings.at(0).points)
        corners.emplace_back(v.x / 1e4, v.y / 1e4);
    });
    return regions;
  }
  std::size_t Tracks() const { return board->objects.Count(eTrackObject); }

  Ref<Editor::Board> board;

 private:
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(Editor::ClientSetup{})};
};

// An arm of 400 to the left and one of 400 down, 100 wide: with whole corners 450 x 100 + 350 x 100. The cut
// takes a triangle with legs of 200 times the outer fraction, the chamfer adds one of 100 times the inner.
TEST_F(Microstrip, ABendInEveryOrientationOrderAndDirection) {
  struct Row {
    double outside, inside, area;
    Corners cut, chamfer;
  };
  const Row rows[] = {
      {0.5, 0, 75000, {{50, -50}, {-50, 50}}, {{-50, -50}}},
      {0, 0, 80000, {{50, 50}}, {{-50, -50}}},
      {0.25, 0.5, 80000, {{50, 0}, {0, 50}}, {{-100, -50}, {-50, -100}}},
      {0.75, 0.5, 70000, {{50, -100}, {-100, 50}}, {{-100, -50}, {-50, -100}}},
      {0.9, 0.9, 67850, {{50, -130}, {-130, 50}}, {{-140, -50}, {-50, -140}}},
      {0.5, 1, 80000, {{50, -50}, {-50, 50}}, {{-150, -50}, {-50, -150}}},  // one valid fraction is enough
  };
  for (const Row& row : rows) {
    Corners expected = {{-400, 50}, {-400, -50}};
    expected.insert(expected.end(), row.chamfer.begin(), row.chamfer.end());
    expected.insert(expected.end(), {{-50, -400}, {50, -400}});
    expected.insert(expected.end(), row.cut.begin(), row.cut.end());
    for (int way = 0; way < 64; ++way) {
      const Symmetry symmetry{way & 3, (way & 4) != 0};
      const auto track = [&](std::pair<double, double> end, bool turned) {
        const std::string a = Text(symmetry({0, 0})), b = Text(symmetry(end));
        return "track " + (turned ? a + b : b + a) + "w100 top net A\n";
      };
      const std::string first = track({-400, 0}, (way & 8) != 0), second = track({0, -400}, (way & 16) != 0);
      const std::string text = (way & 32) != 0 ? second + first : first + second;
      Make(text, row.outside, row.inside);
      const auto regions = Regions();
      ASSERT_EQ(regions.size(), 1u) << text;
      EXPECT_EQ(Outline(regions[0]), Outline(symmetry(expected))) << text << row.outside;
      EXPECT_EQ(Tracks(), 0u);
      const auto* region = Tests::Find<Editor::Region>(*board);
      EXPECT_NEAR(Editor::AreaOf(region->data.rings) / 1e8, row.area, 0.5) << text << row.outside;
      EXPECT_EQ(region->GetNet(), board->FindNet(u"A"));
      EXPECT_EQ(region->state.layer, TV7_Layer(eV6_TopLayer));
    }
  }
}

TEST_F(Microstrip, WhatBecomesOneOutlineAndWhatStays) {
  const double kNaN = std::numeric_limits<double>::quiet_NaN();
  const std::string corner = "track 0,0 400,0 w100 top net A; track 400,0 400,-400 w100 top net A\n";
  const std::string outline = "0,-50 350,-50 350,-400 450,-400 450,-50 350,50 0,50 ";
  const std::string first = "0,-50 450,-50 350,50 0,50 ", second = "350,-400 450,-400 450,-50 350,50 ";
  const struct {
    const char* name;
    std::size_t tracks;  // that stay
    std::string text;
    std::vector<std::string> outlines;  // one that is empty is not compared
    double outside = 0.5, inside = 0;
  } rows[] = {
      {"five tracks",
       0,
       "track 0,0 400,0 w100 top; track 800,400 1200,400 w100 top; track 800,-400 800,400 w100 top\n"
       "track 400,-400 800,-400 w100 top; track 400,0 400,-400 w100 top",
       {"0,-50 350,-50 350,-350 450,-450 750,-450 850,-350 850,350 1200,350 1200,450 850,450 750,350 "
        "750,-350 450,-350 450,-50 350,50 0,50 "}},
      {"another net at the corner", 1, corner + "track 400,0 800,0 w100 top net B", {outline}},
      {"two nets of one corner", 2, "track 0,0 400,0 w9 top net A; track 400,0 400,-400 w9 top net B", {}},
      // The second pair comes between the first two, which then are an outline each.
      {"two layers",
       0,
       corner + "track 0,0 400,0 w100 bottom net A; track 400,-400 400,0 w100 bottom net A",
       {second, outline, first}},
      {"another layer at the corner", 1, corner + "track 400,0 800,0 w100 bottom net A", {second, first}},
      // The first one's left end is made anew for the third.
      {"three tracks at a corner",
       0,
       "track 0,0 400,0 w100 top; track 0,-400 0,0 w100 top; track 0,0 0,400 w100 top",
       {"-50,-400 50,-400 50,-50 400,-50 400,50 50,50 50,400 -50,400 -50,50 0,0 -50,-50 "}},
      {"45 degrees",
       2,
       corner + "track -20,20 0,0 w100 top net A; track 0,0 -20,-20 w100 top net A",
       {outline}},
      {"90.5 degrees by the stored ends",
       0,
       "track 400,0 0,0 w100 top; track 400,0 408.7269,1000 w100 top",
       {""}},
      // The corners of a falling track's box are its ends.
      {"a falling and a rising track", 0, "track 0,400 400,0 w10 top; track 400,400 800,800 w10 top", {""}},
      {"what stays: 45 degrees, in line, 89.5 degrees, no length, a falling track",
       12,
       "track 0,0 400,0 w9 top; track 400,0 800,400 w9 top; track 0,50 400,50 w9 top; track 400,50 800,50 w9 "
       "top\n track 0,90 400,90 w9 top; track 400,90 408.7269,1090 w9 top; track 0,-90 400,-90 w9 top; "
       "track 400,-90 400,-90 w9 top\n track 900,400 1300,0 w9 top; track 1300,400 1700,400 w9 top; "
       "via 0,0 30/15; arc 0,0 r50 0..90 w10 top; track 0,-200 9,-200 w9 top; track 9,-300 9,-400 w9 top",
       {}},
      {"no width", 0, "track 0,0 400,0 w0 top; track 400,0 400,400 w0 top", {}},
      {"a closed ring is filled",
       0,
       "track 0,0 400,0 w100 top; track 400,0 400,400 w100 top\n"
       "track 400,400 0,400 w100 top; track 0,400 0,0 w100 top",
       {"-50,50 50,-50 350,-50 450,50 450,350 350,450 50,450 -50,350 "}},
      {"no valid fraction", 2, corner, {}, 1, -0.1},
      {"no number", 2, corner, {}, kNaN, kNaN},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Make(row.text, row.outside, row.inside);
    const auto regions = Regions();
    ASSERT_EQ(regions.size(), row.outlines.size());
    for (std::size_t i = 0; i < regions.size(); ++i) {
      EXPECT_TRUE(row.outlines[i].empty() || Outline(regions[i]) == row.outlines[i]) << Outline(regions[i]);
    }
    EXPECT_EQ(Tracks(), row.tracks);
  }
  Tools_MakeMicrostripe(board.Get(), nullptr);
}

// Odd widths and lengths: half a width is cut to whole units, the fractions are of the whole one; the middle
// of the track is cut towards zero, on either side of it.
TEST(MicrostripPoints, AreCutTowardsZero) {
  const auto near = [](GeoPointType p, double x, double y) { return std::hypot(p.x - x, p.y - y) < 1e-6; };
  for (const TCoord q : {300001, 0}) {
    const TMicrostripeFrame track{{q - 300001, 7}, {q, 7}, 100001};
    const auto points = BendPoints(track, 0, 0.25);
    EXPECT_TRUE(near(points[0], q - 75000.25, -49993));
    EXPECT_TRUE(near(points[1], q - 50000, -74993.25));
    EXPECT_TRUE(near(points[2], q + 50000, -49993));
    EXPECT_TRUE(near(points[3], q + 50000, 50009));
    EXPECT_TRUE(near(points[4], q + 50002, 50007));
    const double first = q > 0 ? 300000 - 225000 : -300000 + 75000;
    EXPECT_EQ(points[5], (GeoPointType{first, -49993})) << q;
    EXPECT_EQ(points[6].y, -74993) << q;
  }
  // Twelve degrees and a bit: the left end does not come to lie level with the right one.
  const TMicrostripeFrame oblique{{0, 0}, {1000000, 220000}, 100000};
  EXPECT_EQ(oblique.Angle(), 12);
  EXPECT_EQ(oblique.Turned().y, 220000 - 7281);  // 1000000 sin 12 - 220000 cos 12
}

// The order of the chain is that of a list which is searched from its first entry on, each time anew.
TEST_F(Microstrip, TheChainIsInTheOrderOfAPlainSearch) {
  std::mt19937 random(7);
  for (int round = 0; round < 40; ++round) {
    std::string text;
    const auto some = [&](unsigned n) { return std::to_string(random() % n); };
    for (int i = 0; i < 60; ++i)
      text += "track " + some(9) + "," + some(9) + " " + some(9) + "," + some(9) + " w1 top\n";
    board = BoardFromText(text);
    const TObjectScope scope;
    TBoard* const wrapper = TBoard::Create(Ref<IPCB_Board>(board.Get()));
    std::vector<std::unique_ptr<TMicrostripe>> all;
    wrapper->ProcessAllTracks([&](TPrimitive* track) {
      all.push_back(std::make_unique<TMicrostripe>(wrapper, CheckedCast<TTrack>(track)));
    });
    const auto touch = [](const TMicrostripe* a, const TMicrostripe* b) {
      return a->Left() == b->Left() || a->Left() == b->Right() || a->Right() == b->Left() ||
             a->Right() == b->Right();
    };
    std::vector<TMicrostripe*> plain, rest;
    const auto put = [&](TMicrostripe* m) {
      const auto first = std::ranges::find_if(plain, [&](auto* entry) { return touch(entry, m); });
      plain.insert(first == plain.end() ? first : first + 1, m);
    };
    TMicrostripeChain chain;
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (i % 5 != 0 || i == 0) rest.push_back(all[i].get());
      if (i % 5 == 0) put(all[i].get()), AddToChain(all[i].get(), chain);
    }
    auto left = rest;
    MoveTouchingToChain(rest, chain);
    for (std::size_t i = 0; i < left.size();) {
      const bool touches = std::ranges::any_of(plain, [&](auto* entry) { return touch(entry, left[i]); });
      if (touches && left[i] != all[0].get()) put(left[i]);
      if (touches) left.erase(left.begin() + static_cast<std::ptrdiff_t>(i));
      i = touches ? 0 : i + 1;
    }
    EXPECT_EQ(chain.InOrder(), plain);
    EXPECT_EQ(rest, left);
  }
}

}  // namespace
}  // namespace Ketril::Tools
