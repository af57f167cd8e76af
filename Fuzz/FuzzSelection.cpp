// The selection expression: whatever is typed, it is taken or refused with a place within the text, and what
// is taken can be asked about every object.
#include <cstdint>
#include <cstdlib>

#include "Editor/Files/BoardFile.h"
#include "Editor/Selection/Selection.h"

namespace {

const Ketril::Ref<Ketril::Editor::Board>& SmallBoard() {
  static const auto board = Ketril::Editor::ReadBoardText(
      R"((kicad_pcb (version 20171130) (host pcbnew 5)
  (layers (0 F.Cu signal) (31 B.Cu signal) (37 F.SilkS user))
  (net 0 "") (net 1 GND)
  (net_class Default "" (clearance 0.2) (trace_width 0.25) (via_dia 0.8) (via_drill 0.4) (add_net GND))
  (module R (layer F.Cu) (at 10 10) (fp_text reference R1 (at 0 0) (layer F.SilkS))
    (pad 1 smd rect (at 0 0) (size 1 1) (layers F.Cu) (net 1 GND)))
  (segment (start 1 1) (end 2 2) (width 0.2) (layer F.Cu) (net 1))
  (via (at 2 2) (size 0.8) (layers F.Cu B.Cu) (net 1)))
)");
  return board;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Ketril::Editor;
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    const Selection selection(text);
    if (selection.Apply(*SmallBoard()) > SmallBoard()->objects.Count()) std::abort();
  } catch (const SelectionError& error) {
    if (error.Column() < 1 || error.Column() > size + 1) std::abort();
  }
  return 0;
}
