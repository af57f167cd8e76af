// The bracket of a change: what surrounds the writes to an object that is on a board.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Frame/RunFinally.h"

namespace Ketril::Tools {

// Begins the edit of an object, runs `edit`, ends the edit and runs `after`, these two also when `edit`
// raises: what it did until then stays, and no bracket is left open. Raises what `edit` raises, and
// EHostError when the host fails.
template <class Edit, class After>
void EditInBracket(TPrimitive* primitive, Edit&& edit, After&& after) {
  primitive->BeginModify(true);
  RunFinally(edit, [&] {
    primitive->EndModify(nullptr);
    after();
  });
}

template <class Edit>
void EditInBracket(TPrimitive* primitive, Edit&& edit) {
  EditInBracket(primitive, edit, [] {});
}

}  // namespace Ketril::Tools
