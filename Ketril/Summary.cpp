#include "Ketril/Summary.h"

#include <cctype>

namespace Ketril::Command {

nlohmann::ordered_json Summary(const std::vector<Editor::Change>& changes) {
  using nlohmann::ordered_json;
  ordered_json summary{{"added", ordered_json::object()},
                       {"removed", ordered_json::object()},
                       {"changed", ordered_json::object()}};
  for (const Editor::Change& change : changes) {
    const char* list = change.kind == Editor::ChangeKind::Added     ? "added"
                       : change.kind == Editor::ChangeKind::Removed ? "removed"
                                                                    : "changed";
    auto& count = summary[list][Editor::KindName(change.object->kind)];
    count = count.is_null() ? 1 : count.get<std::int64_t>() + 1;
  }
  return summary;
}

std::string SummaryText(const nlohmann::ordered_json& summary) {
  std::string text;
  for (const char* list : {"added", "removed", "changed"}) {
    for (const auto& [kind, count] : summary.at(list).items()) {
      std::string noun = kind;
      for (char& c : noun) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      const auto number = count.get<std::int64_t>();
      text += (text.empty() ? "" : ", ") + std::to_string(number) + " " + noun + (number == 1 ? "" : "s") +
              " " + list;
    }
  }
  return text.empty() ? "nothing changed" : text;
}

}  // namespace Ketril::Command
