// The verb of microstrips: its options, its call, and what it tells.
#pragma once

#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <vector>

#include "Editor/Model/Board.h"
#include "Editor/Selection/Length.h"
#include "Interfaces/ParameterList.h"
#include "Ketril/ToolsLibrary.h"
#include "Ketril/ViaDialogs.h"

namespace Ketril::Command {

// Options that stand for the parameters InsideMiter and OutsideMiter.
std::span<const DialogField> MiterFields();

// Raises Failure (usage) unless at least one of them is there and each is a number from 0 to below 1. The one
// that is not there is 0: that corner stays as it is.
void MakeMicrostripe(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                     IParameterList* parameters);

// {"outlines": [{"layer": "Top Layer", "net": "RF", "corners": 9, "area": "3.2mm2"}], "left": 2}, where
// `left` counts the selected tracks that are still there.
nlohmann::ordered_json MicrostripSummary(const Editor::Board& board,
                                         const std::vector<Editor::Change>& changes, Editor::LengthUnit unit);
// Lines with an indent, each with its end.
std::string MicrostripSummaryText(const nlohmann::ordered_json& summary);

}  // namespace Ketril::Command
