#include "Editor/Client/Client.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "Editor/Client/OptionsAccess.h"
#include "Editor/Client/Parameters.h"
#include "Editor/HostCall.h"
#include "Platform/Modules.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

class DialogService final : public HostObject<IDialogService> {
 public:
  DialogService(ConfirmProvider confirm, MessageProvider show)
      : confirm_(std::move(confirm)), show_(std::move(show)) {}
  Status ConfirmYesNo(const std::u16string& text, bool& yes) noexcept override {
    return HostCall("IDialogService.ConfirmYesNo", [&] { yes = confirm_(text).value_or(false); });
  }

  Status ShowError(const std::u16string& text) noexcept override {
    return HostCall("IDialogService.ShowError", [&] { Show(text, Platform::TDialogKind::Error); });
  }
  Status ShowWarning(const std::u16string& text) noexcept override {
    return HostCall("IDialogService.ShowWarning", [&] { Show(text, Platform::TDialogKind::Warning); });
  }

 private:
  void Show(const std::u16string& text, Platform::TDialogKind kind) const {
    if (show_) {
      show_(text, kind);
    } else {
      Platform::MessageDialog(text, kind, Platform::TDialogButtons::Ok);
    }
  }
  const ConfirmProvider confirm_;
  const MessageProvider show_;
};

Client* installed_client = nullptr;

IClient* GetInstalledClient() {
  return installed_client;
}

IOrvexWorkSpace* GetWorkspace() {
  return installed_client ? installed_client->GetWorkspace() : nullptr;
}

std::u16string ForceExtension(const std::u16string& file_name, const std::u16string& extension) {
  return std::filesystem::path(file_name).replace_extension(extension).u16string();
}

std::u16string WholeFileName(const std::u16string& path) {
  return std::filesystem::path(path).filename().u16string();
}

void* CurrentBoardHandle() {
  const ClientSetup* const setup = InstalledSetup();
  return setup ? setup->current_board : nullptr;
}

bool ChooseLocation(void*, const std::u16string& prompt, TCoord& x, TCoord& y) {
  const ClientSetup* const setup = InstalledSetup();
  const auto place = setup && setup->choose_location ? setup->choose_location(prompt) : std::nullopt;
  if (!place) return false;
  x = place->x;
  y = place->y;
  return true;
}

bool ChooseRectangle(void*, const std::u16string& first_prompt, const std::u16string& second_prompt,
                     TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) {
  const ClientSetup* const setup = InstalledSetup();
  const auto picked =
      setup && setup->choose_rectangle ? setup->choose_rectangle(first_prompt, second_prompt) : std::nullopt;
  if (!picked) return false;
  x1 = std::min(picked->x1, picked->x2);
  y1 = std::min(picked->y1, picked->y2);
  x2 = std::max(picked->x1, picked->x2);
  y2 = std::max(picked->y1, picked->y2);
  return true;
}

std::int32_t StoredShovePasses(const OptionsStore& options) {
  const std::string text =
      Platform::ToUtf8(options.Read(u"SystemOptions", u"ShovePassLimit").value_or(std::u16string()));
  std::int32_t passes = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), passes);
  const bool is_number = error == std::errc() && end == text.data() + text.size();
  return is_number ? passes : SystemOptions::kShovePasses;
}

void Install(Client* client) {
  installed_client = client;
  const ClientAPI_GetClient entry = client ? &GetInstalledClient : nullptr;
  Platform::RegisterModuleEntry(kModule_Ketril, kEntry_GetClient, reinterpret_cast<void*>(entry));
  const WorkspaceManager_GetWorkspace workspace = client ? &GetWorkspace : nullptr;
  Platform::RegisterModuleEntry(kModule_WorkspaceManager, kEntry_GetWorkspace,
                                reinterpret_cast<void*>(workspace));
  const auto install = [&](const char* name, auto service) {
    Platform::RegisterModuleEntry(kModule_Ketril, name, client ? reinterpret_cast<void*>(service) : nullptr);
  };
  install(kEntry_ForceFileNameExtension, &ForceExtension);
  install(kEntry_ExtractWholeFileName, &WholeFileName);
  install(kEntry_GetCurrentBoardHandle, &CurrentBoardHandle);
  install(kEntry_ChooseLocation, &ChooseLocation);
  install(kEntry_ChooseRectangleByCorners, &ChooseRectangle);
}

}  // namespace

