// Where the options of the older teardrop builder come from: the command's parameters, or the editor's option
// store.
#pragma once

#include "Interfaces/ParameterList.h"
#include "Interfaces/Teardrops.h"

namespace Ketril::Tools {

// Takes what the parameters name: AllPads, AllVias, AllTracks, Selected, Report and Force, true for the value
// True in any case and false for any other; Style, a number; Action, Remove or anything else for Add. A style
// that is no number leaves the style as it was. True when any of the names is there. `parameters` may be null.
bool ReadLegacyTeardropParameters(IParameterList* parameters, TTearDropOptions& options);

// From the option store, section TearDropOptions, and into it. What the store lacks, or holds in a form that
// does not convert, has its default there, which asks for no report. Without a client nothing is read or
// written. Raise EHostError.
void LoadLegacyTeardropOptions(TTearDropOptions& options);
void SaveLegacyTeardropOptions(const TTearDropOptions& options);

}  // namespace Ketril::Tools
