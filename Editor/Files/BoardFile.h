// Reading and saving boards: .kicad_pcb files of the versions 20171130 to 20241229.
//
// Beside the board NAME.kicad_pcb may stand the project file NAME.kicad_pro, which has the net classes from
// version 20200628 on, and NAME.ketril.json, which has what the board file has no word for: union indexes,
// and the teardrop marks of tracks and arcs. It is there only when there is something to tell. A companion
// that cannot be read is a warning.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// What is wrong with a file without making it unreadable, "file:line:column: message".
using FileWarnings = std::vector<std::string>;

// Raises FileError, see SExpression.h.
Ref<Board> ReadBoard(const std::filesystem::path& path, FileWarnings* warnings = nullptr);
// The board alone; `path` names it in messages.
Ref<Board> ReadBoardText(std::string text, const std::string& path = {}, FileWarnings* warnings = nullptr);

// The board as a file's text: that which it was read from, but for the words of what changed. A board that
// was read from no text is written in its version from the start. New objects get an identifier.
std::string WriteBoardText(Board& board);

// Writes the board and, when need be, NAME.ketril.json, each so that an interruption leaves the old file
// whole. The board is at `path` from then on. Raises FileError, with nothing written: a folder in the
// target's place, no permission, a full disk.
void SaveBoard(Board& board, const std::filesystem::path& path);

}  // namespace Ketril::Editor
