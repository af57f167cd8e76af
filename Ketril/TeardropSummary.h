// What a command did about teardrops, for its summary.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "Editor/Model/Board.h"

namespace Ketril::Command {

// Null when the command added none and tried none. Otherwise
//
//   {"pads": 3, "vias": 5, "tracks": 1, "junctions": 2,
//    "without": 4,
//    "withdrawn": [{"at": [10.5, 20], "layer": "F.Cu", "net": "GND",
//                   "rule": "Clearance 0.1mm of 0.2mm", "against": "Via (10mm,20mm) on ..."}]}
//
// counts of those that came; pads and vias that a track of their net ends in and that have none; and those
// that were taken off again, with the rule that each would have broken. Places are those of the file, in mm.
nlohmann::ordered_json TeardropSummary(Editor::Board& board);

// Lines of text with an indent, without the last line's end.
std::string TeardropSummaryText(const nlohmann::ordered_json& summary);

// What the older builder tried, by the marks that its run left on pads and vias; null when it tried none.
//
//   {"pads": {"tried": 3, "failed": ["Pad U1-3 (10mm,20mm) on ..."]}, "vias": {"tried": 5, "failed": []}}
nlohmann::ordered_json LegacyTeardropSummary(const Editor::Board& board);
std::string LegacyTeardropSummaryText(const nlohmann::ordered_json& summary);

}  // namespace Ketril::Command
