// The board information report: the lists of sizes.
#include <algorithm>

#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Reports/Reports.h"

namespace Ketril::Tools {

void TBoardReporter::ReportSizeList(const std::u16string& header, bool use_units) {
  if (FSizes.empty()) return;
  const TStringList columns{{header, ctNone}, {u"Count", ctNumber}};
  FPCBReport->StartTableFromStringList(header, &columns, kCountTable);
  for (const auto& [size, count] : FSizes) {
    FPCBReport->StartRow();
    FPCBReport->StartCell();
    if (use_units) {
      FPCBReport->WriteCoordinate(size);
    } else {
      FPCBReport->WriteText(size);
    }
    FPCBReport->EndCell();
    FPCBReport->WriteCell(Int64ToText(count));
    FPCBReport->EndRow();
  }
  FPCBReport->EndTable();
}

void TBoardReporter::ReportSolderSizeList(const std::u16string& header) {
  const bool split = std::ranges::any_of(
      FSolderSizes, [](const auto& entry) { return entry.second.TopCount != entry.second.BottomCount; });
  const auto column = [&](const char16_t* name) {
    FPCBReport->StartColumnHeader(ctNumber);
    FPCBReport->WriteText(name);
    FPCBReport->EndColumnHeader();
  };
  FPCBReport->StartTable(header, kCountTable);
  FPCBReport->StartColumns(false);
  FPCBReport->StartColumnHeader(ctNone);
  FPCBReport->WriteText(header);
  FPCBReport->EndColumnHeader();
  FPCBReport->StartColumnHeader(ctNumber);
  FPCBReport->WriteText(u"Count");
  if (split) {
    FPCBReport->StartSubColumns();
    column(u"Top Solder Mask");
    column(u"Bottom Solder Mask");
    FPCBReport->EndSubColumns();
  }
  FPCBReport->EndColumnHeader();
  FPCBReport->EndColumns();
  for (const auto& [size, record] : FSolderSizes) {
    FPCBReport->StartRow();
    FPCBReport->StartCell();
    FPCBReport->WriteCoordinate(size);
    FPCBReport->EndCell();
    FPCBReport->WriteCell(Int64ToText(record.TopCount));
    if (split) FPCBReport->WriteCell(Int64ToText(record.BottomCount));
    FPCBReport->EndRow();
  }
  FPCBReport->EndTable();
}

// The list of `value(object)` of the objects that count.
template <class T, class Value>
void TBoardReporter::ReportSizeListFrom(TObjectId kind, const char16_t* header, bool use_units, Value value) {
  FSizes.clear();
  ForEach<T>(kind, [&](const T& object) {
    if (Counts(object)) ++FSizes[value(object)];
  });
  ReportSizeList(header, use_units);
}

template <class T>
void TBoardReporter::ReportSolderSizesFrom(TObjectId kind, const std::u16string& header) {
  FSolderSizes.clear();
  ForEach<T>(kind, [&](const T& object) {
    if (!Counts(object)) return;
    ++FSolderSizes[object.GetState_Calculated_SolderMaskExpansion(eV6_TopSolder)].TopCount;
    ++FSolderSizes[object.GetState_Calculated_SolderMaskExpansion(eV6_BottomSolder)].BottomCount;
  });
  ReportSolderSizeList(header);
}

void TBoardReporter::ReportSizeListFromAnnularRings(TV7_Layer layer) {
  FSizes.clear();
  ForEach<TPad>(ePadObject, [&](const TPad& pad) {
    const TCoord hole = Counts(pad) ? pad.HoleSize() : 0;
    if (hole != 0) ++FSizes[Difference(std::min(pad.StackSizeX(layer), pad.StackSizeY(layer)), hole)];
  });
  ForEach<TVia>(eViaObject, [&](const TVia& via) {
    const TCoord hole = Counts(via) ? via.HoleSize() : 0;
    if (hole != 0) ++FSizes[Difference(via.Size(), hole)];
  });
  const bool is_top = layer == eV6_TopLayer, is_bottom = layer == eV6_BottomLayer;
  ReportSizeList(is_top      ? u"Top Layer Annular Ring Size"
                 : is_bottom ? u"Bottom Layer Annular Ring Size"
                             : u"Mid Layer Annular Ring Size",
                 true);
}

void TBoardReporter::ReportSizeListFromPadSolderMask() {
  ReportSolderSizesFrom<TPad>(ePadObject, u"Pad Solder Mask");
}

void TBoardReporter::ReportSizeListFromViaSolderMask() {
  ReportSolderSizesFrom<TVia>(eViaObject, u"Via Solder Mask");
}

void TBoardReporter::ReportSizeListFromPadPasteMask() {
  ReportSizeListFrom<TPad>(ePadObject, u"Pad Paste Mask", true,
                           [](const TPad& pad) { return pad.GetState_Calculated_PasteMaskExpansion(); });
}

void TBoardReporter::ReportSizeListFromPadPwrGndExpansion() {
  ReportSizeListFrom<TPad>(ePadObject, u"Pad Pwr/Gnd Expansion", true,
                           [](const TPad& pad) { return pad.GetState_Calculated_PowerPlaneClearance(); });
}

void TBoardReporter::ReportSizeListFromPadReliefConductorWidth() {
  ReportSizeListFrom<TPad>(ePadObject, u"Pad Relief Conductor Width", true,
                           [](const TPad& pad) { return pad.GetState_Calculated_ReliefConductorWidth(); });
}

void TBoardReporter::ReportSizeListFromPadReliefAirGap() {
  ReportSizeListFrom<TPad>(ePadObject, u"Pad Relief Air Gap", true,
                           [](const TPad& pad) { return pad.GetState_Calculated_ReliefAirGap(); });
}

void TBoardReporter::ReportSizeListFromPadReliefEntries() {
  ReportSizeListFrom<TPad>(ePadObject, u"Pad Relief Entries", false,
                           [](const TPad& pad) { return pad.GetState_Calculated_ReliefEntries(); });
}

void TBoardReporter::ReportSizeListFromViaPwrGndExpansion() {
  ReportSizeListFrom<TVia>(eViaObject, u"Via Pwr/Gnd Expansion", true,
                           [](const TVia& via) { return via.GetState_Calculated_PowerPlaneClearance(); });
}

void TBoardReporter::ReportSizeListFromTrackWidth() {
  ReportSizeListFrom<TTrack>(eTrackObject, u"Track Width", true,
                             [](const TTrack& track) { return track.Width(); });
}

void TBoardReporter::ReportSizeListFromArcWidth() {
  ReportSizeListFrom<TArc>(eArcObject, u"Arc Line Width", true,
                           [](const TArc& arc) { return arc.LineWidth(); });
}

void TBoardReporter::ReportSizeListFromArcRadius() {
  ReportSizeListFrom<TArc>(eArcObject, u"Arc Radius", true, [](const TArc& arc) { return arc.Radius(); });
}

void TBoardReporter::ReportSizeListFromArcAngles() {
  ReportSizeListFrom<TArc>(eArcObject, u"Arc Degrees", false, [](const TArc& arc) {
    const double start = arc.Angle1(), end = arc.Angle2();
    return WrapToCoord(std::int64_t{ClampedRound(end)} - ClampedRound(start) + (end < start ? 360 : 0));
  });
}

void TBoardReporter::ReportSizeListFromTextHeight() {
  ReportSizeListFrom<TText>(eTextObject, u"Text Height", true, [](const TText& text) { return text.Size(); });
}

void TBoardReporter::ReportSizeListFromTextWidth() {
  ReportSizeListFrom<TText>(eTextObject, u"Text Width", true, [](const TText& text) { return text.Width(); });
}

// The editor tells no clearance of a polygon, so there is nothing to list yet.
void TBoardReporter::ReportSizeListFromPolygonClearance() {
  FSizes.clear();
  ReportSizeList(u"Polygon Clearance", true);
}

void TBoardReporter::ReportSizeListFromNetWidth() {
  ReportSizeListFrom<TNet>(eNetObject, u"Net Track Width", true,
                           [](const TNet& net) { return net.GetState_Calculated_RoutingMinWidth(); });
}

void TBoardReporter::ReportSizeListFromNetViaSize() {
  ReportSizeListFrom<TNet>(eNetObject, u"Net Via Size", true,
                           [](const TNet& net) { return net.GetState_Calculated_RoutingViaWidth(); });
}

}  // namespace Ketril::Tools
