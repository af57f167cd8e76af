#include "Editor/Copper/Outline.h"

#include <gtest/gtest.h>

#include <numbers>

#include "Editor/Client/PcbServer.h"
#include "Editor/Copper/Distance.h"
#include "Tests/Editor/Copper/SomeCopper.h"

namespace Ketril::Editor {
namespace {

constexpr double kPi = std::numbers::pi;

std::vector<Ring> OutlineOf(const Ref<Primitive>& object, double growth = 0, double error = 10) {
  return Outline(FormsOf(*object, eV6_TopLayer), growth, error);
}

using Points = std::vector<TCoordPoint>;

TEST(Outline, OfATrackGoesRoundItsLeftEndFirst) {
  const struct {
    const char* name;
    TCoordPoint p1, p2, left, right, first, half;
  } rows[] = {
      {"horizontal", {0, 0}, {9000, 0}, {0, 0}, {9000, 0}, {0, 500}, {9000, -500}},
      {"drawn backwards", {9000, 0}, {0, 0}, {0, 0}, {9000, 0}, {0, 500}, {9000, -500}},
      {"vertical", {0, 9000}, {0, 0}, {0, 0}, {0, 9000}, {-500, 0}, {500, 9000}},
      {"rising", {0, 0}, {3000, 4000}, {0, 0}, {3000, 4000}, {-400, 300}, {3400, 3700}},
      {"falling", {3000, 0}, {0, 4000}, {0, 4000}, {3000, 0}, {400, 4300}, {2600, -300}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::vector<Ring> rings = OutlineOf(Loose<Track>(TrackData{row.p1, row.p2, 1000}));
    ASSERT_EQ(rings.size(), 1u);
    const Points& ring = rings[0].points;
    ASSERT_EQ(ring.size() % 2, 0u);
    EXPECT_EQ(ring[0], row.first);
    EXPECT_EQ(ring[ring.size() / 2], row.half);
    EXPECT_GT(AreaOf(rings[0]), 0);
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const TCoordPoint end = i < ring.size() / 2 ? row.left : row.right;
      EXPECT_NEAR(std::hypot(ring[i].x - end.x, ring[i].y - end.y), 500, 0.8);
    }
  }
}

// The box of what the outline takes in is the object's own, grown; every vertex is as far from the copper as
// the growth; the rings run as they should.
TEST(Outline, VerticesAreAtTheGrowthFromTheCopper) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  Random random(seed);
  for (const CopperKind& kind : CopperKinds()) {
    for (int n = 0; n < 30; ++n) {
      SCOPED_TRACE(kind.name + " " + std::to_string(n));
      const Ref<Primitive> object = kind.make(random);
      const int growth = random.Below(3) * 700;
      Extent extent;
      for (const Ring& ring : OutlineOf(object, growth, 2)) {
        ASSERT_EQ(AreaOf(ring) < 0, ring.hole);
        for (const TCoordPoint& point : ring.points) {
          extent.Add(point);
          const Ref<Primitive> dot = Loose<Track>(TrackData{point, point, 0});
          ASSERT_NEAR(Gap(*object, *dot), growth, 4);
        }
      }
      const TCoordRect box = extent.Rect(), bounds = object->Bounds();
      EXPECT_NEAR(box.x1, bounds.x1 - growth, 4);
      EXPECT_NEAR(box.y1, bounds.y1 - growth, 4);
      EXPECT_NEAR(box.x2, bounds.x2 + growth, 4);
      EXPECT_NEAR(box.y2, bounds.y2 + growth, 4);
    }
  }
}

Ref<Primitive> PadOf(TShape shape, TCoord x, TCoord y, double degrees = 30) {
  PadData data;
  data.rotation = degrees;
  data.stack[0].x_size = x;
  data.stack[0].y_size = y;
  data.stack[0].shape = shape;
  data.stack[0].corner_ratio = 0.25;
  return Loose<Pad>(data);
}

TEST(Outline, AreasAreThoseOfTheFormulas) {
  const auto arc = [](double from, double to, TCoord width) {
    return Loose<Arc>(ArcData{{0, 0}, 60000, from, to, width});
  };
  const auto chamfered = PadOf(eRectangular, 60000, 40000);
  As<Pad>(chamfered.Get())->data.stack[0].chamfer_ratio = 0.1;
  As<Pad>(chamfered.Get())->data.stack[0].chamfer_corners = 5;
  ViaData via;
  via.size = 40000;
  const struct {
    const char* name;
    Ref<Primitive> object;
    double growth, area;
  } rows[] = {
      {"track", Loose<Track>(TrackData{{0, 0}, {30000, 40000}, 20000}), 0, 50000 * 2e4 + kPi * 1e8},
      {"track grown", Loose<Track>(TrackData{{0, 0}, {30000, 40000}, 20000}), 5000,
       50000 * 3e4 + kPi * 2.25e8},
      {"track of no length", Loose<Track>(TrackData{{5, 5}, {5, 5}, 20000}), 0, kPi * 1e8},
      {"track shrunk to nothing", Loose<Track>(TrackData{{0, 0}, {30000, 0}, 20000}), -10000, 0},
      {"via shrunk", Loose<Via>(via), -5000, kPi * 2.25e8},
      {"quarter through 0", arc(315, 45, 20000), 0, kPi / 2 * 6e4 * 2e4 + kPi * 1e8},
      {"three quarters", arc(45, 315, 20000), 0, kPi * 1.5 * 6e4 * 2e4 + kPi * 1e8},
      {"ring", arc(0, 360, 20000), 0, kPi * 2 * 6e4 * 2e4},
      {"ring grown over its middle", arc(0, 360, 20000), 50000, kPi * 1.44e10},
      {"half over the centre", arc(0, 180, 120000), 0, kPi / 2 * 1.44e10 + kPi * 3.6e9},
      {"sweep of nothing", arc(20, 20, 20000), 0, kPi * 1e8},
      {"rectangle shrunk", PadOf(eRectangular, 60000, 40000), -5000, 5e4 * 3e4},
      {"rectangle grown", PadOf(eRectangular, 60000, 40000), 5000, 24e8 + 2 * 1e5 * 5e3 + kPi * 25e6},
      {"oval", PadOf(eRounded, 60000, 40000), 0, 2e4 * 4e4 + kPi * 4e8},
      {"rounded rectangle", PadOf(eRoundedRectangular, 60000, 40000), 0, 24e8 - (4 - kPi) * 1e8},
      {"rounded rectangle shrunk past its corners", PadOf(eRoundedRectangular, 60000, 40000), -15000, 3e8},
      {"rectangle shrunk past its middle", PadOf(eRectangular, 60000, 40000), -20000, 0},
      {"octagon", PadOf(eOctagonal, 40000, 40000), 0, 2 * (std::sqrt(2.0) - 1) * 16e8},
      {"two corners cut", chamfered, 0, 24e8 - 16e6},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    // Chords and whole coordinates take off a few units along the border.
    EXPECT_NEAR(AreaOf(OutlineOf(row.object, row.growth, 2)), row.area, 4 * 8e5);
  }
}

TEST(Outline, ShrunkSquareCornersAreExact) {
  const Ref<Primitive> pad = PadOf(eRectangular, 300000, 150000, 90);
  Points ring = OutlineOf(pad, -1200, 2000).at(0).points;
  std::ranges::sort(ring, {}, [](TCoordPoint p) { return std::pair(p.x, p.y); });
  EXPECT_EQ(ring, (Points{{-73800, -148800}, {-73800, 148800}, {73800, -148800}, {73800, 148800}}));
}

TEST(Outline, FinerResolutionGivesMoreChordsThatStayWithinIt) {
  const Ref<Primitive> via = Loose<Via>(ViaData{});
  const double radius = 250000;
  std::size_t before = 0;
  for (const double error : {1e9, 2000.0, 100.0, 10.0}) {
    const Points ring = OutlineOf(via, 0, error).at(0).points;
    EXPECT_GT(ring.size(), before);
    before = ring.size();
    const double middle = std::hypot((ring[0].x + ring[1].x) / 2.0, (ring[0].y + ring[1].y) / 2.0);
    EXPECT_LE(radius - middle, error + 1);
  }
}

TEST(Outline, OfTheToolsMakerIsByLayer) {
  const Ref<PcbServer> server = MakeHost<PcbServer>();
  Ref<IPCB_ContourMaker> maker;
  ASSERT_EQ(server->CreateContourMaker(maker), Status::Ok);
  EXPECT_EQ(maker->SetState_ArcResolution(2000), Status::Ok);
  PadData data;
  data.mode = ePadMode_ExternalStack;
  data.stack = {{}, {}};
  data.stack[1].layer = eV6_BottomLayer;
  data.stack[1].shape = eRectangular;
  data.stack[1].x_size = data.stack[1].y_size = 8000;
  const Ref<Primitive> pad = Loose<Pad>(data);
  pad->state.layer = eV6_MultiLayer;
  const auto count = [&](TV7_Layer layer) {
    Ref<IPCB_GeometricPolygon> outline;
    std::int32_t rings = -1, vertices = -1;
    EXPECT_EQ(maker->MakeContour(pad->AsInterface(), 0, layer, outline), Status::Ok);
    outline->GetState_Count(rings);
    if (rings == 0) return 0;
    Ref<IPCB_Contour> contour;
    outline->GetState_Contour(0, contour);
    contour->GetState_Count(vertices);
    return vertices;
  };
  EXPECT_GT(count(eV6_TopLayer), 8);
  EXPECT_EQ(count(eV6_BottomLayer), 4);
  EXPECT_EQ(count(eV6_TopOverlay), 0);
  Ref<IPCB_GeometricPolygon> outline;
  EXPECT_EQ(maker->MakeContour(nullptr, 0, eV6_TopLayer, outline), Status::InvalidArgument);
}

}  // namespace
}  // namespace Ketril::Editor
