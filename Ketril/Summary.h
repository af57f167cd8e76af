// What a tool did to a board, for people and for programs.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Command {

// {"added": {"Via": 2}, "removed": {"Pad": 2}, "changed": {}}: counts by kind.
nlohmann::ordered_json Summary(const std::vector<Editor::Change>& changes);

// "2 vias added, 2 pads removed"; "nothing changed" when there is none.
std::string SummaryText(const nlohmann::ordered_json& summary);

// [{"object": "Component U1", "layer": "F.Cu", "parts": {"Pad": 8}}]: the groups that went, in that order,
// and what became free of each.
nlohmann::ordered_json UnGroupSummary(const Editor::Board& board, const std::vector<Editor::Change>& changes);
// "  Component U1 on F.Cu: 8 pads" a line.
std::string UnGroupSummaryText(const nlohmann::ordered_json& groups);

}  // namespace Ketril::Command
