#include "DLLs/Tools/Reports/Reports.h"

#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "DLLs/Tools/Reports/ReportClient.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

constexpr const char16_t* kServer = u"Ketril";
constexpr const char16_t* kSection = u"BoardReportOptions";

std::u16string OptionsFile(const Ref<IClient2>& client) {
  return TextOf(PathOf(On(client).Read(&IClient2::GetState_SettingsFolder)) / "KETRIL.INI");
}

template <class Visit>
void ForEachOption(Visit visit) {
  for (int i = 0; i < kBoardReportOptionCount; ++i)
    visit(static_cast<TBoardReportOption>(i), kBoardReportOptionTexts[i]);
}

}  // namespace

TBoardReporter::TBoardReporter(IParameterList* parameters, TBoard* board, std::u16string filename,
                               IReportOutputOptions* options)
    : FFilename(std::move(filename)),
      FBoardInfoReportOptions(options),
      Board(board),
      Parameters(parameters) {}

void TBoardReporter::Execute() {
  SetAllOptions(false);
  if (!GetState_Parameter(Parameters.Get())) {
    Import_FromIniFile();
    if (!Import_FromUser()) return;
    Export_ToIniFile();
  }
  Report();
}

void TBoardReporter::SetAllOptions(bool on) {
  Options = on ? TBoardReportOptionSet::All() : TBoardReportOptionSet();
}

bool TBoardReporter::GetState_Parameter(IParameterList* parameters) {
  if (!parameters) return false;
  std::u16string value;
  if (parameters->GetParameter(u"All", value)) {
    if (Platform::EqualsIgnoringAsciiCase(value, u"True")) SetAllOptions(true);
    return true;
  }
  bool any = false;
  ForEachOption([&](TBoardReportOption option, const TBoardReportOptionText& text) {
    if (!parameters->GetParameter(text.Name, value)) return;
    Options.Set(option, value == u"True");
    any = true;
  });
  return any;
}

void TBoardReporter::Import_FromIniFile() {
  const Ref<IClient2> client = Client2();
  if (!client) return;
  const Ref<IOptionsReader> reader =
      On(client).Read(&IClient2::OpenOptionsReader, kServer, OptionsFile(client));
  ForEachOption([&](TBoardReportOption option, const TBoardReportOptionText& text) {
    Options.Set(option, On(reader).Read(&IOptionsReader::ReadBoolean, kSection, text.Caption, false));
  });
}

void TBoardReporter::Export_ToIniFile() {
  const Ref<IClient2> client = Client2();
  if (!client) return;
  const Ref<IOptionsWriter> writer =
      On(client).Read(&IClient2::OpenOptionsWriter, kServer, OptionsFile(client));
  ForEachOption([&](TBoardReportOption option, const TBoardReportOptionText& text) {
    On(writer).Call(&IOptionsWriter::WriteInteger, kSection, text.Caption, Has(option) ? -1 : 0);
  });
}

bool TBoardReporter::Import_FromUser() {
  const Ref<IPCB_BoardReports> dialogs = Probe<IPCB_BoardReports>(Board->IPrimitive());
  bool accepted = false;
  if (dialogs) On(dialogs).Call(&IPCB_BoardReports::EditBoardReportOptions, Options, accepted);
  return accepted;
}

void TBoardReporter::Report() {
  const THourglass hourglass;
  const std::u16string board_file = Board->FileName();
  TPCBReport report(u"Board Information Report", board_file);
  report.StartReport(Board->DisplayUnit());
  WriteSections(report);
  report.EndReport();
  report.WriteToFile(FFilename.empty() ? board_file : FFilename, FBoardInfoReportOptions.Get());
}

