// The client's folders, documents and stored options.
#include <array>
#include <utility>

#include "Editor/Client/Client.h"
#include "Editor/Client/OptionsAccess.h"
#include "Editor/Client/Workspace.h"
#include "Editor/HostCall.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

class NotificationService final : public HostObject<INotificationService> {
 public:
  explicit NotificationService(NotificationSink sink) : sink_(std::move(sink)) {}
  Status Notify(const std::u16string& title, const std::u16string& text, const std::u16string& process,
                const std::u16string& parameters) noexcept override {
    return HostCall("INotificationService.Notify", [&] { sink_(title, text, process, parameters); });
  }

 private:
  const NotificationSink sink_;
};

std::u16string TextOf(const std::filesystem::path& path) {
  return Platform::ToUtf16(path.string());
}

// The folders of an installation by the names that stand for them in stored paths.
std::array<std::pair<std::u16string, std::u16string>, 2> SpecialFolders(const ClientSetup& setup) {
  return {{{u"%InstallationFolder%", TextOf(setup.installation_folder)},
           {u"%SettingsFolder%", TextOf(setup.options_folder)}}};
}

// `path` with `to` in the place of `from`, if it begins with that folder.
bool ReplaceFolder(std::u16string& path, const std::u16string& from, const std::u16string& to) {
  if (from.empty() || to.empty() || !path.starts_with(from)) return false;
  if (path.size() > from.size() && path[from.size()] != u'/') return false;
  path.replace(0, from.size(), to);
  return true;
}

}  // namespace

Ref<INotificationService> MakeNotificationService(const NotificationSink& sink) {
  return sink ? Ref<INotificationService>(MakeHost<NotificationService>(sink)) : nullptr;
}

Status Client::GetState_InstallationFolder(std::u16string& value) noexcept {
  return HostCall("IClient2.GetState_InstallationFolder",
                  [&] { value = TextOf(setup_.installation_folder); });
}

Status Client::GetState_SettingsFolder(std::u16string& value) noexcept {
  return HostCall("IClient2.GetState_SettingsFolder", [&] { value = TextOf(setup_.options_folder); });
}

// The file is the client's own in any case: it keeps one.
Status Client::OpenOptionsReader(const std::u16string&, const std::u16string&,
                                 Ref<IOptionsReader>& reader) noexcept {
  return HostCall("IClient2.OpenOptionsReader", [&] { reader = MakeHost<OptionsReader>(options_); });
}

Status Client::OpenOptionsWriter(const std::u16string&, const std::u16string&,
                                 Ref<IOptionsWriter>& writer) noexcept {
  return HostCall("IClient2.OpenOptionsWriter", [&] { writer = MakeHost<OptionsWriter>(options_); });
}

Status Client::GetExpandedEnvironmentPath(const std::u16string& path, std::u16string& expanded) noexcept {
  return HostCall("IClient2.GetExpandedEnvironmentPath", [&] {
    std::u16string result = path;
    for (const auto& [name, folder] : SpecialFolders(setup_)) {
      if (ReplaceFolder(result, name, folder)) break;
    }
    expanded = std::move(result);
  });
}

Status Client::GetContractedEnvironmentPath(const std::u16string& path, std::u16string& contracted) noexcept {
  return HostCall("IClient2.GetContractedEnvironmentPath", [&] {
    std::u16string result = path;
    for (const auto& [name, folder] : SpecialFolders(setup_)) {
      if (ReplaceFolder(result, folder, name)) break;
    }
    contracted = std::move(result);
  });
}

Status Client::GetDocumentByPath(const std::u16string& path, Ref<IServerDocument>& document) noexcept {
  return HostCall("IClient2.GetDocumentByPath", [&] {
    document = nullptr;
    for (const Ref<IServerDocument>& open : setup_.open_documents) {
      std::u16string name;
      if (!Failed(open->GetState_FileName(name)) && name == path) document = open;
    }
  });
}

Status Client::GetDocumentKind(const std::u16string& path, std::u16string& kind) noexcept {
  return HostCall("IClient2.GetDocumentKind",
                  [&] { kind = path.ends_with(u".kicad_pcb") ? u"PCB" : u"TEXT"; });
}

Status Client::OpenDocument(const std::u16string& kind, const std::u16string& path,
                            Ref<IServerDocument>& document) noexcept {
  return HostCall("IClient2.OpenDocument",
                  [&] { document = MakeHost<ServerDocument>(path, kind == u"PCB" ? u"PCB" : u"TextEdit"); });
}

Status Client::ShowDocument(IServerDocument* document) noexcept {
  return HostCall("IClient2.ShowDocument", [&] {
    std::u16string file;
    if (!document) return Status::InvalidArgument;
    if (const Status status = document->GetState_FileName(file); Failed(status)) return status;
    if (setup_.open_document) setup_.open_document(Platform::ToUtf8(file));
    return Status::Ok;
  });
}

}  // namespace Ketril::Editor
