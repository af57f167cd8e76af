// Pick-and-place files: whatever is in one, the tool ends without an exception, what is moveable alone has
// moved, every line is answered for once, and where the tool was content no error was shown.
#include <map>
#include <string>

#include "Editor/Client/Client.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Model/Component.h"
#include "Fuzz/Support/Folder.h"
#include "Interfaces/Tools.h"

namespace {

using namespace Ketril;
using Fuzz::Check;

constexpr const char* kBoard = R"((kicad_pcb (version 20171130) (host pcbnew 5)
  (layers (0 F.Cu signal) (31 B.Cu signal) (36 B.SilkS user) (37 F.SilkS user))
  (net 0 "")
  (module R (layer F.Cu) (at 10 10 30) (fp_text reference R1 (at 0 0) (layer F.SilkS))
    (fp_text value 1k (at 0 1) (layer F.SilkS)) (pad 1 smd rect (at 1 0) (size 1 1) (layers F.Cu)))
  (module U (layer B.Cu) (at 20 10) (fp_text reference U1 (at 0 0) (layer B.SilkS))
    (pad 1 smd rect (at 1 0) (size 1 2) (layers B.Cu)) (pad 2 smd rect (at 0 3) (size 1 2) (layers B.Cu)))
  (module J locked (layer F.Cu) (at 30 10) (fp_text reference J1 (at 0 0) (layer F.SilkS)))
))";

int errors = 0;
int skipped = 0;
std::map<std::int32_t, TPlacementOutcome> lines;

const Editor::ClientInstallation& Installation() {
  static const Editor::ClientInstallation installation = [] {
    Editor::ClientSetup setup;
    setup.confirm = [](const std::u16string&) { return false; };
    setup.show_message = [](const std::u16string&, Platform::TDialogKind) { ++errors; };
    setup.messages.add = [](const Editor::PanelMessage&) { ++skipped; };
    setup.record_placement = [](const Editor::PlacementLine& line) {
      Check(lines.emplace(line.line, line.outcome).second, "a line is answered for once");
    };
    return Editor::ClientInstallation(Editor::MakeHost<Editor::Client>(std::move(setup)));
  }();
  return installation;
}

void Run(const std::string& bytes, const char* name) {
  const std::filesystem::path file = Fuzz::WriteFile(name, bytes);
  static const Ref<Editor::Board> board = Editor::ReadBoardText(kBoard);
  board->journal.Begin();
  errors = skipped = 0;
  lines.clear();
  Tools_PlaceFromFile(board.Get(), file.u16string());
  std::filesystem::remove(file);

  int bad = 0, placed = 0;
  for (const auto& [line, outcome] : lines) {
    bad += outcome >= ePlacement_WrongColumns ? 1 : 0;
    placed += outcome == ePlacement_Placed ? 1 : 0;
  }
  Check(errors <= 1 && (skipped == 0 || errors == 1), "skipped lines are told at the end, once");
  Check(bad <= skipped + errors, "a bad line is told");
  int components = 0;
  board->objects.ForEach({eComponentObject}, [&](const Editor::Primitive& object) {
    ++components;
    const auto& component = static_cast<const Editor::Component&>(object);
    if (component.Designator() == u"J1") Check(!object.file_changed, "a locked component stays");
    if (placed == 0 && bad == 0) Check(!object.file_changed, "nothing was placed");
  });
  Check(components == 3, "the components are there");
  board->journal.Undo();
}

}  // namespace

// Each input is read as it is, and as the data behind a good head of each layout.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Installation();
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  Run(bytes, "as-it-is.csv");
  Run("Norvan Studio Pick and Place Locations\nUnits used: mm\n\n"
      "Designator Comment Layer Center-X(mm) Center-Y(mm) Rotation\n" +
          bytes,
      "headed.txt");
  Run("Designator Pattern\n" + bytes, "blanks.txt");
  Run("\"Designator\",\"Pattern\"\n" + bytes, "quoted.csv");
  return 0;
}
