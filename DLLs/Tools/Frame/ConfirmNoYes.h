// The shared question of the tools: two buttons, Yes and No.
#pragma once

#include <string>

namespace Ketril::Tools {

// True on Yes. The host's dialog service asks, where there is one, otherwise the platform's plain dialog; a
// question that nobody answers is a No. In test mode the question goes to the host's log first.
bool ConfirmNoYes(const std::u16string& text);

// The host says so, or the environment variable KETRIL_TEST_MODE is set and not empty.
bool InTestMode();
bool ClientIsInTestMode();  // the host alone

}  // namespace Ketril::Tools
