// The footprints of a board as a library of footprints, for the tools that report on one.
#pragma once

#include <string>

#include "Editor/Model/Board.h"
#include "Editor/Model/Library.h"

namespace Ketril::Command {

// One component for each footprint that the board's components have, in the order in which they come; the
// current one is that of the component of that designator. Raises Failure when there is no such component; an
// empty designator leaves none current.
Ref<Editor::Library> FootprintsOf(const Editor::Board& board, const std::string& designator);

// A board that holds copies of what the component consists of, as it lies on its board; nothing without a
// designator. It has the layers, the unit and the name of its board.
Ref<Editor::Board> FootprintBoard(const Editor::Board& board, const std::string& designator);

}  // namespace Ketril::Command
