// The dialogs of a board's commands, as the embedder of the editor shows them.
#pragma once

#include <functional>

#include "Editor/HostObject.h"
#include "Interfaces/Board.h"
#include "Interfaces/Reports.h"

namespace Ketril::Editor {

// What the user chose along x, along y, and whether the selection goes to the grid.
struct AlignmentAnswer {
  TArrangerMethod horizontal = eArrangeNoChangeX;
  TArrangerMethod vertical = eArrangeNoChangeY;
  bool move_to_grid = false;
};

class Board;
struct ShieldSettings;
struct StitchSettings;

// Each gives false, or is null, when the user cancels.
struct BoardDialogs {
  std::function<bool(AlignmentAnswer& answer)> alignment = {};
  std::function<bool(IPCB_RoomArrangeOptions& options)> room_arrange = {};
  std::function<bool(Board& board, StitchSettings& settings)> via_stitching = {};
  std::function<bool(Board& board, ShieldSettings& settings)> via_shielding = {};
  std::function<bool(TUnusedPadsOptions& options)> unused_pads = {};
  std::function<bool(TBoardReportOptionSet& options)> board_report = {};
};

// Asks the dialogs of the client that is installed at the moment of the question.
class UIManager final : public HostObject<IUIManager> {
 public:
  Status AlignmentDialog(TArrangerMethod& horizontal, TArrangerMethod& vertical,
                         bool& move_to_grid) noexcept override;
  Status RoomArrangeDialog(IPCB_Board* board, IPCB_RoomArrangeOptions* options,
                           bool& confirmed) noexcept override;
  Status ViaStitchingDialog(IPCB_SmartUnionObject* stitching, IServerDocumentView* view,
                            bool& confirmed) noexcept override;
  Status ViaShieldingDialog(IPCB_ViaShieldingSU* shielding, IServerDocumentView* view,
                            bool& confirmed) noexcept override;
  Status UnusedPadsDialog(TUnusedPadsOptions& options, bool& confirmed) noexcept override;
};

}  // namespace Ketril::Editor
