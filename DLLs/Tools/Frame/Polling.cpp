#include "DLLs/Tools/Frame/Polling.h"

#include "DLLs/Tools/Frame/ConfirmNoYes.h"
#include "Platform/Messages.h"

namespace Ketril::Tools {

bool ToolAborted = false;

namespace {

bool ConfirmAbort() {
  return ConfirmNoYes(u"Confirm Abort Process");
}

std::optional<Platform::TMessage> PeekKeyDown() {
  auto message = Platform::PeekMessage(Platform::WM_KEYDOWN, Platform::WM_KEYDOWN);
  return message ? message : Platform::PeekMessage(Platform::WM_SYSKEYDOWN, Platform::WM_SYSKEYDOWN);
}

}  // namespace

bool CheckAbort(bool& aborted) {
  if (aborted) return true;
  // A handler may run another tool, which polls as well: the flag is looked at before each message.
  while (!aborted) {
    const auto message = Platform::PeekMessage();
    if (!message) break;
    const bool key = message->Kind == Platform::WM_KEYDOWN || message->Kind == Platform::WM_SYSKEYDOWN;
    if (key && message->WParam != Platform::VK_ESCAPE) continue;
    if (key && ConfirmAbort()) {
      aborted = true;
    } else {
      Platform::SendMessage(*message);
    }
  }
  return false;
}

void CheckShoveAbort() {
  while (!ToolAborted) {
    const auto message = PeekKeyDown();
    if (!message) break;
    if (message->WParam == Platform::VK_ESCAPE) {
      if (ConfirmAbort()) ToolAborted = true;
    } else {
      Platform::SendMessage(*message);
      Platform::MessageBeep(0);
    }
  }
}

}  // namespace Ketril::Tools
