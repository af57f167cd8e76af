#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "Editor/Files/BoardFile.h"
#include "Editor/Vias/UnusedCopper.h"
#include "Editor/Vias/ViaUnions.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Editor {
namespace {

using Tests::BoardFromText;
using Tests::Mil;

// Runs a build and gives it an index, as the tools do.
template <class Object, class Options>
const ViaRun& Build(Board& board, const Ref<Options>& defaults,
                    const std::function<void(decltype(defaults->settings)&)>& edit) {
  const Ref<Object> made = MakeHost<Object>();
  made->data.options = MakeHost<Options>(defaults->Owner(), defaults->Copy());
  board.TryOn(*made.Get());
  auto& settings = made->data.options->settings;
  settings.reference->SetNet(board.FindNet(u"GND"));
  settings.edge = 0;
  if (edit) edit(settings);
  auto object = Probe<IPCB_SmartUnionObject>(made->AsInterface());
  bool built = false;
  EXPECT_FALSE(Failed(board.Unions().Build(object.Get(), built)));
  std::int32_t index = 0;
  if (built) {
    EXPECT_FALSE(Failed(board.Unions().AssignIndex(object.Get(), index)));
    EXPECT_FALSE(Failed(board.Unions().Register(object.Get())));
  }
  return board.Unions().LastRun();
}

const ViaRun& Stitch(Board& board, const std::function<void(StitchSettings&)>& edit = nullptr) {
  return Build<Stitching>(board, board.Unions().StitchDefaults(), edit);
}

const ViaRun& Shield(Board& board, const std::function<void(ShieldSettings&)>& edit = nullptr) {
  return Build<Shielding>(board, board.Unions().ShieldDefaults(), [&](ShieldSettings& settings) {
    settings.net = board.FindNet(u"CLK");
    settings.pitch = Mil(100);
    if (edit) edit(settings);
  });
}

std::size_t Refused(const ViaRun& run, ViaRefusal refusal) {
  return run.refused[static_cast<std::size_t>(refusal)];
}

// A via is 50 mil wide, so that of the 121 places of the grid the 40 on the border are not covered.
const std::string kPlanes = R"(
  net GND
  region 0,0 1000,0 1000,1000 0,1000 top net GND
  region 0,0 1000,0 1000,1000 0,1000 bottom net GND
)";

