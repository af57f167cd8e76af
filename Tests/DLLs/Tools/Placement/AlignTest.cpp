// The arrangers on rectangles alone, before and after, worked out by hand.
#include "DLLs/Tools/Placement/Align.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <sstream>

#include "DLLs/Tools/Placement/AlignPacking.h"
#include "DLLs/Tools/Placement/AlignRooms.h"
#include "Platform/Text.h"
#include "Tests/DLLs/Tools/Frame/ScopedBoard.h"

namespace Ketril::Tools {
namespace {

using Rectangles = std::vector<TCoordRect>;

// A node without an object.
class RectangleNode : public TNode {
 public:
  RectangleNode(const TCoordRect& r, TCoord clearance = 0) : TNode(nullptr, nullptr), clearance_(clearance) {
    LowX = r.x1;
    LowY = r.y1;
    HighX = r.x2;
    HighY = r.y2;
  }
  TCoord GetNodeClearance() override { return clearance_; }
  void ApplyPosition() override { ++applied; }
  void MoveToGrid() override { ++to_grid; }

  std::size_t number = 0;
  int applied = 0, to_grid = 0;

 private:
  TCoord clearance_;
};

template <class Arranger>
void Fill(Arranger& arranger, const Rectangles& rectangles) {
  for (const TCoordRect& rectangle : rectangles) {
    auto node = std::make_unique<RectangleNode>(rectangle);
    node->number = arranger.Nodes.size();
    arranger.Adopt(std::move(node));
  }
}

// In the order in which the nodes were added.
Rectangles Result(const TNodeArranger& arranger) {
  Rectangles result(arranger.Nodes.size());
  for (const auto& node : arranger.Nodes)
    result[static_cast<const RectangleNode&>(*node).number] = {node->LowX, node->LowY, node->HighX,
                                                               node->HighY};
  return result;
}

class Align : public ScopedBoard {
 protected:
  Rectangles Run(TArrangerMethod method, const Rectangles& before, double grid = 100) {
    host->setup.grid_x = host->setup.grid_y = grid;
    TNodeArranger arranger(board, nullptr, method);
    Fill(arranger, before);
    arranger.Run();
    for (const auto& node : arranger.Nodes) {
      EXPECT_EQ(static_cast<const RectangleNode&>(*node).applied, before.size() > 1 ? 1 : 0);
    }
    return Result(arranger);
  }
};

// "0,0,10,10 20,5,30,15"
Rectangles Read(const char* text) {
  std::istringstream in(text);
  Rectangles rectangles;
  char comma = 0;
  for (TCoordRect r; in >> r.x1 >> comma >> r.y1 >> comma >> r.x2 >> comma >> r.y2;) rectangles.push_back(r);
  return rectangles;
}

TCoordRect Mirrored(const TCoordRect& r) {  // about the line x = y
  return {r.y1, r.x1, r.y2, r.x2};
}

struct Row {
  const char* name;
  TArrangerMethod along_x, along_y;  // the same on rectangles with x and y exchanged
  const char *before, *after;
};

const Row kRows[] = {
    {"to the leftmost edge, overlaps or not", eArrangeLeft, eArrangeBottom,
     "50,0,70,10 20,5,30,15 90,100,95,110", "20,0,40,10 20,5,30,15 20,100,25,110"},
    {"an edge at 0 is no value: what shares its channel stays", eArrangeLeft, eArrangeBottom,
     "0,0,10,10 20,5,30,15", "0,0,10,10 20,5,30,15"},
    {"an edge at 0 in another channel is one", eArrangeLeft, eArrangeBottom, "0,0,10,10 20,10,30,20",
     "0,0,10,10 0,10,10,20"},
    {"negative edges", eArrangeLeft, eArrangeBottom, "-30,0,-20,9 5,0,7,9", "-30,0,-20,9 -30,0,-28,9"},
    {"to the rightmost edge", eArrangeRight, eArrangeTop, "50,0,70,10 20,5,30,15 10,100,15,110",
     "50,0,70,10 60,5,70,15 65,100,70,110"},
    {"an edge at 0 on the right is no value either", eArrangeRight, eArrangeTop, "-10,0,0,10 -30,5,-20,15",
     "-10,0,0,10 -30,5,-20,15"},
    {"beside the far side of those before it, in the order given", eArrangeLeftSideBySide,
     eArrangeBottomSideBySide, "50,0,70,10 20,5,30,15 90,2,95,8", "50,0,70,10 70,5,80,15 80,2,85,8"},
    {"in line with the first that shares no channel", eArrangeLeftSideBySide, eArrangeBottomSideBySide,
     "50,0,70,10 20,20,30,30 90,40,95,50", "50,0,70,10 50,20,60,30 50,40,55,50"},
    {"only negative far edges: it stays where the walk put it", eArrangeLeftSideBySide,
     eArrangeBottomSideBySide, "-90,20,-80,30 -50,0,-40,10 -10,5,-5,15",
     "-90,20,-80,30 -90,0,-80,10 -90,5,-85,15"},
    {"to the left of those before it", eArrangeRightSideBySide, eArrangeTopSideBySide,
     "50,0,70,10 20,5,30,15 90,2,95,8", "50,0,70,10 40,5,50,15 35,2,40,8"},
    {"in line with the first on the right", eArrangeRightSideBySide, eArrangeTopSideBySide,
     "50,0,70,10 20,20,30,30", "50,0,70,10 60,20,70,30"},
    {"groups within a step of their first, borders included", eArrangeExpandX, eArrangeExpandY,
     "0,0,5,5 100,0,105,5 150,0,155,5 250,0,255,5 251,0,256,5",
     "0,0,5,5 100,0,105,5 250,0,255,5 350,0,355,5 451,0,456,5"},
    {"together again", eArrangeContractX, eArrangeContractY, "451,0,456,5 0,0,5,5 100,0,105,5 350,0,355,5",
     "251,0,256,5 0,0,5,5 100,0,105,5 250,0,255,5"},
    {"equal steps between groups, cut towards zero", eArrangeSpreadX, eArrangeSpreadY,
     "0,0,5,5 30000,9,30005,5 30100,0,30105,5 45000,0,45007,5 100001,0,100006,5",
     "0,0,5,5 33333,9,33338,5 33333,0,33338,5 66666,0,66673,5 99999,0,100004,5"},
    {"two are not spread", eArrangeSpreadX, eArrangeSpreadY, "0,0,5,5 90000,0,90005,5",
     "0,0,5,5 90000,0,90005,5"},
    {"one group is not spread", eArrangeSpreadX, eArrangeSpreadY, "0,0,5,5 9,0,14,5 99,0,100,5",
     "0,0,5,5 9,0,14,5 99,0,100,5"},
    {"a step below a mil", eArrangeSpreadX, eArrangeSpreadY, "0,0,5,5 500,0,505,5 19999,0,20004,5",
     "0,0,5,5 500,0,505,5 19999,0,20004,5"},
    {"a step of a mil", eArrangeSpreadX, eArrangeSpreadY, "0,0,5,5 500,0,505,5 20000,0,20004,5",
     "0,0,5,5 10000,0,10005,5 20000,0,20004,5"},
    {"one alone", eArrangeLeft, eArrangeBottom, "5,5,9,9", "5,5,9,9"},
};

TEST_F(Align, MovesRectangles) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    Rectangles before = Read(row.before), after = Read(row.after);
    EXPECT_EQ(Run(row.along_x, before), after);
    std::ranges::transform(before, before.begin(), Mirrored);
    std::ranges::transform(after, after.begin(), Mirrored);
    EXPECT_EQ(Run(row.along_y, before), after) << "along y";
  }
}

