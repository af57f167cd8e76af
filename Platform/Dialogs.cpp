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

void SetDialogProvider(TDialogProvider provider) {
  Provider() = std::move(provider);
}

TDialogAnswer MessageDialog(const std::u16string& text, TDialogKind kind, TDialogButtons buttons) {
  // A copy, so that the provider may be replaced while it asks.
  if (const TDialogProvider provider = Provider()) return provider(text, kind, buttons);
  std::fprintf(stderr, "%s\n", ToUtf8(text).c_str());
  return buttons == TDialogButtons::Ok ? TDialogAnswer::Ok : TDialogAnswer::Cancelled;
}

}  // namespace Ketril::Platform
