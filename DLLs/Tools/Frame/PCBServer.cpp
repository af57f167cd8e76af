#include "DLLs/Tools/Frame/PCBServer.h"

#include "DLLs/Tools/Frame/HostLink.h"
#include "Platform/Modules.h"

namespace Ketril::Tools {

namespace {
Ref<IPCB_ServerInterface> server;
}

Ref<IClient> Client() {
  const auto entry = Platform::FindModuleEntry<ClientAPI_GetClient>(kModule_Ketril, kEntry_GetClient);
  return entry ? entry() : nullptr;
}

Ref<IPCB_ServerInterface> PCBServer() {
  if (!server) {
    if (const Ref<IClient> client = Client()) {
      server = Probe<IPCB_ServerInterface>(On(client).Read(&IClient::GetServerByName, u"PCB"));
    }
  }
  return server;
}

void ReleasePCBServer() {
  server = nullptr;
}

}  // namespace Ketril::Tools
