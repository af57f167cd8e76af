// Runs every export on a small board once for every k, with the k-th host call failing, and with a second
// failure a few calls later: whatever fails, the exception reaches the caller and nothing is left open. Some
// run another export inside, from a message that they deliver while they poll.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Client/ReportForms.h"
#include "Editor/HostCall.h"
#include "Editor/Model/Library.h"
#include "Editor/Model/ObjectFactory.h"
#include "Editor/Rules/Rule.h"
#include "Editor/Vias/ViaOptions.h"
#include "Interfaces/Tools.h"
#include "Platform/Dialogs.h"
#include "Platform/Messages.h"
#include "Platform/TempFiles.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/HostPairs.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril {
namespace {

using Editor::HostGate;

struct SweptExport {
  const char* name;
  void (*run)(IPCB_Board* board);
};

void PrintTo(const SweptExport& swept, std::ostream* out) {
  *out << swept.name;
}

void RunBoth(IPCB_Board* board) {
  Tools_ReplaceSelectedPadsWithVias(board);
  Tools_ReplaceSelectedViasWithPads(board);
}

void AddTeardrops(IPCB_Board* board) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  parameters->AddParameter(u"TeardropParam_FlagsEx", u"1000");
  Tools_TearDrops(board, parameters.Get());
}

void TeardropsByDialog(IPCB_Board* board) {
  Tools_TearDrops(board, nullptr);
}

void TeardropOptions(IPCB_Board* board) {
  Tools_GetCurrentTeardropOptions(board);
}

template <char style>
void AddLegacyTeardrops(IPCB_Board* board) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  for (const char16_t* name : {u"AllPads", u"AllTracks", u"Report"}) parameters->AddParameter(name, u"False");
  parameters->AddParameter(u"Selected", u"True");
  parameters->AddParameter(u"Style", std::u16string(1, style));
  Tools_LegacyTearDrops(board, parameters.Get());
}

void RemoveLegacyTeardrops(IPCB_Board* board) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  parameters->AddParameter(u"Action", u"Remove");
  Tools_LegacyTearDrops(board, parameters.Get());
}

void LegacyTeardropsByDialog(IPCB_Board* board) {
  Tools_LegacyTearDrops(board, nullptr);
}

// On the first object of the kind; what touches it are teardrops.
template <auto tool, TObjectId kind>
void OnFirst(IPCB_Board* board) {
  auto& model = dynamic_cast<Editor::Board&>(*board);
  model.objects.ForEach({eTrackObject, eRegionObject},
                        [](Editor::Primitive& drop) { drop.Set(Editor::kFlag_TearDrop, true); });
  Editor::Warehouse::Walk walk(model.objects, {kind});
  tool(board, walk.Next()->AsInterface());
}

void HideTeardrops(IPCB_Board* board) {
  auto& model = dynamic_cast<Editor::Board&>(*board);
  Tests::Find<Editor::Arc>(model)->Set(Editor::kFlag_TearDrop, true);
  Tools_ShowTearDropsForNet(board, model.FindNet(u"A"), false);
}

Ref<IPCBGraphicalViewInterface> ViewOf(IPCB_Board* board) {
  return Ref<IPCBGraphicalViewInterface>(dynamic_cast<Editor::Board&>(*board).view.Get());
}

template <auto tool, auto... arguments>
void WithView(IPCB_Board* board) {
  tool(board, ViewOf(board).Get(), arguments...);
}

template <auto tool>
void ByPick(IPCB_Board* board) {
  tool(board, ViewOf(board).Get(), nullptr);
}

// Reports go to a file that the next one replaces, and come out as XML.
std::u16string ReportFile() {
  static const Tests::TempFolder folder;
  return (folder / "report.txt").u16string();
}

// A part of each manner: the sweep costs the square of the calls.
void ReportSpecs(IPCB_Board* board) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  for (const char16_t* option : {u"BoardSpecs", u"LayerPair", u"PlatedSlots", u"PadSolderMask",
                                 u"RoutingInfo", u"CopperArea", u"SelectedObjects", u"ArcWidth"})
    parameters->AddParameter(option, u"True");
  dynamic_cast<Editor::Board&>(*board).file.path = std::filesystem::path(ReportFile()).string();
  const auto forms = Editor::MakeHost<Editor::ReportForms>(u"Sweep");
  forms->Add({u"XML", u"", true, true});
  Tools_ReportSpecs(parameters.Get(), board, forms.Get(), ReportFile());
}

