// Messages with an OK button.
#pragma once

#include <string>

namespace Ketril::Tools {

// The host's dialog service shows them, where there is one, otherwise the platform's plain dialog, with the
// caption of its kind. Raise EHostError when the service fails.
void ShowErrorDialog(const std::u16string& text);
void ShowWarningDialog(const std::u16string& text);

}  // namespace Ketril::Tools