TEST_F(Align, ToTheGridNeedsTwo) {
  for (const std::size_t count : {1u, 2u}) {
    TNodeArranger arranger(board, nullptr, eArrangeMoveToGrid);
    Fill(arranger, Rectangles(count, {5, 5, 9, 9}));
    arranger.Run();
    for (const auto& node : arranger.Nodes) {
      const auto& rectangle = static_cast<const RectangleNode&>(*node);
      EXPECT_EQ(rectangle.to_grid, count == 2 ? 1 : 0);
      EXPECT_EQ(rectangle.applied, 0);
    }
  }
}

TEST(AlignChannels, ShareMoreThanAnEnd) {
  const struct {
    const char* name;
    TCoord low, high, other_low, other_high;
    bool shared;
  } rows[] = {
      {"overlap", 0, 10, 5, 15, true},
      {"within", 0, 10, 2, 3, true},
      {"equal", 0, 10, 0, 10, true},
      {"touch", 0, 10, 10, 20, false},
      {"apart", 0, 10, 11, 20, false},
      {"flat on the high end", 0, 10, 10, 10, true},
      {"flat on the low end", 0, 10, 0, 0, true},
      {"flat inside", 0, 10, 5, 5, true},
      {"two equal flat ones", 5, 5, 5, 5, false},
      {"flat outside", 0, 10, 11, 11, false},
  };
  for (const auto& row : rows) {
    const RectangleNode a({0, row.low, 1, row.high}), b({0, row.other_low, 1, row.other_high});
    EXPECT_EQ(a.OnSameChanelX(b), row.shared) << row.name;
    EXPECT_EQ(b.OnSameChanelX(a), row.shared) << row.name;
    const RectangleNode c({row.low, 0, row.high, 1}), d({row.other_low, 0, row.other_high, 1});
    EXPECT_EQ(c.OnSameChanelY(d), row.shared) << row.name;
  }
}

