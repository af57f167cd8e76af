// The dialogs of the arrange commands as names and values, and at a terminal.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "Editor/Client/UIManager.h"

namespace Ketril::Command {

// Alignment_Horizontal (none, left, right, center, spread), Alignment_Vertical (none, top, bottom, center,
// spread), Alignment_MoveToGrid (yes, no). False when there is no such name, or the value is none of it.
bool SetAlignmentField(Editor::AlignmentAnswer& answer, const std::string& name, const std::string& value);

// RoomArrange_ with RowCount, ColCount, OriginX, OriginY, SpacingX, SpacingY (whole numbers, lengths in units
// of 1/10000 mil, y upwards, an origin of -1 is picked), AutoSpacing, MoveToGrid, Ascending (yes, no) or
// SortName behind it.
bool SetRoomArrangeField(IPCB_RoomArrangeOptions& options, const std::string& name, const std::string& value);

// Takes changes, NAME=VALUE a line, until an empty line accepts them; "cancel", or the end of the input,
// cancels.
using FieldSetter = std::function<bool(const std::string& name, const std::string& value)>;
bool EditFields(const char* title, const FieldSetter& set, std::istream& in, std::ostream& out);

}  // namespace Ketril::Command
