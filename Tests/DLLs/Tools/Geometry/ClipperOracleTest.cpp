// The clipper against Clipper 6.4 and against what can be told without clipping.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <clipper.hpp>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "Tests/DLLs/Tools/Geometry/ClipperShapes.h"

namespace Ketril::Tools::Tests {
namespace {

// The peer works on whole numbers, so it gets the coordinates in these parts.
constexpr double kParts = 0x1p14;

ClipperLib::Paths ToPeer(const TShape& shape) {
  ClipperLib::Paths paths;
  for (const TRing& ring : shape.rings) {
    ClipperLib::Path& path = paths.emplace_back();
    for (const Tgpc_vertex& vertex : ring) {
      path.push_back({static_cast<ClipperLib::cInt>(vertex.x * kParts),
                      static_cast<ClipperLib::cInt>(vertex.y * kParts)});
    }
  }
  return paths;
}

double PeerArea(std::uint8_t operation, const TShape& subject, const TShape& clip) {
  constexpr ClipperLib::ClipType kTypes[] = {ClipperLib::ctDifference, ClipperLib::ctIntersection,
                                             ClipperLib::ctXor, ClipperLib::ctUnion};
  ClipperLib::Clipper peer;
  peer.AddPaths(ToPeer(subject), ClipperLib::ptSubject, true);
  peer.AddPaths(ToPeer(clip), ClipperLib::ptClip, true);
  ClipperLib::Paths result;
  peer.Execute(kTypes[operation], result, ClipperLib::pftEvenOdd, ClipperLib::pftEvenOdd);
  double area = 0;
  for (const ClipperLib::Path& path : result) area += ClipperLib::Area(path);
  return area / (kParts * kParts);
}

// Points all over, and close to vertices of the inputs and of the results.
std::vector<Tgpc_vertex> SamplePoints(std::mt19937& random, const std::vector<const TShape*>& shapes,
                                      int count) {
  std::vector<Tgpc_vertex> vertices;
  for (const TShape* shape : shapes) {
    for (const TRing& ring : shape->rings) vertices.insert(vertices.end(), ring.begin(), ring.end());
  }
  const auto real = [&](double low, double high) {
    return std::uniform_real_distribution(low, high)(random);
  };
  const auto pick = [&] {
    return vertices[std::uniform_int_distribution<std::size_t>(0, vertices.size() - 1)(random)];
  };
  std::vector<Tgpc_vertex> points;
  for (int i = 0; i < count; ++i) {
    const Tgpc_vertex a = pick(), b = pick();
    const double t = i % 2 ? real(0, 1) : 0, spread = std::exp2(real(-5, 10));
    points.push_back(
        {a.x + t * (b.x - a.x) + spread * real(-1, 1), a.y + t * (b.y - a.y) + spread * real(-1, 1)});
  }
  return points;
}

// The results of all four operations on a pair, checked by sampled points, by the hole flags and by the sums
// of areas. `unit` is how far rounding may have moved a vertex.
void CheckPair(const TPair& pair, std::mt19937& random, double unit, std::array<TShape, 4>& results) {
  std::vector<const TShape*> shapes{&pair.subject, &pair.clip};
  for (std::uint8_t operation = 0; operation < 4; ++operation) {
    results[operation] = Clip(operation, pair.subject, pair.clip);
    shapes.push_back(&results[operation]);
    for (std::size_t i = 0; i < results[operation].rings.size(); ++i) {
      EXPECT_EQ(SignedArea(results[operation].rings[i]) < 0, results[operation].holes[i])
          << "hole flag, contour " << i;
    }
  }
  for (const Tgpc_vertex& point : SamplePoints(random, shapes, 12)) {
    if (IsNearOutline(pair.subject, point, 16 * unit) || IsNearOutline(pair.clip, point, 16 * unit)) continue;
    for (std::uint8_t operation = 0; operation < 4; ++operation) {
      EXPECT_EQ(IsIn(results[operation], point),
                Combine(operation, IsIn(pair.subject, point), IsIn(pair.clip, point)))
          << "operation " << int(operation) << " at " << point.x << ',' << point.y;
    }
  }
  const TShape none;
  const long double subject = SignedArea(Clip(eClipUnion, pair.subject, none));
  const long double clip = SignedArea(Clip(eClipUnion, pair.clip, none));
  const auto area = [&](TClipOperation operation) { return SignedArea(results[operation]); };
  const double tolerance = unit * (Perimeter(pair.subject) + Perimeter(pair.clip) + 1);
  EXPECT_NEAR(double(subject + clip - area(eClipUnion) - area(eClipIntersection)), 0, 4 * tolerance);
  EXPECT_NEAR(double(area(eClipUnion) - area(eClipIntersection) - area(eClipExclusiveOr)), 0, 4 * tolerance);
  EXPECT_NEAR(double(subject - area(eClipIntersection) - area(eClipDifference)), 0, 4 * tolerance);
}

// Of every crossing both clippers round the place, to 2^-16 and to a part, and so move the edges by as much.
// The peer is known to lose pieces of some near-degenerate polygons; where it differs the slabs decide, and
// `peer_faults` counts.
void CheckAgainstPeer(unsigned seed, int most_vertices, int& peer_faults) {
  const TPair pair = RandomPair(seed, most_vertices);
  SCOPED_TRACE(std::string(pair.kind) + ", seed " + std::to_string(seed) + "\nsubject " +
               ToText(pair.subject) + "\nclip " + ToText(pair.clip));
  std::mt19937 random(seed);
  std::array<TShape, 4> results;
  CheckPair(pair, random, 0x1p-16, results);
  for (std::uint8_t operation = 0; operation < 4; ++operation) {
    const double moved = (Perimeter(pair.subject) + Perimeter(pair.clip)) * (0x1p-16 + 1 / kParts);
    const long double area = SignedArea(results[operation]);
    if (std::fabs(area - PeerArea(operation, pair.subject, pair.clip)) <= moved) continue;
    ++peer_faults;
    EXPECT_NEAR(double(area), double(AreaBySlabs(operation, pair.subject, pair.clip)), moved)
        << "operation " << int(operation) << "\nresult " << ToText(results[operation]);
  }
}

void CheckSeeds(unsigned count, int most_vertices) {
  const char* const from = std::getenv("KETRIL_SEED");
  const unsigned first = from ? static_cast<unsigned>(std::atoi(from)) : 1;
  int peer_faults = 0;
  for (unsigned seed = first; seed < first + count && !testing::Test::HasFailure(); ++seed) {
    CheckAgainstPeer(seed, most_vertices, peer_faults);
  }
  std::printf("seeds %u to %u; the peer was wrong in %d of %u operations\n", first, first + count - 1,
              peer_faults, 4 * count);
}

TEST(ClipperOracle, SmallPolygonsAgreeWithClipper) {
  CheckSeeds(20000, 16);
}

TEST(ClipperOracle, LargerPolygonsAgreeWithClipper) {
  CheckSeeds(300, 100);
}

// Over the full range, whole and fractional: turned and sheared at random, or as slivers that lie nearly
// level from end to end of the range with crossings close to their ends. The slabs measure.
TEST(ClipperOracle, FullRange) {
  for (unsigned seed = 1; seed <= 600 && !HasFailure(); ++seed) {
    TPair pair = RandomPair(seed, 16);
    std::mt19937 random(seed);
    const auto real = [&](double most) { return std::uniform_real_distribution(-most, most)(random); };
    const double a = real(1), b = real(1), c = real(1), d = real(1), spread = 2147483647.0 / 16384;
    pair.ForEachVertex([&](Tgpc_vertex& vertex) {
      if (seed % 3 == 0) {
        const double x[] = {-2147483000, 0, 2147483000, real(2147483000)};
        vertex = {x[random() % 4] + real(300), random() % 4 ? real(1.4) : real(300)};
      } else {
        vertex = {spread * (a * vertex.x + b * vertex.y), spread * (c * vertex.x + d * vertex.y)};
      }
      if (seed % 4 != 0) vertex = {std::round(vertex.x), std::round(vertex.y)};
    });
    SCOPED_TRACE(std::string(pair.kind) + ", seed " + std::to_string(seed));
    std::array<TShape, 4> results;
    CheckPair(pair, random, 0x1p-16, results);
    for (std::uint8_t operation = 0; operation < 4; ++operation) {
      const long double area = AreaBySlabs(operation, pair.subject, pair.clip);
      EXPECT_NEAR(double(SignedArea(results[operation]) - area), 0,
                  0x1p-16 * (Perimeter(pair.subject) + Perimeter(pair.clip)) + 1e-15 * double(area));
    }
  }
}

// On whole numbers what touches is met exactly, so that neither the rings nor their vertices depend on the
// direction of the sweep.
TEST(ClipperOracle, QuarterTurnsChangeNothing) {
  for (unsigned seed = 1; seed <= 1000 && !HasFailure(); ++seed) {
    const TPair pair = RandomPair(seed, 24);
    TPair turned = pair;
    turned.ForEachVertex([](Tgpc_vertex& vertex) { vertex = {-vertex.y, vertex.x}; });
    for (std::uint8_t operation = 0; operation < 4; ++operation) {
      const TShape upright = Clip(operation, pair.subject, pair.clip);
      const TShape result = Clip(operation, turned.subject, turned.clip);
      EXPECT_EQ(VertexCount(result), VertexCount(upright)) << pair.kind << ", seed " << seed;
      EXPECT_EQ(result.rings.size(), upright.rings.size()) << pair.kind << ", seed " << seed;
      EXPECT_EQ(std::count(result.holes.begin(), result.holes.end(), true),
                std::count(upright.holes.begin(), upright.holes.end(), true));
    }
  }
}

}  // namespace
}  // namespace Ketril::Tools::Tests
