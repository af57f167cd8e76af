// The plain modal message dialog, for hosts that have no dialog service of their own.
#pragma once

#include <functional>
#include <string>

namespace Ketril::Platform {

enum class TDialogKind { Confirmation, Error, Information };
enum class TDialogButtons { YesNo, Ok };
enum class TDialogAnswer { Yes, No, Ok, Cancelled };

// Who shows the dialog and brings the answer. Without one, nobody is there to answer: the text goes to
// standard error and the answer is Cancelled (Ok where that is the only button).
using TDialogProvider = std::function<TDialogAnswer(const std::u16string& text, TDialogKind, TDialogButtons)>;
void SetDialogProvider(TDialogProvider provider);

TDialogAnswer MessageDialog(const std::u16string& text, TDialogKind kind, TDialogButtons buttons);

}  // namespace Ketril::Platform
