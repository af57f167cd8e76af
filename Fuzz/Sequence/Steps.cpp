#include "Fuzz/Sequence/Steps.h"

#include <fstream>
#include <iterator>

#include "Editor/Client/Parameters.h"
#include "Editor/Client/ReportForms.h"
#include "Editor/Files/FootprintFile.h"
#include "Editor/Model/Library.h"
#include "Fuzz/Sequence/RandomBoard.h"
#include "Fuzz/Support/Check.h"
#include "Interfaces/Tools.h"
#include "Platform/Text.h"

namespace Ketril::Fuzz {

namespace {

IPCBGraphicalViewInterface* ViewOf(Stage& stage) {
  return stage.bytes.Below(16) == 15 ? nullptr : stage.board.view.Get();
}

IPCB_Primitive* ObjectOf(Stage& stage, TObjectSet kinds) {
  Editor::Primitive* const object = RandomObject(stage.board, kinds, stage.bytes);
  return object ? object->AsInterface() : nullptr;
}

// Names of every tool's parameters, with values that fit some of them.
Ref<IParameterList> ParametersOf(Stage& stage) {
  constexpr const char16_t* kNames[] = {u"Mode",
                                        u"TeardropParam_FlagsEx",
                                        u"TeardropParam_PercentForVias_Length",
                                        u"TeardropParam_PercentForPads_Width",
                                        u"TeardropParam_PercentForTracks_Length",
                                        u"TeardropParam_PercentForTJunctions_Width",
                                        u"AllPads",
                                        u"AllVias",
                                        u"AllTracks",
                                        u"Selected",
                                        u"Force",
                                        u"Style",
                                        u"Action",
                                        u"Location1.x",
                                        u"Location1.y",
                                        u"Location2.x",
                                        u"Location2.y",
                                        u"RoomName",
                                        u"RoomsToUpdateCount",
                                        u"Room1",
                                        u"All"};
  constexpr const char16_t* kValues[] = {
      u"",          u"True",  u"False",       u"Remove",     u"RemoveShielding",
      u"1000",      u"1016",  u"960",         u"1019",       u"0",
      u"1",         u"2",     u"-1",          u"100",        u"50",
      u"500",       u"RoomA", u"Add",         u"1000mil",    u"99999999999999mm",
      u"nan",       u"1e308", u"12.5",        u"2147483647", u"3mm",
      u"x",         u"RoomB", u"-2147483648", u"Outline",    u"1000.5",
      u"0x7fffffff"};
  const int count = stage.bytes.Below(6);
  if (count == 5) return {};
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  for (int i = 0; i < count; ++i)
    parameters->AddParameter(stage.bytes.OneOf(kNames), stage.bytes.OneOf(kValues));
  return Ref<IParameterList>(parameters.Get());
}

template <auto tool>
void OnBoard(Stage& stage) {
  tool(&stage.board);
}
template <auto tool>
void WithView(Stage& stage) {
  tool(&stage.board, ViewOf(stage));
}
template <auto tool>
void WithParameters(Stage& stage) {
  tool(&stage.board, ParametersOf(stage).Get());
}
template <auto tool>
void WithBoth(Stage& stage) {
  tool(&stage.board, ViewOf(stage), ParametersOf(stage).Get());
}
template <auto tool>
void OnObject(Stage& stage) {
  if (IPCB_Primitive* const object = ObjectOf(stage, TObjectSet::All())) tool(&stage.board, object);
}

void ArrangeBy(Stage& stage) {
  Tools_RunArrange(&stage.board, ViewOf(stage), static_cast<TArrangerMethod>(stage.bytes.Below(22)));
}

void ArrangeToRectangle(Stage& stage) {
  const TCoordPoint low = RandomPlace(stage.bytes);
  const TCoord wide = RandomLength(stage.bytes), high = RandomLength(stage.bytes, true);
  Tools_RunArrangeToRectangle(&stage.board, ViewOf(stage), low.x, low.y, low.x + wide, high);
}

void ArrangeToRoom(Stage& stage) {
  constexpr const char16_t* kNames[] = {u"RoomA", u"RoomB", u"", u"none"};
  Tools_RunArrangeToRoom(&stage.board, ViewOf(stage), stage.bytes.OneOf(kNames));
}

void ArrangeToRule(Stage& stage) {
  IPCB_Primitive* const rule = ObjectOf(stage, {eRuleObject});
  Tools_RunArrangeToRoomRule(&stage.board, ViewOf(stage), Probe<IPCB_Rule>(rule).Get());
}

void ArrangeRooms(Stage& stage) {
  const Ref<Editor::RoomArrangeOptions> options = Editor::MakeHost<Editor::RoomArrangeOptions>();
  const bool set = !Failed(options->SetState_RowCount(stage.bytes.Below(4))) &&
                   !Failed(options->SetState_OriginX(RandomLength(stage.bytes, true))) &&
                   !Failed(options->SetState_MoveToGrid(stage.bytes.Flag()));
  Tools_RunRoomArrange(&stage.board, ViewOf(stage), set ? options.Get() : nullptr);
}

void CorrectToGrid(Stage& stage) {
  constexpr double kGrids[] = {250000, 100, 0, 1e9, -5, 10000, 1};
  stage.board.Write([&] { stage.board.setup.grid_x = stage.bytes.OneOf(kGrids); });
  const TCoord at = RandomLength(stage.bytes, true);
  Tools_CompGridCorrectUpX(&stage.board, at);
  Tools_CompGridCorrectDownX(&stage.board, at);
  Tools_CompGridCorrectUpY(&stage.board, at);
  Tools_CompGridCorrectDownY(&stage.board, at);
}

void PositionTexts(Stage& stage) {
  const auto position = [&] { return static_cast<TTextAutoposition>(stage.bytes.Below(12)); };
  const TTextAutoposition name = position(), comment = position();
  Tools_AutopositionText(&stage.board, name, comment, stage.bytes.Flag(), stage.bytes.Flag());
}

void PlaceFromFile(Stage& stage) {
  const std::filesystem::path file = stage.folder / "place.txt";
  std::ofstream text(file, std::ios::binary);
  text << "Norvan Studio Pick and Place Locations\nUnits used: mil\n\n"
          "Designator Layer Center-X Center-Y Rotation Comment\n";
  stage.board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& part) {
    const TCoordPoint place = RandomPlace(stage.bytes);
    text << Platform::ToUtf8(part.Identifier()) << (stage.bytes.Flag() ? " B " : " T ") << place.x / 10000
         << " " << place.y / 10000 << " " << 45 * stage.bytes.Below(9) << " 22k\n";
  });
  text.close();
  Tools_PlaceFromFile(&stage.board, file.u16string());
}

