// What a placement from a file did, for the summary of the command.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Editor/Client/MessagePanel.h"
#include "Editor/Model/Board.h"

namespace Ketril::Command {

// What the tool told while it ran.
struct PlacementLog {
  std::vector<Editor::PlacementLine> lines;
  bool failed = false;  // it gave up with an error; lines that it skips are told otherwise
};

// {"placed": ["R1"], "not_on_board": ["R9"], "not_in_file": ["U1"], "locked": ["J1"],
//  "bad_lines": [{"line": 7, "component": "C1", "why": "..."}]}: designators of the file, in its order, and
// those of the board that it does not name.
nlohmann::ordered_json PlacementSummary(const Editor::Board& board, const PlacementLog& log);
// Lines of text with an indent, each with its end.
std::string PlacementSummaryText(const nlohmann::ordered_json& summary);

// Why a placement failed, as far as the log and the first bytes of the file tell; it names the file.
std::string PlacementFailure(const std::string& file, const PlacementLog& log);

}  // namespace Ketril::Command
