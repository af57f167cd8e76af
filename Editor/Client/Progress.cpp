#include "Editor/Client/Progress.h"

#include <utility>

#include "Editor/HostCall.h"

namespace Ketril::Editor {

namespace {

ProgressSink& Sink() {
  static ProgressSink sink;
  return sink;
}

}  // namespace

void SetProgressSink(ProgressSink sink) {
  Sink() = std::move(sink);
}

Status Progress::Start(const std::u16string& caption, bool can_cancel) noexcept {
  return HostCall("IPCB_Progress.Start", [&] {
    state_ = {.running = true, .caption = caption, .can_cancel = can_cancel, .maximum = 0, .position = 0};
    Report();
  });
}

Status Progress::SetMaximum(std::int32_t maximum) noexcept {
  return HostCall("IPCB_Progress.SetMaximum", [&] {
    state_.maximum = maximum;
    Report();
  });
}

Status Progress::Step() noexcept {
  return HostCall("IPCB_Progress.Step", [&] {
    ++state_.position;
    Report();
  });
}

Status Progress::End() noexcept {
  return HostCall("IPCB_Progress.End", [&] {
    state_.running = false;
    Report();
  });
}

void Progress::Report() const {
  // A copy, so that the sink may be replaced while it is told.
  if (const ProgressSink sink = Sink()) sink(state_);
}

}  // namespace Ketril::Editor
