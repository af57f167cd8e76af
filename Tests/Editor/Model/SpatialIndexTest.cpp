#include "Editor/Model/SpatialIndex.h"

#include <gtest/gtest.h>

#include <limits>

#include "Tests/Editor/Model/SmallBoard.h"

namespace Ketril::Editor {
namespace {

std::vector<Primitive*> FindOneByOne(const Board& board, const TCoordRect& area) {
  std::vector<Primitive*> found;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    if (object.kind != eNetObject && Meet(object.Bounds(), area)) found.push_back(&object);
  });
  return found;
}

// Tracks, and components that move with their pads or whose pads move alone; few changes and many between
// two searches, so that the tree is changed and built anew.
TEST(SpatialIndex, FindsWhatASearchOfAllObjectsFinds) {
  constexpr int kSize = 2000000;
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Ref<Board> board = MakeHost<Board>();
    Put<Net>(*board, NetData{});
    std::vector<Ref<Primitive>> all;
    for (int i = 0; i < 400; ++i) {
      const TCoordPoint place = random.Point(kSize);
      if (i % 8) {
        all.emplace_back(&PutTrack(*board, place, {place.x + random.Below(50000), place.y}));
        continue;
      }
      const Ref<Component> component = MakeHost<Component>();
      component->data.reference = place;
      for (int k = 0; k < 3; ++k) {
        const Ref<Pad> pad = MakeHost<Pad>();
        pad->data.center = {place.x + k * 10000, place.y};
        component->AddMember(pad.Get());
        all.emplace_back(pad.Get());
      }
      board->Load(component.Get());
      all.emplace_back(component.Get());
    }
    for (int round = 0; round < 60; ++round) {
      for (int edits = round % 3 ? random.Below(5) : random.Below(200); edits > 0; --edits) {
        Primitive* object = random.Of(all).Get();
        switch (random.Below(4)) {
          case 0:
            board->Remove(object);
            break;
          case 1:
            board->Add(object);
            break;
          default:
            object->AsInterface()->MoveByXY(random.Below(400000) - 200000, 7);
            break;
        }
      }
      const TCoordPoint a = random.Point(kSize), b = random.Point(kSize);
      const TCoordRect area{a.x, a.y, b.x, b.y};
      ASSERT_EQ(board->index.Find(area), FindOneByOne(*board, Ordered(area))) << "round " << round;
    }
  }
}

TEST(SpatialIndex, TakesTheWholeRangeOfCoordinatesAndBorders) {
  constexpr TCoord kLow = std::numeric_limits<TCoord>::min(), kHigh = std::numeric_limits<TCoord>::max();
  const Ref<Board> board = MakeHost<Board>();
  EXPECT_TRUE(board->index.Find({kLow, kLow, kHigh, kHigh}).empty());
  for (const TCoord x : {kLow, -1, kHigh}) PutTrack(*board, {x, x}, {x, x});
  for (int i = 0; i < 40; ++i) PutTrack(*board, {kLow, 1000000}, {kHigh, kHigh - i});
  EXPECT_EQ(board->index.Find({kHigh, kHigh, kLow, kLow}).size(), 43u);
  const TCoordRect dot = As<Track>(board->index.Find({-1, -1, -1, -1}).front())->Bounds();
  for (const TCoord beside : {0, 1}) {
    EXPECT_EQ(board->index.Find({dot.x2 + beside, -1, dot.x2 + beside, -1}).size(), beside ? 0u : 1u);
  }
}

}  // namespace
}  // namespace Ketril::Editor
