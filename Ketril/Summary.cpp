#include "Ketril/Summary.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "Editor/Files/LayerNames.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using nlohmann::ordered_json;

void Count(ordered_json& counts, const Editor::Primitive& object) {
  auto& count = counts[Editor::KindName(object.kind)];
  count = count.is_null() ? 1 : count.get<std::int64_t>() + 1;
}

// "2 vias"
std::string CountText(const std::string& kind, std::int64_t count) {
  std::string noun = kind;
  for (char& c : noun) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (count != 1 && noun.ends_with('y'))
    return std::to_string(count) + " " + noun.replace(noun.size() - 1, 1, "ies");
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// Components by their designators, zones by their names or nets.
std::string NameOf(const Editor::Primitive& object) {
  std::u16string name = object.Identifier();
  if (name.empty() && object.GetNet()) name = object.GetNet()->data.name;
  return Editor::KindName(object.kind) + (name.empty() ? "" : " " + Platform::ToUtf8(name));
}

}  // namespace

nlohmann::ordered_json Summary(const std::vector<Editor::Change>& changes) {
  ordered_json summary{{"added", ordered_json::object()},
                       {"removed", ordered_json::object()},
                       {"changed", ordered_json::object()}};
  for (const Editor::Change& change : changes) {
    const char* list = change.kind == Editor::ChangeKind::Added     ? "added"
                       : change.kind == Editor::ChangeKind::Removed ? "removed"
                                                                    : "changed";
    Count(summary[list], *change.object);
  }
  return summary;
}

std::string SummaryText(const nlohmann::ordered_json& summary) {
  std::string text;
  for (const char* list : {"added", "removed", "changed"}) {
    for (const auto& [kind, count] : summary.at(list).items()) {
      text += (text.empty() ? "" : ", ") + CountText(kind, count.get<std::int64_t>()) + " " + list;
    }
  }
  return text.empty() ? "nothing changed" : text;
}

// Of each group the parts come first, then it goes, with its members behind it.
nlohmann::ordered_json UnGroupSummary(const Editor::Board& board,
                                      const std::vector<Editor::Change>& changes) {
  ordered_json groups = ordered_json::array(), parts = ordered_json::object();
  for (const Editor::Change& change : changes) {
    const Editor::Primitive& object = *change.object;
    if (object.Owner() || object.kind == eRuleObject) continue;  // a room leaves with its zone
    if (change.kind == Editor::ChangeKind::Added) Count(parts, object);
    if (change.kind != Editor::ChangeKind::Removed) continue;
    groups.push_back({{"object", NameOf(object)},
                      {"layer", Editor::LayerNames(board).NameOf(object.state.layer)},
                      {"parts", std::exchange(parts, ordered_json::object())}});
  }
  return groups;
}

std::string UnGroupSummaryText(const nlohmann::ordered_json& groups) {
  constexpr std::size_t kShown = 12;
  std::string text;
  for (std::size_t i = 0; i < std::min(groups.size(), kShown); ++i) {
    const ordered_json& group = groups[i];
    std::string parts;
    for (const auto& [kind, count] : group.at("parts").items())
      parts += (parts.empty() ? "" : ", ") + CountText(kind, count.get<std::int64_t>());
    text += "  " + group.at("object").get<std::string>() + " on " + group.at("layer").get<std::string>() +
            ": " + (parts.empty() ? "nothing was in it" : parts) + "\n";
  }
  if (groups.size() > kShown)
    text += "  ... and " + std::to_string(groups.size() - kShown) + " more (--json has them all)\n";
  return text;
}

}  // namespace Ketril::Command
