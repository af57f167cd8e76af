#include "Ketril/ViaSummary.h"

#include "Ketril/Info.h"
#include "Platform/Text.h"

namespace Ketril::Command {

using nlohmann::ordered_json;

ordered_json ViaSummary(const Editor::ViaRun& run, Editor::LengthUnit unit) {
  if (run.tried == 0 && run.note.empty()) return {};
  ordered_json summary{{"tried", run.tried}, {"placed", run.placed}, {"refused", ordered_json::object()}};
  for (std::size_t i = 1; i < Editor::kViaRefusals; ++i) {
    const char* const why = Editor::DescribeRefusal(static_cast<Editor::ViaRefusal>(i));
    if (run.refused[i] > 0) summary["refused"][why] = run.refused[i];
  }
  if (run.largest_gap > 0) summary["largest_gap"] = LengthText(Editor::ToCoord(run.largest_gap), unit);
  if (!run.note.empty()) summary["note"] = Platform::ToUtf8(run.note);
  return summary;
}

std::string ViaSummaryText(const ordered_json& summary) {
  std::string text = "  " + summary["placed"].dump() + " of " + summary["tried"].dump() + " places taken\n";
  for (const auto& [why, count] : summary["refused"].items())
    text += "    " + count.dump() + " " + why + "\n";
  if (summary.contains("largest_gap"))
    text += "  largest gap along the fence " + summary["largest_gap"].get<std::string>() + "\n";
  if (summary.contains("note")) text += "  " + summary["note"].get<std::string>() + "\n";
  return text;
}

}  // namespace Ketril::Command
