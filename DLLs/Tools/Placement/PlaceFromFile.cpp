#include "DLLs/Tools/Placement/PlaceFromFile.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "DLLs/Tools/Frame/ComponentPads.h"
#include "DLLs/Tools/Frame/MessageDialogs.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Frame/Progress.h"
#include "DLLs/Tools/Frame/Workspace.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/PickAndPlaceFile.h"
#include "DLLs/Tools/Placement/Utilities.h"
#include "Interfaces/Placement.h"
#include "Platform/Text.h"
#include "Platform/TextFiles.h"

namespace Ketril::Tools {

namespace {

constexpr std::int32_t kWarningImage = 72;

// Tells the client, where it keeps such a record, what became of a line.
void Record(const Platform::TTextLines& lines, const std::u16string& designator, TPlacementOutcome outcome) {
  if (const auto recorder = Probe<IPlacementRecorder>(Client()))
    On(recorder).Call(&IPlacementRecorder::RecordPlacement, lines.Number(), designator, outcome);
}

// The components of a board by their names, as Getstate_ComponentByName finds them: the first of a name, case
// ignored. A file names most of the board, so that one walk serves it all.
class TComponentNames {
 public:
  explicit TComponentNames(TBoard* board) : board_(board) {}

  TComp* Find(const std::u16string& name) {
    if (!std::exchange(is_read_, true)) Read();
    const auto found = components_.find(Platform::AsciiUpper(name));
    return found == components_.end() ? nullptr : found->second;
  }

 private:
  void Read() {
    TBoardIterator iterator(board_);
    iterator.SetState_FilterObject({eComponentObject});
    iterator.SetState_FilterAllLayers();
    for (TPrimitive* p = iterator.First(); p; p = iterator.Next()) {
      const auto* component = dynamic_cast<const TComp*>(p);
      if (!component) continue;
      const Ref<IPCB_Text> text = On(component->IComp()).Read(&IPCB_Component2::GetState_NameText);
      if (!text) continue;
      const std::u16string name = On(text).Read(&IPCB_Text::GetState_Text);
      components_.try_emplace(Platform::AsciiUpper(name), CheckedCast<TComp>(p));
    }
  }

  TBoard* const board_;
  bool is_read_ = false;
  std::unordered_map<std::u16string, TComp*> components_;
};

// One run over a file.
class TFilePlacementRun {
 public:
  TFilePlacementRun(TBoard* board, const std::u16string& file_name)
      : board_(board), lines_(file_name), progress_(board, u"Placing components", false) {
    progress_.SetMaximum(board->GetPrimitiveCount({eComponentObject}, kHitLayers, eProcessComponent));
  }
  void RunHeaded();
  void RunFixed(bool is_csv);

 private:
  std::optional<TPickPlaceColumns> ReadHeader();
  bool RunHeadedLine(const TPickPlaceColumns& columns, const std::u16string& line);
  void Skip(const std::u16string& designator, const std::u16string& why, TPlacementOutcome outcome);
  TComp* FindMoveable(const std::u16string& designator);
  std::optional<TCoordPoint> TargetOf(const TPickPlaceLine& values);
  void Place(TComp* component, TCoordPoint target, const TPickPlaceLine& values, bool is_headed);