const ClientSetup* InstalledSetup() {
  return installed_client ? &installed_client->Setup() : nullptr;
}

Client::Client(ClientSetup setup)
    : setup_(std::move(setup)),
      options_(setup_.options_folder.empty() ? OptionsStore()
                                             : OptionsStore(setup_.options_folder / "KETRIL.INI")),
      server_(MakeHost<PcbServer>(setup_.teardrop_dialog,
                                  setup_.shove_passes.value_or(StoredShovePasses(options_)),
                                  setup_.legacy_teardrop_dialog)),
      panel_(MakeHost<PanelWorkspace>(setup_.messages)),
      notifications_(MakeNotificationService(setup_.notify)) {
  if (setup_.confirm) dialogs_ = MakeHost<DialogService>(setup_.confirm, setup_.show_message);
}

Status Client::GetServerByName(const std::u16string& name, Ref<IInterface>& server) noexcept {
  return HostCall("IClient.GetServerByName", [&] { server = name == u"PCB" ? server_.Get() : nullptr; });
}

Status Client::GetState_DialogService(Ref<IDialogService>& value) noexcept {
  return HostCall("IClient.GetState_DialogService", [&] { value = dialogs_; });
}

Status Client::GetState_InTestMode(bool& value) noexcept {
  return HostCall("IClient.GetState_InTestMode", [&] { value = setup_.test_mode; });
}

Status Client::WriteLog(const std::u16string& line) noexcept {
  return HostCall("IClient.WriteLog", [&] {
    if (setup_.log) {
      setup_.log(line);
    } else {
      std::fprintf(stderr, "%s\n", Platform::ToUtf8(line).c_str());
    }
  });
}

Status Client::ReadOption(const std::u16string& section, const std::u16string& name, std::u16string& value,
                          bool& found) noexcept {
  return HostCall("IClient.ReadOption", [&] {
    const std::optional<std::u16string> stored = options_.Read(section, name);
    found = stored.has_value();
    if (found) value = *stored;
  });
}

Status Client::WriteOption(const std::u16string& section, const std::u16string& name,
                           const std::u16string& value) noexcept {
  return HostCall("IClient.WriteOption", [&] {
    try {
      options_.Write(section, name, value);
      return Status::Ok;
    } catch (const std::invalid_argument&) {
      return Status::InvalidArgument;
    }
  });
}

Status Client::RecordPlacement(std::int32_t line, const std::u16string& designator,
                               TPlacementOutcome outcome) noexcept {
  return HostCall("IPlacementRecorder.RecordPlacement", [&] {
    if (setup_.record_placement) setup_.record_placement({line, designator, outcome});
  });
}

Status Client::RunProcess(const std::u16string& name, const std::u16string& parameters) noexcept {
  return HostCall("IClient.RunProcess", [&] {
    if (name != u"Client:OpenDocument" && name != u"WorkspaceManager:OpenObject")
      return Status::InvalidArgument;
    const Ref<Parameters> list = MakeHost<Parameters>();
    list->SetFromWide(parameters.c_str());
    std::u16string file;
    if (!list->GetParameter(u"FileName", file)) return Status::InvalidArgument;
    if (setup_.open_document) setup_.open_document(Platform::ToUtf8(file));
    return Status::Ok;
  });
}

Status Client::BeginShove() noexcept {
  return HostCall("IClient.BeginShove", [] {});
}

Status Client::EndShove() noexcept {
  return HostCall("IClient.EndShove", [] {});
}

ClientInstallation::ClientInstallation(Ref<Client> client)
    : client_(std::move(client)), previous_(std::exchange(installed_client, nullptr)) {
  Install(client_.Get());
}

ClientInstallation::~ClientInstallation() {
  Install(previous_);
}

}  // namespace Ketril::Editor
