// Completion of command lines by the user's shell.
#pragma once

#include <string>
#include <vector>

#include "Ketril/VerbList.h"

namespace Ketril::Command {

// Those that a completion can be made for: bash, zsh, fish.
std::vector<std::string> Shells();
// A script for the shell to source, which offers verbs, their options, the words and files that these take.
std::string Completion(const std::string& shell, const std::vector<OfferedVerb>& verbs);

}  // namespace Ketril::Command
