#include "Editor/Copper/CoveredArea.h"

#include <gtest/gtest.h>

#include <random>

#include "Editor/Copper/Clipping.h"
#include "Editor/Model/Shapes.h"

namespace Ketril::Editor {
namespace {

// Any closed line, often one that crosses itself; on a coarse grid corners and sides fall on each other.
Ring AnyRing(std::mt19937& random, TCoord reach, TCoord grid) {
  std::uniform_int_distribution<TCoord> place(-1000000, 1000000), way(-reach, reach);
  std::uniform_int_distribution<int> count(3, 12);
  const auto snap = [&](TCoord at) { return at / grid * grid; };
  Ring ring;
  const TCoordPoint middle{snap(place(random)), snap(place(random))};
  for (int i = count(random); i > 0; --i)
    ring.points.push_back({middle.x + snap(way(random)), middle.y + snap(way(random))});
  return ring;
}

TEST(CoveredArea, IsThatOfTheOutlinesThatClippingMakes) {
  constexpr unsigned kSeed = 20;
  std::mt19937 random(kSeed);
  for (const std::size_t count : {1, 2, 5, 60, 400}) {
    for (const TCoord reach : {1000, 50000, 400000}) {
      if (count * static_cast<std::size_t>(reach) > 30000000) continue;  // more crossings than copper has
      for (const TCoord grid : {1, 10000}) {
        std::vector<Ring> rings, less;
        for (std::size_t i = 0; i < count; ++i) rings.push_back(AnyRing(random, reach, grid));
        for (std::size_t i = 0; i < count / 2; ++i) less.push_back(AnyRing(random, reach, grid));
        rings.insert(rings.end(), rings.begin(), rings.begin() + static_cast<std::ptrdiff_t>(count / 2));
        const double expected = AreaOf(Difference(rings, less));
        EXPECT_NEAR(CoveredArea(rings, less), expected, 1e-5 * expected + 2.0 * reach * count)
            << "seed " << kSeed << ", " << count << " rings of " << reach << " on " << grid;
      }
    }
  }
}

// Sides that no halving parts.
TEST(CoveredArea, OfManyOnEachOtherIsThatOfOne) {
  const Ring box{{{-2000000000, -7}, {2000000000, -7}, {2000000000, 9}, {-2000000000, 9}}, false};
  const double one = CoveredArea({box}, {});
  EXPECT_EQ(one, 4e9 * 16);
  EXPECT_EQ(CoveredArea(std::vector<Ring>(20000, box), {}), one);
  EXPECT_EQ(CoveredArea({box}, std::vector<Ring>(3, box)), 0);
  EXPECT_EQ(CoveredArea({}, {box}), 0);
  EXPECT_EQ(CoveredArea({Ring{{{0, 0}, {5, 5}}, false}, Ring{}}, {}), 0);
}

}  // namespace
}  // namespace Ketril::Editor
