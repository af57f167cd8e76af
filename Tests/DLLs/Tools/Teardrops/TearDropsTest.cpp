// Teardrops on whole boards, through the exports.
#include <gtest/gtest.h>

#include <algorithm>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Rules/Clearance.h"
#include "Interfaces/Tools.h"
#include "Platform/Messages.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril {
namespace {

using Tests::BoardFromText;
using Tests::DescribeBoard;
using Tests::Mil;

class TearDrops : public testing::Test {
 protected:
  ~TearDrops() override { Tools::ReleasePCBServer(); }

  static void Run(Editor::Board& board, std::int32_t flags,
                  std::initializer_list<std::pair<const char16_t*, const char16_t*>> sizes = {}) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    const std::string text = std::to_string(flags);
    parameters->AddParameter(u"TeardropParam_FlagsEx", std::u16string(text.begin(), text.end()));
    for (const auto& [name, value] : sizes) parameters->AddParameter(name, value);
    Tools_TearDrops(&board, parameters.Get());
  }
  static int Count(const Editor::Board& board) {
    int count = 0;
    board.objects.ForEach({eRegionObject}, [&](const Editor::Primitive& region) {
      if (region.Has(Editor::kFlag_TearDrop)) ++count;
    });
    return count;
  }
  static int CountFor(const char* text, std::int32_t flags = kDefault) {
    const Ref<Editor::Board> board = BoardFromText(text);
    Run(*board, flags);
    return Count(*board);
  }

  static constexpr std::int32_t kDefault = 1000;
  bool accept_ = false;
  TTeardropOptionsEx shown_;
  Editor::ClientSetup ClientOfThis() {
    Editor::ClientSetup setup;
    setup.teardrop_dialog = [this](TTeardropOptionsEx& options) {
      shown_ = options;
      options.SizePercentArray[eTeardropObject_Via].Length = 44;
      return accept_;
    };
    return setup;
  }
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(ClientOfThis())};
};

TEST_F(TearDrops, WhoGetsHowMany) {
  constexpr std::int32_t kAdd = TeardropFlag_Add | TeardropFlag_ScaleWidth;
  const struct {
    const char* name;
    const char* board;
    std::int32_t flags;
    int count;
  } rows[] = {
      {"via", "via 0,0 30/15 net A ; track 0,0 200,0 w10 top net A", kDefault, 1},
      {"track through a via: both sides in one", "via 0,0 30/15 net A ; track -200,0 200,0 w10 top net A",
       kDefault, 1},
      {"round surface pad", "pad 0,0 60x60 round top net A ; track 0,0 200,0 w10 top net A", kDefault, 1},
      {"rectangle crossed twice", "pad 0,0 60x40 rect top net A ; track -200,0 200,0 w10 top net A", kDefault,
       2},
      {"a track wider than the pad", "pad 0,0 20x20 round top net A ; track 0,0 200,0 w30 top net A",
       kDefault, 0},
      {"vias alone", "pad 0,0 60x60 round top net A ; via 200,0 30/15 net A ; track 0,0 200,0 w10 top net A",
       kAdd | TeardropFlag_Via, 1},
      {"surface pads alone",
       "pad 0,0 60x60 round hole 30 net A ; pad 200,0 60x60 top net A ; track 0,0 200,0 w10 top net A",
       kAdd | TeardropFlag_Pad, 1},
      {"a narrow track leaves a wide one", "track -200,0 200,0 w40 top net A ; track 0,0 0,200 w10 top net A",
       kDefault, 1},
      {"T of one width", "track -200,0 200,0 w10 top net A ; track 0,0 0,200 w10 top net A", kDefault, 1},
      {"cross", "track -200,0 200,0 w10 top net A ; track 0,-200 0,200 w10 top net A", kDefault, 1},
      {"junction on a via is the via's",
       "via 0,0 30/15 net A ; track -200,0 200,0 w10 top net A ; track 0,0 0,200 w10 top net A", kDefault, 2},
      {"corner of two", "track -200,0 0,0 w10 top net A ; track 0,0 0,200 w10 top net A", kDefault, 0},
      {"keep-out track", "via 0,0 30/15 net A ; track 0,0 200,0 w10 top net A keepout", kDefault, 0},
      {"selection: the via is selected",
       "via 0,0 30/15 net A selected ; via 200,0 30/15 net A ; track 0,0 200,0 w10 top net A",
       kDefault | TeardropFlag_Selected, 1},
      {"nothing asked for", "via 0,0 30/15 net A ; track 0,0 200,0 w10 top net A", kAdd, 0},
      {"empty board", "", kDefault, 0},
  };
  for (const auto& row : rows) EXPECT_EQ(CountFor(row.board, row.flags), row.count) << row.name;
}

