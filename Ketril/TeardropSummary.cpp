#include "Ketril/TeardropSummary.h"

#include <algorithm>
#include <array>
#include <atomic>

#include "Editor/AllCores.h"
#include "Editor/Copper/Distance.h"
#include "Editor/Files/LayerNames.h"
#include "Editor/Files/Units.h"
#include "Editor/Rules/Clearance.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using nlohmann::ordered_json;
using Platform::ToUtf8;

bool IsTeardrop(const Editor::Primitive& object) {
  return object.kind == eRegionObject && object.Has(Editor::kFlag_TearDrop);
}

// Tracks of two widths meet in one that widens the narrower; at a junction all have one.
bool IsAtJunction(Editor::Board& board, const Editor::Primitive& teardrop) {
  TCoord width = 0;
  for (const Editor::Primitive* object : board.index.Find(teardrop.Bounds())) {
    const Editor::Track* track = Editor::As<Editor::Track>(object);
    if (!track || track->GetNet() != teardrop.GetNet() || !Editor::Touch(*track, teardrop)) continue;
    if (width != 0 && track->data.width != width) return false;
    width = track->data.width;
  }
  return true;
}

bool HasEndOf(const Editor::Primitive& place, const Editor::Track& track) {
  const TCoordRect box = place.Bounds();
  return std::ranges::any_of(std::array{track.data.p1, track.data.p2}, [&](TCoordPoint end) {
    return end.x >= box.x1 && end.x <= box.x2 && end.y >= box.y1 && end.y <= box.y2;
  });
}

// A pad or via without a teardrop that a narrower track of its net ends in.
bool LacksOne(Editor::Board& board, const Editor::Primitive& place) {
  if (!place.GetNet()) return false;
  const TCoordRect box = place.Bounds();
  const TCoord least = std::min(box.x2 - box.x1, box.y2 - box.y1);
  const std::vector<Editor::Primitive*> found = board.index.Find(box);
  const auto has = [&](auto&& is_one) {
    return std::ranges::any_of(found, [&](const Editor::Primitive* object) {
      return object->GetNet() == place.GetNet() && is_one(*object) && Editor::Touch(*object, place);
    });
  };
  return !has(IsTeardrop) && has([&](const Editor::Primitive& object) {
    const Editor::Track* track = Editor::As<Editor::Track>(&object);
    return track && track->data.width < least && HasEndOf(place, *track);
  });
}

ordered_json Withdrawn(Editor::Board& board, Editor::Primitive& teardrop) {
  const TCoordRect box = teardrop.Bounds();
  const auto mm = [](std::int64_t sum) { return static_cast<double>(Editor::ToNanometres(sum / 2)) / 1e6; };
  ordered_json entry{
      {"at", {mm(std::int64_t{box.x1} + box.x2), -mm(std::int64_t{box.y1} + box.y2)}},
      {"layer", Editor::LayerNames(board).NameOf(teardrop.state.layer)},
      {"net", teardrop.GetNet() ? ToUtf8(teardrop.GetNet()->data.name) : ""},
  };
  const auto violations = board.Clearances().CheckObject(teardrop);
  if (!violations.empty()) {
    entry["rule"] = ToUtf8(Editor::DescribeGap(violations.front()));
    entry["against"] = ToUtf8(violations.front().second->Describe());
  }
  return entry;
}

std::string WithdrawnText(const ordered_json& entry) {
  const auto word = [&](const char* name) { return entry.value(name, std::string()); };
  return word("layer") + " at " + entry["at"][0].dump() + ", " + entry["at"][1].dump() + ", net " +
         word("net") + ": " + word("rule") + " to " + word("against");
}

}  // namespace

