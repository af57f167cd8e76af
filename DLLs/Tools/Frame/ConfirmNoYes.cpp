#include "DLLs/Tools/Frame/ConfirmNoYes.h"

#include <cstdlib>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Platform/Dialogs.h"

namespace Ketril::Tools {

bool InTestMode() {
  if (const char* variable = std::getenv("KETRIL_TEST_MODE"); variable && *variable) return true;
  return ClientIsInTestMode();
}

bool ClientIsInTestMode() {
  const Ref<IClient> client = Client();
  return client && On(client).Read(&IClient::GetState_InTestMode);
}

bool ConfirmNoYes(const std::u16string& text) {
  const Ref<IClient> client = Client();
  Ref<IDialogService> dialogs;
  if (client) {
    if (InTestMode()) On(client).Call(&IClient::WriteLog, u"Running modal ConfirmNoYes " + text);
    dialogs = On(client).Read(&IClient::GetState_DialogService);
  }
  if (dialogs) return On(dialogs).Read(&IDialogService::ConfirmYesNo, text);
  return Platform::MessageDialog(text, Platform::TDialogKind::Confirmation,
                                 Platform::TDialogButtons::YesNo) == Platform::TDialogAnswer::Yes;
}

}  // namespace Ketril::Tools
