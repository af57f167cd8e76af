#include "Editor/Model/Iterators.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "Editor/Model/ObjectFactory.h"
#include "Tests/Editor/Model/SmallBoard.h"

namespace Ketril::Editor {
namespace {

// A tool's layer set that counts how often it is asked.
class CountingSet final : public HostObject<IPCB_LayerSet> {
 public:
  explicit CountingSet(std::vector<TV7_Layer> layers, bool fails = false)
      : layers_(std::move(layers)), fails_(fails) {}
  int asked = 0;

  Status ContainsLayer(TV7_Layer layer, bool& contained) noexcept override {
    ++asked;
    contained = std::ranges::find(layers_, layer) != layers_.end();
    return fails_ ? Status::Failure : Status::Ok;
  }
  Status GetState_IsEmpty(bool& empty) noexcept override {
    empty = layers_.empty();
    return Status::Ok;
  }
  Status IncludeLayer(TV7_Layer) noexcept override { return Status::Failure; }
  Status ExcludeLayer(TV7_Layer) noexcept override { return Status::Failure; }
  Status IncludePartitions(TLayerPartitionSet) noexcept override { return Status::Failure; }
  Status ExcludePartitions(TLayerPartitionSet) noexcept override { return Status::Failure; }
  Status GetState_IsAllLayers(bool&) noexcept override { return Status::Failure; }
  Status GetState_IsFinite(bool&) noexcept override { return Status::Failure; }
  Status CreateLayerIterator(Ref<IPCB_LayerIterator>&) noexcept override { return Status::Failure; }

 private:
  const std::vector<TV7_Layer> layers_;
  const bool fails_;
};

// Against a plain list of what was there at First, while objects leave, come, and come back; with so many
// removals that gaps are closed on the way.
TEST(BoardIterator, GivesWhatWasThereAtFirstAndStillIs) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Ref<Board> board = MakeHost<Board>();
    std::vector<Ref<Primitive>> all;
    const auto add = [&] {
      const Ref<Primitive> object(MakeObject(random.Below(2) ? eViaObject : ePadObject));
      board->Load(object.Get());
      all.push_back(object);
    };
    for (int i = 0; i < 600; ++i) add();
    const Ref<IPCB_BoardIterator> iterator = MakeBoardIterator(*board);
    std::map<Primitive*, bool> stayed;
    for (const Ref<Primitive>& object : all) stayed[object.Get()] = true;
    std::vector<Primitive*> expected, given;
    const std::size_t at_first = all.size();
    Ref<IPCB_Primitive> object;
    std::size_t place = 0;
    for (iterator->First(object); object; iterator->Next(object)) {
      given.push_back(FromInterface(object.Get()));
      while (place < at_first && !stayed[all[place].Get()]) ++place;
      expected.push_back(place < at_first ? all[place++].Get() : nullptr);
      ASSERT_EQ(given.back(), expected.back());
      for (int edits = random.Below(4); edits > 0; --edits) {
        Primitive* other = random.Of(all).Get();
        stayed[other] = false;
        if (other->on_board) board->Remove(other);
        if (random.Below(4) == 0) board->Add(other);
        if (random.Below(4) == 0) add();
      }
    }
    EXPECT_TRUE(std::none_of(all.begin() + static_cast<std::ptrdiff_t>(place),
                             all.begin() + static_cast<std::ptrdiff_t>(at_first),
                             [&](const Ref<Primitive>& left) { return stayed[left.Get()]; }));
    board->BoardIterator_Destroy(iterator.Get());
  }
}