void ReportNets(IPCB_Board* board) {
  Tools_ReportNetlistStatus(board, ReportFile(), Editor::MakeHost<Editor::ReportForms>(u"Sweep").Get());
}

void ReportPlaces(IPCB_Board* board) {
  Tools_ReportPickNPlace(board, ReportFile(), u"CSV");
}

template <auto tool>
void OnLibrary(IPCB_Board* board) {
  const auto library = Editor::MakeHost<Editor::Library>();
  for (int i = 0; i < 3; ++i) library->components.push_back(Editor::MakeHost<Editor::LibComponent>());
  tool(board, ReportFile(), library.Get());
}

void DisplayReport(IPCB_Board*) {
  Tools_DisplayReportFile(ReportFile(), true);
}

Editor::Rule& PutRoom(Editor::Board& board) {
  const Ref<Editor::Rule> room = Editor::MakeRule(eRule_ConfinementConstraint);
  room->data.name = u"Room";
  room->data.scope1 = u"component";
  room->data.region.points = {{0, 0}, {9000000, 0}, {9000000, 4000000}, {0, 4000000}};
  room->Set(Editor::kFlag_Selected, true);
  const Ref<Editor::ObjectClass> channel = Editor::MakeHost<Editor::ObjectClass>();
  channel->data = {u"Channel", eClassMemberKind_DesignChannel, {u"Room"}, {}, {}};
  board.Load(channel.Get());
  board.Load(room.Get());
  return *room.Get();
}

template <auto tool>
void OnRoom(IPCB_Board* board) {
  Editor::Rule& room = PutRoom(dynamic_cast<Editor::Board&>(*board));
  const auto options = Editor::MakeHost<Editor::RoomArrangeOptions>();
  if (Failed(options->SetState_MoveToGrid(true))) throw std::runtime_error("the options failed");
  if constexpr (std::is_same_v<decltype(tool), decltype(&Tools_RunRoomArrange)>)
    tool(board, ViewOf(board).Get(), options.Get());
  else if constexpr (std::is_same_v<decltype(tool), decltype(&Tools_RunArrangeToRoom)>)
    tool(board, ViewOf(board).Get(), u"Room");
  else if constexpr (std::is_same_v<decltype(tool), decltype(&Tools_RunArrangeToRoomRule)>)
    tool(board, ViewOf(board).Get(), Probe<IPCB_Rule>(room.AsInterface()).Get());
  else
    tool(board, ViewOf(board).Get(), nullptr);
}

template <auto tool>
void WithDocumentView(IPCB_Board* board) {
  tool(board, ViewOf(board).Get(), nullptr);
}

template <auto tool, TUnionKind kind>
void RemoveBuilt(IPCB_Board* board) {
  WithDocumentView<tool>(board);
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  parameters->AddParameter(u"Mode", kind == eUnionKind_ViaStitching ? u"Remove" : u"RemoveShielding");
  tool(board, ViewOf(board).Get(), parameters.Get());
}

// Components that overlap, are locked, and lie off the grid, and a room.
void PutComponents(Editor::Board& board) {
  for (const char16_t* name : {u"X1", u"X2", u"X3"}) {
    const auto component = Editor::MakeHost<Editor::Component>();
    const auto pad = Editor::MakeHost<Editor::Pad>();
    pad->data.stack.front().x_size = pad->data.stack.front().y_size = 1000000;
    component->AddMember(pad.Get());
    const TCoord x = 5000000 + 300001 * (name[1] - u'1');
    component->Transform(Editor::PlaneMap::Translation(x, 3000000));
    component->Set(Editor::kFlag_Selected, true);
    component->Set(Editor::kFlag_Locked, name[1] == u'3');
    board.Load(component.Get());
  }
  const auto fill = Editor::MakeHost<Editor::Fill>();
  fill->data.box = {5600000, 0, 5700000, 9000000};
  fill->state.layer = eV6_KeepOutLayer;
  board.Load(fill.Get());
}

template <auto tool>
void ToGrid(IPCB_Board* board) {
  auto& model = dynamic_cast<Editor::Board&>(*board);
  PutComponents(model);
  PutRoom(model).data.region.points.front() = {-5, -5};
  tool(board);
}

template <auto tool>
void Correct(IPCB_Board* board) {
  tool(board, 12345);
}

