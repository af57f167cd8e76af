#include "DLLs/Tools/Reports/NetReporter.h"

#include <array>

#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/Progress.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Reports/ReportClient.h"

namespace Ketril::Tools {

namespace {

constexpr TLayerPartitionSet kAllSides(0x1FFFE);  // eV7_TopLayer to eV7_ConnectLayer

Ref<IServerDocumentView> CurrentView() {
  const Ref<IClient2> client = Client2();
  return client ? On(client).Read(&IClient2::GetState_CurrentView) : nullptr;
}

}  // namespace

std::unique_ptr<TPCBReport> TNetReporter::CreateReport() {
  auto report = std::make_unique<TPCBReport>(u"Net Status Report", FBoard->FileName());
  const THourglass hourglass;
  TProgress progress(FBoard, u"Preparing Net Report");
  progress.SetMaximum(FBoard->GetPrimitiveCount({eNetObject}, kAllSides, eProcessAll));
  report->StartReport(FBoard->DisplayUnit());
  const std::array<std::u16string, 3> columns{u"Nets", u"Layer", u"Length"};
  report->StartTable(u"Net Status", columns, ctSuppressTitle);
  const Ref<IServerDocumentView> view = CurrentView();
  for (const TNet* net : FBoard->GetSortedNetList()) {
    progress.Step();
    report->StartRow();
    report->StartCell();
    report->WriteJumpToPrimitiveText(net->Name(), net, view.Get());
    report->EndCell();
    const TV7_Layer layer = net->Layer();
    report->WriteCell(IsInternalPlaneLayer(layer) ? LayerToString(layer) : u"Signal Layers Only");
    report->StartCell();
    report->WriteCoordinate(Round(net->GetState_RoutedLength()));
    report->EndCell();
    report->EndRow();
  }
  report->EndTable();
  report->EndReport();
  return report;
}

}  // namespace Ketril::Tools
