#include "DLLs/Tools/Placement/AlignTool.h"

#include <algorithm>

#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Frame/Rule_Abstract.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/AlignPacking.h"
#include "DLLs/Tools/Placement/AlignRooms.h"
#include "DLLs/Tools/Placement/Utilities.h"

namespace Ketril::Tools {

namespace {

constexpr TCoord kDistanceFromBoard = 100000;
constexpr TLayerPartitionSet kRoomLayers{eV7_TopLayer, eV7_BottomLayer, eV7_MultiLayer};
static_assert(kRoomLayers.Bits() == 32778);

// Calls `take` with each moveable object of a kind.
template <class Take>
void ForEachMoveable(TBoard* board, TObjectId kind, TLayerPartitionSet layers, Take take) {
  TBoardIterator iterator(board);
  iterator.SetState_FilterObject({kind});
  iterator.SetState_FilterLayers(layers);
  for (TPrimitive* p = iterator.First(); p; p = iterator.Next()) {
    if (p->Moveable()) take(p);
  }
}

// What a selection comes to.
struct TSelected {
  TPrimitiveList Objects;
  bool FirstIsComponent = false;
  bool AllText = true;
};

TSelected CollectSelection(TBoard* board) {
  TSelected selected;
  const auto take = [&](TPrimitive* p) {
    TGroup* const component = p->vComponent();
    if (!component) {
      selected.Objects.push_back(p);
      if (p->ObjectID() == eComponentObject && selected.Objects.size() == 1) selected.FirstIsComponent = true;
    } else {
      if (component->Moveable() && !component->Selected()) selected.Objects.push_back(p);
      component->SetMiscFlag1(false);
    }
    p->SetMiscFlag1(false);
    selected.AllText = selected.AllText && p->ObjectID() == eTextObject;
  };
  {
    TBoardIterator iterator(board);
    iterator.SetState_FilterAll();
    for (TPrimitive* p = iterator.First(); p; p = iterator.Next()) {
      if (p->Selected() && p->Moveable()) take(p);
    }
  }
  return selected;
}

// Once for each object, by its scratch mark.
template <class Node>
void AddUnmarked(TNodeArranger& arranger, TPrimitive* primitive, TPrimitive* marked) {
  if (marked->MiscFlag1()) return;
  arranger.Add<Node>(primitive);
  marked->SetMiscFlag1(true);
}

// The outline's box, or that of what is drawn on the keep-out layer.
TCoordRect BoardRectangle(TBoard* board) {
  TCoordRect box;
  if (const TPrimitive* outline = board->BoardOutline()) return outline->GetState_BoundingRectangle();
  board->GetState_BoundingRectangleBoard(box.x1, box.y1, box.x2, box.y2, {eTrackObject},
                                         TLayerPartitionSet{eV7_KeepOutLayer}, false);
  return box;
}

}  // namespace

void ArrangeSelection(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TArrangerMethod AMethod) {
  TNodeArranger arranger(ABoard, AView, AMethod);
  const TSelected selected = CollectSelection(ABoard);
  for (TPrimitive* object : selected.Objects) {
    TGroup* const component = selected.FirstIsComponent || selected.AllText ? nullptr : object->vComponent();
    if (component)
      AddUnmarked<TComponentPrimitiveNode>(arranger, object, component);
    else
      AddUnmarked<TNode>(arranger, object, object);
  }
  arranger.Run();
}

void ArrangeSelectionToRectangle(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TCoord ALowX,
                                 TCoord ALowY, TCoord AHighX, TCoord AHighY) {
  TRectangleArranger arranger(ABoard, AView, ALowX, ALowY, AHighX, AHighY);
  ForEachMoveable(ABoard, eComponentObject, kComponentLayers, [&](TPrimitive* component) {
    if (component->Selected()) arranger.Add<TNode>(component);
  });
  arranger.Run();
}

bool ArrangeToRoom(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TRule* ARule) {
  if (!ARule || ARule->RuleKind() != eRule_ConfinementConstraint) return false;
  TCoord x1, y1, x2, y2;
  ARule->GetState_BoundingRectangle(x1, y1, x2, y2);
  TRectangleArranger arranger(ABoard, AView, x1, y1, x2, y2);
  ForEachMoveable(ABoard, eComponentObject, kComponentLayers, [&](TPrimitive* component) {
    if (ARule->Scope1Includes(component)) arranger.Add<TNode>(component);
  });
  arranger.Run();
  return true;
}

void ArrangeToRoomByName(TBoard* ABoard, IPCBGraphicalViewInterface* AView, const std::u16string& AName) {
  if (auto* const rule = CheckedCast<TRule>(ABoard->GetState_RuleByRuleName(AName)))
    ArrangeToRoom(ABoard, AView, rule);
}

void ArrangeOutsideBoard(TBoard* ABoard, IPCBGraphicalViewInterface* AView) {
  const TCoordRect board = BoardRectangle(ABoard);
  std::vector<std::unique_ptr<TNode>> nodes;
  ForEachMoveable(ABoard, eComponentObject, kComponentLayers, [&](TPrimitive* component) {
    if (component->Selected()) nodes.push_back(TNode::Create(component, nullptr));
  });
  if (nodes.empty()) return;
  const auto far_side = [](TCoord low, TCoord high) { return WrapToCoord(2 * std::int64_t{high} - low); };
  const auto beyond = [](TCoord edge) { return WrapToCoord(std::int64_t{edge} + kDistanceFromBoard); };
  TRectangleArranger above(ABoard, AView, board.x1, beyond(board.y2), board.x2, far_side(board.y1, board.y2));
  TRectangleArranger beside(ABoard, AView, beyond(board.x2), board.y1, far_side(board.x1, board.x2),
                            board.y2);
  for (std::size_t i = 0; i < nodes.size(); ++i)
    (i <= nodes.size() / 2 ? above : beside).Adopt(std::move(nodes[i]));
  for (TRectangleArranger* arranger : {&above, &beside}) {
    arranger->GrowUp = true;
    arranger->Run();
  }
}

void ArrangeRooms(TBoard* ABoard, IPCBGraphicalViewInterface* AView,
                  const TRoomAlignParameters& AParameters) {
  TMatrixArranger arranger(ABoard, AView, AParameters.RowCount, std::max(AParameters.ColCount, 1),
                           AParameters.OriginX, AParameters.OriginY, AParameters.SortName,
                           AParameters.Ascending);
  arranger.MoveToGrid = AParameters.MoveToGrid;
  arranger.AutoSpacing = AParameters.AutoSpacing;
  arranger.SpacingX = AParameters.SpacingX;
  arranger.SpacingY = AParameters.SpacingY;
  ForEachMoveable(ABoard, eRuleObject, kRoomLayers, [&](TPrimitive* rule) {
    if (rule->Selected() && rule->IsRoom()) arranger.Add<TRoomNode>(rule);
  });
  arranger.Run();
}

}  // namespace Ketril::Tools
