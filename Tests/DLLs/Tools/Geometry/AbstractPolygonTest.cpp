#include "DLLs/Tools/Geometry/AbstractPolygon.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <random>
#include <sstream>

#include "DLLs/Tools/Geometry/ContourPoints.h"
#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/PolyTools.h"
#include "DLLs/Tools/Geometry/PolygonUtils.h"
#include "DLLs/Tools/Geometry/VertexList.h"

namespace Ketril::Tools {
namespace {

// "0,0 10,0 10,10"
void Read(TAbstractPolygon& polygon, const std::string& text) {
  std::istringstream in(text);
  TCoordPoint point;
  for (char comma; in >> point.x >> comma >> point.y;) polygon.AddPoint(point);
}
struct Poly : std::unique_ptr<TAbstractPolygon> {
  Poly(const std::string& text) : unique_ptr(new TAbstractPolygon) { Read(**this, text); }  // NOLINT
};
std::string Text(const TAbstractPolygon& polygon) {
  std::string text;
  for (std::int32_t i = 0; i < polygon.PointCount(); ++i) {
    const TCoordPoint p = polygon.GetPointByPos(i);
    text += (i ? " " : "") + std::to_string(p.x) + "," + std::to_string(p.y);
  }
  return text;
}

constexpr const char* kSquare = "0,0 10,0 10,10 0,10";
constexpr const char* kNotched = "0,0 30,0 30,20 20,20 20,10 10,10 10,20 0,20";  // a U
constexpr const char* kStar = "0,95 59,-81 -95,31 95,31 -59,-81";                // a pentagram

TEST(AbstractPolygon, PointsInAndOn) {
  const struct {
    const char* name;
    const char* ring;
    TCoordPoint point;
    bool in, on_or_in;
  } rows[] = {
      {"inside", kSquare, {5, 5}, true, true},
      {"on an edge", kSquare, {5, 0}, false, true},
      {"on a vertex", kSquare, {10, 10}, false, true},
      {"outside", kSquare, {11, 5}, false, false},
      {"level with the notch's floor, to its left", kNotched, {5, 10}, true, true},
      {"on the notch's floor", kNotched, {15, 10}, false, true},
      {"in the notch", kNotched, {15, 15}, false, false},
      {"right of the notch", kNotched, {25, 15}, true, true},
      {"level with the tops", kNotched, {15, 20}, false, false},
      {"the middle of a pentagram: all turns are alike", kStar, {0, 0}, true, true},
      {"its point", kStar, {0, 80}, true, true},
      {"two points", "0,0 10,0", {5, 0}, false, true},
  };
  for (const auto& row : rows) {
    const Poly ring(row.ring);
    EXPECT_EQ(ring->IsPointIn(row.point), row.in) << row.name;
    EXPECT_EQ(ring->IsPointOnOrIn(row.point), row.on_or_in) << row.name;
  }
}

// Who says yes to a point on or beside the border. Each test has rules of its own: the strict one, the closed
// one, exact edges of the ring and of the chain without the closing edge, edges by half the diagonal of a
// unit, and the clipper's contours, to which right and lower borders of slopes are in and others are out.
TEST(AbstractPolygon, PointsOnTheBorderByTest) {
  constexpr const char* kDiamond = "0,-10 10,0 0,10 -10,0";
  const struct {
    const char* name;
    const char* ring;
    TCoordPoint point;
    const char* yes;
  } rows[] = {
      {"square, inside", kSquare, {5, 5}, "in on_or_in contour"},
      {"square, bottom", kSquare, {5, 0}, "on_or_in edge chain near"},
      {"square, right", kSquare, {10, 5}, "on_or_in edge chain near contour"},
      {"square, top", kSquare, {5, 10}, "on_or_in edge chain near"},
      {"square, left, the closing edge", kSquare, {0, 5}, "on_or_in edge near"},
      {"square, first vertex", kSquare, {0, 0}, "on_or_in vertex edge chain near"},
      {"square, third vertex", kSquare, {10, 10}, "on_or_in vertex edge chain near"},
      {"square, beside, level with the bottom", kSquare, {15, 0}, ""},
      {"diamond, upper right", kDiamond, {5, 5}, "on_or_in edge chain near contour"},
      {"diamond, upper left", kDiamond, {-5, 5}, "on_or_in edge chain near"},
      {"diamond, lower left, the closing edge", kDiamond, {-5, -5}, "on_or_in edge near"},
      {"diamond, left vertex", kDiamond, {-10, 0}, "on_or_in vertex edge chain near contour"},
      {"diamond, right vertex", kDiamond, {10, 0}, "on_or_in vertex edge chain near"},
      {"diamond, a unit beside a slope", kDiamond, {5, 6}, "near"},
      {"notch, floor", kNotched, {15, 10}, "on_or_in edge chain near contour"},
      {"notch, between the tops", kNotched, {15, 20}, ""},
  };
  for (const auto& row : rows) {
    const Poly ring(row.ring);
    const TVertexListOwner contour(ring->GetGPCContour());
    TCoordPoint a, b;
    std::int32_t edge = 0;
    bool on_vertex = false;
    const std::pair<const char*, bool> answers[] = {
        {"in", ring->IsPointIn(row.point)},
        {"on_or_in", ring->IsPointOnOrIn(row.point)},
        {"vertex", ring->IsPointOnVertex(row.point)},
        {"edge", ring->GetEdgeHit(a, b, true, row.point, 0)},
        {"chain", ring->GetEdgeHit(a, b, false, row.point, 0)},
        {"near", TPolygonUtils::DeterminePolygonEdgeIndex(*ring, row.point, edge, on_vertex)},
        {"contour", ContourContainsPoint(*contour, row.point.x, row.point.y, true)},
    };
    std::string yes;
    for (const auto& [test, says_yes] : answers) {
      if (says_yes) yes += (yes.empty() ? "" : " ") + std::string(test);
    }
    EXPECT_EQ(yes, row.yes) << row.name;
    // A segment of no length is a point that has to be strictly inside.
    EXPECT_EQ(ring->DoesSegmentIntersect(row.point, row.point, false), ring->IsPointIn(row.point))
        << row.name;
  }
}

TEST(AbstractPolygon, SegmentsThatReachTheInside) {
  const struct {
    const char* name;
    const char* ring;
    TCoordPoint from, to;
    bool reaches, crosses, line_in;
  } rows[] = {
      {"within", kSquare, {2, 2}, {8, 8}, true, false, true},
      {"from the inside to an edge", kSquare, {5, 5}, {10, 5}, true, true, false},
      {"from edge to edge", kSquare, {0, 5}, {10, 5}, true, true, false},
      {"through", kSquare, {-5, 5}, {15, 5}, true, true, false},
      {"along an edge", kSquare, {0, 0}, {10, 0}, false, false, false},
      {"along part of an edge", kSquare, {2, 0}, {8, 0}, false, false, false},
      {"touching a vertex", kSquare, {-5, 5}, {5, 15}, false, false, false},
      {"along the diagonal", kSquare, {0, 0}, {10, 10}, true, true, false},
      {"across the notch", kNotched, {10, 15}, {20, 15}, false, false, false},
      {"over the notch's floor", kNotched, {10, 10}, {20, 10}, false, false, false},
      {"a point inside", kSquare, {5, 5}, {5, 5}, true, true, true},
      {"far away", kSquare, {50, 50}, {60, 60}, false, false, false},
  };
  for (const auto& row : rows) {
    for (const bool clockwise : {false, true}) {
      const Poly ring(row.ring);
      if (clockwise) ring->Clockwise();
      const std::string before = Text(*ring);
      EXPECT_EQ(ring->DoesSegmentIntersect(row.from, row.to, false), row.reaches) << row.name;
      EXPECT_EQ(ring->DoesSegmentIntersect(row.to, row.from, false), row.reaches) << row.name << ", back";
      EXPECT_EQ(ring->DoesSegmentIntersect(row.from, row.to, true), row.crosses) << row.name << ", border";
      EXPECT_EQ(ring->IsLineIn(row.from, row.to), row.line_in) << row.name;
      EXPECT_EQ(Text(*ring), before) << row.name;
    }
  }
}

TEST(AbstractPolygon, RectanglesAndPolygons) {
  const Poly notched(kNotched);
  EXPECT_TRUE(notched->DoesRectIntersect({12, 12, 18, 18}));  // in the notch, but within the bounds
  EXPECT_TRUE(notched->DoesRectIntersect({30, 5, 40, 8}));
  EXPECT_FALSE(notched->DoesRectIntersect({-5, -5, 35, 25}));  // round all of it
  EXPECT_FALSE(notched->DoesRectIntersect({31, 0, 40, 8}));
  const Poly square(kSquare), beside("10,0 20,0 20,10 10,10"), shifted("5,5 15,5 15,15 5,15"),
      small("2,2 4,2 4,4 2,4");
  EXPECT_FALSE(square->IsOverlappingPoly(*beside));
  EXPECT_TRUE(square->IsOverlappingPoly(*shifted));
  EXPECT_TRUE(square->IsOverlappingPoly(*small));
  EXPECT_FALSE(small->IsOverlappingPoly(*square));
}

TEST(AbstractPolygon, OrientationAndAnchor) {
  EXPECT_FALSE(Poly(kSquare)->IsClockwise());
  EXPECT_TRUE(Poly("0,10 10,10 10,0 0,0")->IsClockwise());
  EXPECT_FALSE(Poly("5,0 10,0 10,10 0,10 0,0")->IsClockwise());
  EXPECT_FALSE(Poly("0,0 5,0 10,0")->IsClockwise());
  const Poly ring("3,0 0,1 5,2 0,3 7,4");
  EXPECT_TRUE(ring->Anchor(-1));
  EXPECT_EQ(Text(*ring), "0,3 7,4 3,0 0,1 5,2");
  ring->Anchor(-2);
  EXPECT_EQ(Text(*ring), "0,1 5,2 0,3 7,4 3,0");
  EXPECT_FALSE(ring->AddPoint({9, 9}, 6));
  EXPECT_TRUE(ring->AddPoint({9, 9}, 5));
  EXPECT_EQ(ring->GetState_BoundingRectangle(), (TCoordRect{0, 0, 9, 9}));
  const Poly quarter(kSquare);
  quarter->RotateBy90({0, 0}, 450);
  EXPECT_EQ(Text(*quarter), "0,0 0,10 -10,10 -10,0");
  quarter->RotateBy90({0, 0}, 45);
  EXPECT_EQ(Text(*quarter), "0,0 0,10 -10,10 -10,0");
}

TEST(AbstractPolygon, MeetsLinesAlongDiagonals) {
  const Poly square(kSquare);
  TCoordPoint first, second;
  std::int32_t side1 = 0, side2 = 0;
  const TLine45 rising = {{-5, -3}, {15, 17}, TLine45::Rising, 2};
  EXPECT_EQ(square->FindIntersectionPoints(rising, first, side1, second, side2), 2);
  EXPECT_EQ(first, (TCoordPoint{0, 2}));
  EXPECT_EQ(second, (TCoordPoint{8, 10}));
  EXPECT_EQ(side1, 3);
  EXPECT_EQ(side2, 2);
  const TLine45 vertical = {{4, -5}, {4, 5}, TLine45::Vertical, 0};
  EXPECT_EQ(square->FindIntersectionPoints(vertical, first, side1, second, side2), 1);
  EXPECT_EQ(first, (TCoordPoint{4, 0}));
  EXPECT_EQ(side2, -1);
}

TEST(PolygonUtils, CleansUp) {
  const struct {
    const char* name;
    const char* before;
    const char* after;
  } rows[] = {
      {"straight run and repeated vertex", "0,0 5,0 10,0 10,0 10,10 0,10", "0,0 10,0 10,10 0,10"},
      {"spike", "0,0 10,0 10,10 5,10 5,20 5,10 0,10", "0,0 10,0 10,10 0,10"},
      {"all on one line", "0,0 5,0 10,0 2,0", ""},
      {"a loop at a corner", "0,0 100,0 100,60 90,50 110,50 100,60 100,100 0,100", ""},
  };
  for (const auto& row : rows) {
    const Poly ring(row.before);
    TPolygonUtils::CleanUpPolygon(*ring);
    const Poly wanted(row.after);
    if (*row.after) {
      EXPECT_EQ(ring->PointCount(), wanted->PointCount()) << row.name << ": " << Text(*ring);
      for (std::int32_t i = 0; i < wanted->PointCount(); ++i)
        EXPECT_TRUE(ring->IsPointOnVertex(wanted->GetPointByPos(i))) << row.name << ": " << Text(*ring);
    }
    const std::string once = Text(*ring);
    TPolygonUtils::CleanUpPolygon(*ring);
    EXPECT_EQ(ring->PointCount(), Poly(once)->PointCount()) << row.name;
  }
  const Poly bow("0,0 100,100 100,0 0,100");
  TPolygonUtils::CleanUpPolygon(*bow);
  EXPECT_EQ(bow->PointCount(), 3) << Text(*bow);
  // Slopes that differ by less than 1e-8 are parallel to the double half; the crossing is at 0,1002 all the
  // same.
  const Poly flat("-1000000000,1000 1000000000,1004 1000000000,1000 -1000000000,1004");
  TPolygonUtils::CleanUpPolygon(*flat);
  EXPECT_EQ(flat->GetState_BoundingRectangle().y1, 1000) << Text(*flat);
}

// A rounded crossing moves edges across others that were passed before.
TEST(PolygonUtils, CleaningLeavesNoEdgesThatCross) {
  for (const char* text :
       {"4,9 11,5 3,11 3,1 9,6 2,12", "2,0 0,0 3,3 3,5 4,2 4,5", "18,3 1,12 20,5 0,20 14,2 3,17 0,21"}) {
    const Poly ring(text);
    TPolygonUtils::CleanUpPolygon(*ring);
    EXPECT_GE(ring->PointCount(), 3) << text;
    for (std::int32_t i = 0; i < ring->PointCount(); ++i) {
      for (std::int32_t j = i + 2; j < ring->PointCount(); ++j)
        EXPECT_NE(
            TGeomUtils::DoLinesCross(ring->Ring(i), ring->Ring(i + 1), ring->Ring(j), ring->Ring(j + 1)),
            LinesCross)
            << text << ": " << Text(*ring);
    }
  }
}

TEST(PolygonUtils, CornersWithFractionsBecomeWhole) {
  const struct {
    const char* name;
    std::vector<Tgpc_vertex> contour;
    const char* ring;
  } rows[] = {
      {"a right angle at 45 degrees keeps both edges", {{0, 0}, {5.5, 5.5}, {0, 11}}, "5,5 5,6 0,11 0,0"},
      {"any other is rounded half away from zero", {{0, 0}, {5.5, -2.5}, {8, 10}}, "6,-3 8,10 0,0"},
      {"repeats go", {{0, 0}, {0, 0}, {9, 0}, {9, 9}, {9, 9}, {0, 0}}, "9,0 9,9 0,0"},
  };
  for (const auto& row : rows) {
    const TVertexListOwner contour(NewVertexList(static_cast<std::int32_t>(row.contour.size())));
    std::copy(row.contour.begin(), row.contour.end(), contour->vertex);
    const std::unique_ptr<TAbstractPolygon> ring(TPolygonUtils::GPCContourToAbstractPolygon(*contour));
    const Poly wanted(row.ring);
    EXPECT_TRUE(ring->Anchor(ring->GetVertexIndex(wanted->GetPointByPos(0))));
    EXPECT_EQ(Text(*ring), row.ring) << row.name;
  }
}

TEST(PolyTools, ArcsAreWalkedFromWhereTheyBegin) {
  const struct {
    const char* name;
    TPolySegment arc;
    double step;
    std::vector<TCoordPoint> points;
  } rows[] = {
      {"upwards", {ePolySegmentArc, 100, 0, 0, 0, 100, 0, 90}, 30, {{100, 0}, {87, 50}, {0, 100}}},
      {"downwards", {ePolySegmentArc, 0, 100, 0, 0, 100, 0, 90}, -30, {{0, 100}, {50, 87}, {100, 0}}},
      {"past 0", {ePolySegmentArc, 98, -17, 0, 0, 100, 350, 10}, 8, {{98, -17}, {100, -3}, {98, 17}}},
      {"past 0, downwards", {ePolySegmentArc, 98, 17, 0, 0, 100, 350, 10}, 20, {{98, -17}}},
      {"as near to both ends", {ePolySegmentArc, 7, 7, 7, 7, 10, 0, 180}, 120, {{-3, 7}, {17, 7}}},
  };
  for (const auto& row : rows) {
    std::vector<TCoordPoint> points;
    AddArcPoints(row.arc, row.step, points);
    EXPECT_EQ(points, row.points) << row.name;
  }
}

TEST(PolygonUtils, ProjectsAndFinds) {
  const Poly square(kSquare);
  TEdgePointList places;
  const auto text = [&] {
    std::string all;
    for (const TPolyEdgePoint* place : places) {
      all += std::to_string(place->Point.x) + "," + std::to_string(place->Point.y) + "/" +
             std::to_string(place->EdgeIndex) + (place->IsVertex ? "v " : " ");
    }
    TPolygonUtils::FreeEdgePointList(places);
    return all;
  };
  TPolygonUtils::ProjectPointOntoPoly(*square, {5, 5}, {99, 99}, places);
  EXPECT_EQ(text(), "5,0/0 10,5/1 5,10/2 0,5/3 ");
  TPolygonUtils::ProjectPointOntoPoly(*square, {-3, -4}, {99, 99}, places);
  EXPECT_EQ(text(), "0,0/0v ");
  TPolygonUtils::ProjectPointOntoPoly(*square, {5, 1}, {5, 0}, places);
  EXPECT_EQ(text(), "0,0/0v 10,0/1v 10,1/1 0,1/3 ");  // all 5 away, rounded
  TPolygonUtils::ProjectPointOntoMultiplePolyEdges(*square, {-3, -4}, {99, 99}, places);
  EXPECT_EQ(text(), "0,0/0v ");
  TPolygonUtils::ProjectPointOntoMultiplePolyEdges(*Poly(""), {0, 0}, {99, 99}, places);
  EXPECT_EQ(text(), "-1,-1/-1v ");
  std::int32_t edge = 0;
  bool on_vertex = false;
  EXPECT_TRUE(TPolygonUtils::DeterminePolygonEdgeIndex(*square, {0, 0}, edge, on_vertex));
  EXPECT_TRUE(edge == 0 && on_vertex);
  EXPECT_TRUE(TPolygonUtils::DeterminePolygonEdgeIndex(*square, {10, 4}, edge, on_vertex));
  EXPECT_TRUE(edge == 1 && !on_vertex);
  EXPECT_FALSE(TPolygonUtils::DeterminePolygonEdgeIndex(*square, {5, 5}, edge, on_vertex));
}

TEST(PolygonUtils, UnitesAndIntersects) {
  const Poly square(kSquare), shifted("5,5 15,5 15,15 5,15"), beside("10,0 20,0 20,10 10,10"),
      far("50,0 60,0 60,10");
  TAbstractPolygon result;
  EXPECT_TRUE(TPolygonUtils::UnionPoly(*square, *shifted, result));
  EXPECT_EQ(result.PointCount(), 8);
  EXPECT_TRUE(TPolygonUtils::UnionPoly(*square, *beside, result));
  EXPECT_EQ(result.PointCount(), 4) << Text(result);
  EXPECT_FALSE(TPolygonUtils::UnionPoly(*square, *far, result));
  EXPECT_EQ(result.PointCount(), 0);
  EXPECT_TRUE(TPolygonUtils::IntersectPoly(*square, *shifted, result));
  EXPECT_EQ(result.GetState_BoundingRectangle(), (TCoordRect{5, 5, 10, 10}));
  EXPECT_FALSE(TPolygonUtils::IntersectPoly(*square, *far, result));
  const std::unique_ptr<TAbstractPolygon> all(
      TPolygonUtils::UnionShapesToPolygon({square.get(), beside.get(), shifted.get()}));
  EXPECT_EQ(all->GetState_BoundingRectangle(), (TCoordRect{0, 0, 20, 15}));
  EXPECT_FALSE(all->IsClockwise());
}

// A spike may read as clockwise both ways: the ring is turned back all the same.
TEST(AbstractPolygon, AQuestionLeavesTheRingAsItIs) {
  TAbstractPolygon ring;
  for (const TCoordPoint vertex : {TCoordPoint{1, 1}, {-3, -3}, {1, 2}, {-3, -3}}) ring.AddPoint(vertex);
  const std::string before = Text(ring);
  ring.DoesSegmentIntersect({-4, 0}, {4, 1}, false);
  EXPECT_EQ(Text(ring), before);
}

// Whatever the ring, everything ends and nothing overflows.
TEST(AbstractPolygon, StandsExtremeRings) {
  constexpr TCoord kMost = std::numeric_limits<TCoord>::max(), kLeast = std::numeric_limits<TCoord>::min();
  const TCoord values[] = {kLeast, kLeast + 1, -1000000000, -1, 0, 1, 1000000000, kMost - 1, kMost};
  std::mt19937 random(7);
  const auto value = [&] { return values[random() % std::size(values)]; };
  for (int round = 0; round < 600; ++round) {
    TAbstractPolygon ring, other;
    for (unsigned i = random() % 8; i > 0; --i) ring.AddPoint({value(), value()});
    for (unsigned i = random() % 8; i > 0; --i) other.AddPoint({value(), value()});
    const TCoordPoint p = {value(), value()}, q = {value(), value()};
    const bool in = ring.IsPointIn(p);
    EXPECT_TRUE(!in || ring.IsPointOnOrIn(p)) << Text(ring);
    ring.DoesSegmentIntersect(p, q, round % 2 != 0);
    ring.DoesRectIntersect({p.x, p.y, q.x, q.y});
    ring.IsOverlappingPoly(other);
    std::int32_t edge = 0;
    bool vertex = false;
    TPolygonUtils::DeterminePolygonEdgeIndex(ring, p, edge, vertex);
    ring.Rotate(p, round);
    ring.Translate(q.x, q.y);
    ring.RotateBy90(p, 90 * (round % 4));
    TPolygonUtils::CleanUpPolygon(ring);
    TAbstractPolygon outcome;
    TPolygonUtils::UnionPoly(ring, other, outcome);
    ring.RemoveNonEssentialPolyPoints();
  }
}

}  // namespace
}  // namespace Ketril::Tools