// Of the groups, or of everything that a caller may name: a net is no group to dissolve.
void UnGroup(Stage& stage) {
  constexpr TObjectSet kGroups = {eComponentObject, ePolyObject, eDimensionObject, eCoordinateObject};
  constexpr TObjectSet kMore = {eComponentObject, ePolyObject, eRegionObject, ePadObject, eRuleObject};
  const TObjectSet kinds = stage.bytes.Flag() ? kMore : kGroups;
  Tools_UnGroup(&stage.board, stage.bytes.Flag(), kinds, u"Ungroup?");
}

void MakeMicrostrips(Stage& stage) {
  constexpr double kShares[] = {0.5, 0, 0.99, 1, -1, 1e-9};
  const TMicrostripeSettings settings{stage.bytes.OneOf(kShares), stage.bytes.OneOf(kShares)};
  Tools_MakeMicrostripe(&stage.board, stage.bytes.Below(16) == 15 ? nullptr : &settings);
}

std::u16string ReportFile(Stage& stage) {
  return (stage.folder / "report.txt").u16string();
}

// As XML: style sheets have targets of their own.
Ref<Editor::ReportForms> FormsOf() {
  const auto forms = Editor::MakeHost<Editor::ReportForms>(u"Fuzz");
  forms->Add({u"XML", u"", true, true});
  return forms;
}

void ReportSpecs(Stage& stage) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  for (int i = stage.bytes.Below(5); i > 0; --i)
    parameters->AddParameter(kBoardReportOptionTexts[stage.bytes.Take() % kBoardReportOptionCount].Name,
                             u"True");
  if (stage.bytes.Flag()) parameters->AddParameter(u"All", u"True");
  Tools_ReportSpecs(parameters.Get(), &stage.board, FormsOf().Get(), ReportFile(stage));
}

void ReportNets(Stage& stage) {
  Tools_ReportNetlistStatus(&stage.board, ReportFile(stage), FormsOf().Get());
}

void ReportPlaces(Stage& stage) {
  Tools_ReportPickNPlace(&stage.board, ReportFile(stage), stage.bytes.Flag() ? u"CSV" : u"Text");
}

template <auto tool>
void OnLibrary(Stage& stage) {
  const auto library = Editor::MakeHost<Editor::Library>();
  stage.board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& part) {
    library->components.push_back(Editor::FootprintOf(*Editor::As<Editor::Component>(&part)));
  });
  library->current = static_cast<std::size_t>(stage.bytes.Below(3));
  tool(&stage.board, ReportFile(stage), library.Get());
}

void DisplayReport(Stage& stage) {
  Tools_DisplayReportFile(ReportFile(stage), stage.bytes.Flag());
}

void ShowTeardrops(Stage& stage) {
  Tools_ShowTearDropsForNet(&stage.board, RandomNet(stage.board, stage.bytes), stage.bytes.Flag());
}

template <auto tool>
void AskState(Stage& stage) {
  LongBool enabled{}, checked{}, visible{};
  tool(&stage.board, ParametersOf(stage).Get(), enabled, checked, visible, nullptr, nullptr);
}

void AskMemory(Stage&) {
  Ref<IServerMemoryInfo> info;
  Check(GetMemoryInfo(info) == 0 && info, "the memory is told");
  TMethodImplementationIntercept();
  Check(dbkFCallWrapperAddr == nullptr, "there is no such function");
}

