// The dialogs of via stitching, via shielding and unused pads as names and values.
#pragma once

#include <span>
#include <string>

#include "Editor/Selection/Length.h"
#include "Editor/Vias/ViaOptions.h"
#include "Interfaces/Vias.h"

namespace Ketril::Command {

// A field of a dialog, and the option of its verb that fills it. Without a type it is a switch.
struct DialogField {
  const char* option;
  const char* name;
  const char* type;
  const char* help;
};
std::span<const DialogField> StitchFields();
std::span<const DialogField> ShieldFields();
std::span<const DialogField> UnusedPadsFields();

// Empty when the value was taken; else what is wrong with it. Numbers that name no unit are in `unit`; places
// are as in the board file, y downwards.
std::string SetStitchField(Editor::Board& board, Editor::StitchSettings& settings, Editor::LengthUnit unit,
                           const std::string& name, const std::string& value);
std::string SetShieldField(Editor::Board& board, Editor::ShieldSettings& settings, Editor::LengthUnit unit,
                           const std::string& name, const std::string& value);
// The net that nobody named: with `of_selection` that of the first selected object that has one; else GND,
// else GNDA or the like; null when there is none.
Editor::Net* NetByDefault(const Editor::Board& board, bool of_selection);
std::string SetUnusedPadsField(TUnusedPadsOptions& options, const std::string& name,
                               const std::string& value);

}  // namespace Ketril::Command
