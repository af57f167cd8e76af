#include "DLLs/Tools/Vias/PadToVia.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/HostCall.h"
#include "Interfaces/Tools.h"
#include "Platform/Text.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Tools {
namespace {

using Lines = std::vector<std::string>;

constexpr TCoord kMost = std::numeric_limits<TCoord>::max();

// "via 100,100 60/30 A selected", in mil, of each pad and via on the board, sorted.
Lines PadsAndVias(const Editor::Board& board) {
  Lines lines;
  Editor::Warehouse::Walk walk(board.objects, {ePadObject, eViaObject});
  while (Editor::Primitive* object = walk.Next()) {
    const auto mil = [](TCoord value) { return std::to_string(value / 10000); };
    const TCoordPoint at = object->Reference();
    std::string line = mil(at.x) + "," + mil(at.y) + " ";
    if (const auto* via = Editor::As<Editor::Via>(object)) {
      line = "via " + line + mil(via->data.size) + "/" + mil(via->data.hole);
    } else if (const auto* pad = Editor::As<Editor::Pad>(object)) {
      const Editor::PadLayer& copper = pad->On(eV6_TopLayer);
      line = "pad " + line + mil(copper.x_size) + "x" + mil(copper.y_size) + "/" + mil(pad->data.hole);
    }
    if (const Editor::Net* net = object->GetNet()) line += " " + Platform::ToUtf8(net->data.name);
    if (object->Has(Editor::kFlag_Selected)) line += " selected";
    lines.push_back(line);
  }
  std::ranges::sort(lines);
  return lines;
}

class PadToVia : public testing::Test {
 protected:
  ~PadToVia() override { ReleasePCBServer(); }

 private:
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(Editor::ClientSetup{})};
};

TEST_F(PadToVia, TheViaCoversThePad) {
  const struct {
    const char* name;
    TShape shape;
    TCoord x, y, diameter;
  } rows[] = {
      {"round", eRounded, 600000, 600000, 600000},
      {"long round, upright", eRounded, 600000, 900000, 900000},
      {"rectangle", eRectangular, 800000, 600000, 1000000},
      {"rectangle, rounded up", eRectangular, 3, 5, 6},
      {"rectangle, rounded down", eRectangular, 600000, 600000, 848528},
      {"rounded corners count as a rectangle", eRoundedRectangular, 800000, 600000, 1000000},
      {"regular octagon: the circle through its corners", eOctagonal, 600000, 600000, 649435},
      {"octagon", eOctagonal, 800000, 600000, 800907},
      {"octagon with an odd smaller side, halved exactly", eOctagonal, 3, 3, 3},
      {"octagon, upright", eOctagonal, 50001, 100001, 95213},
      {"squares beyond 32 bits", eRectangular, 46341, 46341, 65536},
      {"beyond the largest coordinate", eRectangular, kMost, kMost, kMost},
      {"octagon beyond the largest coordinate", eOctagonal, kMost, kMost, kMost},
      {"round, the largest", eRounded, kMost, 1, kMost},
      {"no width", eRounded, 0, 600000, 0},
      {"negative height", eRectangular, 600000, -1, 0},
      {"no shape", eNoShape, 600000, 600000, 0},
      {"rounded rectangle of the other kind", eRoundRectShape, 600000, 600000, 0},
      {"circle", eCircleShape, 600000, 600000, 0},
      {"a shape beyond the list", static_cast<TShape>(200), 600000, 600000, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CoveringDiameter(row.shape, row.x, row.y), row.diameter) << row.name;
  }
}

