// Via stitching, via shielding and unused pads through the exports: the host calls, in order, and every way
// to end early.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Vias/ViaShieldingManager.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/HostCall.h"
#include "Editor/Vias/ViaUnions.h"
#include "Interfaces/Tools.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tools {
namespace {

using Editor::Board;
using Editor::HostGate;
using Lines = std::vector<std::string>;
using Tests::Mil;

constexpr const char* kPlanes = R"(
  net GND
  zone 0,0 1000,0 1000,1000 0,1000 top net GND
  region 0,0 1000,0 1000,1000 0,1000 top net GND
  region 0,0 1000,0 1000,1000 0,1000 bottom net GND
)";
constexpr const char* kLines = R"(
  net GND
  track 0,0 1000,0 w10 top net CLK selected
  track 1000,0 1000,500 w10 top net CLK selected
  track 0,2000 1000,2000 w10 top net DATA
  text 0,3000 "Hello" h60 topoverlay
)";

class ViaTools : public testing::Test {
 protected:
  ~ViaTools() override {
    HostGate::Disarm();
    ReleasePCBServer();
  }

  // What the user does in the dialogs; nothing cancels.
  std::function<bool(Editor::StitchSettings&)> stitch_;
  std::function<bool(Editor::ShieldSettings&)> shield_;
  std::function<bool(TUnusedPadsOptions&)> unused_;
  std::optional<bool> answer_;
  Lines questions_;

  Lines Calls(const std::function<void()>& run) {
    HostGate::Arm(true);
    run();
    HostGate::Disarm();
    return HostGate::Record();
  }
  static void Stitch(Board& board, const char16_t* mode = nullptr) {
    Tools_ApplyViaStitching(&board, board.view.Get(), Mode(mode).Get());
  }
  static void Shield(Board& board, const char16_t* mode = nullptr) {
    Tools_ApplyViaShielding(&board, board.view.Get(), Mode(mode).Get());
  }
  static bool ByGround(Board& board, Editor::ViaSettings& settings) {
    settings.reference->SetNet(board.FindNet(u"GND"));
    settings.edge = 0;
    return true;
  }
  static std::size_t Vias(const Board& board) { return board.objects.Count(eViaObject); }

 private:
  static Ref<IParameterList> Mode(const char16_t* mode) {
    if (!mode) return {};
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    parameters->AddParameter(u"Mode", mode);
    return Ref<IParameterList>(parameters.Get());
  }
  Editor::ClientSetup User() {
    Editor::ClientSetup setup;
    setup.dialogs.via_stitching = [this](Board&, Editor::StitchSettings& s) { return stitch_ && stitch_(s); };
    setup.dialogs.via_shielding = [this](Board&, Editor::ShieldSettings& s) { return shield_ && shield_(s); };
    setup.dialogs.unused_pads = [this](TUnusedPadsOptions& o) { return unused_ && unused_(o); };
    setup.confirm = [this](const std::u16string& text) {
      questions_.push_back(std::string(text.begin(), text.end()));
      return answer_;
    };
    return setup;
  }
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(User())};
};

