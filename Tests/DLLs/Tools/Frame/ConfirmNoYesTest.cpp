#include "DLLs/Tools/Frame/ConfirmNoYes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "DLLs/Tools/Frame/Exceptions.h"
#include "Interfaces/Client.h"
#include "Platform/Dialogs.h"
#include "Platform/Modules.h"

namespace Ketril::Tools {
namespace {

using Lines = std::vector<std::u16string>;

// What happened, in order: "log TEXT", "service TEXT", "dialog TEXT".
Lines events;

struct DialogService final : CountedObject<IDialogService> {
  Status ConfirmYesNo(const std::u16string& text, bool& yes) noexcept override {
    events.push_back(u"service " + text);
    yes = answer;
    return fails ? Status::Failure : Status::Ok;
  }
  bool answer = true, fails = false;
};

struct FakeClient final : CountedObject<IClient> {
  Status GetServerByName(const std::u16string&, Ref<IInterface>&) noexcept override { return Status::Ok; }
  Status GetState_DialogService(Ref<IDialogService>& value) noexcept override {
    value = dialogs;
    return Status::Ok;
  }
  Status GetState_InTestMode(bool& value) noexcept override {
    value = test_mode;
    return Status::Ok;
  }
  Status WriteLog(const std::u16string& line) noexcept override {
    events.push_back(u"log " + line);
    return Status::Ok;
  }
  Status ReadOption(const std::u16string&, const std::u16string&, std::u16string&, bool&) noexcept override {
    return Status::Ok;
  }
  Status WriteOption(const std::u16string&, const std::u16string&, const std::u16string&) noexcept override {
    return Status::Ok;
  }
  Ref<DialogService> dialogs;
  bool test_mode = false;
};

FakeClient* client = nullptr;

TEST(ConfirmNoYes, AsksTheHostOrThePlatformAndLogsInTestMode) {
  using enum Platform::TDialogAnswer;
  const std::u16string kLog = u"log Running modal ConfirmNoYes Go?";
  const struct {
    const char* name;
    bool has_client, has_service, host_test_mode, switch_on;
    Platform::TDialogAnswer answer;
    Lines expected;
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
  void* old_entry = Platform::FindModuleEntry(kModule_Ketril, kEntry_GetClient);
  const auto get_client = +[]() -> IClient* { return client; };
  Platform::RegisterModuleEntry(kModule_Ketril, kEntry_GetClient, reinterpret_cast<void*>(get_client));
  for (const auto& row : rows) {
    events.clear();
    const Ref<FakeClient> fake = row.has_client ? MakeCounted<FakeClient>() : nullptr;
    client = fake.Get();
    if (fake) fake->test_mode = row.host_test_mode;
    if (row.has_service) {
      fake->dialogs = MakeCounted<DialogService>();
      fake->dialogs->answer = row.answer == Yes;
    }
    Platform::SetDialogProvider([&](const std::u16string& text, auto, auto) {
      events.push_back(u"dialog " + text);
      return row.answer;
    });
    ::setenv("KETRIL_TEST_MODE", row.switch_on ? "1" : "", 1);
    EXPECT_EQ(ConfirmNoYes(u"Go?"), row.answer == Yes) << row.name;
    EXPECT_EQ(events, row.expected) << row.name;
  }

  const Ref<FakeClient> failing = MakeCounted<FakeClient>();
  failing->dialogs = MakeCounted<DialogService>();
  failing->dialogs->fails = true;
  client = failing.Get();
  EXPECT_THROW(ConfirmNoYes(u"Go?"), EHostError);

  client = nullptr;
  Platform::RegisterModuleEntry(kModule_Ketril, kEntry_GetClient, old_entry);
  Platform::SetDialogProvider(nullptr);
  ::unsetenv("KETRIL_TEST_MODE");
}

}  // namespace
}  // namespace Ketril::Tools
