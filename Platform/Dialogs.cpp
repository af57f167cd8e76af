#include "Platform/Dialogs.h"

#include <cstdio>
#include <utility>

#include "Platform/Text.h"

namespace Ketril::Platform {

namespace {

TDialogProvider& Provider() {
  static TDialogProvider provider;
  return provider;
}

TStringEditProvider& StringEditProvider() {
  static TStringEditProvider provider;
  return provider;
}

}  // namespace

void SetStringEditProvider(TStringEditProvider provider) {
  StringEditProvider() = std::move(provider);
}

bool StringEditDialog(const std::u16string& caption, std::u16string& text) {
  const TStringEditProvider provider = StringEditProvider();
  std::u16string edited = text;
  if (!provider || !provider(caption, edited)) return false;
  text = edited;
  return true;
}

const char16_t* DialogCaption(TDialogKind kind) {
  switch (kind) {
    case TDialogKind::Error:
      return u"Error";
    case TDialogKind::Warning:
      return u"Warning";
    case TDialogKind::Information:
      return u"Information";
    default:
      return u"Confirm";
  }
}

void SetDialogProvider(TDialogProvider provider) {
  Provider() = std::move(provider);
}

TDialogAnswer MessageDialog(const std::u16string& text, TDialogKind kind, TDialogButtons buttons) {
  // A copy, so that the provider may be replaced while it asks.
  if (const TDialogProvider provider = Provider()) return provider(text, kind, buttons);
  std::fprintf(stderr, "%s: %s\n", ToUtf8(DialogCaption(kind)).c_str(), ToUtf8(text).c_str());
  return buttons == TDialogButtons::Ok ? TDialogAnswer::Ok : TDialogAnswer::Cancelled;
}

}  // namespace Ketril::Platform