constexpr const char* kMixed = R"(
  via 0,0 30/15 net A
  pad 300,0 60x40 rect top net A rot 30
  pad 600,0 50x50 round hole 25 net A
  track -300,0 300,0 w10 top net A
  track 300,0 600,0 w10 top net A
  track 150,0 150,300 w10 top net A
  track -300,0 -300,300 w40 top net A
  track 150,300 450,300 w10 top net A
  arc 600,300 r300 180..270 w10 top net A
  via 150,300 30/15 net A
)";

TEST_F(TearDrops, AgainIsTheSameAndRemovingGivesTheBoardBack) {
  for (const std::int32_t straight : {0, int{TeardropFlag_Straight}}) {
    const Ref<Editor::Board> board = BoardFromText(kMixed);
    const std::vector<std::string> before = DescribeBoard(*board, true);
    Run(*board, kDefault | straight);
    const std::vector<std::string> once = DescribeBoard(*board, true);
    EXPECT_GT(Count(*board), 5);
    Run(*board, kDefault | straight);
    EXPECT_EQ(DescribeBoard(*board, true), once);
    Run(*board, (kDefault | straight) & ~TeardropFlag_Add);
    EXPECT_EQ(DescribeBoard(*board, true), before);
  }
}

TEST_F(TearDrops, WhatBreaksAClearanceComesOffUnlessForced) {
  // A straight flank passes 4 mil beside the end of a track of another net.
  constexpr const char* kBoard =
      "via 0,0 40/20 net A ; track 0,0 200,0 w10 top net A ; track 25,19 200,19 w6 top net B";
  const Ref<Editor::Board> board = BoardFromText(kBoard);
  board->setup.clearance = Mil(6);
  ASSERT_TRUE(board->Clearances().CheckBoard().empty());
  Run(*board, kDefault | TeardropFlag_Straight | TeardropFlag_Force,
      {{u"TeardropParam_PercentForVias_Length", u"100"}, {u"TeardropParam_PercentForVias_Width", u"100"}});
  EXPECT_EQ(Count(*board), 1);
  EXPECT_FALSE(board->Clearances().CheckBoard().empty());
  Tools_RemoveDropsViolation(board.Get());
  EXPECT_EQ(Count(*board), 0);
  Run(*board, kDefault | TeardropFlag_Straight,
      {{u"TeardropParam_PercentForVias_Length", u"100"}, {u"TeardropParam_PercentForVias_Width", u"100"}});
  EXPECT_EQ(Count(*board), 0);
}

TEST_F(TearDrops, MarksAndSelection) {
  const Ref<Editor::Board> board = BoardFromText(kMixed);
  Run(*board, kDefault);
  int of_pads = 0, of_vias = 0;
  board->objects.ForEach({eRegionObject}, [&](Editor::Primitive& region) {
    EXPECT_EQ(region.GetNet()->data.name, u"A");
    EXPECT_EQ(region.state.layer, TV7_Layer(eV6_TopLayer));
    of_pads += region.Has(Editor::kFlag_Misc1) ? 1 : 0;
    of_vias += region.Has(Editor::kFlag_Misc2) ? 1 : 0;
  });
  EXPECT_GE(of_pads, 4);
  EXPECT_GE(of_vias, 2);
  const int all = Count(*board);
  Editor::Via* via = Tests::Find<Editor::Via>(*board);
  via->SetFlag(Editor::kFlag_Selected, true);
  Tools_RemoveTearDropsOnSelected(board.Get());
  EXPECT_EQ(Count(*board), all - 1);
}

TEST_F(TearDrops, TheDialogDecidesAndIsRemembered) {
  const Ref<Editor::Board> board = BoardFromText("via 0,0 30/15 net A ; track 0,0 200,0 w10 top net A");
  Tools_TearDrops(board.Get(), nullptr);
  EXPECT_EQ(Count(*board), 0);
  EXPECT_FALSE(board->document_changed);
  EXPECT_EQ(shown_.Flags, kDefault);
  EXPECT_EQ(Tools_GetCurrentTeardropOptions(board.Get()).SizePercentArray[eTeardropObject_Via].Length, 30);
  accept_ = true;
  Tools_TearDrops(board.Get(), nullptr);
  EXPECT_EQ(Count(*board), 1);
  EXPECT_EQ(Tools_GetCurrentTeardropOptions(board.Get()).SizePercentArray[eTeardropObject_Via].Length, 44);
  EXPECT_EQ(Tools_GetCurrentTeardropOptions(board.Get()).SizePercentArray[eTeardropObject_Track].Width, -1);
}

}  // namespace
}  // namespace Ketril
