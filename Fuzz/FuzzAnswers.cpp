// The answers file of the command, and what a person types at its terminal: each line is taken or refused
// with its place, and every dialog and pick ends with values of its kind.
#include <cstdint>
#include <sstream>

#include "Editor/Files/BoardFile.h"
#include "Editor/Model/Rooms.h"
#include "Editor/Vias/ViaOptions.h"
#include "Fuzz/Support/Folder.h"
#include "Ketril/Answers.h"
#include "Ketril/Exit.h"
#include "Ketril/Moves.h"

namespace {

using namespace Ketril;
using Command::Answers;
using Fuzz::Check;

Editor::Board& SmallBoard() {
  static const Ref<Editor::Board> board =
      Editor::ReadBoardText(R"((kicad_pcb (version 20171130) (host pcbnew 5)
  (layers (0 F.Cu signal) (31 B.Cu signal) (37 F.SilkS user))
  (net 0 "") (net 1 GND)
  (module R (layer F.Cu) (at 10 10) (fp_text reference R1 (at 0 0) (layer F.SilkS))
    (pad 1 smd rect (at 0 0) (size 1 1) (layers F.Cu) (net 1 GND)))
  (via (at 2 2) (size 0.8) (layers F.Cu B.Cu) (net 1)))
)");
  return *board;
}

template <class Settings>
Settings NewSettings() {
  Settings settings;
  settings.reference = Editor::MakeHost<Editor::Via>();
  return settings;
}

void AskDialogs(Answers& answers) {
  Editor::AlignmentAnswer alignment;
  answers.AlignmentDialog(alignment);
  Check(alignment.horizontal <= eArrangeBottomSideBySide && alignment.vertical <= eArrangeBottomSideBySide,
        "an alignment is one");
  answers.RoomArrangeDialog(*Editor::MakeHost<Editor::RoomArrangeOptions>());
  auto stitch = NewSettings<Editor::StitchSettings>();
  answers.StitchingDialog(SmallBoard(), stitch);
  auto shield = NewSettings<Editor::ShieldSettings>();
  answers.ShieldingDialog(SmallBoard(), shield);
  Check(shield.rows >= 1 && shield.rows <= 3, "a fence has one to three rows");
  for (Editor::ViaSettings* settings :
       {static_cast<Editor::ViaSettings*>(&stitch), static_cast<Editor::ViaSettings*>(&shield)})
    settings->reference->SetNet(nullptr);
  TUnusedPadsOptions unused;
  answers.UnusedPadsDialog(unused);
  TBoardReportOptionSet report;
  answers.BoardReportDialog(report);
  Check((report.Bits() & ~TBoardReportOptionSet::All().Bits()) == 0, "a choice is one");
  TTearDropOptions legacy;
  answers.LegacyTeardropDialog(legacy);
  Check(legacy.Style <= eFilletTearDrop && legacy.Action <= eRemoveTearDrop, "options are options");
  TTeardropOptionsEx teardrops;
  answers.EditTeardropOptions(teardrops);
}

void AskPicks(Answers& answers, const std::string& text) {
  using namespace Editor;
  const auto place = [](const std::string& word) {
    return Command::PlaceOf(SmallBoard(), word, LengthUnit::Millimetre);
  };
  answers.SetPlaces(place, {});
  answers.SetCursor("R1");
  for (int i = 0; i < 3; ++i) (void)answers.Pick(u"Select Component");
  std::vector<Primitive*> objects;
  SmallBoard().objects.ForEach(TObjectSet::All(), [&](Primitive& object) { objects.push_back(&object); });
  const auto chosen = answers.ChooseObject(objects);
  Check(!chosen || *chosen < objects.size(), "one of the objects is chosen");
  std::u16string edited = u"before";
  answers.EditText(u"Enter Room Name", edited);
  (void)answers.Answer(u"Go on?", Platform::TDialogKind::Confirmation, Platform::TDialogButtons::YesNo);
  (void)answers.Answer(u"Confirm Abort Process", Platform::TDialogKind::Confirmation,
                       Platform::TDialogButtons::YesNo);
  (void)place(text);
}

void Run(const std::string& file, const std::string& typed) {
  std::istringstream terminal(typed);
  std::ostringstream shown;
  Answers answers(false, &terminal, shown);
  try {
    if (!file.empty()) answers.ReadFile(Fuzz::WriteFile("answers.txt", file).string());
    answers.CheckViaFields(SmallBoard(), Editor::LengthUnit::Millimetre);
    AskPicks(answers, typed.substr(0, typed.find('\n')));
    AskDialogs(answers);
  } catch (const Command::Failure& failure) {
    Check(failure.Code() == Command::kExit_Usage && *failure.what() != '\0', "a failure says what is wrong");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  Run(text, "");
  Run("", text);
  Run(text.substr(0, size / 2), text.substr(size / 2));
  return 0;
}
