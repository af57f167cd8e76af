#include "Ketril/ReportDialog.h"

#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

std::string FieldName(int option) {
  return "BoardReport_" + Platform::ToUtf8(kBoardReportOptionTexts[option].Name);
}

}  // namespace

bool SetBoardReportField(TBoardReportOptionSet& options, const std::string& name, const std::string& value) {
  if (value != "yes" && value != "no") return false;
  for (int i = 0; i < kBoardReportOptionCount; ++i) {
    if (name != FieldName(i)) continue;
    options.Set(static_cast<TBoardReportOption>(i), value == "yes");
    return true;
  }
  return false;
}

std::string BoardReportFields(const TBoardReportOptionSet& options) {
  std::string text = "Board information report:";
  for (int i = 0; i < kBoardReportOptionCount; ++i)
    text +=
        "\n  " + FieldName(i) + "=" + (options.Contains(static_cast<TBoardReportOption>(i)) ? "yes" : "no");
  return text;
}

}  // namespace Ketril::Command
