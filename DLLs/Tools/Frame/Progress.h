// The visible progress of a long run, on the board's progress object.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"

namespace Ketril::Tools {

// Started when it is made, ended with its block, also after an exception. A board that shows no progress gets
// none. Each operation raises EHostError when the host fails; so does the end of the block, unless an
// exception is on its way already.
class TProgress {
 public:
  // A caption says what to press where the user can cancel.
  TProgress(TBoard* board, const std::u16string& caption, bool can_cancel = true);
  ~TProgress() noexcept(false);
  TProgress(const TProgress&) = delete;
  TProgress& operator=(const TProgress&) = delete;

  void SetMaximum(std::int32_t maximum);  // how many steps the run has, where that is known
  void Step();

 private:
  Ref<IPCB_Progress> progress_;
  int exceptions_ = std::uncaught_exceptions();
};

}  // namespace Ketril::Tools