TEST_F(ViaTools, AStitchingIsASeriesOfCalls) {
  const Ref<Board> board = Tests::BoardFromText(kPlanes);
  const Lines to_dialog = {"IPCB_Board2.GetViaStitchOptions",
                           "IPCB_ViaStitchFloodOptions.GetEditOptions",
                           "IPCB_ViaStitchFloodOptions.BeginOptionsEdit",
                           "IPCB_Board2.CreateViaStitching",
                           "IPCB_SmartUnionObject.SetState_OwnerBoard",
                           "IPCB_Board2.GetState_UIManager",
                           "IUIManager.ViaStitchingDialog"};
  EXPECT_EQ(Calls([&] { Stitch(*board); }), to_dialog);
  EXPECT_EQ(Vias(*board), 0u);
  EXPECT_EQ(Calls([&] { Stitch(*board, u"OUTLINE"); }), Lines{});

  Lines all = to_dialog;
  const Lines to_build = {
      "IPCB_SmartUnionObject.GetFloodOptions",      "IPCB_ViaStitchFloodOptions.GetEditOptions",
      "IPCB_ViaStitchFloodOptions.GetReferenceVia", "IPCB_Primitive.SetState_UnionIndex",
      "IPCB_ViaStitchFloodOptions.EndOptionsEdit",  "IPCB_Board2.BuildViaStitching"};
  all.insert(all.end(), to_build.begin(), to_build.end());
  stitch_ = [&](Editor::StitchSettings& settings) {
    settings.area = TCoordRect{Mil(2000), 0, Mil(3000), Mil(100)};
    return ByGround(*board, settings);
  };
  EXPECT_EQ(Calls([&] { Stitch(*board, u"whatever"); }), all);  // nothing fits
  EXPECT_EQ(Vias(*board), 0u);

  const Lines to_end = {"IPCB_Board2.AssignUnionIndex",
                        "IPCB_SmartUnionObject.GetFloodOptions",
                        "IPCB_ViaStitchFloodOptions.GetReferenceVia",
                        "IPCB_Primitive.GetState_UnionIndex",
                        "IPCB_Primitive.SetState_UnionIndex",
                        "IPCB_SmartUnionObject.RefreshObject",
                        "IPCB_SmartUnionObject.GetRegistered",
                        "IPCB_ViaStitchFloodOptions.GetOptionsBoard",
                        "IPCB_Board2.RegisterPrimitive",
                        "IPCB_Board2.RefreshBoard",
                        "IPCB_Board2.RefreshBoardFor",
                        "IPCB_Board2.InvalidatePrimitive"};
  all.insert(all.end(), to_end.begin(), to_end.end());
  stitch_ = [&](Editor::StitchSettings& settings) { return ByGround(*board, settings); };
  EXPECT_EQ(Calls([&] { Stitch(*board); }), all);
  EXPECT_GT(Vias(*board), 0u);
  EXPECT_EQ(board->Unions().List().size(), 1u);
  EXPECT_EQ(Tests::Find<Editor::Via>(*board)->state.union_index, 1);
  EXPECT_EQ(Calls([&] { Stitch(*board, u"remove"); }), Lines{"IPCB_Board2.RemoveViaStitching"});
  EXPECT_EQ(Vias(*board), 0u);
  EXPECT_TRUE(board->Unions().List().empty());
}

TEST_F(ViaTools, ABoardHasToKnowVias) {
  for (const auto& tool : {Tools_ApplyViaStitching, Tools_ApplyViaShielding}) {
    try {
      tool(nullptr, nullptr, nullptr);
      FAIL();
    } catch (const std::exception& error) {
      EXPECT_STREQ(error.what(), "IPCB_Board2 interface is not supported");
    }
  }
  LongBool enabled = 7, checked = 8, visible = 9;
  char16_t caption[] = u"Caption", image[] = u"Image";
  Tools_GetViaStitchingCommandState(nullptr, nullptr, enabled, checked, visible, caption, image);
  Tools_GetViaShieldingCommandState(nullptr, nullptr, enabled, checked, visible, caption, image);
  EXPECT_TRUE(enabled == 7 && checked == 8 && visible == 9);
  EXPECT_EQ(std::u16string(caption) + image, u"CaptionImage");
}

TEST_F(ViaTools, AShieldingTakesWhatIsSelectedAndNotShieldedYet) {
  const Ref<Board> board = Tests::BoardFromText(kLines);
  std::vector<std::size_t> shielded;
  std::vector<std::u16string> nets;
  shield_ = [&](Editor::ShieldSettings& settings) {
    shielded.push_back(settings.primitives.size());
    nets.push_back(settings.net ? settings.net->data.name : u"");
    return ByGround(*board, settings);
  };
  Shield(*board);
  const std::size_t vias = Vias(*board);
  ASSERT_GT(vias, 0u);
  // Both tracks are shielded by now; the first still says whose shielding may be replaced.
  Shield(*board);
  EXPECT_EQ(Vias(*board), vias);
  EXPECT_EQ(questions_, Lines{"Net CLK has shielding. Do you want replace?"});
  answer_ = true;
  Shield(*board);
  EXPECT_EQ(board->Unions().List().size(), 1u);
  // One of each net: that of the shielded net is left out.
  Tests::Find<Editor::Track>(*board, 2)->SetFlag(Editor::kFlag_Selected, true);
  Shield(*board);
  EXPECT_EQ(board->Unions().List().size(), 2u);
  EXPECT_EQ(shielded, (std::vector<std::size_t>{2, 0, 0, 1}));
  EXPECT_EQ(nets, (std::vector<std::u16string>{u"CLK", u"CLK", u"CLK", u"DATA"}));
  EXPECT_EQ(questions_.size(), 2u);
  Shield(*board, u"removeshielding");
  EXPECT_EQ(Vias(*board), 0u);
}

