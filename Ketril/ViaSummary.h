// What a run of via stitching or via shielding came to, for people and for programs.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "Editor/Selection/Length.h"
#include "Editor/Vias/ViaPlacer.h"

namespace Ketril::Command {

// {"tried": 40, "placed": 31, "refused": {"on a pad of the net": 9}, "largest_gap": "1.4mm", "note": "..."};
// null when nothing ran.
nlohmann::ordered_json ViaSummary(const Editor::ViaRun& run, Editor::LengthUnit unit);

// Lines, each with its end.
std::string ViaSummaryText(const nlohmann::ordered_json& summary);

}  // namespace Ketril::Command
