// The board information report: holes, slots and square holes. Each round finds the smallest size that is not
// marked yet, counts its objects and marks them by `PrimUsed`.
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "DLLs/Tools/Reports/Reports.h"

namespace Ketril::Tools {

namespace {

// Where a search begins: above every size. Sizes are looked for up to its absolute value.
constexpr std::int32_t kNothingFound = -1999980000;

// Lowers `smallest` to `size` if that is not above it; was it lowered.
bool Lower(std::int32_t& smallest, std::int32_t size) {
  if (size > std::abs(smallest)) return false;
  smallest = size;
  return true;
}

}  // namespace

// Round by round over the vias, if they take part, and the pads for which `takes_part` says so.
template <class TakesPart>
void TBoardReporter::ReportRoundOrSquare(const std::u16string& title, bool with_vias_column,
                                         TakesPart takes_part) {
  TStringList columns{{title, ctNone}, {u"Pads", ctNumber}};
  if (with_vias_column) columns.push_back({u"Vias", ctNumber});
  FPCBReport->StartTableFromStringList(title, &columns, kCountTable);
  const auto for_each = [&](auto visit) {
    const auto visit_if = [&](auto& object) {
      if (takes_part(object)) visit(object);
    };
    if (with_vias_column) ForEach<TVia>(eViaObject, visit_if);
    ForEach<TPad>(ePadObject, visit_if);
  };
  if (with_vias_column) ForEach<TVia>(eViaObject, [](TVia& via) { via.SetPrimUsed(false); });
  ForEach<TPad>(ePadObject, [](TPad& pad) { pad.SetPrimUsed(false); });
  for (;;) {
    std::int32_t size = kNothingFound;
    bool found = false;
    for_each([&](auto& object) {
      if (!object.PrimUsed() && Lower(size, object.HoleSize())) found = true;
    });
    if (!found) break;
    std::int32_t pads = 0, vias = 0;
    for_each([&](auto& object) {
      if (object.HoleSize() != size) return;
      if (Counts(object)) ++(std::is_base_of_v<TVia, std::remove_cvref_t<decltype(object)>> ? vias : pads);
      object.SetPrimUsed(true);
    });
    FPCBReport->StartRow();
    FPCBReport->StartCell();
    FPCBReport->WriteCoordinate(size);
    FPCBReport->EndCell();
    FPCBReport->WriteCell(Int64ToText(pads));
    if (with_vias_column) FPCBReport->WriteCell(Int64ToText(vias));
    FPCBReport->EndRow();
  }
  FPCBReport->EndTable();
}

void TBoardReporter::ReportHoles(bool plated) {
  ReportRoundOrSquare(plated ? u"Plated Hole Size" : u"Non-Plated Hole Size", true,
                      [plated]<class T>(const T& object) {
                        if constexpr (std::is_base_of_v<TVia, T>) {
                          return plated;
                        } else {
                          return object.Plated() == plated && object.HoleType() == eRoundHole;
                        }
                      });
}

void TBoardReporter::ReportSquareHoles(bool plated) {
  ReportRoundOrSquare(plated ? u"Plated Square Hole Size" : u"Non-Plated Square Hole Size", false,
                      [plated]<class T>(const T& object) {
                        if constexpr (std::is_base_of_v<TVia, T>) {
                          return false;
                        } else {
                          return object.Plated() == plated && object.HoleType() == eSquareHole &&
                                 object.IsHoleSizeValid();
                        }
                      });
}

void TBoardReporter::ReportSlots(bool plated) {
  const std::u16string title = plated ? u"Plated Slot Size" : u"Non-Plated Slot Size";
  const TStringList columns{{title + u" / Length", ctNone}, {u"Pads", ctNumber}};
  FPCBReport->StartTableFromStringList(title, &columns, kCountTable);
  const auto for_each = [&](auto visit) {
    ForEach<TPad>(ePadObject, [&](TPad& pad) {
      if (pad.Plated() == plated && pad.HoleType() == eSlotHole && pad.IsHoleSizeValid()) visit(pad);
    });
  };
  ForEach<TPad>(ePadObject, [](TPad& pad) { pad.SetPrimUsed(false); });
  for (;;) {
    std::optional<std::int32_t> size, length;
    for_each([&](TPad& pad) {
      if (!pad.PrimUsed()) size = std::min(size.value_or(pad.HoleSize()), pad.HoleSize());
    });
    if (!size) break;
    for_each([&](TPad& pad) {
      if (!pad.PrimUsed() && pad.HoleSize() == size)
        length = std::min(length.value_or(pad.HoleWidth()), pad.HoleWidth());
    });
    if (!length) break;  // the editor has changed the pads meanwhile
    std::int32_t count = 0;
    for_each([&](TPad& pad) {
      if (pad.HoleSize() != size || pad.HoleWidth() != length) return;
      if (Counts(pad)) ++count;
      pad.SetPrimUsed(true);
    });
    FPCBReport->WriteRow({MilText(*size) + u" / " + MilText(*length), count});
  }
  FPCBReport->EndTable();
}

}  // namespace Ketril::Tools