const Step kSteps[] = {
    {"AskMemory", AskMemory},
    {"AlignLeft", WithView<Tools_AutoPlaceAlignLeft>},
    {"AlignRight", WithView<Tools_AutoPlaceAlignRight>},
    {"AlignTop", WithView<Tools_AutoPlaceAlignTop>},
    {"AlignBottom", WithView<Tools_AutoPlaceAlignBottom>},
    {"AlignLeftSideBySide", WithView<Tools_AutoPlaceAlignLeftSideBySide>},
    {"AlignRightSideBySide", WithView<Tools_AutoPlaceAlignRightSideBySide>},
    {"AlignTopSideBySide", WithView<Tools_AutoPlaceAlignTopSideBySide>},
    {"AlignBottomSideBySide", WithView<Tools_AutoPlaceAlignBottomSideBySide>},
    {"CentreHoriziontal", WithView<Tools_AutoPlaceCentreHoriziontal>},
    {"CentreVertical", WithView<Tools_AutoPlaceCentreVertical>},
    {"ExpandX", WithView<Tools_AutoPlaceExpandXComps>},
    {"ExpandY", WithView<Tools_AutoPlaceExpandYComps>},
    {"ContractX", WithView<Tools_AutoPlaceContractXComps>},
    {"ContractY", WithView<Tools_AutoPlaceContractYComps>},
    {"SpreadX", WithView<Tools_AutoPlaceSpreadXComps>},
    {"SpreadY", WithView<Tools_AutoPlaceSpreadYComps>},
    {"AlignmentDialog", WithView<Tools_AutoPlaceRunDialog>},
    {"OutsideBoard", WithView<Tools_AutoPlaceOutsideBoard>},
    {"ArrangeOutsideBoard", WithView<Tools_RunArrangeOutsideBoard>},
    {"ToRectangle", WithBoth<Tools_AutoPlaceToRectangle>},
    {"ToRoom", WithBoth<Tools_AutoPlaceToRoom>},
    {"ArrangeBy", ArrangeBy},
    {"ArrangeToRectangle", ArrangeToRectangle},
    {"ArrangeToRoom", ArrangeToRoom},
    {"ArrangeToRule", ArrangeToRule},
    {"RunRoomArrange", ArrangeRooms},
    {"ArrangeRooms", WithBoth<Tools_ArrangeRooms>},
    {"CompsToGrid", OnBoard<Tools_MoveAllCompsToGrid>},
    {"RoomsToGrid", OnBoard<Tools_MoveAllRoomsToGrid>},
    {"CorrectToGrid", CorrectToGrid},
    {"Shove", WithView<Tools_ShoveComponents>},
    {"PositionTexts", PositionTexts},
    {"PlaceFromFile", PlaceFromFile, true},
    {"Swap", WithView<Tools_SwapComponents>},
    {"UnGroup", UnGroup},
    {"MakeMicrostrips", MakeMicrostrips},
    {"ReportSpecs", ReportSpecs},
    {"ReportNets", ReportNets},
    {"ReportPlaces", ReportPlaces},
    {"ReportComponent", OnLibrary<Tools_CreateReportForComponent>},
    {"ReportLibrary", OnLibrary<Tools_CreateReportForLibrary>},
    {"DisplayReport", DisplayReport},
    {"TearDrops", WithParameters<Tools_TearDrops>},
    {"TeardropOptions", OnBoard<Tools_GetCurrentTeardropOptions>},
    {"RemoveTearDropsOnSelected", OnBoard<Tools_RemoveTearDropsOnSelected>},
    {"RemoveDropsViolation", OnBoard<Tools_RemoveDropsViolation>},
    {"LegacyTearDrops", WithParameters<Tools_LegacyTearDrops>},
    {"ShowTearDrops", ShowTeardrops},
    {"RemoveFromPadVia", OnObject<Tools_RemoveTearDropsFromPadVia>},
    {"RemoveFromComponent", OnObject<Tools_RemoveTearDropsFromComponent>},
    {"RemoveFromTracks", OnObject<Tools_RemoveTearDropsFromConnectedTracks>},
    {"RemoveFromTouch", OnObject<Tools_RemoveTearDropsFromTouch>},
    {"PadsToVias", OnBoard<Tools_ReplaceSelectedPadsWithVias>},
    {"ViasToPads", OnBoard<Tools_ReplaceSelectedViasWithPads>},
    {"Stitch", WithBoth<Tools_ApplyViaStitching>},
    {"Shield", WithBoth<Tools_ApplyViaShielding>},
    {"StitchState", AskState<Tools_GetViaStitchingCommandState>},
    {"ShieldState", AskState<Tools_GetViaShieldingCommandState>},
    {"UnusedPads", OnBoard<Tools_RemoveUnusedPads>},
};

}  // namespace

std::span<const Step> Steps() {
  return kSteps;
}

}  // namespace Ketril::Fuzz