// Coordinates wrap; nothing else happens at the ends of their range.
TEST_F(Align, TakesTheLargestCoordinates) {
  constexpr TCoord kLow = std::numeric_limits<TCoord>::min(), kHigh = std::numeric_limits<TCoord>::max();
  const Rectangles before = {
      {kLow, kLow, kHigh, kHigh}, {kHigh - 9, 5, kHigh, kHigh}, {kLow, -5, kLow + 9, 0}, {0, kLow, 9, kLow}};
  EXPECT_EQ(RectangleNode(before[0]).Width(), kHigh);
  EXPECT_EQ(RectangleNode({9, 0, -9, 0}).Width(), 18);
  const auto wrapped = [](TCoord high, TCoord low) {
    return static_cast<std::uint32_t>(high) - static_cast<std::uint32_t>(low);
  };
  const auto expect_sizes = [&](const Rectangles& after) {
    for (std::size_t i = 0; i < before.size(); ++i) {
      EXPECT_EQ(wrapped(after[i].x2, after[i].x1), wrapped(before[i].x2, before[i].x1));
      EXPECT_EQ(wrapped(after[i].y2, after[i].y1), wrapped(before[i].y2, before[i].y1));
    }
  };
  for (const double grid : {0.0, 100.0, 4e9, 1e300}) {
    for (int method = eArrangeLeft; method <= eArrangeBottomSideBySide; ++method) {
      SCOPED_TRACE(method);
      expect_sizes(Run(static_cast<TArrangerMethod>(method), before, grid));
    }
  }
  for (const bool grow_up : {false, true}) {
    TRectangleArranger arranger(board, nullptr, kLow, kHigh, kHigh, kLow);
    arranger.GrowUp = grow_up;
    Fill(arranger, before);
    arranger.Run();
    expect_sizes(Result(arranger));
  }
}

