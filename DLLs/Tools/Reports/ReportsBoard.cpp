// The board information report: board, routing, layers and copper.
#include <array>
#include <charconv>
#include <cmath>

#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/PCB_LayerHash.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Reports/Reports.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

constexpr TLayerPartitionSet kAllSides(0x1FFFE);  // eV7_TopLayer to eV7_ConnectLayer
constexpr TObjectSet kGroupsAndPrimitives(0x7FFFFE);

// The kinds of the layer table and their plural names.
struct TKindName {
  TObjectId Kind;
  const char16_t* Name;
};
constexpr std::array<TKindName, 8> kKinds{{{eArcObject, u"Arc"},
                                           {ePadObject, u"Pad"},
                                           {eViaObject, u"Via"},
                                           {eTrackObject, u"Track"},
                                           {eTextObject, u"Text"},
                                           {eFillObject, u"Fill"},
                                           {eRegionObject, u"Region"},
                                           {eComponentBodyObject, u"ComponentBody"}}};

std::u16string Plural(std::u16string name) {
  if (name.ends_with(u's')) return name + u"es";
  if (!name.ends_with(u'y')) return name + u"s";
  name.pop_back();
  return name + u"ies";
}

// "66.67%"
std::u16string PercentText(double percent) {
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, percent, std::chars_format::fixed, 2);
  return Platform::ToUtf16(std::string(text, end.ptr)) + u"%";
}

// Of an area that is the square of `side`, to three decimals.
double SquareOf(double side) {
  return ClampedRound(side * side * 1000) / 1000.0;
}

}  // namespace

std::int32_t ClampedRound(double value) {
  const double rounded = std::nearbyint(value);
  if (rounded >= -2147483648.0 && rounded <= 2147483647.0) return static_cast<std::int32_t>(rounded);
  return value > 2147483647.0 ? 2147483647 : -2147483647;
}

std::int32_t TBoardReporter::CountPrimitives(TObjectSet objects, const Ref<IPCB_LayerSet>& layers) {
  if (!Has(eBoardReportOption_SelectedObjects)) return Board->GetPrimitiveCount(objects, layers, eProcessAll);
  TBoardIterator iterator(Board);
  iterator.SetState_FilterObject(objects);
  iterator.SetState_FilterLayers(layers);
  iterator.SetState_FilterMethod(eProcessAll);
  std::int32_t count = 0;
  for (TPrimitive* P = iterator.First(); P; P = iterator.Next()) {
    const TTemporary<TPrimitive> owned(P);
    if (Counts(*P)) ++count;
  }
  return count;
}

std::u16string TBoardReporter::NameOf(TV7_Layer layer) const {
  const Ref<IPCB_LayerObject> object = Board->GetLayerObject(layer);
  const std::u16string name = object ? On(object).Read(&IPCB_LayerObject::GetState_Name) : u"";
  return name.empty() ? LayerToString(layer) : name;
}

void TBoardReporter::ForEachBoardLayer(FunctionRef<void(TV7_Layer)> visit) {
  const Ref<IPCB_BoardReports> board = Probe<IPCB_BoardReports>(Board->IPrimitive());
  if (board) ForEachLayer(On(board).Read(&IPCB_BoardReports::GetState_LayerIterator), visit);
}

void TBoardReporter::ReportBoardSpecs() {
  FPCBReport->StartTable(u"General");
  TCoord x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  Board->GetBoardOutlineRectangle(x1, y1, x2, y2);
  FPCBReport->StartRow();
  FPCBReport->WriteCell(u"Board Size");
  FPCBReport->StartCell();
  FPCBReport->WriteCoordinate(WrapToCoord(std::int64_t{x2} - x1));
  FPCBReport->WriteSpace();
  FPCBReport->WriteText(u"x");
  FPCBReport->WriteSpace();
  FPCBReport->WriteCoordinate(WrapToCoord(std::int64_t{y2} - y1));
  FPCBReport->EndCell();
  FPCBReport->EndRow();
  FPCBReport->WriteRow(
      {u"Components on board", CountPrimitives({eComponentObject}, TPCBFactory::CreateLayerSet(kAllSides))});
  FPCBReport->EndTable();
}

