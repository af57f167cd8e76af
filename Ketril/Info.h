// `ketril info` and `ketril list BOARD`: what is on a board.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "Editor/Rules/Clearance.h"
#include "Editor/Selection/Selection.h"

namespace Ketril::Command {

using Editor::LengthUnit;

// A length in that unit with its suffix, as "1.27mm", as exact as the board file holds it.
std::string LengthText(TCoord length, LengthUnit unit);

// Counts by kind, layer and net, size and stack, as JSON: lengths are numbers in the unit that "unit" names.
nlohmann::ordered_json BoardInfo(Editor::Board& board, LengthUnit unit);
// The same for a person to read.
std::string BoardInfoText(const nlohmann::ordered_json& info);

// {"first": ..., "second": ..., "layer": ..., "gap": ..., "asked": ...}, gaps in the unit.
nlohmann::ordered_json ViolationRecord(const Editor::Violation& violation, LengthUnit unit);

// The objects that match, one JSON object each: kind, identifier, layer, net, box.
nlohmann::ordered_json ObjectTable(Editor::Board& board, const Editor::Selection& selection, LengthUnit unit);
// The same for a person to read, a line each.
std::string ObjectLines(Editor::Board& board, const Editor::Selection& selection);

}  // namespace Ketril::Command
