// The report of an add run: a text file beside the board.
#include <ctime>
#include <filesystem>
#include <fstream>

#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/ReportFiles.h"
#include "DLLs/Tools/Teardrops/TeardropBuilder.h"
#include "Platform/Dates.h"

namespace Ketril::Tools {

// The board's objects of one kind, each in a line.
void TTeardropBuilder::ReportObjects(std::u16string& text, TObjectId kind) {
  TBoardIterator iterator(FBoard);
  iterator.SetState_FilterObject({kind});
  iterator.SetState_FilterAllLayers();
  iterator.SetState_FilterMethod(eProcessAll);
  for (TPrimitive* P = iterator.First(); P; P = iterator.Next()) {
    const TTemporary<TPrimitive> owned(P);
    if (Has(TeardropFlag_Selected) && !P->Selected()) continue;
    text += P->GetState_DescriptorString() + u"\n";
    ++MiscCount;
  }
}

void TTeardropBuilder::ReportFile() {
  const std::u16string board_file = FBoard->FileName();
  const std::u16string target = ForceFileNameExtension(board_file, u"REP");
  {
    const THourglass hourglass;
    const std::time_t now = std::time(nullptr);
    MiscCount = 0;
    std::u16string text = u"Teardrop Report " + ExtractWholeFileNameFromPath(board_file) + u"\n";
    text += u"On " + Platform::DateText(now, Platform::TDateStyle::Short) + u" at " +
            Platform::TimeText(now, Platform::TDateStyle::Short) + u"\n\n";
    const auto line = [&](const char16_t* caption, std::int32_t count) {
      text += caption + Int64ToText(count) + u"\n\n";
    };
    if (Has(TeardropFlag_Pad)) line(u"Pads visited                : ", ReportPadVisited);
    if (Has(TeardropFlag_Via)) line(u"Vias visited                : ", ReportViaVisited);
    if (Has(TeardropFlag_Pad)) {
      line(u"Pad teardrops failed : ", ReportPadFailed);
      ReportObjects(text, ePadObject);
      if (MiscCount > 0) text += u"\n";
    }
    if (Has(TeardropFlag_Via)) {
      line(u"Via teardrops failed : ", ReportViaFailed);
      ReportObjects(text, eViaObject);
      text += u"\n";
    }
    ReplaceReportFile(target, text);
  }
  OpenDocument(target);
}

}  // namespace Ketril::Tools