void TBoardReporter::WriteSections(TPCBReport& report) {
  FPCBReport = &report;
  const auto part = [&](TBoardReportOption option, auto write, auto... arguments) {
    if (Has(option)) (this->*write)(arguments...);
  };
  using Self = TBoardReporter;
  report.StartSection(u"Contents");
  report.WriteContents();
  report.EndSection();
  report.StartSection(u"Board Specification");
  part(eBoardReportOption_BoardSpecs, &Self::ReportBoardSpecs);
  report.EndSection();
  report.StartSection(u"Routing");
  part(eBoardReportOption_RoutingInfo, &Self::ReportRoutingInfo);
  report.EndSection();
  report.StartSection(u"Layer Information");
  part(eBoardReportOption_LayerInfo, &Self::ReportLayerInfo);
  part(eBoardReportOption_LayerPair, &Self::ReportLayerPair);
  report.EndSection();
  report.StartSection(u"Copper Area");
  part(eBoardReportOption_CopperArea, &Self::ReportCopperArea);
  report.EndSection();
  report.StartSection(u"Board Holes");
  part(eBoardReportOption_NonPlatedHoles, &Self::ReportHoles, false);
  part(eBoardReportOption_PlatedHoles, &Self::ReportHoles, true);
  report.EndSection();
  report.StartSection(u"Board Slots");
  part(eBoardReportOption_NonPlatedSlots, &Self::ReportSlots, false);
  part(eBoardReportOption_PlatedSlots, &Self::ReportSlots, true);
  report.EndSection();
  report.StartSection(u"Board Square Holes");
  part(eBoardReportOption_NonPlatedSquareHoles, &Self::ReportSquareHoles, false);
  part(eBoardReportOption_PlatedSquareHoles, &Self::ReportSquareHoles, true);
  report.EndSection();
  report.StartSection(u"Other");
  part(eBoardReportOption_AnnularRingsTopLayer, &Self::ReportSizeListFromAnnularRings, eV6_TopLayer);
  part(eBoardReportOption_AnnularRingsMidLayer1, &Self::ReportSizeListFromAnnularRings, eV6_MidLayer1);
  part(eBoardReportOption_AnnularRingsBottomLayer, &Self::ReportSizeListFromAnnularRings, eV6_BottomLayer);
  part(eBoardReportOption_PadSolderMask, &Self::ReportSizeListFromPadSolderMask);
  part(eBoardReportOption_PadPasteMask, &Self::ReportSizeListFromPadPasteMask);
  part(eBoardReportOption_PadPwrGndExpansion, &Self::ReportSizeListFromPadPwrGndExpansion);
  part(eBoardReportOption_PadReliefConductorWidth, &Self::ReportSizeListFromPadReliefConductorWidth);
  part(eBoardReportOption_PadReliefAirGap, &Self::ReportSizeListFromPadReliefAirGap);
  part(eBoardReportOption_PadReliefEntries, &Self::ReportSizeListFromPadReliefEntries);
  part(eBoardReportOption_ViaSolderMask, &Self::ReportSizeListFromViaSolderMask);
  part(eBoardReportOption_ViaPwrGndExpansion, &Self::ReportSizeListFromViaPwrGndExpansion);
  part(eBoardReportOption_TrackWidth, &Self::ReportSizeListFromTrackWidth);
  part(eBoardReportOption_ArcWidth, &Self::ReportSizeListFromArcWidth);
  part(eBoardReportOption_ArcRadius, &Self::ReportSizeListFromArcRadius);
  part(eBoardReportOption_ArcAngles, &Self::ReportSizeListFromArcAngles);
  part(eBoardReportOption_TextHeight, &Self::ReportSizeListFromTextHeight);
  part(eBoardReportOption_TextWidth, &Self::ReportSizeListFromTextWidth);
  part(eBoardReportOption_PolygonClearance, &Self::ReportSizeListFromPolygonClearance);
  part(eBoardReportOption_NetWidth, &Self::ReportSizeListFromNetWidth);
  part(eBoardReportOption_NetViaSize, &Self::ReportSizeListFromNetViaSize);
  report.EndSection();
  FPCBReport = nullptr;
}

}  // namespace Ketril::Tools
