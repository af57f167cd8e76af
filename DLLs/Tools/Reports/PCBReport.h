// Reports on a board for the library's wrappers.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Reports/RT_DesignerReport.h"

namespace Ketril::Tools {

class TPCBReport : public TPCBDesignerReport {
 public:
  using TPCBDesignerReport::TPCBDesignerReport;

  // As with the editor's objects, but without an object nothing at all is written, not even the text.
  void WriteJumpToPrimitiveText(const std::u16string& text, const TPrimitive* primitive,
                                IServerDocumentView* view);
  // Entries may be null: their value is plain text.
  void WriteRowWithJumpToPrimitives(std::span<const Variant> values,
                                    std::span<const TPrimitive* const> linked_primitives,
                                    std::span<const std::u16string> html_styles, IServerDocumentView* view);
};

}  // namespace Ketril::Tools