void Shove(IPCB_Board* board) {
  PutComponents(dynamic_cast<Editor::Board&>(*board));
  Tools_ShoveComponents(board, ViewOf(board).Get());
}

void PlaceTexts(IPCB_Board* board) {
  Editor::Board& model = dynamic_cast<Editor::Board&>(*board);
  model.objects.ForEach({eComponentObject},
                        [](Editor::Primitive& c) { c.Set(Editor::kFlag_Selected, true); });
  Tools_AutopositionText(board, eAutoPos_TopLeft, eAutoPos_BottomRight, false, false);
}

// A failure of the host while it places ends in a dialog, which counts as an exception here.
void PlaceFromFile(IPCB_Board* board) {
  const std::filesystem::path file = Platform::MakeTempFile("place-");
  std::ofstream(file) << "Norvan Studio Pick and Place Locations\nUnits used: mil\n\n"
                         "Designator Layer Center-X Center-Y Rotation Comment\n"
                         "U1 B 100 200 90 22k\nU2 T 1 2 3\nU3 B 1 2 3 x\n";
  int errors = 0;
  Platform::SetDialogProvider([&](const std::u16string& text, auto, auto) {
    errors += text.starts_with(u"Problem") ? 1 : 0;
    return Platform::TDialogAnswer::Ok;
  });
  try {
    Tools_PlaceFromFile(board, file.u16string());
  } catch (const std::exception&) {
    ++errors;
  }
  Platform::SetDialogProvider(nullptr);
  std::filesystem::remove(file);
  if (errors > 0) throw std::runtime_error("a failure was told");
}

void SwapSelected(IPCB_Board* board) {
  dynamic_cast<Editor::Board&>(*board).objects.ForEach(TObjectSet::All(), [](Editor::Primitive& object) {
    object.SetFlag(Editor::kFlag_Selected, object.kind == eComponentObject);
  });
  Tools_SwapComponents(board, ViewOf(board).Get());
}

template <bool selected>
void UnGroup(IPCB_Board* board) {
  PutComponents(dynamic_cast<Editor::Board&>(*board));
  Tools_UnGroup(board, selected, {eComponentObject, eRegionObject}, u"Ungroup?");
}

// A chain of three, and a pair of no net. They are narrow: round ends then have few vertices.
void MakeMicrostripe(IPCB_Board* board) {
  auto& model = dynamic_cast<Editor::Board&>(*board);
  for (const TCoord x : {0, 3000000}) {
    for (const auto& [from, to] : {std::pair<TCoordPoint, TCoordPoint>{{x, 0}, {x, 1000000}},
                                   {{x, 1000000}, {x + 1000000, 1000000}},
                                   {{x + 1000000, 1000000}, {x + 1000000, 2000000}}}) {
      if (x > 0 && to.y > 1000000) continue;
      const auto track = Editor::MakeHost<Editor::Track>();
      track->data = {from, to, 100};
      track->Set(Editor::kFlag_Selected, true);
      if (x == 0) track->SetNet(model.FindNet(u"GND"));
      model.Load(track.Get());
    }
  }
  const TMicrostripeSettings settings{0.5, 0.5};
  Tools_MakeMicrostripe(board, &settings);
}

// A message waits when the outer tool first polls; its window runs the other tool on the same board.
template <auto outer, auto inner>
void Nested(IPCB_Board* board) {
  bool reached = false;
  struct Window {
    std::uintptr_t number;
    ~Window() {
      Platform::DestroyWindow(number);
      while (Platform::PeekMessage()) continue;  // the tool may have ended before it polled
    }
  } const window{Platform::CreateWindow([&](const Platform::TMessage&) {
    reached = true;
    EXPECT_GT(Tools::ObjectScopeDepth, 0);
    inner(board);
  })};
  Platform::PostMessage({.Window = window.number, .Kind = Platform::WM_KEYUP});
  outer(board);
  EXPECT_TRUE(reached) << "the outer tool did not poll";
}

std::int32_t picks = 0;  // of this run: the user cancels after a few

