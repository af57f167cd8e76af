#include "DLLs/Tools/Frame/Progress.h"

#include "DLLs/Tools/Frame/HostLink.h"

namespace Ketril::Tools {

TProgress::TProgress(TBoard* board, const std::u16string& caption, bool can_cancel)
    : progress_(On(board->IBoard()).Read(&IPCB_Board::GetState_Progress)) {
  if (progress_) On(progress_).Call(&IPCB_Progress::Start, caption, can_cancel);
}

TProgress::~TProgress() noexcept(false) {
  if (!progress_) return;
  if (std::uncaught_exceptions() > exceptions_) {
    (void)progress_->End();  // the exception that is on its way says more than a failure here
  } else {
    On(progress_).Call(&IPCB_Progress::End);
  }
}

void TProgress::SetMaximum(std::int32_t maximum) {
  if (progress_) On(progress_).Call(&IPCB_Progress::SetMaximum, maximum);
}

void TProgress::Step() {
  if (progress_) On(progress_).Call(&IPCB_Progress::Step);
}

}  // namespace Ketril::Tools
