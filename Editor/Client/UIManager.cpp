#include "Editor/Client/UIManager.h"

#include "Editor/Client/Client.h"
#include "Editor/HostCall.h"

namespace Ketril::Editor {

Status UIManager::AlignmentDialog(TArrangerMethod& horizontal, TArrangerMethod& vertical,
                                  bool& move_to_grid) noexcept {
  return HostCall("IUIManager.AlignmentDialog", [&] {
    const ClientSetup* const setup = InstalledSetup();
    AlignmentAnswer answer;
    if (!setup || !setup->dialogs.alignment || !setup->dialogs.alignment(answer)) answer = {};
    horizontal = answer.horizontal;
    vertical = answer.vertical;
    move_to_grid = answer.move_to_grid;
  });
}

Status UIManager::RoomArrangeDialog(IPCB_Board*, IPCB_RoomArrangeOptions* options, bool& confirmed) noexcept {
  return HostCall("IUIManager.RoomArrangeDialog", [&] {
    if (!options) return Status::InvalidArgument;
    const ClientSetup* const setup = InstalledSetup();
    confirmed = setup && setup->dialogs.room_arrange && setup->dialogs.room_arrange(*options);
    return Status::Ok;
  });
}

}  // namespace Ketril::Editor
