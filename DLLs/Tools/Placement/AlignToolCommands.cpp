// The arrange commands that work with the user.
#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/Rule_Abstract.h"
#include "DLLs/Tools/Placement/AlignTool.h"
#include "DLLs/Tools/Placement/Utilities.h"
#include "Platform/Dialogs.h"

namespace Ketril::Tools {

namespace {

constexpr TCoord kNotChosen = -1;

// The parameter; empty when it, or the list, is not there.
std::optional<std::u16string> ReadParameter(IParameterList* parameters, const std::u16string& name) {
  std::u16string value;
  if (!parameters || !parameters->GetParameter(name, value)) return std::nullopt;
  return value;
}

// Up to the first blank; 0 for what is no whole number.
TCoord CoordinateOf(const std::u16string& text) {
  TCoord value = 0;
  ReadNumber(std::u16string_view(text).substr(0, text.find(u' ')), value);
  return value;
}

// The name of the room that is meant: as it is given, or as the user corrects it.
std::optional<std::u16string> FindRoom(TBoard* board, std::u16string name) {
  TRule* rule = CheckedCast<TRule>(board->GetState_RuleByRuleName(name));
  if (!rule && Platform::StringEditDialog(u"Enter Room Name", name))
    rule = CheckedCast<TRule>(board->GetState_RuleByRuleName(name));
  if (!rule) return std::nullopt;
  return rule->Name();
}

}  // namespace

void AutoPlaceSelection(TBoard* ABoard, IPCBGraphicalViewInterface* AView, TArrangerMethod AMethod) {
  // The user's pick is no time to wait.
  std::optional<THourglass> hourglass;
  if (AMethod != eArrangeHorCenter && AMethod != eArrangeVertCenter) hourglass.emplace();
  ArrangeSelection(ABoard, AView, AMethod);
}

void AutoPlaceOutsideBoard(TBoard* ABoard, IPCBGraphicalViewInterface* AView) {
  const THourglass hourglass;
  ArrangeOutsideBoard(ABoard, AView);
}

void AutoPlaceRunDialog(TBoard* ABoard, IPCBGraphicalViewInterface* AView) {
  const Ref<IUIManager> dialogs = ABoard->GetUIManager();
  if (!dialogs) return;
  TArrangerMethod horizontal = eArrangeNoChangeX, vertical = eArrangeNoChangeY;
  bool move_to_grid = false;
  On(dialogs).Call(&IUIManager::AlignmentDialog, horizontal, vertical, move_to_grid);
  const auto run = [&](TArrangerMethod chosen, std::initializer_list<TArrangerMethod> methods) {
    if (std::find(methods.begin(), methods.end(), chosen) != methods.end())
      AutoPlaceSelection(ABoard, AView, chosen);
  };
  run(horizontal, {eArrangeLeft, eArrangeRight, eArrangeHorCenter, eArrangeSpreadX});
  run(vertical, {eArrangeTop, eArrangeBottom, eArrangeVertCenter, eArrangeSpreadY});
  if (move_to_grid) AutoPlaceSelection(ABoard, AView, eArrangeMoveToGrid);
}

void AutoPlaceToRectangle(TBoard* ABoard, IPCBGraphicalViewInterface* AView, IParameterList* AParameters) {
  const auto x1 = ReadParameter(AParameters, u"Location1.x"), y1 = ReadParameter(AParameters, u"Location1.y");
  const auto x2 = ReadParameter(AParameters, u"Location2.x"), y2 = ReadParameter(AParameters, u"Location2.y");
  if (x1 && y1 && x2 && y2) {
    ArrangeSelectionToRectangle(ABoard, AView, CoordinateOf(*x1), CoordinateOf(*y1), CoordinateOf(*x2),
                                CoordinateOf(*y2));
    return;
  }
  TCoordRect picked;
  while (ChooseRectangleByCorners(u"Choose first corner", u"Choose second corner", picked))
    ArrangeSelectionToRectangle(ABoard, AView, picked.x1, picked.y1, picked.x2, picked.y2);
}

void AutoPlaceToRoom(TBoard* ABoard, IPCBGraphicalViewInterface* AView, IParameterList* AParameters) {
  if (const auto name = ReadParameter(AParameters, u"RoomName")) {
    if (const auto room = FindRoom(ABoard, *name)) ArrangeToRoomByName(ABoard, AView, *room);
    return;
  }
  const auto count_text = ReadParameter(AParameters, u"RoomsToUpdateCount");
  std::int32_t count = 0;
  if (count_text && ReadNumber(*count_text, count)) {
    for (std::int64_t i = 1; i <= count; ++i) {
      const auto name = ReadParameter(AParameters, u"Room" + Int64ToText(i));
      if (name) ArrangeToRoomByName(ABoard, AView, *name);
    }
    return;
  }
  TCoordPoint point;
  while (ChooseLocation(u"Select a Room", point.x, point.y)) {
    const Ref<IPCB_Rule> rule =
        Probe<IPCB_Rule>(HitTest(Ref<IPCBGraphicalViewInterface>(AView), point, {eRuleObject}));
    if (rule) ArrangeToRoomByName(ABoard, AView, On(rule).Read(&IPCB_Rule::GetState_Name));
  }
}

void AutoPlaceRooms(TBoard* ABoard, IPCBGraphicalViewInterface* AView) {
  const auto rooms = CheckedCast<IPCB_BoardRooms>(ABoard->IPrimitive());
  const Ref<IPCB_RoomArrangeOptions> options = On(rooms).Read(&IPCB_BoardRooms::GetState_RoomArrangeOptions);
  const Ref<IUIManager> dialogs = ABoard->GetUIManager();
  if (!options || !dialogs) return;
  if (!On(dialogs).Read(&IUIManager::RoomArrangeDialog, ABoard->IBoard().Get(), options.Get())) return;
  TCoord x = On(options).Read(&IPCB_RoomArrangeOptions::GetState_OriginX);
  TCoord y = On(options).Read(&IPCB_RoomArrangeOptions::GetState_OriginY);
  if ((x == kNotChosen || y == kNotChosen) && !ChooseLocation(u"Choose location", x, y)) return;
  On(options).Call(&IPCB_RoomArrangeOptions::SetState_OriginX, x);
  On(options).Call(&IPCB_RoomArrangeOptions::SetState_OriginY, y);
  ArrangeRooms(ABoard, AView, ReadRoomAlignParameters(options.Get()));
}

TRoomAlignParameters ReadRoomAlignParameters(IPCB_RoomArrangeOptions* AOptions) {
  TRoomAlignParameters parameters;
  if (!AOptions) return parameters;
  const auto options = On(Ref<IPCB_RoomArrangeOptions>(AOptions));
  using IHost = IPCB_RoomArrangeOptions;
  parameters.RowCount = options.Read(&IHost::GetState_RowCount);
  parameters.ColCount = options.Read(&IHost::GetState_ColCount);
  parameters.OriginX = options.Read(&IHost::GetState_OriginX);
  parameters.OriginY = options.Read(&IHost::GetState_OriginY);
  parameters.AutoSpacing = options.Read(&IHost::GetState_AutoSpacing);
  parameters.SpacingX = options.Read(&IHost::GetState_SpacingX);
  parameters.SpacingY = options.Read(&IHost::GetState_SpacingY);
  parameters.MoveToGrid = options.Read(&IHost::GetState_MoveToGrid);
  parameters.SortName = options.Read(&IHost::GetState_SortName);
  parameters.Ascending = options.Read(&IHost::GetState_Ascending);
  return parameters;
}

}  // namespace Ketril::Tools
