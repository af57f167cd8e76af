// The teardrop options as names and values, and their dialog at a terminal.
#pragma once

#include <functional>
#include <iosfwd>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Interfaces/Teardrops.h"
#include "Ketril/ViaDialogs.h"

namespace Ketril::Command {

// The names of the tool's parameters, with their values, flags last.
std::vector<std::pair<std::string, double>> TeardropFields(const TTeardropOptionsEx& options);
// False when there is no such name, or the text is no number.
bool SetTeardropField(TTeardropOptionsEx& options, const std::string& name, const std::string& text);

// Shows the options and takes changes, NAME=VALUE a line, until an empty line accepts them; "cancel", or the
// end of the input, cancels.
bool EditTeardropOptions(TTeardropOptionsEx& options, std::istream& in, std::ostream& out);

// The dialog of the older builder. Empty when the value was taken; else what is wrong with it.
std::span<const DialogField> LegacyTeardropFields();
std::string SetLegacyTeardropField(TTearDropOptions& options, const std::string& name,
                                   const std::string& value);

}  // namespace Ketril::Command