Editor::ClientSetup UserWithPicks() {
  Editor::ClientSetup setup;
  setup.choose_location = [](const std::u16string&) -> std::optional<TCoordPoint> {
    if (++picks > 1) return std::nullopt;
    return TCoordPoint{5000000, 3000000};
  };
  setup.choose_rectangle = [](const std::u16string&, const std::u16string&) -> std::optional<TCoordRect> {
    if (++picks > 1) return std::nullopt;
    return TCoordRect{0, 0, 9000000, 9000000};
  };
  setup.confirm = [](const std::u16string&) { return true; };
  setup.choose_object = [](const std::vector<Editor::Primitive*>&) { return 0; };
  setup.dialogs.alignment = [](Editor::AlignmentAnswer& answer) {
    answer = {eArrangeLeft, eArrangeSpreadY, true};
    return true;
  };
  setup.dialogs.room_arrange = [](IPCB_RoomArrangeOptions&) { return true; };
  const auto ground = [](Editor::Board& board, Editor::ViaSettings& settings) {
    settings.reference->SetNet(board.FindNet(u"GND"));
    return true;
  };
  setup.dialogs.via_stitching = ground;
  setup.dialogs.via_shielding = ground;
  setup.dialogs.unused_pads = [](TUnusedPadsOptions& options) {
    return options = {true, true, false, false, eUnusedPads_RestoreAndRemove}, true;
  };
  return setup;
}

const SweptExport kExports[] = {
    {"AutoPlaceAlignLeft", WithView<Tools_AutoPlaceAlignLeft>},
    {"AutoPlaceAlignRight", WithView<Tools_AutoPlaceAlignRight>},
    {"AutoPlaceAlignTop", WithView<Tools_AutoPlaceAlignTop>},
    {"AutoPlaceAlignBottom", WithView<Tools_AutoPlaceAlignBottom>},
    {"AutoPlaceAlignLeftSideBySide", WithView<Tools_AutoPlaceAlignLeftSideBySide>},
    {"AutoPlaceAlignRightSideBySide", WithView<Tools_AutoPlaceAlignRightSideBySide>},
    {"AutoPlaceAlignTopSideBySide", WithView<Tools_AutoPlaceAlignTopSideBySide>},
    {"AutoPlaceAlignBottomSideBySide", WithView<Tools_AutoPlaceAlignBottomSideBySide>},
    {"AutoPlaceCentreHoriziontal", WithView<Tools_AutoPlaceCentreHoriziontal>},
    {"AutoPlaceCentreVertical", WithView<Tools_AutoPlaceCentreVertical>},
    {"AutoPlaceExpandXComps", WithView<Tools_AutoPlaceExpandXComps>},
    {"AutoPlaceExpandYComps", WithView<Tools_AutoPlaceExpandYComps>},
    {"AutoPlaceContractXComps", WithView<Tools_AutoPlaceContractXComps>},
    {"AutoPlaceContractYComps", WithView<Tools_AutoPlaceContractYComps>},
    {"AutoPlaceSpreadXComps", WithView<Tools_AutoPlaceSpreadXComps>},
    {"AutoPlaceSpreadYComps", WithView<Tools_AutoPlaceSpreadYComps>},
    {"AutoPlaceRunDialog", WithView<Tools_AutoPlaceRunDialog>},
    {"AutoPlaceOutsideBoard", WithView<Tools_AutoPlaceOutsideBoard>},
    {"AutoPlaceToRectangle", ByPick<Tools_AutoPlaceToRectangle>},
    {"AutoPlaceToRoom", OnRoom<&Tools_AutoPlaceToRoom>},
    {"ArrangeRooms", OnRoom<&Tools_ArrangeRooms>},
    {"RunRoomArrange", OnRoom<&Tools_RunRoomArrange>},
    {"RunArrangeToRoom", OnRoom<&Tools_RunArrangeToRoom>},
    {"RunArrangeToRoomRule", OnRoom<&Tools_RunArrangeToRoomRule>},
    {"RunArrange", WithView<Tools_RunArrange, eArrangeMoveToGrid>},
    {"RunArrangeToRectangle", WithView<Tools_RunArrangeToRectangle, 0, 0, 9000000, 9000000>},
    {"RunArrangeOutsideBoard", WithView<Tools_RunArrangeOutsideBoard>},
    {"MoveAllCompsToGrid", ToGrid<Tools_MoveAllCompsToGrid>},
    {"MoveAllRoomsToGrid", ToGrid<Tools_MoveAllRoomsToGrid>},
    {"CompGridCorrectUpX", Correct<Tools_CompGridCorrectUpX>},
    {"CompGridCorrectDownX", Correct<Tools_CompGridCorrectDownX>},
    {"CompGridCorrectUpY", Correct<Tools_CompGridCorrectUpY>},
    {"CompGridCorrectDownY", Correct<Tools_CompGridCorrectDownY>},
    {"ShoveComponents", Shove},
    {"AutopositionText", PlaceTexts},
    {"PlaceFromFile", PlaceFromFile},
    {"SwapComponents", SwapSelected},
    {"SwapComponentsByPick", WithView<Tools_SwapComponents>},
    {"UnGroup", UnGroup<true>},
    {"UnGroupByPick", UnGroup<false>},
    {"MakeMicrostripe", MakeMicrostripe},
    {"ReportSpecs", ReportSpecs},
    {"ReportNetlistStatus", ReportNets},
    {"ReportPickNPlace", ReportPlaces},
    {"CreateReportForComponent", OnLibrary<&Tools_CreateReportForComponent>},
    {"CreateReportForLibrary", OnLibrary<&Tools_CreateReportForLibrary>},
    {"DisplayReportFile", DisplayReport},
    {"TearDrops", AddTeardrops},
    {"TearDropsByDialog", TeardropsByDialog},
    {"GetCurrentTeardropOptions", TeardropOptions},
    {"RemoveTearDropsOnSelected", Tools_RemoveTearDropsOnSelected},
    {"RemoveDropsViolation", Tools_RemoveDropsViolation},
    {"LegacyTearDropsOfArcs", AddLegacyTeardrops<'0'>},
    {"LegacyTearDropsOfTracks", AddLegacyTeardrops<'1'>},
    {"LegacyTearDropsRemoved", RemoveLegacyTeardrops},
    {"LegacyTearDropsByDialog", LegacyTeardropsByDialog},
    {"ShowTearDropsForNet", HideTeardrops},
    {"RemoveTearDropsFromPadVia", OnFirst<Tools_RemoveTearDropsFromPadVia, eViaObject>},
    {"RemoveTearDropsFromComponent", OnFirst<Tools_RemoveTearDropsFromComponent, eComponentObject>},
    {"RemoveTearDropsFromConnectedTracks", OnFirst<Tools_RemoveTearDropsFromConnectedTracks, eArcObject>},
    {"RemoveTearDropsFromTouch", OnFirst<Tools_RemoveTearDropsFromTouch, eTrackObject>},
    {"ReplaceSelectedPadsWithVias", Tools_ReplaceSelectedPadsWithVias},
    {"ReplaceSelectedViasWithPads", Tools_ReplaceSelectedViasWithPads},
    {"OneAfterTheOther", RunBoth},
    {"ApplyViaStitching", WithDocumentView<Tools_ApplyViaStitching>},
    {"ApplyViaShielding", WithDocumentView<Tools_ApplyViaShielding>},
    {"RemoveViaStitching", RemoveBuilt<Tools_ApplyViaStitching, eUnionKind_ViaStitching>},
    {"RemoveViaShielding", RemoveBuilt<Tools_ApplyViaShielding, eUnionKind_ViaShielding>},
    {"RemoveUnusedPads", Tools_RemoveUnusedPads},
    {"PadsToViasInTearDrops", Nested<AddTeardrops, Tools_ReplaceSelectedPadsWithVias>},
    {"TearDropsInMoveAllCompsToGrid", Nested<ToGrid<Tools_MoveAllCompsToGrid>, AddTeardrops>},
};