TEST(Stitching, TellsWhatBecameOfEachPlace) {
  const struct {
    const char* name;
    const char* more;
    std::function<void(StitchSettings&)> edit;
    std::size_t placed;
    ViaRefusal refusal;
    std::size_t refused;
  } rows[] = {
      {"grid", "", nullptr, 81, ViaRefusal::NoCopper, 40},
      {"staggered", "", [](StitchSettings& s) { s.staggered = true; }, 86, ViaRefusal::NoCopper, 30},
      {"offset", "",
       [](StitchSettings& s) {
         s.offset = {Mil(50), Mil(-50)};
       },
       100, ViaRefusal::NoCopper, 0},
      {"coarser along x", "", [](StitchSettings& s) { s.grid_x = Mil(200); }, 36, ViaRefusal::NoCopper, 30},
      {"area", "",
       [](StitchSettings& s) {
         s.area = TCoordRect{Mil(90), Mil(90), Mil(310), Mil(210)};
       },
       6, ViaRefusal::NoCopper, 0},
      {"too near to a track", "track 0,500 1000,500 w10 bottom net A", nullptr, 72, ViaRefusal::Clearance, 9},
      {"a wider gap", "track 0,450 1000,450 w10 bottom net A", nullptr, 81, ViaRefusal::Clearance, 0},
      {"as asked", "track 0,450 1000,450 w10 bottom net A", [](StitchSettings& s) { s.clearance = Mil(21); },
       63, ViaRefusal::Clearance, 18},
      {"on a pad", "pad 300,300 60x60 rect top net GND", nullptr, 80, ViaRefusal::OnPad, 1},
      {"on a hole", "pad 325,300 20x20 round hole 10 net A", nullptr, 80, ViaRefusal::Drilled, 1},
      {"on a via", "via 300,300 50/28 net GND", nullptr, 80, ViaRefusal::Drilled, 1},
      {"off the board", "edge 0,0 1000,0 1000,960 0,960", [](StitchSettings& s) { s.edge = Mil(40); }, 72,
       ViaRefusal::Outside, 9},
      {"a layer without copper", "",
       [](StitchSettings& s) {
         s.layers = {eV6_TopLayer, eV6_MidLayer1};
       },
       0, ViaRefusal::NoCopper, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Board> board = BoardFromText("layers 4\n" + kPlanes + row.more);
    const auto before = board->Clearances().CheckBoard().size();
    const ViaRun& run = Stitch(*board, row.edit);
    EXPECT_EQ(run.placed, row.placed);
    EXPECT_EQ(Refused(run, row.refusal), row.refused);
    std::size_t refused = 0;
    for (const std::size_t count : run.refused) refused += count;
    EXPECT_EQ(run.tried, run.placed + refused);
    EXPECT_EQ(run.placed == 0, !run.note.empty());
    EXPECT_EQ(board->Clearances().CheckBoard().size(), before);
  }
}

// The piece lies between the places of the grid.
TEST(Stitching, JoinsIslands) {
  const Ref<Board> board = BoardFromText(kPlanes + R"(
    region 1125,125 1185,125 1185,185 1125,185 top net GND
    region 1100,100 1200,100 1200,200 1100,200 bottom net GND
    region 1325,125 1385,125 1385,185 1325,185 top net GND
    region 1300,100 1400,100 1400,200 1300,200 bottom net GND
    via 1355,155 40/20 net GND
  )");
  EXPECT_EQ(Stitch(*board).placed, 82u);
  EXPECT_EQ(Tests::Find<Via>(*board, 82)->data.center, (TCoordPoint{Mil(1155), Mil(155)}));
}

TEST(Stitching, IsFoundAgainAndTakenOffAsOne) {
  const Ref<Board> board = BoardFromText(kPlanes + "via 1500,500 50/28 net GND");
  const auto before = Tests::DescribeBoard(*board);
  Stitch(*board, [](StitchSettings& settings) { settings.grid_x = Mil(300); });
  Stitch(*board, [](StitchSettings& settings) { settings.offset.x = Mil(50); });
  const Tests::TempFolder folder;
  SaveBoard(*board, folder / "a.kicad_pcb");
  const Ref<Board> again = ReadBoard(folder / "a.kicad_pcb");

  ASSERT_EQ(again->Unions().List().size(), 2u);
  ViaUnion* const second = again->Unions().List().back();
  EXPECT_EQ(second->Parts().size(), board->Unions().List().back()->Parts().size());
  // The selected one goes; then, with nothing selected, what is left.
  again->journal.Begin();
  const std::size_t vias = again->objects.Count(eViaObject), parts = second->Parts().size();
  second->Parts().front()->SetFlag(kFlag_Selected, true);
  again->Unions().Remove(eUnionKind_ViaShielding);
  EXPECT_EQ(again->objects.Count(eViaObject), vias);
  again->Unions().Remove(eUnionKind_ViaStitching);
  EXPECT_EQ(again->objects.Count(eViaObject), vias - parts);
  EXPECT_EQ(again->Unions().List().size(), 1u);
  again->journal.Undo();
  EXPECT_EQ(again->Unions().List().size(), 2u);
  for (ViaUnion* object : board->Unions().List()) object->Self().Set(kFlag_Selected, false);
  board->Unions().Remove(eUnionKind_ViaStitching);
  EXPECT_EQ(Tests::Differences(before, Tests::DescribeBoard(*board)), "");
}

// The row runs 40 mil from the middle of the track, 2000 + 80 pi long.
TEST(Shielding, IsAnEvenFenceAtItsDistance) {
  const Ref<Board> board = BoardFromText("net GND; track 0,0 1000,0 w10 top net CLK");
  const ViaRun& run = Shield(*board);
  EXPECT_EQ(run.placed, 23u);
  EXPECT_NEAR(run.largest_gap / Mil(1), (2000 + 80 * 3.14159) / 23, 0.1);
  board->objects.ForEach({eViaObject}, [&](const Primitive& via) {
    const double x = via.Reference().x, y = via.Reference().y;
    EXPECT_NEAR(std::hypot(x - std::clamp<double>(x, 0, Mil(1000)), y), Mil(40), 1500);
  });
  EXPECT_EQ(Shield(*board).placed, 0u);  // the places are taken
}

TEST(Shielding, KeepsItsPitchAroundWhatIsInItsWay) {
  const Ref<Board> board = BoardFromText(R"(
    net GND
    track 0,0 1000,0 w10 top net CLK
    track 1000,0 1000,800 w10 bottom net CLK
    arc 1100,800 r100 90..180 w10 bottom net CLK
    pad 500,60 80x40 rect top net A
    pad 1000,800 60x60 hole 30 net CLK
    via 300,-50 40/20 net A
    zone 700,-100 800,-100 800,-20 700,-20 top keepout
  )");
  const auto before = board->Clearances().CheckBoard().size();
  const ViaRun run =
      Shield(*board, [](ShieldSettings& settings) { settings.rows = 2, settings.copper = true; });
  EXPECT_GT(run.placed, 60u);
  EXPECT_GT(run.largest_gap, Mil(100));
  EXPECT_LT(run.largest_gap, Mil(300));
  EXPECT_EQ(board->Clearances().CheckBoard().size(), before);
  EXPECT_EQ(board->objects.Count(eRegionObject), 2u);
  const Ref<Board> bare = BoardFromText("net GND; track 0,0 10,0 w10 top net A");
  EXPECT_FALSE(Shield(*bare).note.empty());
}

TEST(UnusedCopper, IsWhatNothingOfTheNetTouches) {
  const Ref<Board> board = BoardFromText(R"(
    layers 4
    via 0,0 40/20 net A
    track 0,0 500,0 w10 top net A
    track 30,-500 30,500 w10 mid1 net B
    region -100,-100 100,-100 100,100 -100,100 mid2 net A
    pad 1000,0 60x60 hole 30 name 1 net A
    pad 2000,0 60x60 top net A
  )");
  using Layers = std::vector<TV7_Layer>;
  const Via& via = *Tests::Find<Via>(*board);
  EXPECT_EQ(UnusedLayers(via, false), (Layers{eV6_MidLayer1, eV6_BottomLayer}));
  EXPECT_EQ(UnusedLayers(via, true), Layers{eV6_MidLayer1});
  EXPECT_EQ(UnusedLayers(*Tests::Find<Pad>(*board), false).size(), 4u);
  EXPECT_EQ(UnusedLayers(*Tests::Find<Pad>(*board, 1), false), Layers{});

  // What the file says of the copper is worked out again when it is read.
  auto* const changed = Tests::Find<Via>(*board);
  changed->Write([&] { RemoveUnusedCopper(*changed, true); });
  RemoveUnusedCopper(*Tests::Find<Pad>(*board, 1), true);
  EXPECT_FALSE(Tests::Find<Pad>(*board, 1)->data.remove_unused);  // a surface pad
  const Ref<Board> again = ReadBoardText(WriteBoardText(*board));
  EXPECT_EQ(Tests::Find<Via>(*again)->data.removed, Layers{eV6_MidLayer1});
  EXPECT_EQ(Tests::Find<Pad>(*again)->data.removed, Layers{});
}

}  // namespace
}  // namespace Ketril::Editor
