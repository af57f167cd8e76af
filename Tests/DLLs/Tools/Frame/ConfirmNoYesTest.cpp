#include "DLLs/Tools/Frame/ConfirmNoYes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <vector>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "Editor/Client/Client.h"
#include "Editor/HostCall.h"
#include "Platform/Dialogs.h"

namespace Ketril::Tools {
namespace {

using Lines = std::vector<std::u16string>;

TEST(ConfirmNoYes, AsksTheHostOrThePlatformAndLogsInTestMode) {
  using enum Platform::TDialogAnswer;
  const std::u16string kLog = u"log Running modal ConfirmNoYes Go?";
  const struct {
    const char* name;
    bool has_client, has_service, host_test_mode, switch_on;
    Platform::TDialogAnswer answer;
    Lines expected;  // what happens, in order
  } rows[] = {
      {"the host's service", true, true, false, false, Yes, {u"service Go?"}},
      {"its No", true, true, false, false, No, {u"service Go?"}},
      {"no service", true, false, false, false, Yes, {u"dialog Go?"}},
      {"no client", false, false, false, false, No, {u"dialog Go?"}},
      {"closed without an answer", true, false, false, false, Cancelled, {u"dialog Go?"}},
      {"the host is in test mode", true, true, true, false, Yes, {kLog, u"service Go?"}},
      {"the switch is on", true, false, false, true, Yes, {kLog, u"dialog Go?"}},
      {"the switch is on, and nobody has a log", false, false, false, true, Yes, {u"dialog Go?"}},
  };
  for (const auto& row : rows) {
    Lines events;
    Editor::ClientSetup setup;
    setup.test_mode = row.host_test_mode;
    setup.log = [&](const std::u16string& line) { events.push_back(u"log " + line); };
    if (row.has_service) {
      setup.confirm = [&](const std::u16string& text) {
        events.push_back(u"service " + text);
        return row.answer == Yes;
      };
    }
    Platform::SetDialogProvider([&](const std::u16string& text, auto, auto) {
      events.push_back(u"dialog " + text);
      return row.answer;
    });
    std::optional<Editor::ClientInstallation> installation;
    if (row.has_client) installation.emplace(Editor::MakeHost<Editor::Client>(setup));
    ::setenv("KETRIL_TEST_MODE", row.switch_on ? "1" : "", 1);
    EXPECT_EQ(ConfirmNoYes(u"Go?"), row.answer == Yes) << row.name;
    EXPECT_EQ(events, row.expected) << row.name;
    if (!row.has_client) continue;
    Editor::HostGate::Arm(false, 1);
    EXPECT_THROW(ConfirmNoYes(u"Go?"), EHostError) << row.name;
    Editor::HostGate::Disarm();
  }
  Platform::SetDialogProvider(nullptr);
  ::unsetenv("KETRIL_TEST_MODE");
}

}  // namespace
}  // namespace Ketril::Tools