void TBoardReporter::ReportRoutingInfo() {
  std::int64_t nets = 0, pads = 0, remaining = 0;
  const auto count_pads = [&](TNet* net) {
    TGroupIterator members(net);
    members.SetState_FilterObject({ePadObject});
    for (TPrimitive* P = members.First(); P; P = members.Next()) {
      const TTemporary<TPrimitive> owned(P);
      if (Counts(*P)) ++pads;
    }
  };
  TBoardIterator iterator(Board);
  iterator.SetState_FilterAll();
  iterator.SetState_FilterObject(kGroupsAndPrimitives);
  for (TPrimitive* P = iterator.First(); P; P = iterator.Next()) {
    const TTemporary<TPrimitive> owned(P);
    if (P->ObjectID() == eConnectionObject && Counts(*P)) ++remaining;
    if (P->ObjectID() != eNetObject) continue;
    if (Counts(*P)) ++nets;
    if (auto* net = dynamic_cast<TNet*>(P)) count_pads(net);
  }
  const std::int64_t connections = pads - nets, routed = connections - remaining;
  // Where nothing is to be connected, nothing is left to route.
  const double completion = connections == 0 ? 100 : static_cast<double>(routed) / connections * 100;
  FPCBReport->StartTable(u"Routing Information");
  FPCBReport->WriteRow({u"Routing completion", PercentText(completion)});
  FPCBReport->WriteRow({u"Connections", connections});
  FPCBReport->WriteRow({u"Connections routed", routed});
  FPCBReport->WriteRow({u"Connections remaining", remaining});
  FPCBReport->EndTable();
}

void TBoardReporter::ReportLayerInfo() {
  TStringList columns{{u"Layer", ctNone}};
  for (const TKindName& kind : kKinds) columns.push_back({Plural(kind.Name), ctNumber});
  FPCBReport->StartTableFromStringList(u"Layer Information", &columns, kCountTable);
  ForEachBoardLayer([&](TV7_Layer layer) {
    const Ref<IPCB_LayerSet> only_this = TPCBFactory::CreateLayerSet(std::span(&layer, 1));
    std::vector<Variant> row{NameOf(layer)};
    for (const TKindName& kind : kKinds) row.push_back(CountPrimitives({kind.Kind}, only_this));
    FPCBReport->WriteRow(row);
  });
  FPCBReport->EndTable();
}

void TBoardReporter::ReportLayerPair() {
  const TStringList columns{{u"Drill Pairs", ctNone}, {u"Vias", ctNumber}};
  FPCBReport->StartTableFromStringList(u"Drill Pairs", &columns, kCountTable);
  TLayerToBoolean low_layers, high_layers;
  ForEach<TVia>(eViaObject, [&](const TVia& via) {
    low_layers.SetData(via.vLowLayer(), true);
    high_layers.SetData(via.vHighLayer(), true);
  });
  for (const TV7_Layer low : low_layers.Keys()) {
    for (const TV7_Layer high : high_layers.Keys()) {
      std::int32_t count = 0;
      ForEach<TVia>(eViaObject, [&](const TVia& via) {
        if (via.vLowLayer() == low && via.vHighLayer() == high && Counts(via)) ++count;
      });
      if (count != 0) FPCBReport->WriteRow({NameOf(low) + u" - " + NameOf(high), count});
    }
  }
  FPCBReport->EndTable();
}

void TBoardReporter::ReportCopperArea() {
  const TStringList columns{
      {u"Layer", ctNone}, {u"Sq.In.", ctNumber}, {u"Sq.MM.", ctNumber}, {u"Percent of layer", ctNone}};
  FPCBReport->StartTableFromStringList(u"Copper Area", &columns, kCountTable);
  const Ref<IPCB_CopperBodyList> bodies = Board->GetState_CopperBodyList();
  const double board_area = Board->GetState_Area();
  ForEachBoardLayer([&](TV7_Layer layer) {
    if (!IsSignalLayer(layer) && !IsInternalPlaneLayer(layer)) return;
    const double area = Board->GetState_LayerArea(bodies, layer);
    const double side = std::sqrt(area);
    // Of a board without an area, as one without an outline, nothing is a part.
    const double percent = board_area == 0 ? 0 : area / board_area * 100;
    FPCBReport->WriteRow({NameOf(layer), SquareOf(side / 10000 / 1000), SquareOf(side * 0.0254 / 10000),
                          Int64ToText(ClampedRound(percent)) + u"%"});
  });
  FPCBReport->EndTable();
}

}  // namespace Ketril::Tools
