// A run of the teardrop tool: its options and dialog, ESC, and its report.
#include "DLLs/Tools/Teardrops/PCBTeardropOptionsModel.h"
#include "Platform/Messages.h"
#include "Platform/Text.h"
#include "Tests/DLLs/Tools/Teardrops/TearDropsBoard.h"

namespace Ketril {
namespace {

using TearDropsRun = TearDropsBoard;

TEST_F(TearDropsRun, AConfirmedEscapeKeepsWhatIsDone) {
  for (const bool confirms : {false, true}) {
    confirms_ = confirms;
    const Ref<Editor::Board> board = BoardFromText(
        "via 0,0 30/15 net A ; via 400,0 30/15 net A ; track 0,0 400,0 w10 top net A ;"
        "track 200,0 200,200 w10 top net A");
    Platform::PostMessage({.Kind = Platform::WM_KEYDOWN, .WParam = Platform::VK_ESCAPE});
    Run(*board, kDefault);
    EXPECT_EQ(Count(*board), confirms ? 1 : 3);
    EXPECT_TRUE(board->document_changed);
  }
}

TEST_F(TearDropsRun, TheReportListsWhatWasVisited) {
  const Tests::TempFolder folder;
  const Ref<Editor::Board> board = BoardFromText(
      "via 0,0 30/15 net A selected ; via 400,0 30/15 net A ; pad 200,0 60x60 top net A selected ;"
      "track 0,0 400,0 w10 top net A");
  board->file.path = (folder / "Main.kicad_pcb").string();
  const auto descriptor = [](auto* object) {
    std::u16string text;
    EXPECT_EQ(object->GetState_DescriptorString(text), Status::Ok);
    return Platform::ToUtf8(text) + "\n";
  };
  const std::string pad = descriptor(Tests::Find<Editor::Pad>(*board));
  const std::string via = descriptor(Tests::Find<Editor::Via>(*board));
  const struct {
    std::int32_t flags;
    std::string text;  // without the line of the date; none: no report
  } rows[] = {
      {kDefault | TeardropFlag_Report | TeardropFlag_Selected,
       "Teardrop Report Main.kicad_pcb\n\nPads visited                : 1\n\n"
       "Vias visited                : 1\n\nPad teardrops failed : 0\n\n" +
           pad + "\nVia teardrops failed : 0\n\n" + via + "\n"},
      {TeardropFlag_Add | TeardropFlag_Track | TeardropFlag_Report, "Teardrop Report Main.kicad_pcb\n\n"},
      {(kDefault | TeardropFlag_Report) & ~TeardropFlag_Add, ""},
  };
  for (const auto& row : rows) {
    opened_.clear();
    Run(*board, row.flags);
    EXPECT_EQ(opened_, row.text.empty() ? "" : (folder / "Main.REP").string());
    EXPECT_EQ(Report(), row.text);
  }
}

TEST_F(TearDropsRun, ParametersReplaceWhatTheyName) {
  const struct {
    const char16_t *name, *value;
    bool taken;
    double pads_length, tracks_width;
    std::int32_t flags;
  } rows[] = {
      {u"TeardropParam_PercentForPads_Length", u"12.5", true, 12.5, -1, kDefault},
      {u"TeardropParam_PercentForPads_Length", u"much", false, 100, -1, kDefault},
      {u"TeardropParam_PercentForTracks_Width", u"50", true, 100, -1, kDefault},
      {u"TeardropParam_FlagsEx", u"33", true, 100, -1, 33},
      {u"TeardropParam_FlagsEx", u"33.5", false, 100, -1, kDefault},
      {u"TeardropParam_Flags", u"33", false, 100, -1, kDefault},
  };
  for (const auto& row : rows) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    parameters->AddParameter(row.name, row.value);
    TTeardropOptionsEx options = Tools::DefaultTeardropOptions();
    EXPECT_EQ(Tools::ReadTeardropParameters(parameters.Get(), options), row.taken);
    EXPECT_EQ(options.SizePercentArray[eTeardropObject_Pad].Length, row.pads_length);
    EXPECT_EQ(options.SizePercentArray[eTeardropObject_Track].Width, row.tracks_width);
    EXPECT_EQ(options.Flags, row.flags);
  }
}

TEST_F(TearDropsRun, TheDialogDecidesAndIsRemembered) {
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