TEST_F(ViaTools, AShieldingWithoutANetOrAViaEndsQuietly) {
  const Ref<Board> board = Tests::BoardFromText(kLines);
  const auto last_of = [&] { return Calls([&] { Shield(*board); }).back(); };
  EXPECT_EQ(last_of(), "IUIManager.ViaShieldingDialog");
  shield_ = [](Editor::ShieldSettings& settings) { return settings.net = nullptr, true; };
  EXPECT_EQ(last_of(), "IPCB_ViaShieldingOptions.GetOptionsNet");
  shield_ = [](Editor::ShieldSettings&) { return true; };  // no net that shields
  EXPECT_EQ(last_of(), "IPCB_ViaShieldingSU.GetShieldingDone");
  // Texts alone name no net.
  board->objects.ForEach({eTrackObject, eTextObject}, [](Editor::Primitive& object) {
    object.SetFlag(Editor::kFlag_Selected, object.kind == eTextObject);
  });
  EXPECT_EQ(last_of(), "IPCB_ViaShieldingOptions.GetOptionsNet");
  EXPECT_EQ(Vias(*board), 0u);
  EXPECT_TRUE(questions_.empty());
}

TEST_F(ViaTools, OfSeveralShieldingsTheLastOfAPrimitiveAndTheFirstOfANet) {
  const Ref<Board> board = Tests::BoardFromText(kLines);
  shield_ = [&](Editor::ShieldSettings& settings) {
    settings.no_replace_check = true;
    settings.primitives = {Ref<Editor::Primitive>(Tests::Find<Editor::Track>(*board))};
    settings.net = Tests::Find<Editor::Track>(*board)->GetNet();
    settings.distance = Mil(20) * static_cast<TCoord>(board->Unions().List().size() * 2 + 1);
    return ByGround(*board, settings);
  };
  Shield(*board);
  Shield(*board);
  ASSERT_EQ(board->Unions().List().size(), 2u);
  const Ref<IPCB_Primitive> track(Tests::Find<Editor::Track>(*board));
  const auto is_at = [&](const Ref<IPCB_ViaShieldingSU>& found, std::int32_t index) {
    return Probe<IInterface>(found) == Probe<IInterface>(board->Unions().At(index));
  };
  EXPECT_TRUE(is_at(FindShielding(track), 1));
  EXPECT_TRUE(is_at(FindShielding(Ref<IPCB_Net>(board->FindNet(u"CLK"))), 0));
  EXPECT_FALSE(FindShielding(Ref<IPCB_Primitive>()) || FindShielding(Ref<IPCB_Net>()));
}

TEST_F(ViaTools, UnusedPadsGoByTheOptions) {
  const char* const text = R"(
    layers 4
    via 0,0 40/20 net A selected
    via 500,0 40/20 net A
    pad 1000,0 60x60 hole 30 name 1 net A
    track 0,0 1000,0 w10 top net A
  )";
  const auto removed = [](const Board& board) {
    return std::vector<std::size_t>{Tests::Find<Editor::Via>(board)->data.removed.size(),
                                    Tests::Find<Editor::Via>(board, 1)->data.removed.size(),
                                    Tests::Find<Editor::Pad>(board)->data.removed.size()};
  };
  const struct {
    const char* name;
    TUnusedPadsOptions options;
    std::vector<std::size_t> removed;
  } rows[] = {
      {"all", {true, true, false, false, 0}, {3, 3, 3}},
      {"ends stay", {true, true, false, true, 0}, {2, 2, 2}},
      {"vias only", {true, false, false, false, 0}, {3, 3, 0}},
      {"selected pads: none", {false, true, true, false, 0}, {0, 0, 0}},
      {"selected", {true, true, true, false, 2}, {3, 0, 0}},
      {"nothing", {false, false, false, false, 0}, {0, 0, 0}},
      {"a mode that is none", {true, true, false, false, 3}, {0, 0, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Board> board = Tests::BoardFromText(text);
    unused_ = nullptr;
    EXPECT_EQ(Calls([&] { Tools_RemoveUnusedPads(board.Get()); }).back(), "IUIManager.UnusedPadsDialog");
    const auto whole = Tests::DescribeBoard(*board);
    unused_ = [&](TUnusedPadsOptions& options) { return options = row.options, true; };
    Tools_RemoveUnusedPads(board.Get());
    EXPECT_EQ(removed(*board), row.removed);
    unused_ = [](TUnusedPadsOptions& options) { return options = {true, true, false, false, 1}, true; };
    Tools_RemoveUnusedPads(board.Get());
    EXPECT_EQ(Tests::Differences(whole, Tests::DescribeBoard(*board)), "");
  }
}

}  // namespace
}  // namespace Ketril::Tools
