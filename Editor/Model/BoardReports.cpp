// What reports read of the board beyond its objects.
#include "Editor/Client/Client.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/LayerIterator.h"

namespace Ketril::Editor {

Status Board::GetState_LayerIterator(Ref<IPCB_LayerIterator>& value) noexcept {
  return HostCall("IPCB_BoardReports.GetState_LayerIterator", [&] {
    std::vector<TV7_Layer> ids;
    for (const BoardLayer& layer : layers) ids.push_back(layer.id);
    if (!FindLayer(eV6_MultiLayer)) ids.push_back(eV6_MultiLayer);
    value = MakeHost<LayerIterator>(std::move(ids));
  });
}

Status Board::EditBoardReportOptions(TBoardReportOptionSet& options, bool& accepted) noexcept {
  return HostCall("IPCB_BoardReports.EditBoardReportOptions", [&] {
    const ClientSetup* const setup = InstalledSetup();
    accepted = setup && setup->dialogs.board_report && setup->dialogs.board_report(options);
  });
}

}  // namespace Ketril::Editor