  TBoard* const board_;
  TComponentNames names_{board_};
  Platform::TTextLines lines_;
  TProgress progress_;
};

// The component of the name; null when it is not to be placed.
TComp* TFilePlacementRun::FindMoveable(const std::u16string& designator) {
  TComp* const component = names_.Find(designator);
  if (component && component->Moveable()) return component;
  Record(lines_, designator, component ? ePlacement_Locked : ePlacement_Unknown);
  return nullptr;
}

std::optional<TCoordPoint> TFilePlacementRun::TargetOf(const TPickPlaceLine& values) {
  const TUnit unit = board_->GetState_DisplayUnit();
  const auto x = ReadPickPlaceCoord(values.X, unit), y = ReadPickPlaceCoord(values.Y, unit);
  if (!x || !y) return std::nullopt;
  const std::int64_t board_x = std::int64_t{*x} + board_->OriginX();
  const std::int64_t board_y = std::int64_t{*y} + board_->OriginY();
  const TCoordPoint target = {SaturateToCoord(board_x), SaturateToCoord(board_y)};
  if (target.x != board_x || target.y != board_y) return std::nullopt;
  return target;
}

// The layer that a text asks for; empty for none.
std::optional<TV7_Layer> LayerOf(const std::u16string& side, bool is_headed) {
  if (side.starts_with(u'T')) return eV6_TopLayer;
  if (side.empty() && !is_headed) throw Exception("a line of the pick-and-place file ends before its side");
  if (side.starts_with(u'B') || !is_headed) return eV6_BottomLayer;
  return std::nullopt;
}

void TFilePlacementRun::Place(TComp* component, TCoordPoint target, const TPickPlaceLine& values,
                              bool is_headed) {
  const TCoordPoint center = MiddleOfPads(component);
  MoveInBracket(component, [&] {
    const auto moved = [](TCoord from, TCoord to, TCoord at) {
      return SaturateToCoord(std::int64_t{at} + to - from);
    };
    if (!is_headed || center != target)
      component->MoveToXY(moved(center.x, target.x, component->x()),
                          moved(center.y, target.y, component->y()));
    const auto layer = LayerOf(values.Side, is_headed);
    if (layer && component->Layer() != *layer) component->FlipComponent();
    if (const auto rotation = TextToDouble(values.Rotation)) {
      const double turn = *rotation - component->Rotation();
      if (turn != 0) component->SetState_RotateAroundXY(target.x, target.y, turn);
    }
    const std::u16string_view comment = Platform::Trim(values.Comment);
    if (comment.empty()) return;
    if (TText* const text = component->Comment()) text->SetState_String(std::u16string(comment));
  });
  Record(lines_, values.Designator, ePlacement_Placed);
}

// --- headed files ---

// Empty when the header cannot be used, which the user is told.
std::optional<TPickPlaceColumns> TFilePlacementRun::ReadHeader() {
  std::u16string line, units;
  while (units.empty() && lines_.Next(line)) units = UnitsOfHeaderLine(line);
  std::u16string error;
  if (units.empty()) {
    error = u"\rUnits not found in header.";
  } else if (lines_.AtEnd()) {
    error = u"\rNo data in file.";
  } else {
    lines_.Next(line);
    if (!lines_.Next(line)) line.clear();
    const TPickPlaceColumns columns(line, units);
    error = columns.Missing();
    if (error.empty()) return columns;
  }
  ShowErrorDialog(u"Could not read pick and place file header:" + error);
  return std::nullopt;
}

void TFilePlacementRun::Skip(const std::u16string& designator, const std::u16string& why,
                             TPlacementOutcome outcome) {
  if (const Ref<IOrvexWorkSpace> workspace = Workspace()) {
    On(workspace).Call(&IOrvexWorkSpace::AddMessage, u"[Warning]", u"Skipped component " + designator + why,
                       u"Place From File", kWarningImage);
  }
  Record(lines_, designator, outcome);
}

// False when the line was skipped with a message.
bool TFilePlacementRun::RunHeadedLine(const TPickPlaceColumns& columns, const std::u16string& line) {
  const auto skip = [&](const TPickPlaceLine& values, const char16_t* why, TPlacementOutcome outcome) {
    Skip(values.Designator, why, outcome);
    return false;
  };
  constexpr const char16_t* kInvalid = u", invalid data found";
  TPickPlaceLine values;
  if (!columns.Read(line, values))
    return skip(values, u", incorrect number of data columns found", ePlacement_WrongColumns);
  if (values.Designator.empty() || values.X.empty() || values.Y.empty() || values.Side.empty() ||
      values.Rotation.empty()) {
    return skip(values, kInvalid, ePlacement_InvalidData);
  }
  TComp* const component = FindMoveable(values.Designator);
  if (!component) return true;
  const auto target = TargetOf(values);
  if (!target) return skip(values, kInvalid, ePlacement_InvalidData);
  progress_.Step();
  Place(component, *target, values, true);
  return true;
}

void TFilePlacementRun::RunHeaded() {
  const auto columns = ReadHeader();
  if (!columns) return;
  bool skipped = false;
  for (std::u16string line; lines_.Next(line);) skipped |= !RunHeadedLine(*columns, line);
  if (!skipped) return;
  ShowErrorDialog(
      u"Invalid data found in pick and place file, some components were skipped, see messages panel for "
      u"details\rMake sure any data entries containing spaces are enclosed in quotes");
  if (const Ref<IOrvexWorkSpace> workspace = Workspace())
    On(workspace).Call(&IOrvexWorkSpace::ShowMessagePanel);
}

// --- files in fixed columns ---

void TFilePlacementRun::RunFixed(bool is_csv) {
  std::u16string line;
  lines_.Next(line);
  while (lines_.Next(line)) {
    const TPickPlaceLine values = ReadFixedLine(line, is_csv);
    TComp* const component = values.Designator.empty() ? nullptr : FindMoveable(values.Designator);
    if (!component) continue;
    try {
      const auto target = TargetOf(values);
      if (!target) throw Exception("a coordinate of the pick-and-place file is none");
      progress_.Step();
      Place(component, *target, values, false);
    } catch (const EHostError&) {
      throw;
    } catch (const Exception&) {
      Record(lines_, values.Designator, ePlacement_InvalidData);
      throw;
    }
  }
}

// A file that cannot be read at all has no layout.
TPickPlaceLayout LayoutOf(const std::u16string& file_name) {
  try {
    std::u16string first_line;
    Platform::TTextLines lines(file_name);
    lines.Next(first_line);
    return PickPlaceLayoutOf(first_line, file_name);
  } catch (const std::exception&) {
    return TPickPlaceLayout::Unknown;
  }
}

}  // namespace

void PlaceFromFile(TBoard* ABoard, const std::u16string& AFileName) {
  const TPickPlaceLayout layout = LayoutOf(AFileName);
  if (layout == TPickPlaceLayout::Unknown) return ShowErrorDialog(u"Unknown pick and place file format");
  try {
    TFilePlacementRun placement(ABoard, AFileName);
    if (layout == TPickPlaceLayout::Headed) {
      placement.RunHeaded();
    } else {
      placement.RunFixed(layout == TPickPlaceLayout::CSV);
    }
  } catch (const std::exception&) {
    ShowErrorDialog(u"Problem encountered with pick and place file, check format.");
  }
}

}  // namespace Ketril::Tools
