#include "DLLs/Tools/Reports/RT_DesignerReport.h"

#include <charconv>
#include <cmath>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

std::u16string MilText(TCoord coord) {
  double whole = 0;
  const double fraction = std::modf(coord / 10000.0, &whole);
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, whole + std::nearbyint(fraction * 1000) / 1000,
                                 std::chars_format::fixed, 3);
  std::string digits(text, end.ptr);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.back() == '.') digits.pop_back();
  if (digits == "-0") digits = "0";
  return Platform::ToUtf16(digits + "mil");
}

void TPCBDesignerReport::StartReport(TUnit default_units) {
  TBaseReport::StartReport();
  Add(u"units").SetAttribute(u"default", default_units == eMetric ? u"mm" : u"mil");
}

void TPCBDesignerReport::WriteCoordinate(TCoord coord) {
  Add(u"coordinate", Int64ToText(coord));
}

void TPCBDesignerReport::WriteUnits() {
  Add(u"units");
}

void TPCBDesignerReport::WriteJumpToPrimitiveText(const std::u16string& text, IPCB_Primitive* primitive,
                                                  IServerDocumentView* view) {
  if (!primitive) return WriteText(text);
  const TCoordRect box = On(Ref(primitive)).Read(&IPCB_Primitive::GetState_BoundingRectangle);
  WriteCallBackText(text, u"PCB:Zoom",
                    u"Action=AREA_DYNAMICZOOM|Location1.X=" + MilText(box.left()) + u"|Location2.X=" +
                        MilText(box.right()) + u"|Location1.Y=" + MilText(box.bottom()) + u"|Location2.Y=" +
                        MilText(box.top()) + u"|Absolute=True",
                    view);
}

void TPCBDesignerReport::WriteRowWithJumpToPrimitives(std::span<const Variant> values,
                                                      std::span<IPCB_Primitive* const> linked_primitives,
                                                      std::span<const std::u16string> html_styles,
                                                      IServerDocumentView* view) {
  StartRow();
  for (std::size_t i = 0; i < values.size(); ++i) {
    StartCell(i < html_styles.size() ? html_styles[i] : std::u16string());
    if (i < linked_primitives.size() && linked_primitives[i]) {
      WriteJumpToPrimitiveText(values[i].ToString(), linked_primitives[i], view);
    } else {
      WriteText(values[i]);
    }
    EndCell();
  }
  EndRow();
}

}  // namespace Ketril::Tools
