// The manual page.
#pragma once

#include <string>
#include <vector>

#include "Ketril/VerbList.h"

namespace Ketril::Command {

// ketril(1) as text for man(7) macros: the verbs and options from the list, around them what a list cannot
// tell.
std::string Manual(const std::vector<OfferedVerb>& verbs);

}  // namespace Ketril::Command
