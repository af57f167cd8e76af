// Arrangers that pack: objects into a rectangle, rooms into rows and columns.
#pragma once

#include <string>

#include "DLLs/Tools/Placement/Align.h"

namespace Ketril::Tools {

// Packs the nodes into rows of a rectangle, the tallest first. They lie edge to edge: what keeps them apart
// is the clearance that their rectangles include. Rows that do not fit go on beyond the far edge, and a node
// that is wider than the rectangle takes a row of its own.
class TRectangleArranger : public TNodeArranger {
 public:
  TRectangleArranger(TBoard* ABoard, IPCBGraphicalViewInterface* APCBView_Graphical, TCoord ALowX,
                     TCoord ALowY, TCoord AHighX, TCoord AHighY);
  void Run() override;

  TCoord LowX, LowY, HighX, HighY;
  bool GrowUp = false;  // from the bottom up, not from the top down; either way 10 mil from the edge
};

// Lays rooms out in rows of `ColumnCount`; rows grow until the rooms run out.
class TMatrixArranger : public TNodeArranger {
 public:
  TMatrixArranger(TBoard* ABoard, IPCBGraphicalViewInterface* APCBView_Graphical, std::int32_t ARowCount,
                  std::int32_t AColummCount, TCoord AOriginX, TCoord AOriginY,
                  const std::u16string& ASortFncName, bool AAscendingSort);
  using TNodeArranger::Resort;
  // By "Channel Name", "Room Width", "Room Height", "Room Component Count" or "Room Area", and the other way
  // round unless `AscendingSort`; nothing for another name. The nodes are room nodes.
  void Resort(const std::u16string& AMethod);
  void Run() override;

  std::int32_t RowCount;     // limits nothing
  std::int32_t ColumnCount;  // at least 1
  TCoord OriginX, OriginY;   // the first room's low corner, or its top left one unless `GrowUp`
  bool AutoSpacing = false;  // gaps are the nodes' clearances, not SpacingX and SpacingY
  TCoord SpacingX = 0, SpacingY = 0;
  bool GrowUp = true;
  bool AscendingSort;
  std::u16string SortFncName;
  bool MoveToGrid = false;  // afterwards
};

}  // namespace Ketril::Tools
