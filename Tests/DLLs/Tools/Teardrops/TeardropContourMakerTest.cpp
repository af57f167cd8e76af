// Outlines, worked out from the geometry: lengths here are in mil, and vertices agree within 2 units.
#include "DLLs/Tools/Teardrops/TeardropContourMaker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Geometry/Contour.h"
#include "DLLs/Tools/Geometry/VertexList.h"
#include "DLLs/Tools/Teardrops/PCBTeardropOptionsModel.h"
#include "DLLs/Tools/Teardrops/TeardropCurves.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {
namespace {

constexpr double kMil = 10000;

struct Place {
  double x, y;
};

TTeardropOptionsEx Options(std::int32_t flags) {
  TTeardropOptionsEx options = DefaultTeardropOptions();
  options.Flags = flags;
  return options;
}

std::vector<Place> PlacesOf(const Ref<IPCB_Contour>& contour) {
  std::vector<Place> places;
  Pgpc_vertex_list list = nullptr;
  if (!contour || Failed(contour->GetState_VertexList(list))) return places;
  for (std::int32_t i = 0; i < list->num_vertices; ++i)
    places.push_back({list->vertex[i].x, list->vertex[i].y});
  return places;
}

void ExpectOutline(const std::vector<Place>& found, const std::vector<Place>& wanted_mil) {
  ASSERT_EQ(found.size(), wanted_mil.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    EXPECT_NEAR(found[i].x, wanted_mil[i].x * kMil, 2) << "vertex " << i;
    EXPECT_NEAR(found[i].y, wanted_mil[i].y * kMil, 2) << "vertex " << i;
  }
}

constexpr std::int32_t kStraight = TeardropFlag_Straight | TeardropFlag_ScaleWidth;
constexpr CircleType kVia = {0, 0, 15 * kMil};

std::vector<Place> OnVia(LineType line_mil, std::int32_t flags = kStraight) {
  const LineType line = {line_mil.x1 * kMil, line_mil.y1 * kMil, line_mil.x2 * kMil, line_mil.y2 * kMil};
  return PlacesOf(TTeardropContourMaker::LineToCircleContour(line, 10 * kMil, kVia, eTeardropObject_Via,
                                                             Options(flags), true));
}

// On a via of 30 mil a teardrop runs 30 percent, 9 mil, and is 70 percent, 21 mil, wide.
TEST(CircleOutline, AShortTrackMakesTheFootNarrower) {
  // The track ends 4.5 mil from the via: half the length, half the width of the foot, which is no wider then
  // than 10.5 mil.
  const double foot = std::sqrt(15 * 15 - 5.25 * 5.25), tail = std::sqrt(15 * 15 - 5 * 5);
  const double run = 19.5 - tail;  // of the edges, to the end of the track
  ExpectOutline(
      OnVia({0, 0, 19.5, 0}),
      {{tail + std::min(9.0, run), -5}, {foot, -5.25}, {foot, 5.25}, {tail + std::min(9.0, run), 5}});
  const double wide_foot = OnVia({0, 0, 19.5, 0}, TeardropFlag_Straight)[2].y;
  EXPECT_GT(wide_foot, 9 * kMil);
}

TEST(CircleOutline, ATrackThroughAViaHasBothSidesInOneContour) {
  const std::vector<Place> found = OnVia({-100, 0, 100, 0});
  const double tail = std::sqrt(15 * 15 - 5 * 5) + 9, foot = std::sqrt(15 * 15 - 10.5 * 10.5);
  // The first hit lies nearer to the line's second end; out along side 0, along side 1 there and back, home.
  ExpectOutline(found, {{tail, -5},
                        {foot, -10.5},
                        {-foot, 10.5},
                        {-tail, 5},
                        {-tail, -5},
                        {-foot, -10.5},
                        {foot, 10.5},
                        {tail, 5}});
  EXPECT_TRUE(OnVia({50, 0, 100, 0}).empty());
}

// On the other side the track ends a mil beyond the via, where the foot comes out narrower than the track.
TEST(CircleOutline, ASideThatIsTooNarrowIsDroppedAlone) {
  const double tail = std::sqrt(15 * 15 - 5 * 5) + 9, foot = std::sqrt(15 * 15 - 10.5 * 10.5);
  ExpectOutline(OnVia({-100, 0, 16, 0}), {{-tail, 5}, {-foot, 10.5}, {-foot, -10.5}, {-tail, -5}});
  ExpectOutline(OnVia({16, 0, -100, 0}), {{-tail, 5}, {-foot, 10.5}, {-foot, -10.5}, {-tail, -5}});
}

TEST(CircleOutline, IsTheSameAtEveryAngle) {
  for (const std::int32_t flags : {0, kStraight}) {
    const std::vector<Place> upright = OnVia({-100, 0, 100, 0}, flags);
    for (int degrees = 0; degrees < 360; degrees += 7) {
      LineType line = {0, 0, 0, 0};
      RotateVector(degrees, -100, 0, line.x1, line.y1);
      RotateVector(degrees, 100, 0, line.x2, line.y2);
      std::vector<Place> found = OnVia(line, flags);
      for (Place& place : found) RotateVector(-degrees, place.x / kMil, place.y / kMil, place.x, place.y);
      ASSERT_EQ(found.size(), upright.size()) << degrees;
      for (Place& place : found) place = {place.x * kMil, place.y * kMil};
      for (std::size_t i = 0; i < found.size(); ++i)
        ASSERT_LE(std::hypot(found[i].x - upright[i].x, found[i].y - upright[i].y), 2) << degrees;
    }
  }
}

TEST(CircleOutline, AWidthOfMinusOneLeavesTheFeetOnTheCircleAboutTheAnchor) {
  const LineType line = {0, 0, 100 * kMil, 0};
  const auto found = PlacesOf(TTeardropContourMaker::LineToCircleContour(
      line, 4 * kMil, kVia, eTeardropObject_Track, Options(TeardropFlag_Straight), true));
  // 100 percent of the diameter: the anchor is 45 mil out, the circle about it 36 mil.
  const double x = (45.0 * 45 + 15 * 15 - 36 * 36) / 90;
  ASSERT_EQ(found.size(), 4u);
  EXPECT_NEAR(found[1].x, x * kMil, 2);
  EXPECT_NEAR(found[2].y, std::sqrt(15 * 15 - x * x) * kMil, 2);
}

// An arc of 100 mil about (0, -100) leaves the via at 15 mil from its centre and runs clockwise, 9 mil along
// each edge of its own; the feet are 10.5 mil off the line from the via's centre to the crossing.
TEST(CircleOutline, AnArcIntoAVia) {
  ThinArcType arc = {0, -100 * kMil, 100 * kMil, 0, 90, 0, 0, 0, 0};
  UpdateArcEnds(arc);
  const auto make = [&](std::int32_t flags) {
    return PlacesOf(TTeardropContourMaker::ArcToCircleContour(arc, 10 * kMil, kVia, eTeardropObject_Via,
                                                              Options(flags), true));
  };
  ExpectOutline(make(kStraight),
                {{22.5780, -7.7220}, {9.8945, -11.2738}, {11.4695, 9.6670}, {23.3071, 2.3806}});
  // Curved flanks leave along the edge.
  const std::vector<Place> curved = make(TeardropFlag_ScaleWidth);
  ASSERT_GT(curved.size(), 8u);
  const double leaving = std::atan2(curved[1].y - curved[0].y, curved[1].x - curved[0].x);
  EXPECT_NEAR(leaving, std::atan2(100 * kMil + curved[0].y, curved[0].x) + std::numbers::pi / 2, 0.1);
}

// An arc of 20 mil about (0, -20) stays near the via: the edges run shorter than the teardrop by half the
// width, or just half the width, and not past the arc's end. One foot stays where the circle about the
// teardrop's end crosses.
TEST(CircleOutline, ATightArc) {
  ThinArcType arc = {0, -20 * kMil, 20 * kMil, 0, 90, 0, 0, 0, 0};
  UpdateArcEnds(arc);
  const auto make = [&](std::int32_t width_mil) {
    return PlacesOf(TTeardropContourMaker::ArcToCircleContour(arc, width_mil * 10000, kVia,
                                                              eTeardropObject_Via, Options(kStraight), true));
  };
  const Place foot1 = {5.9929, -13.7508}, foot2 = {14.2620, 4.6471};
  ExpectOutline(make(10), {{13.4203, -13.2997}, foot1, foot2, {17.9948, -2.6452}});
  ExpectOutline(make(20), {{10, -20}, foot1, foot2, {21.3912, 1.0337}});
}

// A curve drops the places at which it has turned by less than 3 degrees since the last one.
TEST(TeardropCurves, TakeOnlyWhatTurns) {
  const auto curve = [](GeoPointType from, GeoPointType ctrl, GeoPointType to) {
    const Ref<TContour> contour = MakeCounted<TContour>();
    CurveToContour(*contour, from, ctrl, to, 0.1);
    return PlacesOf(contour);
  };
  ExpectOutline(curve({0, 0}, {500000, 0}, {1000000, 100000}),
                {{0, 0}, {10, 0.1}, {60, 3.6}, {70, 4.9}, {100, 10}});
  EXPECT_EQ(curve({0, 0}, {30, 0}, {60, 0}).size(), 1u);  // both ends are one place
}

TPolygonOwner Rectangle(double half_x, double half_y, double degrees) {
  const TVertexListOwner ring(NewVertexList(4));
  const double corners[4][2] = {{-half_x, -half_y}, {half_x, -half_y}, {half_x, half_y}, {-half_x, half_y}};
  for (int i = 0; i < 4; ++i) {
    RotateVector(degrees, corners[i][0] * kMil, corners[i][1] * kMil, ring->vertex[i].x, ring->vertex[i].y);
    ring->vertex[i] = {std::round(ring->vertex[i].x), std::round(ring->vertex[i].y)};  // as of a pad
  }
  TPolygonOwner polygon(NewPolygon());
  AddContour(polygon.get(), ring.get(), false);
  return polygon;
}

// A track of 10 mil into a pad of 60 x 40 mil: 10 mil long, 20 mil wide. The feet lie 1200 units, 0.12 mil,
// inside of the outline, but for a crossing on its first edge.
TEST(PolygonOutline, ATrackIntoARectangleAtAnyAngle) {
  for (const bool first_edge : {false, true}) {
    for (int degrees = 0; degrees < 360; degrees += 15) {
      const TPolygonOwner pad = Rectangle(30, 20, degrees);
      LineType line = {0, 0, first_edge ? 0 : 100 * kMil, first_edge ? -100 * kMil : 0};
      RotateVector(degrees, line.x2, line.y2, line.x2, line.y2);
      const auto contours = TTeardropContourMaker::ToPolygonContours(
          nullptr, &line, 10 * kMil, *pad, {10 * kMil, 20 * kMil}, Options(kStraight));
      ASSERT_TRUE(contours && contours->size() == 1) << degrees;
      const std::vector<Place> found = PlacesOf(contours->front());
      ASSERT_EQ(found.size(), 4u) << degrees;
      const double side = first_edge ? 20 : 30, inset = first_edge ? 0 : 0.12;
      for (const Place& place : found) {
        double out = 0, across = 0;
        RotateVector(-degrees + (first_edge ? 90 : 0), place.x, place.y, out, across);
        const bool is_tail = std::abs(across) < 7 * kMil;
        EXPECT_NEAR(std::abs(across), (is_tail ? 5 : 10) * kMil, 3) << degrees;
        EXPECT_NEAR(out, (is_tail ? side + 10 : side - inset) * kMil, 3) << degrees;
      }
    }
  }
}

// The track's upper edge is beyond the pad's side, which runs along it but for rounding: the curve stays
// near.
TEST(PolygonOutline, AnEdgeAlongThePadsSideMeetsItNowhere) {
  for (int degrees = 0; degrees < 360; degrees += 5) {
    const TPolygonOwner pad = Rectangle(10, 11, degrees);
    LineType line;
    RotateVector(degrees, -53 * kMil, 9 * kMil, line.x1, line.y1);
    RotateVector(degrees, -9 * kMil, 9 * kMil, line.x2, line.y2);
    line = {std::round(line.x1), std::round(line.y1), std::round(line.x2), std::round(line.y2)};
    const auto contours = TTeardropContourMaker::ToPolygonContours(nullptr, &line, 8 * kMil, *pad,
                                                                   {20 * kMil, 20 * kMil}, Options(0));
    ASSERT_TRUE(contours && contours->size() == 1) << degrees;
    for (const Place& place : PlacesOf(contours->front()))
      EXPECT_LE(std::hypot(place.x, place.y), 60 * kMil) << degrees;
  }
}

// The arc of 100 mil about (0, -100) leaves through the right side; each edge runs 10 mil from its own
// crossing.
TEST(PolygonOutline, AnArcIntoARectangle) {
  const TPolygonOwner pad = Rectangle(30, 20, 0);
  ThinArcType arc = {0, -100 * kMil, 100 * kMil, 0, 90, 0, 0, 0, 0};
  UpdateArcEnds(arc);
  const auto contours = TTeardropContourMaker::ToPolygonContours(&arc, nullptr, 10 * kMil, *pad,
                                                                 {10 * kMil, 20 * kMil}, Options(kStraight));
  ASSERT_TRUE(contours && contours->size() == 1);
  ExpectOutline(PlacesOf(contours->front()),
                {{39.3047, -13.5122}, {29.8800, -15.2654}, {29.8800, 6.0533}, {39.4327, -2.6858}});
}

TEST(PolygonOutline, TwoCrossingsGiveTwoContoursAndNoneNone) {
  const TPolygonOwner pad = Rectangle(30, 20, 0);
  const LineType through = {-100 * kMil, 0, 100 * kMil, 0},
                 away = {-100 * kMil, 30 * kMil, 100 * kMil, 30 * kMil};
  const auto make = [&](const LineType& line, const Tgpc_polygon& polygon) {
    return TTeardropContourMaker::ToPolygonContours(nullptr, &line, 10 * kMil, polygon,
                                                    {10 * kMil, 20 * kMil}, Options(kStraight));
  };
  EXPECT_EQ(make(through, *pad)->size(), 2u);
  EXPECT_FALSE(make(away, *pad));
  const TPolygonOwner empty(NewPolygon());
  EXPECT_FALSE(make(through, *empty));
}

// A node at `at` with arms of 10 mil width and 100 mil length in these directions, turned by `turn`.
std::vector<Place> Junction(std::initializer_list<double> degrees, TCoordPoint at, double turn,
                            std::int32_t flags) {
  TTeardropTJunctionNode made(TNodePoint{at.x, at.y, eV6_TopLayer});
  for (const double direction : degrees) {
    const double angle = (direction + turn) * std::numbers::pi / 180;
    made.AddTrackLine({{double(at.x), double(at.y), at.x + 100 * kMil * std::cos(angle),
                        at.y + 100 * kMil * std::sin(angle)},
                       10 * static_cast<std::int32_t>(kMil)});
  }
  return PlacesOf(TTeardropContourMaker::TrackJunctionContour(made, Options(flags)));
}

// The flat side of a T is the junction's own point, wherever the T is and however it is turned.
TEST(JunctionOutline, ATIsTheSameAtEveryAngleAndPlace) {
  const TCoordPoint places[] = {
      {0, 0}, {12345678, -87654321}, {999000000, 999000000}, {-2000000000, 1700000001}};
  for (const std::int32_t flags : {0, kStraight}) {
    const std::vector<Place> upright = Junction({0, 180, 270}, {0, 0}, 0, flags);
    ASSERT_GE(upright.size(), 5u);
    for (const TCoordPoint at : places) {
      for (int turn = 0; turn < 360; ++turn) {
        const std::vector<Place> found = Junction({0, 180, 270}, at, turn, flags);
        ASSERT_EQ(found.size(), upright.size()) << turn;
        for (std::size_t i = 0; i < found.size(); ++i) {
          const Place &a = found[i], &b = found[(i + 1) % found.size()];
          ASSERT_FALSE(a.x == b.x && a.y == b.y) << turn;
        }
        for (const Place& wanted : upright) {
          double nearest = 1e300;
          for (const Place& place : found) {
            double x = 0, y = 0;
            RotateVector(-turn, place.x - at.x, place.y - at.y, x, y);
            nearest = std::min(nearest, std::hypot(x - wanted.x, y - wanted.y));
          }
          ASSERT_LE(nearest, 3) << turn << " degrees at " << at.x << "," << at.y;
        }
      }
    }
  }
}

TEST(JunctionOutline, ArmsAndStem) {
  // Stem down: 100 percent of the width, 10 mil, beyond the crossing of the edges, 5 mil off; the arms get
  // half of the extra width of 200 percent, 10 mil.
  const std::vector<Place> found = Junction({0, 180, 270}, {0, 0}, 0, kStraight);
  ExpectOutline(found, {{0, 0}, {-15, -5}, {-5, -15}, {5, -15}, {15, -5}});
  EXPECT_EQ(Junction({0, 180, 270}, {0, 0}, 0, 0).front().y, 0);  // curved: the junction's own point
  // Two corners that are nearly straight, and one in which two tracks leave 15 degrees from each other.
  const std::vector<Place> fork = Junction({0, 172.5, 187.5}, {0, 0}, 0, 0);
  EXPECT_EQ(std::ranges::count_if(fork, [](const Place& place) { return place.x == 0 && place.y == 0; }), 2);
  EXPECT_GT(fork.size(), 4u);
  EXPECT_TRUE(Junction({0, 180}, {0, 0}, 0, 0).empty());
  EXPECT_TRUE(Junction({0, 180, 183}, {0, 0}, 0, 0).empty());
  EXPECT_EQ(Junction({0, 90, 180, 270}, {0, 0}, 0, kStraight).size(), 8u);
  EXPECT_EQ(Junction({0, 120, 240, 244}, {0, 0}, 0, kStraight).size(), 6u);
}

TEST(TeardropUtils, WaysStopAtTheEnds) {
  GeoPointType point = {10, 0};
  const LineType line = {0, 0, 100, 0};
  MoveAlongLine(point, line, {0, 0}, 1000);
  EXPECT_EQ(point, (GeoPointType{100, 0}));
  MoveAlongLine(point, line, {100, 50}, 10);
  EXPECT_EQ(point, (GeoPointType{100, 0}));  // square to the line
  MovePointToward(point, {0, 0}, 30, true);
  EXPECT_EQ(point, (GeoPointType{70, 0}));
  MovePointToward(point, {0, 0}, 300, true);
  EXPECT_EQ(point, (GeoPointType{0, 0}));
  ThinArcType arc = {0, 0, 1000000, 0, 90, 0, 0, 0, 0};
  UpdateArcEnds(arc);
  GeoPointType on_arc = {1000000, 0};
  MoveAlongArc(on_arc, arc, {1000000, -5}, 1000000 * std::numbers::pi / 4);
  EXPECT_NEAR(on_arc.x, 707107, 1);
  MoveAlongArc(on_arc, arc, {1000000, -5}, 1e9);
  EXPECT_NEAR(on_arc.y, 1000000, 1);
}

}  // namespace
}  // namespace Ketril::Tools
