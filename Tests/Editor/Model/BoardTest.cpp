#include "Editor/Model/Board.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "Tests/Editor/Model/SmallBoard.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Editor {
namespace {

using Tests::BoardFromText;

TEST(Outline, ChainsTheLinesOfTheEdge) {
  const std::string square = "edge 0,0 100,0 100,100 0,100;";
  struct Row {
    const char* name;
    std::string text;
    std::vector<bool> holes;  // of the rings, the largest first
  };
  for (const Row& row : {
           Row{"nothing", "", {}},
           Row{"a square", square, {false}},
           Row{"in any order and direction",
               "track 100,100 0,100 mech1; track 0,0 100,0 mech1; track 0,0 0,100 mech1; track 100,100 100,0 "
               "mech1",
               {false}},
           Row{"ends that nearly meet",
               "track 0,0 100,0 mech1; track 100.09,0 100,100 mech1; track 0.05,0.05 100,99.95 mech1",
               {false}},
           Row{"a gap", "track 0,0 100,0 mech1; track 100.11,0 100,100 mech1; track 0,0 100,100 mech1", {}},
           Row{"lines drawn twice",
               square + "track 100,0 0,0 mech1; track 0,100 0,0 mech1;" + square,
               {false}},
           Row{"lines that lead nowhere, into a corner and out of it",
               "track -50,0 0,0 mech1;" + square + "track 100,100 200,100 mech1",
               {false}},
           Row{"two squares that meet in a corner", "edge 0,0 -90,0 -90,-90 0,-90;" + square, {false, false}},
           Row{"a round hole with a piece in it, beside a board of two arcs",
               "arc 40,40 r10 0..360 mech1; arc 40,40 r30 0..360 mech1;" + square +
                   "arc 900,0 r90 30..210 mech1; arc 900,0 r90 210..30 mech1",
               {false, false, true, false}},
       }) {
    SCOPED_TRACE(row.name);
    const Ref<BoardOutline> outline = BoardFromText(row.text)->Outline();
    std::vector<bool> holes;
    for (std::size_t i = 0; outline && i < outline->data.rings.size(); ++i) {
      holes.push_back(outline->data.rings[i].hole);
    }
    EXPECT_EQ(holes, row.holes);
  }
  const Ref<Board> board = BoardFromText("track -50,0 50,0 w10");
  EXPECT_EQ(board->Extents().x1, Tests::Mil(-55)) << "without an edge all objects count";
  PutTrack(*board, {0, 0}, {500, 0}, eV6_Mechanical1);
  PutTrack(*board, {0, 0}, {300, 9000}, eV6_Mechanical1);
  PutTrack(*board, {300, 9000}, {500, 0}, eV6_Mechanical1);
  EXPECT_EQ(board->Extents().y2, 9000);
}

TEST(Board, ReadsTheSelectionByIndexInTheOrderOfComing) {
  const Ref<Board> board = MakeHost<Board>();
  std::vector<Track*> tracks;
  for (int i = 0; i < 4; ++i) tracks.push_back(&PutTrack(*board, {i, 0}, {i, 9}));
  const auto selected = [&] {
    std::int32_t count = 0;
    board->GetState_SelectedObjectsCount(count);
    std::vector<Primitive*> found;
    Ref<IPCB_Primitive> object;
    for (std::int32_t i = 0; i <= count; ++i) {
      EXPECT_EQ(board->GetState_SelectedObject(i, object), Status::Ok);
      if (object) found.push_back(FromInterface(object.Get()));
    }
    return found;
  };
  for (const int i : {3, 0, 1}) tracks[static_cast<std::size_t>(i)]->SetState_Selected(true);
  EXPECT_EQ(selected(), (std::vector<Primitive*>{tracks[0], tracks[1], tracks[3]}));
  board->Remove(tracks[0]);
  tracks[1]->SetState_Selected(false);
  EXPECT_EQ(selected(), std::vector<Primitive*>{tracks[3]});
  TCoordRect box{1, 2, 3, 4};
  bool found = true;
  board->GetState_BoundingRectangleBoard({eViaObject}, nullptr, false, box, found);
  EXPECT_TRUE(!found && box == (TCoordRect{1, 2, 3, 4})) << "untouched";
  board->GetState_BoundingRectangleBoard(TObjectSet::All(), nullptr, true, box, found);
  EXPECT_TRUE(found && box == tracks[3]->Bounds());
}

TEST(Board, ObjectsThatAreHeldOutliveIt) {
  const std::int64_t alive = LiveObjects::Count();
  {
    Ref<Board> board = BoardFromText("component U1 at 5,5 { pad 0,0 60x60 net A }");
    const Ref<Component> component(Tests::Find<Component>(*board));
    const Ref<Track> track = MakeHost<Track>(), tried = MakeHost<Track>();
    board->journal.Begin();
    board->Add(track.Get());
    tried->SetState_Board(board.Get());
    MakeHost<Track>()->SetState_Board(board.Get());  // dies while it is tried
    board = nullptr;
    for (const Primitive* object : std::initializer_list<Primitive*>{
             component.Get(), track.Get(), tried.Get(), component->Members().front().Get()}) {
      EXPECT_TRUE(!object->board && !object->on_board);
    }
    EXPECT_EQ(track->SetState_Width(5), Status::Ok);
    EXPECT_EQ(component->MoveByXY(1, 1), Status::Ok);
  }
  EXPECT_EQ(LiveObjects::Count(), alive);
}

TEST(Board, TakesOffWhatWasAskedForAndItsMembers) {
  const Ref<Board> board = MakeHost<Board>(), other = MakeHost<Board>();
  const Ref<Component> component = MakeHost<Component>();
  const Ref<Pad> one = MakeHost<Pad>(), two = MakeHost<Pad>();
  component->AddMember(one.Get());
  component->AddMember(two.Get());
  for (int twice = 0; twice < 2; ++twice) board->RegisterWithPrimaryWarehouse(component.Get());
  EXPECT_EQ(board->objects.Count(), 3u);
  EXPECT_EQ(other->RegisterWithPrimaryWarehouse(one.Get()), Status::InvalidArgument);
  EXPECT_EQ(other->CancelPrimaryWarehouseRegistration(one.Get()), Status::Ok);
  EXPECT_EQ(board->RegisterWithPrimaryWarehouse(nullptr), Status::InvalidArgument);
  EXPECT_EQ(board->RegisterWithPrimaryWarehouse(other.Get()), Status::InvalidArgument);
  board->CancelPrimaryWarehouseRegistration(one.Get());
  EXPECT_EQ(one->Owner(), nullptr) << "an object that is taken off leaves its group";
  board->CancelPrimaryWarehouseRegistration(component.Get());
  EXPECT_EQ(board->objects.Count(), 0u);
  EXPECT_EQ(two->Owner(), component.Get()) << "a member that goes with its group stays one";
}

class Processor final : public HostObject<IPCB_LayerProcessInterface> {
 public:
  std::vector<std::u16string> names;
  void ProcessLayer(IPCB_LayerObject* layer) override {
    names.emplace_back();
    layer->GetState_Name(names.back());
    if (names.back().empty()) throw std::runtime_error("a layer without a name");
  }
};

TEST(LayerStack, IsTheCopperFromTopToBottom) {
  const Ref<Board> board = MakeHost<Board>();
  board->layers = {{.id = eV6_TopLayer, .file_name = "F.Cu", .user_name = u"Front", .kind = "signal"},
                   {.id = eV6_BottomLayer, .file_name = "B.Cu", .user_name = u"Back", .kind = "signal"},
                   {.id = eV6_TopOverlay, .file_name = "F.SilkS", .user_name = u"Legend", .kind = "user"}};
  const Ref<Processor> processor = MakeHost<Processor>();
  EXPECT_EQ(board->ProcessLayers(processor.Get()), Status::Ok);
  EXPECT_EQ(processor->names, (std::vector<std::u16string>{u"Front", u"Back"}));
  Ref<IPCB_LayerStack> stack;
  Ref<IPCB_LayerObject> layer;
  board->GetState_LayerStack(stack);
  EXPECT_EQ(stack->GetState_LayerAt(2, layer), Status::InvalidArgument);
  stack->GetState_LayerObject(eV6_MidLayer1, layer);
  EXPECT_FALSE(layer);
  stack->GetState_LayerObject(eV6_TopOverlay, layer);
  std::u16string name;
  EXPECT_TRUE(layer && !Failed(layer->GetState_Name(name)) && name == u"Legend");
  board->layers[1].user_name.clear();
  EXPECT_THROW(board->ProcessLayers(processor.Get()), std::runtime_error) << "passed on as it comes";
  board->layers.clear();
  EXPECT_TRUE(Failed(layer->GetState_Name(name)));
}

}  // namespace
}  // namespace Ketril::Editor
