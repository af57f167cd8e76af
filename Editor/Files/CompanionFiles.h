// The files beside a board, as JSON.
#pragma once

#include <filesystem>
#include <string>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

std::filesystem::path ProjectPath(const std::filesystem::path& board);
std::filesystem::path ExtrasPath(const std::filesystem::path& board);

// Both raise std::exception for a text that is no JSON, or not of the form.
//
// Of a project the least hole clearance and the net classes: of each name, lists of nets (version 20211014),
// patterns with * and ? (since 20221018) and assignments (since 20241229) make the members.
void ReadProject(Board& board, const std::string& text);
// {"version": 1, "rules": [...], "unions": {"identifier": index}, "teardrops": ["identifier"],
// "channels": {"channel": ["room"]}, "via_unions": [{"index": 1, "kind": "stitching"}, {"index": 2, "kind":
// "shielding", "net": "CLK", "objects": ["identifier"]}]}; rules as Editor/Files/RulesJson.h tells, channels
// are design channels. Identifiers that the board does not have are passed over; what else is in it stays in
// it.
void ReadExtras(Board& board, const std::string& text);
// Empty when there is nothing to tell. Rooms that zones draw are with these.
std::string ExtrasText(const Board& board);

}  // namespace Ketril::Editor
