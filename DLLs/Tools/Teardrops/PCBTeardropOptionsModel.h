// Where the options of the teardrop tools come from: the command's parameters, or the editor's option store.
#pragma once

#include "Interfaces/Client.h"
#include "Interfaces/ParameterList.h"
#include "Interfaces/Teardrops.h"

namespace Ketril::Tools {

// What a new builder starts with: 30 and 70 percent of a via's diameter, 100 and 200 percent of a track's
// width on pads, 100 percent without a limit of the width on wider tracks, 100 and 300 percent at junctions.
TTeardropOptionsEx DefaultTeardropOptions();

// Takes what the parameters name; a value that does not convert counts as missing. True when any was taken.
// `parameters` may be null.
bool ReadTeardropParameters(IParameterList* parameters, TTeardropOptionsEx& options);

// From the option store and into it. What the store lacks, or holds in a form that does not convert, has its
// default, the flags those of `options`. Without a client nothing is read or written. Raise EHostError.
void LoadTeardropOptions(TTeardropOptionsEx& options);
void SaveTeardropOptions(const TTeardropOptionsEx& options);

}  // namespace Ketril::Tools
