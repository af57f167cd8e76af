#include "DLLs/Tools/Placement/AutoPlacementTool.h"

#include "DLLs/Tools/Frame/ConfirmNoYes.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Frame/Progress.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/AutoPlac.h"
#include "DLLs/Tools/Placement/RoomContents.h"
#include "DLLs/Tools/Placement/Utilities.h"

namespace Ketril::Tools {

namespace {

constexpr double kLowestComponentGrid = 100, kHighestComponentGrid = 100000000;
constexpr double kLowestRoomGrid = 10000, kHighestRoomGrid = 10000000;

// The objects that `counts` accepts. What counts them is a progress bar: a thousand are as good as more.
template <class Counts>
std::int32_t CountUpToAThousand(TBoard* board, TObjectId kind, TLayerPartitionSet layers, Counts counts) {
  constexpr std::int32_t kMost = 1000;
  std::int32_t count = 0;
  TBoardIterator iterator(board);
  iterator.SetState_FilterObject({kind});
  iterator.SetState_FilterLayers(layers);
  for (TPrimitive* p = iterator.First(); p && count < kMost; p = iterator.Next()) count += counts(p) ? 1 : 0;
  return count;
}

bool SelectionHasLocked(TBoard* board) {
  bool locked = false;
  const auto look = [&](TPrimitive* component) {
    if (component->Selected() && !component->Moveable()) locked = true;
  };
  board->xProcessItems(look, {eComponentObject}, kHitLayers, eProcessAll);
  return locked;
}

// What is out of range is written back to the board, what is in range is not. No number counts as too low.
double InRange(double grid, double lowest, double highest) {
  if (grid > highest) return highest;
  return grid >= lowest ? grid : lowest;
}

void ForceGridIntoRange(TBoard* board, double lowest, double highest) {
  const double x = board->ComponentGridSizeX(), y = board->ComponentGridSizeY();
  if (const double in_range = InRange(x, lowest, highest); in_range != x)
    board->SetComponentGridSizeX(in_range);
  if (const double in_range = InRange(y, lowest, highest); in_range != y)
    board->SetComponentGridSizeY(in_range);
}

TCoordPoint Snapped(const TBoard* board, TCoordPoint place) {
  return {SnapToGrid(place.x, board->OriginX(), board->ComponentGridSizeX()),
          SnapToGrid(place.y, board->OriginY(), board->ComponentGridSizeY())};
}

// One item of a run: true when it shall be worked on.
bool PollAndStep(TProgress& progress) {
  CheckAbort(ToolAborted);
  progress.Step();
  return !ToolAborted;
}

void MoveComponentToGrid(TBoard* board, TPrimitive* component) {
  const TCoordPoint from{component->GetState_X(), component->GetState_Y()};
  const TCoordPoint to = Snapped(board, from);
  if (to != from) {
    MoveInBracket(component, [&] { component->MoveToXY(to.x, to.y); });
  } else {
    board->SetState_DocumentHasChanged();
  }
}

// What the room holds is asked for at its new place.
void MoveRoomToGrid(TBoard* board, TConfinementConstraint* room, bool with_contents) {
  TCoord x1, y1, x2, y2;
  room->GetState_BoundingRectangle(x1, y1, x2, y2);
  const TCoordPoint to = Snapped(board, {x1, y1});
  const TCoord dx = WrapToCoord(std::int64_t{to.x} - x1), dy = WrapToCoord(std::int64_t{to.y} - y1);
  const auto move = [&](TPrimitive* object) { MoveInBracket(object, [&] { object->MoveByXY(dx, dy); }); };
  if (dx != 0 || dy != 0) {
    move(room);
    TPrimitiveList components, others, free_objects;
    if (with_contents)
      GetRoomContents(board, false, true, room, components, others, free_objects, nullptr, false, true);
    for (const TPrimitiveList* list : {&components, &free_objects}) {
      for (TPrimitive* object : *list) move(object);
    }
  }
  board->SetState_DocumentHasChanged();
}

}  // namespace

TCoord CompGridCorrectUpX(TBoard* ABoard, TCoord ACoord) {
  return GridCorrectUp(ACoord, ABoard->ComponentGridSizeX());
}

TCoord CompGridCorrectDownX(TBoard* ABoard, TCoord ACoord) {
  return GridCorrectDown(ACoord, ABoard->ComponentGridSizeX());
}

TCoord CompGridCorrectUpY(TBoard* ABoard, TCoord ACoord) {
  return GridCorrectUp(ACoord, ABoard->ComponentGridSizeY());
}

TCoord CompGridCorrectDownY(TBoard* ABoard, TCoord ACoord) {
  return GridCorrectDown(ACoord, ABoard->ComponentGridSizeY());
}

void MoveAllCompsToGrid(TBoard* ABoard) {
  if (SelectionHasLocked(ABoard) && !ConfirmNoYes(u"This selection contains locked component(s). Continue?"))
    return;
  const std::int32_t count = CountUpToAThousand(ABoard, eComponentObject, kComponentLayers,
                                                [](TPrimitive* component) { return component->Selected(); });
  TProgress progress(ABoard, u"Moving components to grid... (ESC to abort)");
  progress.SetMaximum(count);
  ToolAborted = false;
  ForceGridIntoRange(ABoard, kLowestComponentGrid, kHighestComponentGrid);
  ABoard->ProcessAllComponents([&](TPrimitive* component) {
    if (component->Selected() && PollAndStep(progress)) MoveComponentToGrid(ABoard, component);
  });
}

void MoveAllRoomsToGrid(TBoard* ABoard) {
  const auto is_selected_room = [](TPrimitive* rule) { return rule->IsRoom() && rule->Selected(); };
  const std::int32_t count = CountUpToAThousand(ABoard, eRuleObject, kHitLayers, is_selected_room);
  if (count == 0) return;
  const bool with_contents = ConfirmNoYes(u"Move objects within rooms?");
  TProgress progress(ABoard, u"Moving rooms to grid... (ESC to abort)");
  progress.SetMaximum(count);
  ToolAborted = false;
  ForceGridIntoRange(ABoard, kLowestRoomGrid, kHighestRoomGrid);
  ABoard->ProcessAllRules([&](TPrimitive* rule) {
    if (is_selected_room(rule) && rule->Moveable() && PollAndStep(progress))
      MoveRoomToGrid(ABoard, CheckedCast<TConfinementConstraint>(rule), with_contents);
  });
}

void AutopositionText(TBoard* ABoard, TTextAutoposition ANamePosition, TTextAutoposition ACommentPosition,
                      bool ASkipName, bool ASkipComment) {
  if (ASkipName && ASkipComment) return;
  const auto place = [&](TPrimitive* object) {
    if (!object->Selected()) return;
    auto* const component = CheckedCast<TComp>(object);
    MoveInBracket(component, [&] {
      if (!ASkipName) component->SetState_PlaceNameAutoposition(ANamePosition);
      if (!ASkipComment) component->SetState_PlaceCommentAutoposition(ACommentPosition);
    });
  };
  ABoard->xProcessItems(place, {eComponentObject}, kComponentLayers, eProcessAll);
}

}  // namespace Ketril::Tools
