#include "Editor/Files/ZoneFill.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Editor/Files/BoardFile.h"
#include "Editor/Model/Board.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Editor {
namespace {

using Tests::BoardFromText;
using Tests::Mil;

double Area(const std::vector<Ring>& rings) {
  double area = 0;
  for (const Ring& ring : rings) area += AreaOf(ring);
  return area / (double{Mil(1)} * Mil(1));
}

TEST(ZoneFill, OfACrossingOutlineCoversBothLoops) {
  const std::vector<Ring> bow = {{{{0, 0}, {Mil(100), Mil(100)}, {Mil(100), 0}, {0, Mil(100)}}, false}};
  EXPECT_NEAR(Area(Covered(bow)), 5000, 1);
  const std::vector<Ring> plain = {{{{Mil(100), 0}, {Mil(100), Mil(100)}, {0, 0}}, false}};
  EXPECT_EQ(Covered(plain), plain);
  EXPECT_TRUE(IsMadeFrom(Covered(bow), bow, false));
}

// The middle of a long track between two pads: nothing ends in the teardrop.
TEST(ZoneFill, IsTiedToTheNearestEndAndReadsBackAsTheOutline) {
  const Ref<Board> board = BoardFromText(
      "pad 0,0 60x60 top name 1 net ~RST ; track 0,0 1000,0 w10 top net ~RST\n"
      "region 30,-20 80,-5 80,5 30,20 top teardrop net ~RST");
  Region* region = Tests::Find<Region>(*board);
  const std::vector<Ring> tied = TiedFill(*region);
  // From the teardrop's middle at 55 to the end at 0, a mil wide, less what is within the teardrop.
  EXPECT_NEAR(Area(tied) - Area(region->data.rings), 30.5, 0.1);
  EXPECT_TRUE(IsMadeFrom(tied, region->data.rings, true));
  EXPECT_FALSE(IsMadeFrom(tied, region->data.rings, false));
  const std::vector<Ring> poured = {{{{Mil(35), -Mil(10)}, {Mil(75), 0}, {Mil(35), Mil(10)}}, false}};
  EXPECT_FALSE(IsMadeFrom(poured, region->data.rings, true));
  for (const int version : {20171130, 20211014}) {
    board->file.text.clear();
    board->file.version = version;
    const std::string text = WriteBoardText(*board);
    const Ref<Board> again = ReadBoardText(text, "tied");
    EXPECT_EQ(Tests::Find<Region>(*again)->data.rings, region->data.rings) << text;
    EXPECT_NE(text.find(version < 20210606 ? "(net_name \"~{RST}\")" : "(net_name \"~RST\")"),
              std::string::npos)
        << text;
  }
  // Nothing to do where the pad's middle is inside.
  region->data.rings = {{{{-Mil(5), -Mil(20)}, {Mil(80), 0}, {-Mil(5), Mil(20)}}, false}};
  EXPECT_EQ(TiedFill(*region), Covered(region->data.rings));
}

// Shielding copper around two far components: pieces of one region, and a hole in one of them.
TEST(RegionFile, ARegionOfPiecesStaysOne) {
  for (const int version : {20171130, 20211014, 20241229}) {
    for (const char* net : {"", " net A"}) {
      const Ref<Board> board = BoardFromText(std::string("region 0,0 100,0 100,100 0,100 top") + net +
                                             " ; track 500,0 600,0 w5 top net A");
      std::vector<Ring>& rings = Tests::Find<Region>(*board)->data.rings;
      const auto triangle = [](int x, int y, int side, bool hole) {
        return Ring{{{Mil(x), Mil(y)}, {Mil(x + side), Mil(y)}, {Mil(x), Mil(y + side)}}, hole};
      };
      rings = {triangle(0, 0, 100, false), triangle(300, 0, 50, false), triangle(10, 10, 20, true)};
      const double area = Area(rings);
      board->file.text.clear();
      board->file.version = version;
      const std::string text = WriteBoardText(*board);
      const Ref<Board> again = ReadBoardText(text, "pieces");
      EXPECT_EQ(again->objects.Count(eRegionObject), 1) << text;
      EXPECT_NEAR(Area(Tests::Find<Region>(*again)->data.rings), area, 1e-3 * area) << text;
      EXPECT_EQ(WriteBoardText(*again), text);
    }
  }
}

}  // namespace
}  // namespace Ketril::Editor
