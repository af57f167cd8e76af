// The plain modal message dialog, for hosts that have no dialog service of their own.
#pragma once

#include <functional>
#include <string>

namespace Ketril::Platform {

enum class TDialogKind { Confirmation, Error, Warning, Information };
enum class TDialogButtons { YesNo, Ok };
enum class TDialogAnswer { Yes, No, Ok, Cancelled };

// What stands above the dialog: "Confirm", "Error", "Warning", "Information".
const char16_t* DialogCaption(TDialogKind kind);

// Who shows the dialog and brings the answer. Without one, nobody is there to answer: the text goes to
// standard error, below its caption, and the answer is Cancelled (Ok where that is the only button).
using TDialogProvider = std::function<TDialogAnswer(const std::u16string& text, TDialogKind, TDialogButtons)>;
void SetDialogProvider(TDialogProvider provider);

TDialogAnswer MessageDialog(const std::u16string& text, TDialogKind kind, TDialogButtons buttons);

// The modal dialog that lets the user edit a text: false when he cancels, and the text stays as it was.
// Without a provider every such dialog counts as cancelled.
using TStringEditProvider = std::function<bool(const std::u16string& caption, std::u16string& text)>;
void SetStringEditProvider(TStringEditProvider provider);
bool StringEditDialog(const std::u16string& caption, std::u16string& text);

}  // namespace Ketril::Platform
