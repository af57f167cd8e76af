#include "DLLs/Tools/Frame/EditBracket.h"

namespace Ketril::Tools {

EditBracket::EditBracket(TBoard* board, TPrimitive* primitive) : board_(board), primitive_(primitive) {
  board_->ViewManager()->GraphicallyInvalidatePrimitive(primitive_);
  primitive_->BeginModify(true);
  open_ = true;
}

EditBracket::~EditBracket() {
  if (!open_) return;
  try {
    primitive_->CancelModify(true);
    board_->ViewManager()->GraphicallyInvalidatePrimitive(primitive_);
  } catch (...) {  // the exception that is on its way says more
  }
}

void EditBracket::End() {
  primitive_->EndModify(nullptr);
  open_ = false;
  board_->ViewManager()->GraphicallyInvalidatePrimitive(primitive_);
  board_->SetState_DocumentHasChanged();
}

}  // namespace Ketril::Tools
