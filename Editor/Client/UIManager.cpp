#include "Editor/Client/UIManager.h"

#include "Editor/Client/Client.h"
#include "Editor/HostCall.h"
#include "Editor/Model/Board.h"
#include "Editor/Vias/ViaUnion.h"

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

namespace {

// What a tool handed in, on its board, as the editor's own.
template <class Object, class Dialog>
Status AskOf(IInterface* object, Dialog BoardDialogs::*dialog, bool& confirmed) {
  auto* const own = dynamic_cast<Object*>(FromInterface(object));
  if (!own || !own->board) return Status::InvalidArgument;
  const ClientSetup* const setup = InstalledSetup();
  confirmed =
      setup && setup->dialogs.*dialog && (setup->dialogs.*dialog)(*own->board, own->data.options->settings);
  return Status::Ok;
}

}  // namespace

Status UIManager::ViaStitchingDialog(IPCB_SmartUnionObject* stitching, IServerDocumentView*,
                                     bool& confirmed) noexcept {
  return HostCall("IUIManager.ViaStitchingDialog",
                  [&] { return AskOf<Stitching>(stitching, &BoardDialogs::via_stitching, confirmed); });
}

Status UIManager::ViaShieldingDialog(IPCB_ViaShieldingSU* shielding, IServerDocumentView*,
                                     bool& confirmed) noexcept {
  return HostCall("IUIManager.ViaShieldingDialog",
                  [&] { return AskOf<Shielding>(shielding, &BoardDialogs::via_shielding, confirmed); });
}

Status UIManager::UnusedPadsDialog(TUnusedPadsOptions& options, bool& confirmed) noexcept {
  return HostCall("IUIManager.UnusedPadsDialog", [&] {
    const ClientSetup* const setup = InstalledSetup();
    confirmed = setup && setup->dialogs.unused_pads && setup->dialogs.unused_pads(options);
  });
}

}  // namespace Ketril::Editor