ordered_json TeardropSummary(Editor::Board& board) {
  std::int64_t pads = 0, vias = 0, tracks = 0, junctions = 0;
  std::atomic<std::int64_t> without = 0;
  for (const Editor::Change& change : board.journal.Changes()) {
    if (change.kind != Editor::ChangeKind::Added || !IsTeardrop(*change.object)) continue;
    if (change.object->Has(Editor::kFlag_Misc1)) {
      ++pads;
    } else if (change.object->Has(Editor::kFlag_Misc2)) {
      ++vias;
    } else {
      ++(IsAtJunction(board, *change.object) ? junctions : tracks);
    }
  }
  ordered_json withdrawn = ordered_json::array();
  for (const Ref<Editor::Primitive>& object : board.journal.Withdrawn()) {
    if (IsTeardrop(*object)) withdrawn.push_back(Withdrawn(board, *object));
  }
  if (pads + vias + tracks + junctions == 0 && withdrawn.empty()) return nullptr;
  std::vector<const Editor::Primitive*> places;
  board.objects.ForEach({ePadObject, eViaObject},
                        [&](const Editor::Primitive& place) { places.push_back(&place); });
  board.index.Update();  // so that the searches change nothing
  Editor::ForEachOnAllCores(places.size(), [&](std::size_t i) {
    if (LacksOne(board, *places[i])) ++without;
  });
  return {{"pads", pads},
          {"vias", vias},
          {"tracks", tracks},
          {"junctions", junctions},
          {"without", without.load()},
          {"withdrawn", std::move(withdrawn)}};
}

std::string TeardropSummaryText(const ordered_json& summary) {
  std::vector<std::string> parts;
  for (const char* name : {"pads", "vias", "tracks", "junctions"}) {
    const auto count = summary[name].get<std::int64_t>();
    const std::string noun = count == 1 ? std::string(name).substr(0, std::string(name).size() - 1) : name;
    if (count > 0) parts.push_back(std::to_string(count) + " " + noun);
  }
  std::string text = parts.empty() ? "  no teardrop stayed" : "  teardrops on ";
  for (std::size_t i = 0; i < parts.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
  }
  if (const ordered_json& withdrawn = summary["withdrawn"]; !withdrawn.empty()) {
    text += "\n  " + std::to_string(withdrawn.size()) + " taken off again, as they would break a rule:";
    constexpr std::size_t kShown = 5;
    for (std::size_t i = 0; i < std::min(withdrawn.size(), kShown); ++i)
      text += "\n    " + WithdrawnText(withdrawn[i]);
    if (withdrawn.size() > kShown) text += "\n    ... (--json has them all)";
  }
  if (const auto without = summary["without"].get<std::int64_t>(); without > 0) {
    text += "\n  " + std::to_string(without) + " pads and vias where a narrower track ends have none";
  }
  return text;
}

ordered_json LegacyTeardropSummary(const Editor::Board& board) {
  bool any = false;
  const auto part = [&](TObjectId kind) {
    std::int64_t tried = 0;
    ordered_json failed = ordered_json::array();
    board.objects.ForEach({kind}, [&](const Editor::Primitive& place) {
      if (!place.Has(Editor::kFlag_Misc3)) return;
      ++tried;
      if (place.Has(Editor::kFlag_Misc1)) failed.push_back(ToUtf8(place.Describe()));
    });
    any = any || tried > 0;
    return ordered_json{{"tried", tried}, {"failed", std::move(failed)}};
  };
  ordered_json summary{{"pads", part(ePadObject)}, {"vias", part(eViaObject)}};
  return any ? summary : ordered_json(nullptr);
}

std::string LegacyTeardropSummaryText(const ordered_json& summary) {
  std::string tried, failed;
  std::size_t count = 0, shown = 0;
  for (const char* name : {"pads", "vias"}) {
    const ordered_json& part = summary[name];
    tried += (tried.empty() ? "  tried on " : " and ") + part["tried"].dump() + " " + name;
    if (part["tried"] == 1) tried.pop_back();
    count += part["failed"].size();
    constexpr std::size_t kShown = 5;
    for (const ordered_json& place : part["failed"]) {
      if (shown++ < kShown) failed += "\n    " + place.get<std::string>();
    }
    if (shown > kShown && name == std::string_view("vias")) failed += "\n    ... (--json has them all)";
  }
  if (count == 0) return tried;
  return tried + "\n  " + std::to_string(count) +
         " of them lack one: it would break a clearance, or the track is too short:" + failed;
}

}  // namespace Ketril::Command
