// The JSON beside a board: it is read or refused; what was read is written so that it reads back as the same,
// and its rules can be asked about the board.
#include <cstdint>

#include "Editor/Files/BoardFile.h"
#include "Editor/Files/CompanionFiles.h"
#include "Editor/Rules/ClassRules.h"
#include "Editor/Rules/Clearance.h"
#include "Editor/Rules/ComponentChecks.h"
#include "Editor/Vias/ViaUnions.h"
#include "Fuzz/Support/Check.h"
#include "Tests/Support/BoardInvariants.h"
#include "Tests/Support/DescribeBoard.h"

namespace {

using namespace Ketril;
using Editor::Board;
using Fuzz::Check;

constexpr const char* kBoard = R"((kicad_pcb (version 20221018) (generator x)
  (layers (0 "F.Cu" signal) (31 "B.Cu" signal) (37 "F.SilkS" user))
  (net 0 "") (net 1 "GND") (net 2 "CLK")
  (footprint "R" (layer "F.Cu") (tstamp f1) (at 10 10) (fp_text reference "R1" (at 0 0) (layer "F.SilkS") (tstamp f2))
    (pad "1" smd rect (at 1 0) (size 1 1) (layers "F.Cu") (net 1 "GND") (tstamp f3)))
  (footprint "U" (layer "B.Cu") (tstamp f4) (at 11 10) (fp_text reference "U1" (at 0 0) (layer "F.SilkS") (tstamp f5)))
  (segment (start 1 1) (end 2 2) (width 0.2) (layer "F.Cu") (net 1) (tstamp a1))
  (arc (start 1 1) (mid 2 1) (end 2 2) (width 0.2) (layer "F.Cu") (net 2) (tstamp a2))
  (via (at 2.1 2.5) (size 0.8) (drill 0.4) (layers "F.Cu" "B.Cu") (net 2) (tstamp a3)))
)";

// Null for what is refused.
Ref<Board> Read(const std::string& text) {
  Ref<Board> board = Editor::ReadBoardText(kBoard);
  try {
    Editor::ReadExtras(*board, text);
  } catch (const std::exception& error) {
    Check(*error.what() != '\0', "a failure has a reason");
    return {};
  }
  return board;
}

void AskRules(Board& board) {
  Editor::AddClassRules(board);
  for (const auto& violation : board.Clearances().CheckBoard())
    Check(!Editor::DescribeViolation(violation).empty(), "a violation is told");
  (void)Editor::CheckComponentRules(board, {eRule_ConfinementConstraint, eRule_ComponentClearance});
  for (const TUnionKind kind : {eUnionKind_ViaStitching, eUnionKind_ViaShielding})
    board.Unions().Remove(kind);
  Fuzz::CheckNothing(Tests::BrokenInvariant(board), "the board without its unions");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Ref<Board> board = Read(std::string(reinterpret_cast<const char*>(data), size));
  if (!board) return 0;
  Fuzz::CheckNothing(Tests::BrokenInvariant(*board), "the board");
  const std::string text = Editor::ExtrasText(*board);
  if (!text.empty()) {
    const Ref<Board> again = Read(text);
    Check(again.Get() != nullptr, "what is written can be read");
    Check(Editor::ExtrasText(*again) == text, "what was read is written as it was");
    Fuzz::CheckNothing(
        Tests::Differences(Tests::DescribeBoard(*board, true), Tests::DescribeBoard(*again, true)),
        "the same board");
  }
  AskRules(*board);
  return 0;
}
