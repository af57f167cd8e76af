#include "DLLs/Tools/Frame/MessageDialogs.h"

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Platform/Dialogs.h"

namespace Ketril::Tools {

namespace {

template <class Show>
void ShowMessage(const std::u16string& text, Show show, Platform::TDialogKind kind) {
  const Ref<IClient> client = Client();
  const Ref<IDialogService> dialogs =
      client ? On(client).Read(&IClient::GetState_DialogService) : Ref<IDialogService>();
  if (dialogs) {
    On(dialogs).Call(show, text);
  } else {
    Platform::MessageDialog(text, kind, Platform::TDialogButtons::Ok);
  }
}

}  // namespace

void ShowErrorDialog(const std::u16string& text) {
  ShowMessage(text, &IDialogService::ShowError, Platform::TDialogKind::Error);
}

void ShowWarningDialog(const std::u16string& text) {
  ShowMessage(text, &IDialogService::ShowWarning, Platform::TDialogKind::Warning);
}

}  // namespace Ketril::Tools
