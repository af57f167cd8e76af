// What holds of a board between any two commands.
#pragma once

#include <cstdint>
#include <string>

#include "Editor/Model/Board.h"

namespace Ketril::Tests {

// What does not hold, "" when all does: each object is listed once, in order, and is the board's; groups and
// their members, nets and their objects know each other; the index finds what lies in an area; the selection
// is the objects that are marked; every iterator was handed back and the progress is closed. So many
// iterators are `lost` whose handing back failed.
std::string BrokenInvariant(Editor::Board& board, std::int64_t lost = 0);

}  // namespace Ketril::Tests
