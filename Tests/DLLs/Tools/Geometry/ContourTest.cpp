#include "DLLs/Tools/Geometry/Contour.h"

#include <gtest/gtest.h>

#include <random>

#include "DLLs/Tools/Geometry/ContourPoints.h"

namespace Ketril::Tools {
namespace {

std::vector<TCoordPoint> PointsOf(const TContour& contour) {
  std::vector<TCoordPoint> points;
  for (std::int32_t i = 0; i < contour.GetState_Count(); ++i) points.push_back(contour.CoordVertex(i));
  return points;
}

Ref<TContour> Made(std::initializer_list<TCoordPoint> points) {
  auto contour = MakeCounted<TContour>();
  for (const TCoordPoint point : points) contour->Append(point.x, point.y);
  return contour;
}

bool Holds(const TContour& contour, double x, double y) {
  const bool with_bounds = ContourContainsPoint(*contour.VertexList(), x, y, true);
  EXPECT_EQ(with_bounds, ContourContainsPoint(*contour.VertexList(), x, y, false)) << x << "," << y;
  return with_bounds;
}

TEST(Contour, VerticesAreCyclicAndAnEmptyOneHasNone) {
  const auto contour = Made({{1, 2}, {3, 4}, {5, 6}});
  for (const auto& [index, x] : {std::pair{0, 1}, {2, 5}, {3, 1}, {-1, 5}, {-4, 5}, {7, 3}})
    EXPECT_EQ(contour->PointX(index), x) << index;
  const auto empty = MakeCounted<TContour>();
  EXPECT_THROW(empty->PointX(0), EContourException);
  TCoord x = 0;
  EXPECT_EQ(empty->GetState_PointX(0, x), Status::Failure);
}

TEST(Contour, GrowingRoundsAndKeepsWhatIsOutOfRange) {
  Tgpc_vertex* vertices = NewVertices(4);
  const double values[] = {0.5, 1.5, 3e9, -3e9};
  for (int i = 0; i < 4; ++i) vertices[i] = {values[i], 0.4};
  Tgpc_vertex_list list = {4, vertices};
  {
    const auto contour = MakeCounted<TContour>(&list);
    contour->Reserve(3);  // less than there is
    EXPECT_EQ(list.vertex[0].x, 0.5);
    contour->Reserve(4);  // a request equal to the capacity grows it
    EXPECT_EQ(list.vertex[0], (Tgpc_vertex{0, 0}));
    EXPECT_EQ(list.vertex[1].x, 2);
    EXPECT_EQ(list.vertex[2].x, 2147483647);
    EXPECT_EQ(list.vertex[3].x, -2147483647);
  }
  delete[] list.vertex;
}

TEST(Contour, EditsMoveTheOthers) {
  const auto contour = Made({{0, 0}, {10, 0}, {10, 10}});
  contour->Insert(1, 5, -5);
  contour->Delete(0);
  contour->Delete(9);
  EXPECT_EQ(PointsOf(*contour), (std::vector<TCoordPoint>{{5, -5}, {10, 0}, {10, 10}}));
  EXPECT_THROW(contour->Insert(7, 0, 0), EContourException);

  const auto ring = Made({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}});
  const auto part = MakeCounted<TContour>();
  part->AppendContour(ring.Get(), 3, 1);
  EXPECT_EQ(PointsOf(*part), (std::vector<TCoordPoint>{{3, 0}, {4, 0}, {0, 0}, {1, 0}}));
  part->AppendContour(ring.Get(), 2, 2);
  EXPECT_EQ(part->GetState_Count(), 5);

  const auto turned = Made({{10, 0}, {10, 5}});
  EXPECT_EQ(turned->RotateAboutPoint(90, 10, 0), Status::Ok);
  EXPECT_EQ(PointsOf(*turned), (std::vector<TCoordPoint>{{10, 0}, {5, 0}}));
}

TEST(Contour, AreaHasNoSignAndFollowsChanges) {
  const auto square = Made({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  EXPECT_EQ(square->Area(), 100);
  square->PutPointX(1, 20);
  EXPECT_EQ(square->Area(), 150);
  square->VertexList()->vertex[1].x = 10;
  EXPECT_EQ(square->Area(), 100);
  const auto clockwise = Made({{0, 0}, {0, 10}, {10, 10}, {10, 0}});
  EXPECT_EQ(clockwise->Area(), 100);
  EXPECT_EQ(ContourArea(*clockwise->VertexList()), -100);
  EXPECT_EQ(Made({{0, 0}, {9, 9}})->Area(), 0);
  const auto replica = square->Replica();
  replica->PutPointX(0, 7);
  EXPECT_EQ(square->PointX(0), 0);
}

TEST(ContourContainsPoint, CountsVerticesOnTheRayOnce) {
  // A roof, a valley and a step, all with vertices at y = 10.
  const auto ring =
      Made({{0, 0}, {100, 0}, {100, 20}, {80, 10}, {60, 10}, {50, 20}, {40, 10}, {20, 30}, {0, 10}});
  EXPECT_TRUE(Holds(*ring, 90, 10));
  EXPECT_TRUE(Holds(*ring, 50, 10));
  EXPECT_TRUE(Holds(*ring, 50, 5));
  EXPECT_FALSE(Holds(*ring, 70, 15));
  EXPECT_FALSE(Holds(*ring, -5, 10));
  EXPECT_FALSE(Holds(*ring, 105, 10));
  EXPECT_FALSE(Holds(*ring, 105, 20));
}

// Against the winding of the same point by angles, off the edges.
TEST(ContourContainsPoint, AgreesWithAngles) {
  std::mt19937 random(20261123);
  std::uniform_int_distribution<int> place(-6, 6);
  for (int round = 0; round < 2000; ++round) {
    const auto ring = MakeCounted<TContour>();
    for (int i = 0; i < 7; ++i) ring->Append(2 * place(random), 2 * place(random));
    const double x = 2 * place(random) + 0.37, y = 2 * place(random) + 1;
    int crossings = 0;
    for (int i = 0; i < 7; ++i) {
      const TCoordPoint a = ring->CoordVertex(i), b = ring->CoordVertex(i + 1);
      if ((a.y > y) != (b.y > y) && a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x) < x) ++crossings;
    }
    ASSERT_EQ(Holds(*ring, x, y), crossings % 2 != 0) << "round " << round;
  }
}

TEST(VertexList, PolygonsOwnCopies) {
  const TVertexListOwner square(NewVertexList(4));
  const double corners[4][2] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  for (int i = 0; i < 4; ++i) square->vertex[i] = {corners[i][0], corners[i][1]};
  const TPolygonOwner polygon(NewPolygon());
  AddContour(polygon.get(), square.get(), false);
  for (int i = 0; i < 4; ++i) square->vertex[i] = {2 + corners[i][0] / 2, 2 + corners[i][1] / 2};
  AddContour(polygon.get(), square.get(), true);
  ASSERT_EQ(polygon->num_contours, 2);
  EXPECT_EQ(polygon->contour[0].vertex[2].x, 10);
  EXPECT_TRUE(PolygonContainsPoint(*polygon, 1, 5, true));
  EXPECT_FALSE(PolygonContainsPoint(*polygon, 5, 5, true));  // in the hole
  EXPECT_EQ(CopyVertexList(nullptr), nullptr);
}

}  // namespace
}  // namespace Ketril::Tools
