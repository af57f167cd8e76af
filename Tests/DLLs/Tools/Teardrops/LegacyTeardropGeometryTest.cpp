#include "DLLs/Tools/Teardrops/LegacyTeardropGeometry.h"

#include <gtest/gtest.h>

#include "DLLs/Tools/Geometry/RT_Geometry.h"

namespace Ketril::Tools {
namespace {

ThinArcType MakeArc(double x, double y, double radius, double angle1, double angle2) {
  ThinArcType arc = {x, y, radius, angle1, angle2, 0, 0, 0, 0};
  UpdateArcEnds(arc);
  arc.Angle1 = angle1;  // as given, normalised or not
  arc.Angle2 = angle2;
  return arc;
}

TEST(LegacyTeardropGeometry, Angles) {
  const struct {
    double a1, a2, t;
    bool between;
  } sweeps[] = {{0, 90, 0, true},     {0, 90, 90, true},  {0, 90, 360, false},  {0, 90, 90.0005, false},
                {350, 10, 360, true}, {350, 10, 0, true}, {350, 10, 20, false}, {270, 300, -75, true},
                {-10, 10, 355, true}, {90, 90, 90, true}, {0, 360, 180, true}};
  for (const auto& row : sweeps)
    EXPECT_EQ(IsAngleBetween(row.a1, row.a2, row.t), row.between) << row.a1 << ".." << row.a2 << " " << row.t;

  constexpr TCoordPoint at30 = {866025, 500000}, at60 = {500000, 866025}, at330 = {866025, -500000},
                        at120 = {-500000, 866025};
  const struct {
    const char* name;
    double angle1, angle2;
    TCoordPoint p0, p1;
    double mid;
    bool swaps;
  } middles[] = {{"in order", 0, 180, at60, at120, 90, false},
                 {"the higher one given first", 0, 180, at120, at60, 90, true},
                 {"across 0, the higher one first", 300, 70, at330, at30, 360, false},
                 {"across 0, the lower one first", 300, 70, at30, at330, 360, true},
                 {"both behind 0", 300, 70, at60, at30, 45, true},
                 {"equal angles pass 0 too", 0, 0, at330, at30, 180, true}};
  for (const auto& row : middles) {
    SCOPED_TRACE(row.name);
    TCoordPoint p0 = row.p0, p1 = row.p1;
    EXPECT_NEAR(ArcMiddleAngle(MakeArc(0, 0, 1e6, row.angle1, row.angle2), p0, p1), row.mid, 1e-4);
    EXPECT_EQ(p0, row.swaps ? row.p1 : row.p0);
    EXPECT_EQ(p1, row.swaps ? row.p0 : row.p1);
  }
}

TEST(LegacyTeardropGeometry, FeetAndBoxes) {
  EXPECT_EQ(NormalThroughPoint({0, 0, 500, 0}, {7, 40}), (LineType{7, 40, 7, 1040}));
  GeoPointType foot, place;
  EXPECT_TRUE(FootOnSegment({10150, 9000}, {0, 0, 10000, 0}, foot));
  EXPECT_NEAR(PointDistance(foot, {10150, 0}), 0, 1e-6);
  EXPECT_FALSE(FootOnSegment({10250, 9000}, {0, 0, 10000, 0}, foot));
  EXPECT_FALSE(FootOnSegment({5000, 9000}, {0, 0, 0, 0}, foot));

  // Halves are rounded to even neighbours.
  const TPadBox odd = MakePadBox({0, 0}, 3, 5, 0), turned = MakePadBox({1000, 0}, 600, 400, 90);
  EXPECT_EQ(odd.bl, (GeoPointType{-2, -2}));
  EXPECT_EQ(odd.tr, (GeoPointType{2, 2}));
  EXPECT_EQ(turned.bl, (GeoPointType{1200, -300}));
  EXPECT_EQ(turned.tl, (GeoPointType{800, -300}));

  const TPadBox box = MakePadBox({0, 0}, 60000, 60000, 0);
  EXPECT_TRUE(FindBoxCrossing(box, {-90000, 10, 90000, 10}, place));
  EXPECT_EQ(place.x, -30000) << "the left side is tried first";
  EXPECT_FALSE(FindBoxCrossing(box, {0, 0, 20000, 0}, place));
}

// Arcs about 0, 0 at a pad of 100000 on their circle of 1000000.
TEST(LegacyTeardropGeometry, ArcsBecomeChords) {
  constexpr TCoordPoint top = {0, 1000000}, right = {1000000, 0};
  const struct {
    const char* name;
    double angle1, angle2;
    TCoordPoint pad;
    TCoord width;
    const char* chords;
  } rows[] = {
      {"through", 0, 180, top, 10000, "79952,996799 0,1000000; 0,1000000 -79952,996799; "},
      {"a quarter turn", 0, 180, top, 900000, "1000000,0 0,1000000; 0,1000000 -1000000,0; "},
      {"not past the ends", 86, 94, top, 10000, "69756,997564 0,1000000; 0,1000000 -69756,997564; "},
      {"one end in the pad", 0, 180, right, 10000, "1000000,0 996799,79952; "},
      {"the other, 30 degrees at most", 180, 360, right, 500000, "866025,-500000 1000000,0; "},
      {"a short one from its start", 0, 4, right, 10000, "1000000,0 997564,69756; "},
      {"and from its end", 356, 360, right, 10000, "1000000,0 997564,-69756; "},
      {"its start on the box counts alone only", 87.134016, 180, top, 10000, "50000,998749 -79985,996796; "},
      {"past the pad", 100, 180, top, 10000, ""},
  };
  for (const auto& row : rows) {
    const ThinArcType arc = MakeArc(0, 0, 1e6, row.angle1, row.angle2);
    const TPadBox box = MakePadBox({double(row.pad.x), double(row.pad.y)}, 100000, 100000, 0);
    std::string text;
    for (const auto& [p, q] : ArcToChords(arc, row.width, ArcHitsOnBox(arc, box), row.pad)) {
      text += std::to_string(p.x) + "," + std::to_string(p.y) + " ";
      text += std::to_string(q.x) + "," + std::to_string(q.y) + "; ";
    }
    EXPECT_EQ(text, row.chords) << row.name;
  }
  // Twice through one side: the other side counts neither.
  EXPECT_TRUE(ArcHitsOnBox(MakeArc(0, 0, 70000, 0, 360), MakePadBox({0, 100000}, 100000, 100000, 0)).empty());
}

// A pad of 80 by 40: its middle line runs from -20 to 20, its straight sides are 20 beside it.
TEST(LegacyTeardropGeometry, ElongatedPads) {
  const TPadSpine spine = MakePadSpine({0, 0}, 800000, 400000, 0);
  EXPECT_EQ(spine.Line(), (LineType{-200000, 0, 200000, 0}));
  EXPECT_EQ(MakePadSpine({5, 7}, 400000, 800000, 0).Line(), (LineType{5, -199993, 5, 200007}));
  EXPECT_EQ(MakePadSpine({0, 0}, 800001, 400000, 270).Line(), (LineType{0, 200000, 0, -200000}));
  const struct {
    const char* name;
    std::variant<LineType, ThinArcType> T;
    std::vector<GeoPointType> places;
  } rows[] = {
      {"across, both sides", LineType{50000, -900000, 50000, 900000}, {{50000, 0}, {50000, 0}}},
      {"across, the other way round", LineType{50000, 900000, 50000, -900000}, {{50000, 0}, {50000, 0}}},
      {"out of the round end", LineType{0, 0, 900000, 0}, {{200000, 0}}},
      {"out of the other end", LineType{0, 0, -900000, 0}, {{-200000, 0}}},
      {"aslant through a side", LineType{0, 0, 900000, 900000}, {{200000, 0}}},
      {"from the cap of an end", LineType{300000, 0, 900000, 0}, {}},
      {"an arc into the side", MakeArc(500000, 0, 450000, 90, 180), {{96887, 0}}},
      {"an arc in and out of a side: the second", MakeArc(0, 300000, 150000, 180, 360), {{-111803, 0}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    GeoPointType places[2];
    ASSERT_EQ(ElongatedPadCrossings(spine, row.T, places[0], places[1]), row.places.size());
    for (std::size_t i = 0; i < row.places.size(); ++i)
      EXPECT_NEAR(PointDistance(places[i], row.places[i]), 0, 1) << i;
  }

  const struct {
    TCoordPoint point;
    double rotation;
    bool within;
  } points[] = {{{200000, 200000}, 0, true},  {{200000, 200001}, 0, false}, {{400000, 0}, 0, true},
                {{400001, 0}, 0, false},      {{0, 400000}, 90, true},      {{400000, 0}, 90, false},
                {{340000, 145000}, 0, false}, {{282842, 282842}, 45, true}, {{282844, 282844}, 45, false}};
  for (const auto& row : points)
    EXPECT_EQ(IsPointInElongatedPad(row.point, {0, 0}, 800000, 400000, row.rotation), row.within)
        << row.point.x << "," << row.point.y;
}

}  // namespace
}  // namespace Ketril::Tools
