#include "Fuzz/Sequence/RandomUser.h"

#include <algorithm>

#include "Editor/Vias/ViaOptions.h"
#include "Fuzz/Sequence/RandomBoard.h"

namespace Ketril::Fuzz {

namespace {

void FillViaSettings(Editor::Board& board, Editor::ViaSettings& settings, Bytes& bytes) {
  settings.clearance = RandomLength(bytes);
  settings.edge = RandomLength(bytes);
  if (Editor::Net* net = RandomNet(board, bytes)) settings.reference->SetNet(net);
  settings.reference->data.size = 50000 * bytes.Below(16);
  settings.reference->data.hole = settings.reference->data.size / 2;
}

// Grids from 30 mil on: thousands of vias tell no more than some.
bool FillStitching(Editor::Board& board, Editor::StitchSettings& settings, Bytes& bytes) {
  constexpr TCoord kFine = 300000;
  if (bytes.Take() == 0) return false;
  FillViaSettings(board, settings, bytes);
  settings.grid_x = kFine + RandomLength(bytes);
  settings.grid_y = kFine + RandomLength(bytes);
  settings.offset = RandomPlace(bytes);
  settings.staggered = bytes.Flag();
  if (bytes.Flag()) settings.area = TCoordRect{0, 0, RandomLength(bytes), RandomLength(bytes)};
  if (bytes.Flag()) settings.layers = {eV6_TopLayer};
  return true;
}

bool FillShielding(Editor::Board& board, Editor::ShieldSettings& settings, Bytes& bytes) {
  if (bytes.Take() == 0) return false;
  FillViaSettings(board, settings, bytes);
  settings.distance = RandomLength(bytes);
  settings.pitch = 200000 + RandomLength(bytes);
  settings.rows = 1 + bytes.Below(3);
  settings.copper = bytes.Flag();
  settings.no_replace_check = bytes.Flag();
  settings.net = RandomNet(board, bytes);
  return true;
}

bool FillRooms(IPCB_RoomArrangeOptions& options, Bytes& bytes) {
  constexpr const char16_t* kSorts[] = {u"Channel Name", u"Room Width", u"Room Height",
                                        u"Room Component Count", u"Room Area"};
  if (bytes.Take() == 0) return false;
  const Status statuses[] = {options.SetState_RowCount(bytes.Below(4)),
                             options.SetState_ColCount(bytes.Below(4)),
                             options.SetState_OriginX(RandomLength(bytes, true)),
                             options.SetState_OriginY(RandomLength(bytes)),
                             options.SetState_AutoSpacing(bytes.Flag()),
                             options.SetState_SpacingX(RandomLength(bytes, true)),
                             options.SetState_SpacingY(RandomLength(bytes)),
                             options.SetState_MoveToGrid(bytes.Flag()),
                             options.SetState_SortName(bytes.OneOf(kSorts)),
                             options.SetState_Ascending(bytes.Flag())};
  return std::ranges::none_of(statuses, Failed);
}

bool FillTeardrops(TTeardropOptionsEx& options, Bytes& bytes) {
  if (bytes.Take() == 0) return false;
  options.Flags = (bytes.Take() | bytes.Take() << 8) & ~TeardropFlag_Report;
  for (TTeardropObjectSize& size : options.SizePercentArray)
    size = {bytes.Take() * 2.0 - 20, bytes.Take() * 2.0 - 20};
  return true;
}

bool FillLegacyTeardrops(TTearDropOptions& options, Bytes& bytes) {
  const int bits = bytes.Take();
  if (bits == 0) return false;
  options = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0,
             eArcTearDrop,    eAddTearDrop,    false,           (bits & 16) != 0};
  options.Style = static_cast<TTearDropStyle>(bytes.Below(3));
  options.Action = bytes.Flag() ? eRemoveTearDrop : eAddTearDrop;
  return true;
}

void SetPicks(Editor::ClientSetup& setup, Bytes& bytes) {
  setup.choose_location = [&bytes](const std::u16string&) -> std::optional<TCoordPoint> {
    if (bytes.Below(8) == 0) return std::nullopt;
    return RandomPlace(bytes);
  };
  setup.choose_rectangle = [&bytes](const auto&, const auto&) -> std::optional<TCoordRect> {
    if (bytes.Below(8) == 0) return std::nullopt;
    const TCoordPoint one = RandomPlace(bytes), other = RandomPlace(bytes);
    return TCoordRect{one.x, one.y, other.x, other.y};
  };
  setup.choose_object = [&bytes](const auto& objects) -> std::optional<std::size_t> {
    const std::size_t choice = bytes.Take();
    if (choice == 0 || objects.empty()) return std::nullopt;
    return choice % objects.size();
  };
}

}  // namespace

Editor::ClientSetup RandomUser(Bytes& bytes) {
  Editor::ClientSetup setup;
  setup.confirm = [&bytes](const std::u16string&) -> std::optional<bool> {
    const int answer = bytes.Below(4);
    return answer == 0 ? std::nullopt : std::optional(answer > 1);
  };
  setup.log = [](const std::u16string&) {};
  setup.open_document = [](const std::filesystem::path&) {};
  setup.show_message = [](const std::u16string&, Platform::TDialogKind) {};
  SetPicks(setup, bytes);
  setup.dialogs.alignment = [&bytes](Editor::AlignmentAnswer& answer) {
    if (bytes.Take() == 0) return false;
    answer = {static_cast<TArrangerMethod>(bytes.Below(21)), static_cast<TArrangerMethod>(bytes.Below(21)),
              bytes.Flag()};
    return true;
  };
  setup.dialogs.room_arrange = [&bytes](auto& options) { return FillRooms(options, bytes); };
  setup.dialogs.via_stitching = [&bytes](auto& board, auto& settings) {
    return FillStitching(board, settings, bytes);
  };
  setup.dialogs.via_shielding = [&bytes](auto& board, auto& settings) {
    return FillShielding(board, settings, bytes);
  };
  setup.dialogs.unused_pads = [&bytes](TUnusedPadsOptions& options) {
    const int bits = bytes.Take();
    options = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0, bytes.Below(4)};
    return bits != 0;
  };
  setup.dialogs.board_report = [&bytes](TBoardReportOptionSet& options) {
    for (int bit = 0; bit < kBoardReportOptionCount; bit += 8)
      options = TBoardReportOptionSet(options.Bits() ^ std::uint64_t{bytes.Take()} << bit);
    options = TBoardReportOptionSet(options.Bits() & TBoardReportOptionSet::All().Bits());
    return bytes.Flag();
  };
  setup.teardrop_dialog = [&bytes](auto& options) { return FillTeardrops(options, bytes); };
  setup.legacy_teardrop_dialog = [&bytes](auto& options) { return FillLegacyTeardrops(options, bytes); };
  return setup;
}

}  // namespace Ketril::Fuzz
