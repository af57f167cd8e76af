#include "DLLs/Tools/Teardrops/TeardropTools.h"

#include "DLLs/Tools/Teardrops/TeardropBuilder.h"

namespace Ketril::Tools {

namespace {

// The board's own bracket. What a run did stays also when it failed, so that the end is always the same.
class TBoardEdit {
 public:
  explicit TBoardEdit(TBoard* board) : board_(board) { board_->BeginModify(true); }
  TBoardEdit(const TBoardEdit&) = delete;
  TBoardEdit& operator=(const TBoardEdit&) = delete;
  ~TBoardEdit() noexcept(false) {
    if (std::uncaught_exceptions() == exceptions_) {
      board_->EndModify(nullptr);
    } else if (const Ref<IPCB_Primitive> board = board_->IPrimitive()) {
      board->EndModify();
    }
  }

 private:
  TBoard* board_;
  int exceptions_ = std::uncaught_exceptions();
};

}  // namespace

void TearDrops(TBoard* board, IParameterList* parameters) {
  const TBoardEdit edit(board);
  TTeardropBuilder(board, parameters).Execute();
}

TTeardropOptionsEx GetCurrentTeardropOptions(TBoard* board) {
  return TTeardropBuilder(board, nullptr).GetTeardropOptions();
}

void RemoveTearDropsOnSelected(TBoard* board) {
  TTeardropBuilder builder(board, nullptr);
  builder.SilentMode = true;
  builder.FOptions.Flags |= TeardropFlag_Selected;
  builder.RemoveDropsOnSelected({eArcObject, ePadObject, eViaObject, eTrackObject});
  builder.FlushFilletList();
}

void RemoveDropsViolation(TBoard* board) {
  TTeardropBuilder(board, nullptr).RemoveDropsViolation();
}

}  // namespace Ketril::Tools