TEST(BoardIterator, Filters) {
  const Ref<Board> board = MakeHost<Board>();
  const Ref<Component> component = MakeHost<Component>();
  const Ref<Pad> pad = MakeHost<Pad>();
  component->AddMember(pad.Get());
  board->Load(component.Get());
  PutTrack(*board, {0, 0}, {0, 0}, eV6_TopLayer);
  PutTrack(*board, {0, 0}, {0, 0}, eV6_BottomLayer);
  Put<Via>(*board, ViaData{}, eV6_MultiLayer);
  const TObjectSet lines{eTrackObject, eViaObject};
  const TObjectSet all = TObjectSet::All(), pads{eViaObject, ePadObject};
  const struct {
    const char* name;
    TObjectSet kinds;
    std::vector<TV7_Layer> layers;
    TIterationMethod method;
    const char* expected;
  } rows[] = {
      {"all", all, {}, eProcessAll, "Component Pad Track Track Via "},
      {"kinds in order of coming", pads, {}, eProcessAll, "Pad Via "},
      {"a layer is literal", lines, {eV6_TopLayer}, eProcessAll, "Track "},
      {"multilayer named", lines, {eV6_TopLayer, eV6_MultiLayer}, eProcessAll, "Track Via "},
      {"free", pads, {}, eProcessFree, "Via "},
      {"of components", all, {}, eProcessComponent, "Component Pad "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<IPCB_BoardIterator> iterator = MakeBoardIterator(*board);
    const Ref<CountingSet> layers = MakeHost<CountingSet>(row.layers);
    iterator->FilterObjects(row.kinds);
    iterator->FilterLayers(layers.Get());
    iterator->FilterMethod(row.method);
    std::string kinds;
    const auto walked = Walked(iterator);
    for (IPCB_Primitive* object : walked) kinds += KindName(FromInterface(object)->kind) + std::string(" ");
    EXPECT_EQ(kinds, row.expected);
    EXPECT_LE(layers->asked, 3) << "once for each layer";
    std::int32_t count = 0;
    board->GetPrimitiveCount(row.kinds, layers.Get(), row.method, count);
    EXPECT_EQ(static_cast<std::size_t>(count), walked.size());
    iterator->FilterLayers(MakeHost<CountingSet>(std::vector<TV7_Layer>{eV6_TopLayer}, true).Get());
    Ref<IPCB_Primitive> object;
    EXPECT_EQ(iterator->First(object), Status::Failure) << "a set that fails";
  }
}

TEST(Iterators, AreHandedBackOnceAndWhereTheyWereMade) {
  const std::int64_t alive = LiveObjects::Count();
  {
    Ref<Board> board = MakeHost<Board>();
    const Ref<Board> other = MakeHost<Board>();
    Net& net = Put<Net>(*board, NetData{});
    Track& track = PutTrack(*board, {0, 0}, {9, 9});
    track.SetNet(&net);
    Ref<IPCB_BoardIterator> walk;
    Ref<IPCB_SpatialIterator> area;
    Ref<IPCB_GroupIterator> members;
    board->BoardIterator_Create(walk);
    board->SpatialIterator_Create(area);
    net.GroupIterator_Create(members);
    EXPECT_EQ(board->LiveIterators(), 3);
    EXPECT_EQ(Walked(members), std::vector{track.AsInterface()});
    EXPECT_EQ(Walked(area), std::vector{track.AsInterface()});
    EXPECT_EQ(other->BoardIterator_Destroy(walk.Get()), Status::InvalidArgument);
    EXPECT_EQ(board->BoardIterator_Destroy(nullptr), Status::InvalidArgument);
    EXPECT_EQ(net.GroupIterator_Destroy(members.Get()), Status::Ok);
    EXPECT_EQ(net.GroupIterator_Destroy(members.Get()), Status::InvalidArgument);
    EXPECT_TRUE(Walked(members).empty());
    EXPECT_EQ(board->LiveIterators(), 2);
    Ref<IPCB_Primitive> object;
    Track& second = PutTrack(*board, {0, 0}, {9, 9});
    const Ref<Primitive> held(&second);
    area->First(object);
    EXPECT_EQ(object.Get(), track.AsInterface());
    board->Remove(&second);
    board->Add(&second);
    area->Next(object);
    EXPECT_FALSE(object) << "what left and came back is new";
    walk->First(object);
    board = nullptr;  // dies under the two that are left
    walk->Next(object);
    EXPECT_FALSE(object);
    EXPECT_TRUE(Walked(walk).empty());
    EXPECT_TRUE(Walked(area).empty());
  }
  EXPECT_EQ(LiveObjects::Count(), alive);
}

}  // namespace
}  // namespace Ketril::Editor
