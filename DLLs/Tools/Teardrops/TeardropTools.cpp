#include "DLLs/Tools/Teardrops/TeardropTools.h"

#include "DLLs/Tools/Teardrops/LegacyTeardropBuilder.h"
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

// One operation of the older builder on one object, which may be of any kind.
template <auto remove>
void RemoveFromObject(TBoard* board, IPCB_Primitive* primitive) {
  if (board->IsLibrary()) return;
  TTearDroper builder(board, nullptr);
  (builder.*remove)(TPrimitive::Create(Ref<IPCB_Primitive>(primitive)));
}

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

void LegacyTearDrops(TBoard* board, IParameterList* parameters) {
  const TBoardEdit edit(board);
  TTearDroper(board, parameters).Execute();
}

void ShowTearDropsForNet(TBoard* board, IPCB_Net* net, bool show) {
  if (net) TTearDroper(board, nullptr).ShowDropsForNet(TNet::Create(Ref<IPCB_Primitive>(net)), show);
}

void RemoveTearDropsFromPadVia(TBoard* board, IPCB_Primitive* primitive) {
  RemoveFromObject<&TTearDroper::RemoveDropsFromTouchingObjects>(board, primitive);
}

void RemoveTearDropsFromComponent(TBoard* board, IPCB_Primitive* primitive) {
  RemoveFromObject<&TTearDroper::RemoveDropsFromComponent>(board, primitive);
}

void RemoveTearDropsFromConnectedTracks(TBoard* board, IPCB_Primitive* primitive) {
  RemoveFromObject<&TTearDroper::RemoveDropsFromConnectedTracks>(board, primitive);
}

void RemoveTearDropsFromTouch(TBoard* board, IPCB_Primitive* primitive) {
  if (board->IsLibrary()) return;
  const TTemporary<TPrimitive> touched(TPrimitive::Create(Ref<IPCB_Primitive>(primitive)));
  const TObjectId kind = touched->ObjectID();
  if (kind == ePadObject || kind == eViaObject) RemoveTearDropsFromPadVia(board, primitive);
  if (kind == eTrackObject || kind == eArcObject) RemoveTearDropsFromConnectedTracks(board, primitive);
}

}  // namespace Ketril::Tools
