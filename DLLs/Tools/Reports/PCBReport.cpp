#include "DLLs/Tools/Reports/PCBReport.h"

#include <vector>

namespace Ketril::Tools {

void TPCBReport::WriteJumpToPrimitiveText(const std::u16string& text, const TPrimitive* primitive,
                                          IServerDocumentView* view) {
  if (!primitive) return;
  TPCBDesignerReport::WriteJumpToPrimitiveText(text, primitive->IPrimitive().Get(), view);
}

void TPCBReport::WriteRowWithJumpToPrimitives(std::span<const Variant> values,
                                              std::span<const TPrimitive* const> linked_primitives,
                                              std::span<const std::u16string> html_styles,
                                              IServerDocumentView* view) {
  // The references are held: while the row is written, code of the editor runs.
  std::vector<Ref<IPCB_Primitive>> held;
  std::vector<IPCB_Primitive*> objects;
  for (const TPrimitive* primitive : linked_primitives) {
    held.push_back(primitive ? primitive->IPrimitive() : nullptr);
    objects.push_back(held.back().Get());
  }
  TPCBDesignerReport::WriteRowWithJumpToPrimitives(values, objects, html_styles, view);
}

}  // namespace Ketril::Tools