TEST_F(PadToVia, SelectedFreeThroughPadsBecomeViasAndBack) {
  const Ref<Editor::Board> board = Tests::BoardFromText(R"(
    pad 100,100 60x60 round hole 30 net A selected
    pad 200,100 80x60 rect hole 30 selected
    pad 300,100 60x60 round hole 30
    pad 400,100 60x60 round top selected
    component U1 at 500,100 { pad 0,0 60x60 round hole 30 name 1 selected }
    via 600,100 30/15 net A
  )");
  const Lines rest = {"pad 300,100 60x60/30", "pad 400,100 60x60/0 selected", "pad 500,100 60x60/30 selected",
                      "via 600,100 30/15 A"};
  const auto with_rest = [&](Lines lines) {
    lines.insert(lines.end(), rest.begin(), rest.end());
    std::ranges::sort(lines);
    return lines;
  };
  Tools_ReplaceSelectedPadsWithVias(board.Get());
  EXPECT_EQ(PadsAndVias(*board), with_rest({"via 100,100 60/30 A selected", "via 200,100 100/30 selected"}));
  Tools_ReplaceSelectedViasWithPads(board.Get());
  EXPECT_EQ(PadsAndVias(*board),
            with_rest({"pad 100,100 60x60/30 A selected", "pad 200,100 100x100/30 selected"}));
  EXPECT_EQ(board->LiveIterators(), 0);
  EXPECT_EQ(ObjectScopeDepth, 0);
}

TEST_F(PadToVia, AStackOfLayersIsCarriedOverLayerByLayer) {
  const Ref<Editor::Board> board = Tests::BoardFromText("layers 4; pad 100,100 60x60 round hole 30 selected");
  auto* pad = Tests::Find<Editor::Pad>(*board);
  pad->SetMode(ePadMode_ExternalStack);
  Editor::PadLayer& bottom = pad->EditOn(eV6_BottomLayer);
  bottom.x_size = Tests::Mil(80);
  bottom.shape = eRectangular;
  pad->EditOn(eV6_MidLayer1).shape = eRoundRectShape;
  Tools_ReplaceSelectedPadsWithVias(board.Get());
  const auto* via = Tests::Find<Editor::Via>(*board);
  ASSERT_TRUE(via);
  EXPECT_EQ(via->data.mode, ePadMode_ExternalStack);
  EXPECT_EQ(via->SizeOn(eV6_TopLayer), Tests::Mil(60));
  EXPECT_EQ(via->SizeOn(eV6_MidLayer1), 0);
  EXPECT_EQ(via->SizeOn(eV6_BottomLayer), Tests::Mil(100));
}

// A via joins its net before it has a place, a pad after.
TEST_F(PadToVia, TheHostSeesTheChangesInThisOrder) {
  const auto changes = [](void (*tool)(IPCB_Board*), const char* text) {
    const Ref<Editor::Board> board = Tests::BoardFromText(text);
    Editor::HostGate::Arm(true);
    tool(board.Get());
    Editor::HostGate::Disarm();
    Lines calls;
    for (const std::string& call : Editor::HostGate::Record()) {
      const std::string method = call.substr(call.find('.') + 1);
      if (method.find("GetState") == method.npos && method.find("Iterator") == method.npos &&
          !method.starts_with("Filter") && !method.starts_with("Layer") && method != "First" &&
          method != "Next" && method != "GetServerByName")
        calls.push_back(method);
    }
    return calls;
  };
  EXPECT_EQ(changes(Tools_ReplaceSelectedPadsWithVias, "pad 0,0 60x60 round hole 30 net A selected"),
            (Lines{"CancelPrimaryWarehouseRegistration", "PCBObjectFactory", "RegisterWithGroupWarehouse",
                   "SetState_XCenter", "SetState_YCenter", "SetState_HoleSize", "SetState_Mode",
                   "SetState_SizeOnLayer", "RegisterWithPrimaryWarehouse", "SetState_Selected",
                   "GraphicallyInvalidatePrimitive"}));
  EXPECT_EQ(changes(Tools_ReplaceSelectedViasWithPads, "via 0,0 30/15 net A selected"),
            (Lines{"CancelPrimaryWarehouseRegistration", "PCBObjectFactory", "SetState_XCenter",
                   "SetState_YCenter", "SetState_HoleSize", "SetState_Mode", "SetState_XSizeOnLayer",
                   "SetState_YSizeOnLayer", "SetState_ShapeOnLayer", "RegisterWithGroupWarehouse",
                   "RegisterWithPrimaryWarehouse", "SetState_Selected", "GraphicallyInvalidatePrimitive"}));
}

}  // namespace
}  // namespace Ketril::Tools
