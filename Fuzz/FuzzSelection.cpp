// The selection expression: whatever is typed, it is taken or refused with a place within the text, and what
// is taken can be asked about every object. As the scope of a rule it means the same, and nothing is refused.
#include <cstdint>
#include <string>

#include "Editor/Files/BoardFile.h"
#include "Editor/Rules/Rule.h"
#include "Editor/Selection/Selection.h"
#include "Fuzz/Support/Check.h"
#include "Platform/Text.h"

namespace {

using namespace Ketril::Editor;
using Ketril::Fuzz::Check;

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

// Asks every object. A rule's scope that is blank is for all.
void CheckScope(const std::string& text, const Selection* selection) {
  static const Ketril::Ref<Rule> rule = [] {
    Ketril::Ref<Rule> made = MakeRule(Ketril::eRule_Clearance);
    SmallBoard()->Load(made.Get());
    return made;
  }();
  rule->data.scope1 = Ketril::Platform::ToUtf16(text);
  SmallBoard()->objects.ForEach(Ketril::TObjectSet::All(), [&](const Primitive& object) {
    const bool has = rule->Scope1Has(&object);
    Check(!selection || has == selection->Matches(object, *SmallBoard()),
          "a scope means what a selection does");
    Check(selection || text.empty() || !has, "what is no expression has no object");
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    const Selection selection(text);
    Check(selection.Apply(*SmallBoard()) <= SmallBoard()->objects.Count(), "no object is counted twice");
    CheckScope(text, &selection);
  } catch (const SelectionError& error) {
    Check(error.Column() >= 1 && error.Column() <= size + 1, "the place is in the text");
    CheckScope(text, nullptr);
  }
  return 0;
}
