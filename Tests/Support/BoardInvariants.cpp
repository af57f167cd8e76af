#include "Tests/Support/BoardInvariants.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tests {

namespace {

using namespace Editor;

using Objects = std::vector<Primitive*>;

std::string BrokenTies(const Board& board, Primitive& object) {
  if (!object.on_board || object.board != &board) return "it does not know its board";
  if (const Group* owner = object.Owner()) {
    if (!owner->on_board || owner->board != &board) return "its group is on no board";
    if (!owner->HasMember(object)) return "its group does not have it";
  }
  if (const Net* net = object.GetNet()) {
    if (!net->on_board || net->board != &board) return "its net is on no board";
    if (!net->HasMember(object)) return "its net does not have it";
  }
  if (const auto* members = object.MemberList()) {
    for (const Ref<Primitive>& member : *members) {
      if (member->Owner() != &object) return "a member does not know it:" + Describe(*member);
      if (!member->on_board) return "a member is on no board:" + Describe(*member);
    }
  }
  if (const Net* net = As<Net>(&object)) {
    for (const Primitive* member : net->ListMembers()) {
      // One that was just made may be on no board yet.
      if (member->GetNet() != net) return "an object is not in it:" + Describe(*member);
    }
  }
  return {};
}

// In the four quarters of the board and in everything, beside a search of each object.
std::string BrokenIndex(Board& board, const Objects& objects) {
  const TCoordRect all = board.Extents();
  const TCoord x = all.x1 / 2 + all.x2 / 2, y = all.y1 / 2 + all.y2 / 2;
  const TCoordRect areas[] = {{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX},
                              {all.x1, all.y1, x, y},
                              {x, all.y1, all.x2, y},
                              {all.x1, y, x, all.y2},
                              {x, y, x, y}};
  for (const TCoordRect& area : areas) {
    Objects there;
    for (Primitive* object : objects) {
      if (HasPlace(object->kind) && Meet(Ordered(object->Bounds()), Ordered(area))) there.push_back(object);
    }
    const Objects found = board.index.Find(area);
    if (found == there) continue;
    for (std::size_t i = 0; i < std::max(found.size(), there.size()); ++i) {
      const Primitive* one = i < found.size() ? found[i] : nullptr;
      const Primitive* other = i < there.size() ? there[i] : nullptr;
      if (one != other)
        return "the index finds" + (one ? Describe(*one) : " nothing") + " in place of" +
               (other ? Describe(*other) : " nothing");
    }
  }
  return {};
}

}  // namespace

std::string BrokenInvariant(Board& board, std::int64_t lost) {
  Objects objects, selected;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    objects.push_back(&object);
    if (object.Has(kFlag_Selected)) selected.push_back(&object);
  });
  std::uint64_t order = 0;
  for (Primitive* object : objects) {
    if (object->order <= order) return "objects out of order:" + Describe(*object);
    order = object->order;
    if (const std::string wrong = BrokenTies(board, *object); !wrong.empty())
      return wrong + ", of" + Describe(*object);
  }
  if (objects.size() != board.objects.Count()) return "the count of objects is not their number";
  if (board.Selected() != selected) return "the selection is not what is marked";
  if (board.LiveIterators() != lost) return "an iterator was not handed back";
  if (board.progress->IsOpen()) return "the progress is open";
  return BrokenIndex(board, objects);
}

}  // namespace Ketril::Tests