constexpr const char* kBoard = R"(
  layers 4
  class Power GND
  track 100,100 300,100 w10 top net A selected
  track 200,100 200,0 w10 top net A
  arc 100,100 r50 0..90 w10 top net A
  via 100,100 30/15 net A selected
  via 200,100 30/15 selected
  pad 300,100 60x60 rect hole 30 net A selected
  pad 400,100 60x60 octagon hole 30 selected
  pad 500,100 60x60 round top selected
  text 100,300 "Hello" h60 topoverlay
  fill 0,400 60,430 bottom net A
  zone 600,0 900,0 900,300 mid1 net GND { region 600,0 900,0 900,300 mid1 net GND }
  dimension 0,500 100,500 mech1 { track 0,550 100,550 mech1 } ; coordinate 0,600 mech1 { text 0,600 "x" mech1 }
  region 0,0 100,0 100,100 top net A
  region 600,0 900,0 900,300 600,300 top net GND
  region 600,0 900,0 900,300 600,300 bottom net GND
  component U2 at 900,500 bottom rot 90 union 3 { pad 0,0 60x60 top name 1 ; text 0,80 "22k" comment }
  component U1 at 500,500 { pad -50,0 60x60 hole 30 name 1 net A selected ; text 0,80 "10k" comment }
)";