TEST_F(Align, PacksIntoARectangle) {
  const struct {
    const char* name;
    bool grow_up;
    const char *before, *after;
  } rows[] = {
      {"nothing", false, "", ""},
      {"the tallest first, rows from the top", false, "0,0,40,10 0,0,50,30 0,0,20,20",
       "1000,899960,1040,899970 1000,899970,1050,900000 1050,899980,1070,900000"},
      {"rows from the bottom", true, "0,0,60,30 0,0,60,10",
       "1000,102000,1060,102030 1000,102030,1060,102040"},
      {"one that is too wide goes a row on before it is placed", true, "5,5,205,25",
       "1000,102020,1200,102040"},
      {"the height of what opens a row counts for the step only", true, "0,0,60,30 0,0,60,20 0,0,60,10",
       "1000,102000,1060,102030 1000,102030,1060,102050 1000,102040,1060,102050"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    TRectangleArranger arranger(board, nullptr, 1000, 2000, 1100, 1000000);
    arranger.GrowUp = row.grow_up;
    Fill(arranger, Read(row.before));
    arranger.Run();
    EXPECT_EQ(Result(arranger), Read(row.after));
  }
}

class RoomNode : public TRoomNode {
 public:
  RoomNode(std::u16string name, std::u16string channel, TCoord width, TCoord height, int count)
      : TRoomNode(nullptr, nullptr), name_(std::move(name)) {
    HighX = Width = width;
    HighY = Height = height;
    ChannelName = std::move(channel);
    CompCount = count;
    Area = double(width) * height;
  }
  TCoord GetNodeClearance() override { return 7; }
  void ApplyPosition() override {}
  void MoveToGrid() override {}
  std::u16string RoomName() const override { return name_; }

 private:
  std::u16string name_;
};

// "A 0,0 B 52,0", in list order.
std::string LaidOut(TMatrixArranger& arranger) {
  arranger.Adopt(std::make_unique<RoomNode>(u"A", u"Ch10", 50, 20, 3));
  arranger.Adopt(std::make_unique<RoomNode>(u"B", u"Ch2", 30, 40, 1));
  arranger.Adopt(std::make_unique<RoomNode>(u"C", u"ch2", 50, 10, 2));
  arranger.Run();
  std::string text;
  for (const auto& node : arranger.Nodes) {
    text += Platform::ToUtf8(static_cast<const TRoomNode&>(*node).RoomName()) + " " +
            std::to_string(node->LowX) + "," + std::to_string(node->LowY) + " ";
  }
  return text;
}

TEST_F(Align, LaysRoomsOut) {
  const struct {
    const char16_t* sort;
    bool ascending, grow_up, auto_spacing;
    const char* laid_out;
  } rows[] = {
      // The room that opens a row counts for the step before it too.
      {u"Channel Name", true, true, false, "B 0,0 C 32,0 A 0,43 "},
      {u"Channel Name", false, true, false, "A 0,0 C 52,0 B 0,43 "},
      {u"Room Width", true, true, true, "B 0,0 C 37,0 A 0,47 "},
      {u"Room Height", true, false, false, "C 0,-10 A 52,-20 B 0,-83 "},
      {u"Room Component Count", true, true, false, "B 0,0 C 32,0 A 0,43 "},
      {u"Room Area", true, true, false, "C 0,0 A 52,0 B 0,43 "},
      {u"room area", false, true, false, "A 0,0 B 52,0 C 0,43 "},
  };
  for (const auto& row : rows) {
    TMatrixArranger arranger(board, nullptr, 1, 2, 0, 0, row.sort, row.ascending);
    arranger.GrowUp = row.grow_up;
    arranger.AutoSpacing = row.auto_spacing;
    arranger.SpacingX = 2;
    arranger.SpacingY = 3;
    EXPECT_EQ(LaidOut(arranger), row.laid_out) << Platform::ToUtf8(row.sort);
  }
}

TEST(TruncateToGrid, CutsTowardsZero) {
  EXPECT_EQ(TruncateToGrid(250, 100), 200);
  EXPECT_EQ(TruncateToGrid(-250, 100), -200);
  EXPECT_EQ(TruncateToGrid(100, 100), 100);
  EXPECT_EQ(TruncateToGrid(1000, 33.3), 999);
  EXPECT_EQ(TruncateToGrid(250, 0), 0);
}

}  // namespace
}  // namespace Ketril::Tools
