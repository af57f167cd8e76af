// Board files: any text is read or refused with a place in it; what was read is written back to the byte,
// also when every object claims to have changed; and what was moved and came back, too.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Editor/Files/BoardFile.h"
#include "Editor/Files/SExpression.h"
#include "Fuzz/Support/Check.h"

namespace {

using namespace Ketril;
using Fuzz::Check;
using namespace Ketril::Editor;

// As it was read in, each object anew.
void CheckWriting(Board& board) {
  Check(WriteBoardText(board) == board.file.text, "an unchanged board is its text");
  board.objects.ForEach(TObjectSet::All(), [](Primitive& object) { object.file_changed = true; });
  Check(WriteBoardText(board) == board.file.text, "words that say what is so stay");
}

// What a changed board says can be read, and is stable from then on.
void CheckMoving(Board& board) {
  board.objects.ForEach(TObjectSet::All(), [](Primitive& object) {
    if (!object.Owner()) object.Move(1000, -500);
  });
  try {
    const Ref<Board> again = ReadBoardText(WriteBoardText(board), "moved");
    Check(WriteBoardText(*again) == again->file.text, "a moved board is its text");
  } catch (const FileError& error) {
    // Near the end of the range a move goes beyond it.
    Check(error.message.find("out of range") != std::string::npos, "what is written can be read");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FileWarnings warnings;
  Ref<Board> board;
  try {
    board = ReadBoardText(std::string(reinterpret_cast<const char*>(data), size), "fuzz", &warnings);
  } catch (const FileError& error) {
    Check(error.line > 0 && error.column > 0 && !error.message.empty(), "a failure has a place and a reason");
    return 0;
  }
  CheckWriting(*board);
  CheckMoving(*board);
  return 0;
}
