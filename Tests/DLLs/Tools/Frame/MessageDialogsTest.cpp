#include "DLLs/Tools/Frame/MessageDialogs.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Editor/Client/Client.h"
#include "Platform/Dialogs.h"

namespace Ketril::Tools {
namespace {

TEST(MessageDialogs, ShowInTheHostsServiceOrThePlatforms) {
  for (const bool has_client : {true, false}) {
    for (const bool has_service : {true, false}) {
      std::u16string shown;
      Editor::ClientSetup setup;
      if (has_service) setup.confirm = [](const std::u16string&) { return true; };
      setup.show_message = [&](const std::u16string& text, Platform::TDialogKind kind) {
        shown += u"service " + std::u16string(Platform::DialogCaption(kind)) + u" " + text + u";";
      };
      Platform::SetDialogProvider([&](const std::u16string& text, auto kind, auto buttons) {
        EXPECT_EQ(buttons, Platform::TDialogButtons::Ok);
        shown += u"dialog " + std::u16string(Platform::DialogCaption(kind)) + u" " + text + u";";
        return Platform::TDialogAnswer::Ok;
      });
      std::optional<Editor::ClientInstallation> installation;
      if (has_client) installation.emplace(Editor::MakeHost<Editor::Client>(setup));
      ShowErrorDialog(u"broken");
      ShowWarningDialog(u"worn");
      EXPECT_EQ(shown, has_client && has_service ? u"service Error broken;service Warning worn;"
                                                 : u"dialog Error broken;dialog Warning worn;");
    }
  }
  Platform::SetDialogProvider(nullptr);
}

}  // namespace
}  // namespace Ketril::Tools
