// The progress of a long run, passed on to whoever shows it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "Editor/HostObject.h"
#include "Interfaces/Board.h"

namespace Ketril::Editor {

struct ProgressState {
  bool running = false;
  std::u16string caption;
  bool can_cancel = false;
  std::int32_t maximum = 0;  // 0 when the length is not known
  std::int32_t position = 0;
};

// Called after each change; the last call of a run has `running` false. Null shows nothing.
using ProgressSink = std::function<void(const ProgressState&)>;
void SetProgressSink(ProgressSink sink);

class Progress final : public HostObject<IPCB_Progress> {
 public:
  Status Start(const std::u16string& caption, bool can_cancel) noexcept override;
  Status SetMaximum(std::int32_t maximum) noexcept override;
  Status Step() noexcept override;
  Status End() noexcept override;

  // Of the editor's own long work, which no tool steps.
  void Show(const ProgressState& state) {
    state_ = state;
    Report();
  }
  // Started and not ended.
  bool IsOpen() const { return state_.running; }

 private:
  void Report() const;
  ProgressState state_;
};

}  // namespace Ketril::Editor