Ref<Editor::Board> MakeBoard() {
  const Ref<Editor::Board> board = Tests::BoardFromText(kBoard);
  const auto body = Editor::MakeHost<Editor::ComponentBody>();
  body->data.rings = {{{{4500000, 4500000}, {5500000, 4500000}, {5500000, 5500000}}}};
  Tests::Find<Editor::Component>(*board)->AddMember(body.Get());
  board->Load(body.Get());
  const auto connection = Editor::MakeHost<Editor::Connection>();
  connection->SetNet(board->FindNet(u"A"));
  board->Load(connection.Get());
  const Ref<Editor::Rule> rule = Editor::MakeRule(eRule_Clearance);
  rule->data.gap = 60000;
  board->Load(rule.Get());
  return board;
}

TEST(FaultSweepBoard, HasEveryKindOfObject) {
  const Ref<Editor::Board> board = MakeBoard();
  for (int kind = eNoObject; kind < kObjectIdCount; ++kind) {
    const auto id = static_cast<TObjectId>(kind);
    const bool made = id != eBoardObject && Editor::MakeObject(id);
    EXPECT_TRUE(!made || board->objects.Count(id) > 0) << kind;
  }
}

class FaultSweep : public testing::TestWithParam<SweptExport> {
 protected:
  ~FaultSweep() override {
    HostGate::Disarm();
    Tools::ReleasePCBServer();
  }

  static void TearDownTestSuite() {
    RecordProperty("points", std::to_string(points_));
    std::cout << "points tried: " << points_ << "\n";
  }

  // Gives the number of host calls of the run; `second` as in HostGate::Arm.
  std::int64_t RunOnce(std::int64_t k, std::int64_t second) {
    const std::int64_t alive = Editor::LiveObjects::Count();
    points_ += k > 0 ? 1 : 0;
    std::int64_t calls = 0;
    {
      const Ref<Editor::Board> board = MakeBoard();
      bool raised = false;
      picks = 0;
      HostGate::Arm(true, k, second);
      try {
        GetParam().run(board.Get());
      } catch (const std::exception&) {
        raised = true;
      }
      HostGate::Disarm();
      calls = HostGate::Calls();
      EXPECT_EQ(raised, HostGate::HasFailed()) << "the failure of the host did not reach the caller";
      EXPECT_EQ(Tests::UnclosedPair(HostGate::Record(), k, second ? k + second : k), "");
      EXPECT_EQ(Tools::ObjectScopeDepth, 0);
      EXPECT_EQ(Tools::PrimitiveRegistry, nullptr);
      EXPECT_EQ(Tools::NetMap, nullptr);
      const auto failed_to_end = [&](std::int64_t number) {
        return number > 0 && number <= calls &&
               HostGate::Record()[static_cast<std::size_t>(number - 1)] == "IPCB_Progress.End";
      };
      EXPECT_TRUE(failed_to_end(k) || failed_to_end(k + second) || !board->progress->IsOpen());
      EXPECT_EQ(Platform::CurrentCursor(), Platform::TCursor::Arrow);
    }
    Tools::ReleasePCBServer();
    EXPECT_EQ(Editor::LiveObjects::Count(), alive) << "a counted reference is left";
    return calls;
  }

 private:
  static inline std::int64_t points_ = 0;  // of all tests of this process
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(UserWithPicks())};
};

TEST_P(FaultSweep, EveryCall) {
  const std::int64_t calls = RunOnce(0, 0);
  ASSERT_GT(calls, 0);
  for (std::int64_t k = 1; k <= calls && !HasFailure(); ++k) {
    SCOPED_TRACE("call " + std::to_string(k) + " fails");
    RunOnce(k, 0);
  }
}

TEST_P(FaultSweep, EveryCallAndASecondOne) {
  const std::int64_t calls = RunOnce(0, 0);
  for (std::int64_t k = 1; k <= calls && !HasFailure(); ++k) {
    for (const std::int64_t second : {1, 2, 3}) {
      SCOPED_TRACE("calls " + std::to_string(k) + " and " + std::to_string(k + second) + " fail");
      RunOnce(k, second);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Exports, FaultSweep, testing::ValuesIn(kExports),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace Ketril
