#include "DLLs/Tools/Vias/UnusedPadsRemoval.h"

#include "DLLs/Tools/Frame/EditBracket.h"
#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PrimitivesStack.h"

namespace Ketril::Tools {

void TUnusedPadsRemoval::Run() {
  TUnusedPadsOptions chosen;
  if (!On(FBoard->GetUIManager()).Read(&IUIManager::UnusedPadsDialog, chosen)) return;
  Options = chosen;
  const auto step = [this](TPrimitive* object) { ProcessObject(object); };
  if (Options.ProcessVias) FBoard->ProcessAllVias(step);
  if (Options.ProcessPads) FBoard->ProcessAllPads(step);
}

void TUnusedPadsRemoval::ProcessObject(TPrimitive* object) const {
  if (Options.OnlySelected && !object->Selected()) return;
  const auto* via = dynamic_cast<TVia*>(object);
  if (via && via->IsBackDrill()) return;
  auto* copper = CheckedCast<TStackObject>(object);
  EditInBracket(object, [&] {
    if (Options.Mode == eUnusedPads_Restore || Options.Mode == eUnusedPads_RestoreAndRemove)
      copper->RestoreUnusedPads();
    if (Options.Mode == eUnusedPads_Remove || Options.Mode == eUnusedPads_RestoreAndRemove)
      copper->RemoveUnusedPads(Options.PreserveStartEnd);
    if (auto* pad = dynamic_cast<TPad*>(object)) pad->InvalidateCache();
  });
}

}  // namespace Ketril::Tools
