#include "Editor/Client/Client.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "Platform/Modules.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Editor {
namespace {

class Options : public testing::Test {
 protected:
  std::string Text() const { return Tests::TextOf(folder / "KETRIL.INI"); }
  static std::u16string Read(Client& client, const std::u16string& section, const std::u16string& name) {
    std::u16string value = u"(none)";
    bool found = false;
    EXPECT_EQ(client.ReadOption(section, name, value, found), Status::Ok);
    EXPECT_EQ(found, value != u"(none)");
    return value;
  }

  const Tests::TempFolder place_;
  const std::filesystem::path folder = place_ / "made when it is needed";
};

TEST_F(Options, AreKeptInTheFileBetweenTheLinesOfOthers) {
  {
    const Ref<Client> client = MakeHost<Client>(ClientSetup{.options_folder = folder});
    client->WriteOption(u"Drops", u"Style", u" a=b \u00e4 ");
    EXPECT_EQ(Text(), "[Drops]\nStyle= a=b \xc3\xa4 \n");
  }
  std::ofstream(folder / "KETRIL.INI", std::ios::binary)
      << "; mine\r\n[Other]\r\nX=1\r\n\r\n[drops]\nstyle=2\nstray";
  const Ref<Client> client = MakeHost<Client>(ClientSetup{.options_folder = folder});
  EXPECT_EQ(Read(*client, u"Drops", u"STYLE"), u"2");
  EXPECT_EQ(Read(*client, u"Drops", u"X"), u"(none)");
  client->WriteOption(u"Other", u"Y", u"3");
  client->WriteOption(u"DROPS", u"Style", u"");
  client->WriteOption(u"New", u"Z", u"4");
  EXPECT_EQ(Text(), "; mine\n[Other]\nX=1\nY=3\n\n[drops]\nstyle=\nstray\n[New]\nZ=4\n");
  EXPECT_EQ(Read(*client, u"Drops", u"Style"), u"");
}

TEST_F(Options, RefuseWhatTheFileCannotHold) {
  const Ref<Client> client = MakeHost<Client>(ClientSetup{.options_folder = folder});
  client->WriteOption(u"S", u"N", u"old");
  struct Row {
    const char16_t *section, *name, *value;
  };
  for (const Row& row : {Row{u"S", u"N", u"a\nb"}, Row{u"S", u"", u"v"}, Row{u"S", u"a=b", u"v"},
                         Row{u"S]", u"N", u"v"}, Row{u"S", u"[N]", u"v"}, Row{u"S", u";N", u"v"}}) {
    EXPECT_EQ(client->WriteOption(row.section, row.name, row.value), Status::InvalidArgument);
  }
  std::filesystem::remove_all(folder);
  std::ofstream(folder) << "a file in the folder's place";
  EXPECT_EQ(client->WriteOption(u"S", u"N", u"new"), Status::Failure);
  EXPECT_EQ(Read(*client, u"S", u"N"), u"old");
}

TEST_F(Options, SayHowFarAShoveGoesUnlessTheEmbedderDoes) {
  const auto passes = [&](std::optional<std::int32_t> given) {
    const Ref<Client> client = MakeHost<Client>(ClientSetup{.options_folder = folder, .shove_passes = given});
    Ref<IInterface> server;
    client->GetServerByName(u"PCB", server);
    Ref<IPCB_SystemOptions> options;
    Probe<IPCB_ServerInterface>(server)->GetState_SystemOptions(options);
    std::int32_t limit = -1;
    options->GetState_ShovePassLimit(limit);
    return limit;
  };
  EXPECT_EQ(passes({}), 10);
  MakeHost<Client>(ClientSetup{.options_folder = folder})
      ->WriteOption(u"SystemOptions", u"ShovePassLimit", u"3");
  EXPECT_EQ(passes({}), 3);
  EXPECT_EQ(passes(0), 0);
  MakeHost<Client>(ClientSetup{.options_folder = folder})
      ->WriteOption(u"SystemOptions", u"ShovePassLimit", u"3 times");
  EXPECT_EQ(passes({}), 10);
}

TEST(Client, IsFoundByTheToolsWhileItIsInstalled) {
  const auto find = [] {
    void* const entry = Platform::FindModuleEntry(kModule_Ketril, kEntry_GetClient);
    return entry ? reinterpret_cast<ClientAPI_GetClient>(entry)() : nullptr;
  };
  const Ref<Client> plain = MakeHost<Client>(ClientSetup{});
  ClientSetup setup;
  setup.confirm = [](const std::u16string& text) {
    return text == u"?" ? std::optional(true) : std::nullopt;
  };
  const Ref<Client> client = MakeHost<Client>(setup);
  {
    const ClientInstallation outer(plain);
    const ClientInstallation inner(client);
    ASSERT_EQ(find(), client.Get());
    Ref<IInterface> server;
    find()->GetServerByName(u"PCB", server);
    EXPECT_TRUE(Probe<IPCB_ServerInterface>(server));
    find()->GetServerByName(u"SCH", server);
    EXPECT_FALSE(server);
  }
  EXPECT_EQ(find(), nullptr);
  Ref<IDialogService> dialogs;
  plain->GetState_DialogService(dialogs);
  EXPECT_FALSE(dialogs);
  client->GetState_DialogService(dialogs);
  bool yes = false;
  dialogs->ConfirmYesNo(u"?", yes);
  EXPECT_TRUE(yes);
  dialogs->ConfirmYesNo(u"nobody answers", yes);
  EXPECT_FALSE(yes);
}

}  // namespace
}  // namespace Ketril::Editor
