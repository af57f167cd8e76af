#include "DLLs/Tools/Reports/ComponentReport.h"

#include <array>
#include <ctime>
#include <numeric>
#include <utility>

#include "DLLs/Tools/Frame/CoordText.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Reports/NameOrder.h"
#include "DLLs/Tools/Reports/ReportClient.h"
#include "Interfaces/Reports.h"
#include "Platform/Dates.h"

namespace Ketril::Tools {

namespace {

// The columns of the summary behind the layer, and what they count.
struct TColumn {
  const char16_t* Heading;
  TObjectId Kind;
};
constexpr std::array<TColumn, 5> kColumns{{{u"Pads(s)", ePadObject},
                                           {u"Tracks(s)", eTrackObject},
                                           {u"Fill(s)", eFillObject},
                                           {u"Arc(s)", eArcObject},
                                           {u"Text(s)", eTextObject}}};
constexpr std::u16string_view kLayerHeading = u"Layer(s)";
constexpr std::size_t kLayerWidth = 20, kDashes = 68;
using TCounts = std::array<std::int32_t, kColumns.size()>;

// At least 8, and two more than the heading.
std::size_t WidthOf(std::u16string_view heading) {
  return std::max<std::size_t>(heading.size() + 2, 8);
}

std::u16string SummaryLine(std::u16string_view layer, const TCounts& counts) {
  std::u16string line = u" " + LeftAligned(layer, kLayerWidth);
  for (std::size_t i = 0; i < kColumns.size(); ++i)
    line += RightAligned(Int64ToText(counts[i]), WidthOf(kColumns[i].Heading));
  return line;
}

std::u16string HeadingLine() {
  std::u16string line = u" " + LeftAligned(kLayerHeading, kLayerWidth);
  for (const TColumn& column : kColumns) line += RightAligned(column.Heading, WidthOf(column.Heading));
  return line;
}

std::int32_t WholeMils(TCoord coord) {
  return Round(CoordToMils(coord));
}

// "12.7" or "0.5": millimetres or inches, without the unit.
std::u16string SizeText(std::int32_t mils, TUnit unit) {
  const TCoord coord = MilsToCoord(mils);
  const std::u16string text = CoordUnitToString(unit == eMetric ? coord : coord / 1000, unit);
  return text.substr(0, text.size() - (unit == eMetric ? 2 : 3));
}

}  // namespace

TComponentReport::TComponentReport(TBoard* ABoard, std::u16string AOutputFileName,
                                   TPCBComponentLibrary* ACompLibrary)
    : Board(ABoard),
      OutputFileName(std::move(AOutputFileName)),
      CompLibrary(ACompLibrary),
      Component(ACompLibrary->CurrentComponent()) {}

void TComponentReport::CreateComponentReport() {
  f = {};
  WriteHeader();
  WriteSummary();
  f.PlaceAt(OutputFileName);
}

void TComponentReport::WriteLibraryAndDate() {
  const std::time_t now = std::time(nullptr);
  f.WriteLine(u"PCB Library : " + FileNameOf(Board->FileName()));
  f.WriteLine(u"Date        : " + Platform::DateText(now, Platform::TDateStyle::Short));
  f.WriteLine(u"Time        : " + Platform::TimeText(now, Platform::TDateStyle::Long));
  for (int i = 0; i < 3; ++i) f.WriteLine();
}

void TComponentReport::WriteDimension() {
  const TUnit unit = Board->DisplayUnit();
  const std::int32_t width =
      WrapToCoord(std::int64_t{WholeMils(Board->BoardMaximumX())} - WholeMils(Board->BoardMinimumX()));
  const std::int32_t height =
      WrapToCoord(std::int64_t{WholeMils(Board->BoardMaximumY())} - WholeMils(Board->BoardMinimumY()));
  f.WriteLine(u"Dimension : " + SizeText(width, unit) + u" x " + SizeText(height, unit) +
              (unit == eMetric ? u" mm" : u" in"));
}

void TComponentReport::WriteHeader() {
  f.WriteLine(u"Component   : " + (Component ? Component->Pattern() : std::u16string()));
  WriteLibraryAndDate();
  WriteDimension();
}

void TComponentReport::WriteSummary() {
  const std::u16string dashes(kDashes, u'-');
  f.WriteLine();
  f.WriteLine(HeadingLine());
  f.WriteLine(dashes);
  TCounts totals{};
  const Ref<IPCB_BoardReports> layers = Probe<IPCB_BoardReports>(Board->IPrimitive());
  const auto write_layer = [&](TV7_Layer layer) {
    const Ref<IPCB_LayerSet> only_this = TPCBFactory::CreateLayerSet(std::span(&layer, 1));
    TCounts counts{};
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      counts[i] = Board->GetPrimitiveCount({kColumns[i].Kind}, only_this, eProcessAll);
      totals[i] += counts[i];
    }
    if (counts != TCounts{})
      f.WriteLine(SummaryLine(LayerToString(layer).substr(0, kLayerWidth - 2), counts));
  };
  if (layers) ForEachLayer(On(layers).Read(&IPCB_BoardReports::GetState_LayerIterator), write_layer);
  f.WriteLine(dashes);
  f.WriteLine(SummaryLine(u"Total", totals));
}

void TComponentReport::CreateLibraryReport() {
  std::vector<std::u16string> names;
  const std::int32_t count = CompLibrary->ComponentList()->Count();
  for (std::int32_t i = 0; i < count; ++i) {
    TLibComponent* const entry = CompLibrary->ComponentList()->At(i);
    if (!entry) continue;
    Component = entry;
    names.push_back(Component->Pattern());
  }
  f = {};
  WriteLibraryAndDate();
  f.WriteLine(u"Component Count : " + Int64ToText(count));
  f.WriteLine();
  f.WriteLine(u"Component Name");
  f.WriteLine(u"-----------------------------------------------");
  f.WriteLine();
  for (const std::u16string& name : SortedNames(names)) f.WriteLine(name);
  f.PlaceAt(OutputFileName);
}

}  // namespace Ketril::Tools
