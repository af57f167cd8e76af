#include "DLLs/Tools/Placement/AlignPacking.h"

#include <algorithm>

#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/AlignRooms.h"
#include "DLLs/Tools/Placement/NaturalOrder.h"

namespace Ketril::Tools {

namespace {

constexpr TCoord kMargin = 100000;

// With the low corner at the place, or, growing down, the left end of the top edge.
void Place(TNode& node, TCoord x, TCoord y, bool grow_up) {
  node.MoveTo(x, grow_up ? y : WrapToCoord(std::int64_t{node.LowY} + y - node.HighY));
}

TCoord Step(TCoord y, std::int64_t by, bool grow_up) {
  return WrapToCoord(grow_up ? y + by : y - by);
}

template <class T>
int Compare(T a, T b) {
  return (a > b) - (a < b);
}

using TRoomComparison = int (*)(const TRoomNode& a, const TRoomNode& b);

int CompareChannels(const TRoomNode& a, const TRoomNode& b) {
  const int channels = CompareNatural(a.ChannelName, b.ChannelName);
  return channels ? channels : CompareNatural(a.RoomName(), b.RoomName());
}

int CompareWidths(const TRoomNode& a, const TRoomNode& b) {
  return a.Width != b.Width ? Compare(a.Width, b.Width) : Compare(a.Height, b.Height);
}

int CompareHeights(const TRoomNode& a, const TRoomNode& b) {
  return a.Height != b.Height ? Compare(a.Height, b.Height) : Compare(a.Width, b.Width);
}

constexpr struct {
  const char16_t* Name;
  TRoomComparison Compare;
} kRoomOrders[] = {
    {u"Channel Name", CompareChannels},
    {u"Room Width", CompareWidths},
    {u"Room Height", CompareHeights},
    {u"Room Component Count",
     [](const TRoomNode& a, const TRoomNode& b) { return Compare(a.CompCount, b.CompCount); }},
    {u"Room Area", [](const TRoomNode& a, const TRoomNode& b) { return Compare(a.Area, b.Area); }},
};

}  // namespace

TRectangleArranger::TRectangleArranger(TBoard* ABoard, IPCBGraphicalViewInterface* APCBView_Graphical,
                                       TCoord ALowX, TCoord ALowY, TCoord AHighX, TCoord AHighY)
    : TNodeArranger(ABoard, APCBView_Graphical, eArrangeRectangle),
      LowX(ALowX),
      LowY(ALowY),
      HighX(AHighX),
      HighY(AHighY) {}

void TRectangleArranger::Run() {
  Resort(eSortWidth);
  TCoord x = LowX;
  TCoord y = GrowUp ? Sum(LowY, kMargin) : Sum(HighY, -kMargin);
  TCoord row_height = 0;
  for (const auto& node : Nodes) {
    row_height = std::max(row_height, node->Height());
    if (std::int64_t{x} + node->Width() > HighX) {
      x = LowX;
      y = Step(y, row_height, GrowUp);
      row_height = 0;
    }
    Place(*node, x, y, GrowUp);
    x = Sum(x, node->Width());
  }
  ApplyAll();
}

TMatrixArranger::TMatrixArranger(TBoard* ABoard, IPCBGraphicalViewInterface* APCBView_Graphical,
                                 std::int32_t ARowCount, std::int32_t AColummCount, TCoord AOriginX,
                                 TCoord AOriginY, const std::u16string& ASortFncName, bool AAscendingSort)
    : TNodeArranger(ABoard, APCBView_Graphical, eArrangeRectangle),
      RowCount(ARowCount),
      ColumnCount(AColummCount),
      OriginX(AOriginX),
      OriginY(AOriginY),
      AscendingSort(AAscendingSort),
      SortFncName(ASortFncName) {}

void TMatrixArranger::Resort(const std::u16string& AMethod) {
  for (const auto& order : kRoomOrders) {
    if (AMethod != order.Name) continue;
    std::stable_sort(Nodes.begin(), Nodes.end(), [&](const auto& a, const auto& b) {
      return order.Compare(static_cast<const TRoomNode&>(*a), static_cast<const TRoomNode&>(*b)) < 0;
    });
    if (!AscendingSort) std::reverse(Nodes.begin(), Nodes.end());
  }
}

void TMatrixArranger::Run() {
  Resort(SortFncName);
  TCoord x = OriginX, y = OriginY;
  TCoord row_height = 0;
  std::int32_t column = 0;
  for (const auto& node : Nodes) {
    row_height = std::max(row_height, node->Height());
    if (column == ColumnCount) {
      column = 0;
      x = OriginX;
      y = Step(y, std::int64_t{row_height} + (AutoSpacing ? node->GetNodeClearance() : SpacingY), GrowUp);
      row_height = node->Height();
    }
    Place(*node, x, y, GrowUp);
    x = WrapToCoord(std::int64_t{x} + node->Width() + (AutoSpacing ? node->GetNodeClearance() : SpacingX));
    ++column;
  }
  ApplyAll();
  if (!MoveToGrid) return;
  for (const auto& node : Nodes) node->MoveToGrid();
}

}  // namespace Ketril::Tools
