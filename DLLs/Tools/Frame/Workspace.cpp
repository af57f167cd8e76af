#include "DLLs/Tools/Frame/Workspace.h"

#include "Platform/Modules.h"

namespace Ketril::Tools {

Ref<IOrvexWorkSpace> Workspace() {
  void* const entry = Platform::FindModuleEntry(kModule_WorkspaceManager, kEntry_GetWorkspace);
  return entry ? reinterpret_cast<WorkspaceManager_GetWorkspace>(entry)() : nullptr;
}

}  // namespace Ketril::Tools
