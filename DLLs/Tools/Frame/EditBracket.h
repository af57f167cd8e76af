// The bracket of a change: what surrounds the writes to an object that is on a board.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// The object is erased from the view and its edit begun; `End` closes the edit, has the object drawn at its
// new place and marks the document as changed:
//
//   EditBracket edit(board, track);
//   track->SetWidth(width);
//   edit.End();
//
// A bracket that ends without `End`, because the writes raised, abandons the edit: the host cancels it, the
// object is drawn as it was, and the document is not marked. Each step raises EHostError when the host fails.
class EditBracket {
 public:
  EditBracket(TBoard* board, TPrimitive* primitive);
  ~EditBracket();
  EditBracket(const EditBracket&) = delete;
  EditBracket& operator=(const EditBracket&) = delete;

  // Once, as the last step.
  void End();

 private:
  TBoard* board_;
  TPrimitive* primitive_;
  bool open_ = false;
};

}  // namespace Ketril::Tools
