// Reports on a board: lengths, and links that zoom the editor to an object.
//
//   units [default]   in the report: the unit that the reader sees first, "mil" or "mm"
//   units             anywhere: where the name of that unit goes
//   coordinate        anywhere: a length in units of 1/10000 mil, as a whole number
#pragma once

#include <span>
#include <string>

#include "DLLs/Tools/Reports/RT_Report.h"

namespace Ketril::Tools {

// Whole mils with up to three decimals: "100mil", "1.25mil".
std::u16string MilText(TCoord coord);

// On the editor's objects.
class TPCBDesignerReport : public TGeneralReport {
 public:
  using TGeneralReport::StartReport;
  using TGeneralReport::TGeneralReport;

  void StartReport(TUnit default_units);
  void WriteCoordinate(TCoord coord);
  void WriteUnits();
  // The text as a link to the object in the view, which may be empty; plain text without an object. Raises
  // EHostError when the object fails, and then nothing is written.
  void WriteJumpToPrimitiveText(const std::u16string& text, IPCB_Primitive* primitive,
                                IServerDocumentView* view);
  // A row in which the values that have an object link to it; either list may be shorter than the values.
  void WriteRowWithJumpToPrimitives(std::span<const Variant> values,
                                    std::span<IPCB_Primitive* const> linked_primitives,
                                    std::span<const std::u16string> html_styles, IServerDocumentView* view);
};

}  // namespace Ketril::Tools
