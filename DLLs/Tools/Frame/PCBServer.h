// The editor's client and its PCB server.
#pragma once

#include "Interfaces/Client.h"

namespace Ketril::Tools {

// The client, asked for at each call; empty when there is none.
Ref<IClient> Client();

// The server "PCB", which makes objects and layer sets: fetched on first use and kept until it is released.
// Empty when there is none. Raises EHostError when the client fails.
Ref<IPCB_ServerInterface> PCBServer();
// Lets go of the server that is kept, for tests, whose editors come and go while the library stays.
void ReleasePCBServer();

}  // namespace Ketril::Tools
