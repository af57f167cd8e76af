// Project files: net classes and rules are read or refused; the board stays sound, and every net finds its
// class and its clearance.
#include <cstdint>

#include "Editor/Files/BoardFile.h"
#include "Editor/Files/CompanionFiles.h"
#include "Editor/Rules/ClassRules.h"
#include "Editor/Rules/Clearance.h"
#include "Fuzz/Support/Check.h"
#include "Tests/Support/BoardInvariants.h"

namespace {

constexpr const char* kBoard = R"((kicad_pcb (version 20221018) (generator x)
  (layers (0 "F.Cu" signal) (31 "B.Cu" signal))
  (net 0 "") (net 1 "GND") (net 2 "CLK_P")
  (segment (start 1 1) (end 2 2) (width 0.2) (layer "F.Cu") (net 1))
  (segment (start 1 1.3) (end 2 2.3) (width 0.2) (layer "F.Cu") (net 2))
  (via (at 2.1 2.5) (size 0.8) (drill 0.4) (layers "F.Cu" "B.Cu") (net 1)))
)";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Ketril;
  const Ref<Editor::Board> board = Editor::ReadBoardText(kBoard);
  try {
    Editor::ReadProject(*board, std::string(reinterpret_cast<const char*>(data), size));
  } catch (const std::exception& error) {
    Fuzz::Check(*error.what() != '\0', "a failure has a reason");
  }
  Editor::AddClassRules(*board);
  Fuzz::CheckNothing(Tests::BrokenInvariant(*board), "the board");
  board->objects.ForEach({eNetObject}, [&](const Editor::Primitive& net) {
    (void)board->ClassOf(Editor::As<Editor::Net>(&net));
  });
  Fuzz::Check(board->setup.hole_clearance >= -INT32_MAX, "the clearance is a length");
  for (const Editor::Violation& violation : board->Clearances().CheckBoard())
    Fuzz::Check(!Editor::DescribeViolation(violation).empty(), "a violation is told");
  return 0;
}
