// Dissolves composite objects (components, polygons, dimensions, coordinates) into free primitives.
#pragma once

#include <string>

#include "Interfaces/Types.h"

namespace Ketril::Tools {

class TBoard;
class TGroup;

// Each member is copied onto the board as a free object, then the group is taken off, and its members with
// it; so at no time are the primitives missing. `kinds` says what may be ungrouped. A selected object of
// these kinds that has no members is taken off all the same.
//
// With `selected` true the groups are those of the selection, or, when nothing at all is selected, the one
// under the cursor. `question` is asked once, and says so when any of them is locked; in test mode the answer
// is Yes. With `selected` false the user picks groups one at a time until he cancels; a locked one has a
// question of its own, on whose No the command ends, while a No to `question` lets him pick on. The document
// counts as changed as soon as a group was picked.
//
// Raises EHostError; what was ungrouped until then stays so. Where the user has to point at something, a
// board that does not offer IPCB_BoardPicks raises EIntfCastError.
void UnGroup(TBoard* board, bool selected, TObjectSet kinds, const std::u16string& question);

// One group. The copies of a component's members keep their own nets, those of a polygon's get the polygon's;
// others are of no net.
void UnGroupOne(TBoard* board, TGroup* group);

}  // namespace Ketril::Tools
