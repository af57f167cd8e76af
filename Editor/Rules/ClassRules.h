// The clearances of net classes as rules of the board, so that tools meet them in its lists.
#pragma once

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// A clearance rule for each class of nets that has a clearance, after all rules that are there already, the
// greater gaps first; the class Default stands for all nets, and last. They live as long as the board is
// open: the classes are what is saved.
void AddClassRules(Board& board);

}  // namespace Ketril::Editor
