#include "DLLs/Tools/Frame/Workspace.h"

#include "Platform/Modules.h"

namespace Ketril::Tools {

Ref<IOrvexWorkSpace> Workspace() {
  const auto entry =
      Platform::FindModuleEntry<WorkspaceManager_GetWorkspace>(kModule_WorkspaceManager, kEntry_GetWorkspace);
  return entry ? entry() : nullptr;
}

}  // namespace Ketril::Tools
