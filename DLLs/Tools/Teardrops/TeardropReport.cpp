#include "DLLs/Tools/Teardrops/TeardropReport.h"

#include <ctime>

#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Frame/ReportFiles.h"
#include "Platform/Dates.h"

namespace Ketril::Tools {

namespace {

// The picked objects of one kind, each in a line.
std::u16string DescriptorLines(TBoard* board, TObjectId kind, FunctionRef<bool(const TPrimitive*)> lists) {
  std::u16string lines;
  TBoardIterator iterator(board);
  iterator.SetState_FilterObject({kind});
  iterator.SetState_FilterAllLayers();
  iterator.SetState_FilterMethod(eProcessAll);
  for (TPrimitive* P = iterator.First(); P; P = iterator.Next()) {
    const TTemporary<TPrimitive> owned(P);
    if (lists(P)) lines += P->GetState_DescriptorString() + u"\n";
  }
  return lines;
}

std::u16string CountLine(const char16_t* caption, std::int32_t count) {
  return caption + Int64ToText(count) + u"\n\n";
}

}  // namespace

void WriteTeardropReport(TBoard* board, const TTeardropReportPart& pads, const TTeardropReportPart& vias,
                         FunctionRef<bool(const TPrimitive*)> lists) {
  const std::u16string board_file = board->FileName();
  const std::u16string target = ForceFileNameExtension(board_file, u"REP");
  {
    const THourglass hourglass;
    const std::time_t now = std::time(nullptr);
    std::u16string text = u"Teardrop Report " + ExtractWholeFileNameFromPath(board_file) + u"\n";
    text += u"On " + Platform::DateText(now, Platform::TDateStyle::Short) + u" at " +
            Platform::TimeText(now, Platform::TDateStyle::Short) + u"\n\n";
    if (pads.Told) text += CountLine(u"Pads visited                : ", pads.Visited);
    if (vias.Told) text += CountLine(u"Vias visited                : ", vias.Visited);
    if (pads.Told) {
      const std::u16string lines = DescriptorLines(board, ePadObject, lists);
      text += CountLine(u"Pad teardrops failed : ", pads.Failed) + lines;
      if (!lines.empty()) text += u"\n";
    }
    if (vias.Told)
      text += CountLine(u"Via teardrops failed : ", vias.Failed) + DescriptorLines(board, eViaObject, lists) +
              u"\n";
    ReplaceReportFile(target, text);
  }
  OpenDocument(target);
}

}  // namespace Ketril::Tools
