// Design rules as JSON, in the file beside the board. Lengths are millimetres, places as in the board file
// (y down), scopes expressions of the selection, all when left out:
//
//   {"kind": "clearance", "name": "RF", "priority": 1, "scope1": "class:RF", "gap": 0.5,
//    "gaps": {"track-via": 0.3}}
//   {"kind": "component-clearance", "name": "Parts", "horizontal_gap": 0.25, "vertical_gap": 0}
//   {"kind": "room", "name": "Channel A", "scope1": "component:U1*", "layer": "F.Cu", "confine": "in",
//    "points": [[100, 80], [130, 80], [130, 110], [100, 110]], "lock_components": false}
//
// "comment", "scope2", "enabled" (true) and, for clearance, "net_scope" may stand in each.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "Editor/Rules/Rule.h"

namespace Ketril::Editor {

// Raises std::exception for what is not of the form; the text names what is wrong in it.
Ref<Rule> RuleFromJson(const Board& board, const nlohmann::json& value);
nlohmann::json RuleToJson(const Board& board, const RuleData& rule);

}  // namespace Ketril::Editor
