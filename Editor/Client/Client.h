// The editor's client, through which the tools find everything that is not on a board.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Editor/Client/MessagePanel.h"
#include "Editor/Client/OptionsAccess.h"
#include "Editor/Client/PcbServer.h"
#include "Editor/Client/UIManager.h"
#include "Editor/Model/HostProperty.h"
#include "Interfaces/Workspace.h"
#include "Platform/Dialogs.h"

namespace Ketril::Editor {

class Primitive;

// Answers a Yes/No question; empty when nobody answered, which the tools take for a No.
using ConfirmProvider = std::function<std::optional<bool>(const std::u16string& text)>;

// Shows a message with an OK button, of the kind Error or Warning.
using MessageProvider = std::function<void(const std::u16string& text, Platform::TDialogKind kind)>;

// Lets the user pick a place, or two opposite corners in either order; empty when he cancels.
using LocationPick = std::function<std::optional<TCoordPoint>(const std::u16string& prompt)>;
using RectanglePick = std::function<std::optional<TCoordRect>(const std::u16string& first_prompt,
                                                              const std::u16string& second_prompt)>;

// Lets the user choose one of several objects at a place, the smallest of which is the first; empty when he
// chooses none.
using ObjectChoice = std::function<std::optional<std::size_t>(const std::vector<Primitive*>& objects)>;

// Takes a message that waits for the user, and the process that it offers.
using NotificationSink = std::function<void(const std::u16string& title, const std::u16string& text,
                                            const std::u16string& process, const std::u16string& parameters)>;

// What the embedder of the editor decides.
struct ClientSetup {
  std::filesystem::path options_folder = {};  // of KETRIL.INI; empty: options live in memory only
  ConfirmProvider confirm = {};               // null: the client has no dialog service
  std::function<void(const std::u16string& line)> log = {};  // null: lines go to standard error
  bool test_mode = false;
  TeardropDialog teardrop_dialog = {};  // null: the dialog counts as cancelled
  LegacyTeardropDialog legacy_teardrop_dialog = {};  // likewise
  std::function<void(const std::filesystem::path& file)> open_document = {};  // null: nothing opens
  BoardDialogs dialogs = {};
  LocationPick choose_location = {};       // null: every pick is cancelled
  RectanglePick choose_rectangle = {};     // likewise
  ObjectChoice choose_object = {};         // likewise
  std::optional<TCoordPoint> cursor = {};  // on the board that the user sees; empty: it is elsewhere
  void* current_board = nullptr;           // the handle of the board that the user sees
  // After how many waves a shove ends; without it, what the options say: [SystemOptions] ShovePassLimit.
  std::optional<std::int32_t> shove_passes = {};
  MessageProvider show_message = {};  // null: the dialog service shows messages as the platform does
  MessagePanel messages = {};
  PlacementRecord record_placement = {};  // null: none is kept
  Ref<IServerDocumentView> current_view = nullptr;
  std::filesystem::path installation_folder = {};  // holds Templates
  NotificationSink notify = {};                    // null: the client has no such service
  Ref<IWorkspace> workspace = nullptr;
  std::vector<Ref<IServerDocument>> open_documents = {};
};

class Client final : public HostObject<IClient2, IPlacementRecorder> {
 public:
  // Raises std::filesystem::filesystem_error when the options are there and cannot be read.
  explicit Client(ClientSetup setup);
  const ClientSetup& Setup() const { return setup_; }

  // The server "PCB" is the only one.
  Status GetServerByName(const std::u16string& name, Ref<IInterface>& server) noexcept override;
  Status GetState_DialogService(Ref<IDialogService>& value) noexcept override;
  Status GetState_InTestMode(bool& value) noexcept override;
  Status WriteLog(const std::u16string& line) noexcept override;
  Status ReadOption(const std::u16string& section, const std::u16string& name, std::u16string& value,
                    bool& found) noexcept override;
  Status WriteOption(const std::u16string& section, const std::u16string& name,
                     const std::u16string& value) noexcept override;
  Status RecordPlacement(std::int32_t line, const std::u16string& designator,
                         TPlacementOutcome outcome) noexcept override;
  IOrvexWorkSpace* GetWorkspace() const { return panel_.Get(); }
  // "Client:OpenDocument" and "WorkspaceManager:OpenObject", which both show a file.
  Status RunProcess(const std::u16string& name, const std::u16string& parameters) noexcept override;
  // There is no screen to hold still meanwhile.
  Status BeginShove() noexcept override;
  Status EndShove() noexcept override;

  KETRIL_HOST_READ(IClient2, Ref<IWorkspace>, Workspace, setup_.workspace)
  KETRIL_HOST_READ(IClient2, Ref<INotificationService>, NotificationService, notifications_)
  Status GetState_InstallationFolder(std::u16string& value) noexcept override;
  Status GetState_SettingsFolder(std::u16string& value) noexcept override;
  // The option "HideDocumentPath" of the section "Client".
  KETRIL_HOST_READ(IClient2, bool, HideDocumentPath,
                   ReadBoolean(options_, u"Client", u"HideDocumentPath").value_or(false))
  KETRIL_HOST_READ(IClient2, Ref<IServerDocumentView>, CurrentView, setup_.current_view)
  Status OpenOptionsReader(const std::u16string& server, const std::u16string& file,
                           Ref<IOptionsReader>& reader) noexcept override;
  Status OpenOptionsWriter(const std::u16string& server, const std::u16string& file,
                           Ref<IOptionsWriter>& writer) noexcept override;
  // The folders stand in stored paths as %InstallationFolder% and %SettingsFolder%.
  Status GetExpandedEnvironmentPath(const std::u16string& path, std::u16string& expanded) noexcept override;
  Status GetContractedEnvironmentPath(const std::u16string& path,
                                      std::u16string& contracted) noexcept override;
  Status GetDocumentByPath(const std::u16string& path, Ref<IServerDocument>& document) noexcept override;
  Status GetDocumentKind(const std::u16string& path, std::u16string& kind) noexcept override;
  Status OpenDocument(const std::u16string& kind, const std::u16string& path,
                      Ref<IServerDocument>& document) noexcept override;
  Status ShowDocument(IServerDocument* document) noexcept override;

 private:
  const ClientSetup setup_;
  OptionsStore options_;
  const Ref<PcbServer> server_;
  const Ref<PanelWorkspace> panel_;
  Ref<IDialogService> dialogs_;
  Ref<INotificationService> notifications_;
};

// Empty without a sink.
Ref<INotificationService> MakeNotificationService(const NotificationSink& sink);

// Of the client that is installed; null when none is.
const ClientSetup* InstalledSetup();

// Makes a client known to the tools while it lives: what they ask the modules "Ketril.dll" and
// "WorkspaceManager.DLL" for is answered by the client of the latest installation. Installations end in the
// reverse order of their begin.
class ClientInstallation {
 public:
  explicit ClientInstallation(Ref<Client> client);
  ~ClientInstallation();
  ClientInstallation(const ClientInstallation&) = delete;
  ClientInstallation& operator=(const ClientInstallation&) = delete;

 private:
  const Ref<Client> client_;
  Client* const previous_;
};

}  // namespace Ketril::Editor
