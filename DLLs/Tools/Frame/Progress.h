// The visible progress of a long run, on the board's progress object.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// Started when it is made, ended with its block, also after an exception. A board that shows no progress gets
// none. Each operation raises EHostError when the host fails; so does the end of the block, unless an
// exception is on its way already.
class TProgress {
 public:
  // `caption` says what to press: the user can cancel.
  explicit TProgress(TBoard* board, const std::u16string& caption)
      : progress_(On(board->IBoard()).Read(&IPCB_Board::GetState_Progress)) {
    if (progress_) On(progress_).Call(&IPCB_Progress::Start, caption, true);
  }
  TProgress(const TProgress&) = delete;
  TProgress& operator=(const TProgress&) = delete;
  ~TProgress() noexcept(false) {
    if (!progress_) return;
    const Status status = progress_->End();
    if (Failed(status) && std::uncaught_exceptions() == exceptions_)
      RaiseHostError(status, std::source_location::current());
  }

  // How many steps the run has, where that is known.
  void SetMaximum(std::int32_t maximum) {
    if (progress_) On(progress_).Call(&IPCB_Progress::SetMaximum, maximum);
  }
  void Step() {
    if (progress_) On(progress_).Call(&IPCB_Progress::Step);
  }

 private:
  Ref<IPCB_Progress> progress_;
  int exceptions_ = std::uncaught_exceptions();
};

}  // namespace Ketril::Tools
