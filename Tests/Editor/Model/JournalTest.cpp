#include "Editor/Model/Journal.h"

#include <gtest/gtest.h>

#include <sstream>

#include "Tests/Editor/Model/SmallBoard.h"

namespace Ketril::Editor {
namespace {

void Tell(std::ostream& out, const Primitive& object) {
  // A net also lists objects that are not on the board.
  const TCoordRect box = object.kind == eNetObject ? TCoordRect{} : object.Bounds();
  out << &object << " layer " << object.state.layer.ID << " flags " << object.state.flags << " union "
      << object.state.union_index << " box " << box.x1 << ',' << box.y1 << ',' << box.x2 << ',' << box.y2
      << " net " << object.GetNet() << " owner " << object.Owner() << " changed " << object.file_changed;
  if (const auto* members = object.MemberList()) {
    for (const Ref<Primitive>& member : *members) out << " m" << member.Get();
  }
  if (const Net* net = As<Net>(&object)) {
    net->ForEach([&](const Primitive& listed) {
      if (listed.on_board) out << " n" << &listed;
    });
  }
  out << '\n';
}

// Everything that an undo has to bring back, with the identities and the order of the objects.
std::string Told(Board& board) {
  std::ostringstream out;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) { Tell(out, object); });
  for (const Primitive* found : board.index.Find({0, 0, 500000, 500000})) out << found << ' ';
  out << board.setup.origin.x << ' ' << board.setup.grid_y << ' ' << board.document_changed
      << board.file_changed;
  for (const BoardLayer& layer : board.layers) out << ' ' << layer.user_name.size();
  return out.str();
}

class RandomEdits {
 public:
  RandomEdits(Board& board, Random& random) : board_(board), random_(random) {
    for (int i = 0; i < 3; ++i) nets_.emplace_back(&Put<Net>(board, NetData{}));
    for (int i = 0; i < 3; ++i) groups_.emplace_back(&Put<Component>(board, ComponentData{}));
    for (int i = 0; i < 40; ++i) Make();
    for (const Ref<Primitive>& object : objects_) board.Load(object.Get());
    board.layers = {{.id = eV6_TopLayer, .file_name = "F.Cu", .user_name = u"", .kind = "signal"}};
  }

  void Edit() {
    Primitive& object = *random_.Of(objects_);
    Primitive& place = random_.Below(6) ? object : static_cast<Primitive&>(*random_.Of(groups_));
    Ref<IPCB_LayerStack> stack;
    Ref<IPCB_LayerObject> layer;
    switch (random_.Below(13)) {
      case 0:
        board_.RegisterWithPrimaryWarehouse(place.AsInterface());
        break;
      case 1:
        board_.CancelPrimaryWarehouseRegistration(place.AsInterface());
        break;
      case 2:
        place.AsInterface()->MoveByXY(random_.Below(400000), -5);
        break;
      case 3:
        object.AsInterface()->SetState_Net(random_.Below(4) ? random_.Of(nets_).Get() : nullptr);
        break;
      case 4:
        random_.Of(groups_)->RegisterWithGroupWarehouse(object.AsInterface());
        break;
      case 5:
        if (random_.Below(5) == 0) random_.Of(groups_)->CancelAllPrimitiveRegistrations();
        break;
      case 6:
        random_.Of(groups_)->CancelAllPrimitivePrimaryWarehouseRegistrations();
        break;
      case 7:
        object.AsInterface()->SetState_UnionIndex(random_.Below(9));
        break;
      case 8:
        object.AsInterface()->SetState_Layer(random_.Below(2) ? eV6_TopLayer : eV6_BottomLayer);
        break;
      case 9:
        Make();
        board_.RegisterWithPrimaryWarehouse(objects_.back()->AsInterface());
        break;
      case 10:
        board_.SetState_OriginX(random_.Below(99));
        board_.SetState_ComponentGridSize(3);
        break;
      case 11:
        object.AsInterface()->SetState_Component(random_.Of(groups_).Get());
        break;
      default:
        board_.GetState_LayerStack(stack);
        if (!Failed(stack->GetState_LayerAt(0, layer))) layer->SetState_Name(u"Renamed");
    }
  }

 private:
  void Make() {
    const Ref<Track> track = MakeHost<Track>();
    track->data = {random_.Point(1000000), random_.Point(1000000), 500};
    objects_.emplace_back(track.Get());
  }

  Board& board_;
  Random& random_;
  std::vector<Ref<Net>> nets_;
  std::vector<Ref<Component>> groups_;
  std::vector<Ref<Primitive>> objects_;
};

TEST(Journal, UndoBringsTheBoardBack) {
  for (unsigned seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Ref<Board> board = MakeHost<Board>();
    RandomEdits edits(*board, random);
    for (int command = 0; command < 3; ++command) {
      for (int i = random.Below(30); i > 0; --i) edits.Edit();  // under the command before, or under none
      board->journal.Begin();
      const std::string before = Told(*board);
      for (int i = random.Below(60); i > 0; --i) edits.Edit();
      board->index.Find({});  // brings the index to what the undo takes back
      board->journal.Undo();
      ASSERT_EQ(Told(*board), before);
      EXPECT_TRUE(board->journal.Changes().empty());
    }
  }
}

TEST(Journal, TellsWhatACommandDidInAll) {
  const Ref<Board> board = MakeHost<Board>();
  Track &old = PutTrack(*board, {0, 0}, {1, 1}), &moved = PutTrack(*board, {0, 0}, {2, 2});
  Net& net = Put<Net>(*board, NetData{});
  moved.SetNet(&net);
  const Ref<Track> added = MakeHost<Track>(), tried = MakeHost<Track>();
  const Ref<Primitive> removed(&old);
  moved.SetState_Width(5);  // before Begin
  board->journal.Begin();
  board->Add(tried.Get());
  board->Remove(&old);
  board->Add(added.Get());
  added->SetState_Width(7);
  moved.SetState_Net(nullptr);
  moved.SetState_Selected(true);
  board->Remove(tried.Get());
  board->journal.End();
  net.SetState_Name(u"after the end");
  const std::vector<Change> changes = board->journal.Changes();
  ASSERT_EQ(changes.size(), 3u);
  EXPECT_TRUE(changes[0].kind == ChangeKind::Removed && changes[0].object == removed);
  EXPECT_TRUE(changes[1].kind == ChangeKind::Added && changes[1].object.Get() == added.Get());
  EXPECT_TRUE(changes[2].kind == ChangeKind::Modified && changes[2].object.Get() == &moved);
  board->journal.Undo();
  EXPECT_EQ(net.Count(), 1u);
  EXPECT_TRUE(moved.Has(kFlag_Selected)) << "the selection is no part of an edit";
}

}  // namespace
}  // namespace Ketril::Editor
