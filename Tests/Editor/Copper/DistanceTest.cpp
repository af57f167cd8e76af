#include "Editor/Copper/Distance.h"

#include <gtest/gtest.h>

#include <array>

#include "Editor/Copper/Outline.h"
#include "Tests/Editor/Copper/SomeCopper.h"

namespace Ketril::Editor {
namespace {

// The slow way: outlines with many vertices, each side of one against each side of the other.
struct DensePolygons {
  explicit DensePolygons(const Primitive& object, double error)
      : rings(Outline(FormsOf(object, eV6_TopLayer), 0, error)) {}

  template <class Visit>
  void ForEachSide(Visit&& visit) const {
    for (const Ring& ring : rings) {
      for (std::size_t i = 0, last = ring.points.size() - 1; i < ring.points.size(); last = i++) {
        visit(ring.points[last], ring.points[i]);
      }
    }
  }
  bool Holds(TCoordPoint p) const {  // even-odd
    bool inside = false;
    ForEachSide([&](TCoordPoint a, TCoordPoint b) {
      if ((a.y > p.y) == (b.y > p.y)) return;
      if (p.x < a.x + (double(p.y) - a.y) * (double(b.x) - a.x) / (double(b.y) - a.y)) inside = !inside;
    });
    return inside;
  }
  std::vector<Ring> rings;
};

double PointToSide(TCoordPoint p, TCoordPoint a, TCoordPoint b) {
  const double dx = double(b.x) - a.x, dy = double(b.y) - a.y, px = double(p.x) - a.x, py = double(p.y) - a.y;
  const double share = std::clamp((px * dx + py * dy) / (dx * dx + dy * dy), 0.0, 1.0);
  return std::hypot(px - share * dx, py - share * dy);
}

double SlowGap(const DensePolygons& a, const DensePolygons& b) {
  double gap = 1e300;
  const auto turn = [](TCoordPoint o, TCoordPoint p, TCoordPoint q) {
    const std::int64_t cross = (std::int64_t{p.x} - o.x) * (std::int64_t{q.y} - o.y) -
                               (std::int64_t{p.y} - o.y) * (std::int64_t{q.x} - o.x);
    return cross > 0 ? 1 : cross < 0 ? -1 : 0;
  };
  a.ForEachSide([&](TCoordPoint a1, TCoordPoint a2) {
    if (b.Holds(a1)) gap = 0;
    b.ForEachSide([&](TCoordPoint b1, TCoordPoint b2) {
      gap = std::min({gap, PointToSide(a1, b1, b2), PointToSide(b1, a1, a2)});
      if (turn(a1, a2, b1) * turn(a1, a2, b2) < 0 && turn(b1, b2, a1) * turn(b1, b2, a2) < 0) gap = 0;
    });
  });
  b.ForEachSide([&](TCoordPoint b1, TCoordPoint) {
    if (a.Holds(b1)) gap = 0;
  });
  return gap;
}

TEST(Distance, AgreesWithDensePolygonsForEveryTwoKinds) {
  constexpr double kError = 3;                   // of chords
  constexpr double kTolerance = 2 * kError + 2;  // and whole coordinates on both sides
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  Random random(seed);
  const std::vector<CopperKind> kinds = CopperKinds();
  int apart = 0, overlapping = 0;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    for (std::size_t j = i; j < kinds.size(); ++j) {
      for (int n = 0; n < 20; ++n) {
        SCOPED_TRACE(kinds[i].name + " and " + kinds[j].name + " " + std::to_string(n));
        const Ref<Primitive> a = kinds[i].make(random), b = kinds[j].make(random);
        const double slow = SlowGap(DensePolygons(*a, kError), DensePolygons(*b, kError)), gap = Gap(*a, *b);
        ASSERT_NEAR(gap, slow, kTolerance);
        ASSERT_NEAR(Gap(*b, *a), gap, 1e-6);
        ASSERT_EQ(Gap(*a, *b, 500), std::min(gap, 500.0));
        ASSERT_EQ(Touch(*a, *b), gap < 1);
        ++(gap > 0 ? apart : overlapping);
      }
    }
  }
  EXPECT_GT(apart, 200);
  EXPECT_GT(overlapping, 200);
}

Ref<Primitive> TrackOf(TCoordPoint a, TCoordPoint b, TCoord width) {
  return Loose<Track>(TrackData{a, b, width});
}
Ref<Primitive> ArcOf(TCoord radius, double from, double to, TCoord width) {
  return Loose<Arc>(ArcData{{0, 0}, radius, from, to, width});
}
Ref<Primitive> On(TV7_Layer layer, const Ref<Primitive>& object) {
  object->state.layer = layer;
  return object;
}
Ref<Primitive> ViaOf(TCoord size, TCoord hole, const std::function<void(ViaData&)>& change = {}) {
  ViaData data;
  data.size = size;
  data.hole = hole;
  if (change) change(data);
  return On(eV6_MultiLayer, Loose<Via>(data));
}

TEST(Distance, OfNamedPairs) {
  RegionData frame;
  frame.rings = {{{{-9000, -9000}, {9000, -9000}, {9000, 9000}, {-9000, 9000}}, false},
                 {{{-5000, -5000}, {-5000, 5000}, {5000, 5000}, {5000, -5000}}, true}};
  RegionData cutout = frame;
  cutout.kind = eRegionKind_Cutout;
  const auto small = [] { return TrackOf({0, 0}, {100, 0}, 200); };
  const auto hidden = small();
  hidden->Set(kFlag_Hidden, true);
  const auto gone = [](ViaData& via) { via.removed = {eV6_TopLayer}; };
  const auto blind = [](ViaData& via) { via.low = eV6_BottomLayer; };
  const struct {
    const char* name;
    Ref<Primitive> a, b;
    double gap;  // infinite: they share no layer or one has no copper
  } rows[] = {
      {"side by side, just touching", TrackOf({0, 0}, {9000, 0}, 500), TrackOf({0, 500}, {9000, 500}, 500),
       0},
      {"side by side, 3 apart", TrackOf({0, 0}, {9000, 0}, 500), TrackOf({0, 503}, {9000, 503}, 500), 3},
      {"crossing hairlines", TrackOf({0, 0}, {10, 10}, 0), TrackOf({0, 10}, {10, 0}, 0), 0},
      {"a track of no length", TrackOf({0, 0}, {0, 0}, 20), TrackOf({30, 40}, {30, 40}, 20), 30},
      {"in the middle of a circle", ArcOf(5000, 0, 360, 1000), small(), 4300},
      {"an arc through 0", ArcOf(5000, 350, 10, 1000), small(), 4300},
      {"an arc that leaves 0 out", ArcOf(5000, 90, 270, 0), TrackOf({5000, 0}, {5000, 0}, 0),
       std::hypot(5000, 5000)},
      {"arcs about one centre", ArcOf(5000, 0, 90, 200), ArcOf(3000, 45, 300, 200), 1800},
      {"an arc of no radius", ArcOf(0, 0, 90, 200), TrackOf({0, 500}, {0, 500}, 200), 300},
      {"in the hole of a region", Loose<Region>(frame), small(), 4800},
      {"within a region", Loose<Region>(frame), TrackOf({7000, 0}, {7100, 0}, 2), 0},
      {"a region within a pad's copper", Loose<Region>(frame), ViaOf(90000, 10), 0},
      {"a region without rings", Loose<Region>(RegionData{}), small(), kNoLimit},
      {"a cut-out", Loose<Region>(cutout), TrackOf({7000, 0}, {7100, 0}, 2), kNoLimit},
      {"hidden", hidden, small(), kNoLimit},
      {"two sides", small(), On(eV6_BottomLayer, small()), kNoLimit},
      {"one drawing layer", On(eV6_TopOverlay, small()), On(eV6_TopOverlay, small()), 0},
      {"a via reaches the bottom", ViaOf(1000, 500), On(eV6_BottomLayer, TrackOf({900, 0}, {900, 0}, 200)),
       300},
      {"a via that ends below", ViaOf(1000, 500, blind), small(), kNoLimit},
      {"a via's hole where its ring is gone", ViaOf(1000, 500, gone), TrackOf({900, 0}, {900, 0}, 200), 550},
      {"two vias", ViaOf(1000, 500),
       ViaOf(400, 100,
             [](ViaData& via) {
               via.center = {0, 1000};
             }),
       300},
      {"vias whose rings are gone on other layers", ViaOf(1000, 500, gone),
       ViaOf(1000, 500,
             [](ViaData& via) {
               via.center = {2000, 0};
               via.removed = {eV6_BottomLayer};
             }),
       1000},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const double gap = Gap(*row.a, *row.b);
    if (row.gap == kNoLimit) {
      EXPECT_EQ(gap, kNoLimit);
    } else {
      EXPECT_NEAR(gap, row.gap, 1e-6);
    }
    EXPECT_EQ(Touch(*row.a, *row.b), row.gap < 1);
  }
}

TEST(Distance, IsToldByTheObjects) {
  const Ref<Board> board = MakeHost<Board>();
  const Ref<Primitive> loose = TrackOf({0, 1000}, {9000, 1000}, 501), other = TrackOf({0, 0}, {9000, 0}, 500);
  const auto gap = [](const Ref<Primitive>& a, const Ref<Primitive>& b) {
    TCoord told = -1;
    EXPECT_EQ(static_cast<IPCB_Primitive3*>(a->AsInterface())->GetState_GapTo(b->AsInterface(), told),
              Status::Ok);
    return told;
  };
  EXPECT_EQ(gap(loose, other), kNoGap) << "neither has a board";
  board->Load(other.Get());
  EXPECT_EQ(gap(loose, other), 499) << "499.5, cut";
  EXPECT_EQ(gap(On(eV6_BottomLayer, loose), other), kNoGap);
  bool touches = true;
  const auto told = static_cast<IPCB_Primitive3*>(other->AsInterface());
  EXPECT_EQ(told->GetState_Touches(loose->AsInterface(), touches), Status::Ok);
  EXPECT_FALSE(touches);
  EXPECT_EQ(told->GetState_Touches(nullptr, touches), Status::InvalidArgument);
}

// Objects at the ends of the range, of no size or of the largest.
TEST(Distance, IsANumberForAnything) {
  constexpr TCoord kLow = std::numeric_limits<TCoord>::min(), kHigh = std::numeric_limits<TCoord>::max();
  constexpr std::array kValues{kLow, -1, 0, 1, kHigh};
  constexpr std::array kAngles{0.0,
                               360.0,
                               -1e300,
                               720.5,
                               std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity()};
  Random random(1);
  std::vector<Ref<Primitive>> objects;
  const auto value = [&] { return random.Of(kValues); };
  const auto point = [&] { return TCoordPoint{value(), value()}; };
  for (int i = 0; i < 12; ++i) {
    const double turn = random.Of(kAngles);
    objects.push_back(TrackOf(point(), point(), value()));
    objects.push_back(Loose<Arc>(ArcData{point(), value(), turn, random.Of(kAngles), value()}));
    objects.push_back(Loose<Fill>(FillData{{value(), value(), value(), value()}, turn}));
    objects.push_back(ViaOf(value(), value(), [&](ViaData& via) { via.center = point(); }));
    PadData pad;
    pad.center = point();
    pad.rotation = turn;
    for (const TShape shape : {eRounded, eRectangular, eOctagonal, eRoundedRectangular, eNoShape}) {
      PadLayer& layer = pad.stack[0];
      layer.x_size = value();
      layer.y_size = value();
      layer.shape = shape;
      layer.offset = point();
      layer.corner_ratio = layer.chamfer_ratio = 0.5;
      layer.chamfer_corners = static_cast<std::uint8_t>(random.Below(16));
      layer.custom = {{point(), point(), point()}, {}};
      if (random.Below(4) == 0) layer.trapezoid = point();
      objects.push_back(Loose<Pad>(pad));
    }
    RegionData region;
    region.rings = {Ring{{point(), point(), point(), point()}}, Ring{{point()}, true}, Ring{}};
    region.line_width = value();
    region.filled = random.Below(2) == 0;
    objects.push_back(Loose<Region>(region));
    TextData text;
    text.anchor = point();
    text.string = u"x";
    text.size = text.letter_width = text.width = value();
    text.rotation = turn;
    objects.push_back(Loose<Text>(text));
  }
  for (const Ref<Primitive>& a : objects) {
    for (const TCoord growth : kValues) {
      for (const Ring& ring : Outline(FormsOf(*a, eV6_TopLayer), growth, 1e6))
        EXPECT_GT(ring.points.size(), 2u);
    }
    for (const Ref<Primitive>& b : objects) EXPECT_GE(Gap(*a, *b), 0);
  }
}

}  // namespace
}  // namespace Ketril::Editor
