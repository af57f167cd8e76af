// Which pieces of touching tracks are filed where.
#include "DLLs/Tools/Teardrops/TeardropTJunctionNodeList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Teardrops/PCBTeardropOptionsModel.h"
#include "DLLs/Tools/Teardrops/TeardropContourMaker.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Tools {
namespace {

// The tracks and arcs of a board, every pair of them offered from both sides.
struct Filed {
  explicit Filed(const char* text) : host(Tests::BoardFromText(text)) {
    TBoardIterator iterator(board);
    iterator.SetState_FilterObject({eTrackObject, eArcObject});
    for (TPrimitive* found = iterator.First(); found; found = iterator.Next()) tracks.push_back(found);
    for (TPrimitive* first : tracks) {
      for (TPrimitive* second : tracks) {
        if (first != second) list.AddTouchingPair(first, second);
      }
    }
  }
  std::vector<int> Counts() const {
    std::vector<int> counts;
    for (const auto& node : list) counts.push_back(node->Count());
    std::ranges::sort(counts, std::greater());
    return counts;
  }

  const Ref<Editor::Board> host;
  const TObjectScope scope;
  TBoard* const board = TBoard::Create(host);
  std::vector<TPrimitive*> tracks;
  TTeardropTJunctionNodeList list;
};

TEST(TJunctionNodes, PiecesOfPairs) {
  using Counts = std::vector<int>;
  const struct {
    const char* name;
    const char* board;
    Counts counts;
    int junctions;  // that are left
  } rows[] = {
      {"cross", "track -50,0 50,0 w10 top ; track 0,-50 0,50 w10 top", Counts{4, 1, 1, 1, 1}, 1},
      {"T", "track -50,0 50,0 w10 top ; track 0,0 0,50 w10 top", Counts{3, 1, 1, 1}, 1},
      {"corner", "track -50,0 0,0 w10 top ; track 0,0 0,50 w10 top", Counts{2, 1, 1}, 0},
      {"two widths", "track -50,0 50,0 w10 top ; track 0,0 0,50 w12 top", Counts{}, 0},
      {"an arc", "track -50,0 50,0 w10 top ; arc 0,50 r50 0..270 w10 top", Counts{}, 0},
      {"apart", "track -50,0 50,0 w10 top ; track 0,6 0,50 w10 top", Counts{}, 0},
      {"oblique cross", "track 0,0 100.0003,70.0001 w10 top ; track 10.0001,90.0017 90.0001,-10.0003 w10 top",
       Counts{4, 1, 1, 1, 1}, 1},
      {"oblique T, its stem a little short",
       "track 0,0 100.0003,70.0001 w10 top ; track 50.0001,35.0051 10.0001,90.0017 w10 top",
       Counts{3, 1, 1, 1}, 1},
      {"three tracks in one point, obliquely",
       "track 0,0 100.0003,70.0001 w10 top ; track 0,0 -30.0007,91.0003 w10 top ; track 0,0 -77,-55.0001 w10 "
       "top",
       Counts{3, 1, 1, 1}, 1},
      {"a stub, shorter than its width, comes later", "track -50,0 50,0 w10 top ; track 0,0 0,9 w10 top",
       Counts{2, 1, 1, 1}, 0},
      {"a stub comes first", "track 0,0 0,9 w10 top ; track -50,0 50,0 w10 top", Counts{3, 1, 1, 1}, 1},
      {"a stub as long as its width", "track -50,0 50,0 w10 top ; track 0,0 0,10 w10 top", Counts{3, 1, 1, 1},
       1},
      {"on a via", "track -50,0 50,0 w10 top ; track 0,0 0,50 w10 top ; via 0,0 30/15", Counts{3, 1, 1, 1},
       0},
      {"in the corner of a round pad's box",
       "track -50,0 50,0 w10 top ; track 0,0 0,50 w10 top ; pad 14,14 30x30 round top", Counts{3, 1, 1, 1},
       0},
      {"beside a pad's box", "track -50,0 50,0 w10 top ; track 0,0 0,50 w10 top ; pad 15.02,0 30x30 rect top",
       Counts{3, 1, 1, 1}, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Filed filed(row.board);
    EXPECT_EQ(filed.Counts(), row.counts);
    filed.list.ProcessList(filed.board);
    EXPECT_EQ(std::ranges::distance(filed.list), row.junctions);
  }
}

// The stem passes the run by 0.05 mil, so that they cross between whole places: the flat side is still flat.
TEST(TJunctionNodes, AnObliqueCrossingHasATsOutline) {
  Filed filed("track 0,0 100.0003,70.0001 w10 top ; track 50.0291,34.9591 10.0001,90.0017 w10 top");
  filed.list.ProcessList(filed.board);
  ASSERT_EQ(std::ranges::distance(filed.list), 1);
  const TTeardropTJunctionNode& node = **filed.list.begin();
  EXPECT_EQ(node.Count(), 3);
  const Ref<IPCB_Contour> outline =
      TTeardropContourMaker::TrackJunctionContour(node, DefaultTeardropOptions());
  ASSERT_TRUE(outline);
  const std::int32_t count = On(outline).Read(&IPCB_Contour::GetState_Count);
  int at_node = 0;
  for (std::int32_t i = 0; i < count; ++i) {
    if (On(outline).Read(&IPCB_Contour::GetState_PointX, i) == node.NodePoint().X &&
        On(outline).Read(&IPCB_Contour::GetState_PointY, i) == node.NodePoint().Y)
      ++at_node;
  }
  EXPECT_EQ(at_node, 1);
}

TEST(TJunctionNodes, WholePrimitivesAndWrongCalls) {
  Filed filed(
      "arc 0,0 r50 0..90 w10 top ; track 50,0 150,0 w10 top ; track 50,0 50,-90 w10 top ;"
      "track 50,0 140,-60 w10 top ; track 50,0 -90,0 w10 top teardrop");
  filed.list.Clear();
  for (TPrimitive* track : filed.tracks) filed.list.AddTrackOrArc(track);
  filed.list.AddTrackOrArc(nullptr);
  EXPECT_EQ(filed.Counts(), (std::vector<int>{3, 1, 1, 1, 0}));
  // The arc made the node, and it has no piece of it: there is nothing to take a teardrop's marks from.
  filed.list.ProcessList(filed.board);
  EXPECT_EQ(std::ranges::distance(filed.list), 0);

  const TNodePoint place;
  TPrimitive* const none = nullptr;
  EXPECT_EQ(TTeardropTJunctionNode(place, none).Count(), 0);
  EXPECT_FALSE(TTeardropTJunctionNode(place, none).CheckInPad(filed.board));
  EXPECT_THROW(TTeardropTJunctionNode(place, static_cast<TTrack*>(nullptr)), EAssertionFailed);
  EXPECT_THROW(TTeardropTJunctionNode(place, none, LineType{}), EAssertionFailed);
  EXPECT_THROW(TTeardropTJunctionNode(place, filed.board, LineType{}), EAssertionFailed);
}

}  // namespace
}  // namespace Ketril::Tools
