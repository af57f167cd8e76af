// What the client knows of beyond one board: documents that are open, projects, folders, stored options and
// messages to the user.
#pragma once

#include "Interfaces/Board.h"
#include "Interfaces/Client.h"

namespace Ketril {

// A document that is open in the editor.
class IServerDocument : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IServerDocument"};
  KETRIL_READ(std::u16string, FileName);        // its path
  KETRIL_READ(std::u16string, ServerName);      // of the server that edits it, as "PCB" or "TextEdit"
  KETRIL_READ(Ref<IServerDocumentView>, View);  // the first; empty when it has none
  // Its file is about to be replaced by another one, or was.
  virtual Status BeforeFileReplaced() noexcept = 0;
  virtual Status AfterFileReplaced() noexcept = 0;
};

// What a server, as `IClient::GetServerByName` gives it, may offer: its processes on a view.
class IServerModule : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IServerModule"};
  virtual Status RunProcessOnView(const std::u16string& name, const std::u16string& parameters,
                                  IServerDocumentView* view) noexcept = 0;
};

class IProject;

// A document of the workspace, open or not.
class IDocument : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IDocument"};
  KETRIL_READ(std::u16string, FullPath);
  KETRIL_READ(Ref<IProject>, Project);  // the one that it names; empty when it names none
};

class IProject : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IProject"};
  KETRIL_READ(std::u16string, FullPath);
  KETRIL_READ(std::u16string, OutputFolder);
  KETRIL_READ(std::int32_t, DocumentCount);
  // Empty beyond the end.
  virtual Status GetState_DocumentAt(std::int32_t index, Ref<IDocument>& document) noexcept = 0;
  // A file that was made from the project's documents.
  virtual Status AddGeneratedDocument(const std::u16string& path) noexcept = 0;
};

class IWorkspace : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IWorkspace"};
  // Empty when the workspace does not know the document.
  virtual Status GetDocumentFromPath(const std::u16string& path, Ref<IDocument>& document) noexcept = 0;
};

// Stored values by section and key, read with a default for what is not there or does not read as such.
class IOptionsReader : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IOptionsReader"};
  // A Boolean is stored as True or False, or as a number that is 0 for false.
  virtual Status ReadBoolean(const std::u16string& section, const std::u16string& key, bool otherwise,
                             bool& value) noexcept = 0;
  virtual Status ReadString(const std::u16string& section, const std::u16string& key,
                            const std::u16string& otherwise, std::u16string& value) noexcept = 0;
};

class IOptionsWriter : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IOptionsWriter"};
  virtual Status WriteBoolean(const std::u16string& section, const std::u16string& key,
                              bool value) noexcept = 0;
  virtual Status WriteInteger(const std::u16string& section, const std::u16string& key,
                              std::int32_t value) noexcept = 0;
  virtual Status WriteString(const std::u16string& section, const std::u16string& key,
                             const std::u16string& value) noexcept = 0;
};

// Messages that wait for the user instead of stopping him.
class INotificationService : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"INotificationService"};
  // The process, with its parameters, is what the message offers to run.
  virtual Status Notify(const std::u16string& title, const std::u16string& text,
                        const std::u16string& process, const std::u16string& parameters) noexcept = 0;
};

class IClient2 : public IClient {
 public:
  using Base = IClient;
  static constexpr InterfaceId Id{"IClient2"};
  KETRIL_READ(Ref<IWorkspace>, Workspace);                      // empty when there is none
  KETRIL_READ(Ref<INotificationService>, NotificationService);  // likewise
  KETRIL_READ(std::u16string, InstallationFolder);              // what the editor brings, without a last /
  KETRIL_READ(std::u16string, SettingsFolder);                  // what the user set up, likewise
  KETRIL_READ(bool, HideDocumentPath);                          // reports name files without their folders
  KETRIL_READ(Ref<IServerDocumentView>, CurrentView);           // empty when the user sees none

  // The stored options of a server in a file.
  virtual Status OpenOptionsReader(const std::u16string& server, const std::u16string& file,
                                   Ref<IOptionsReader>& reader) noexcept = 0;
  virtual Status OpenOptionsWriter(const std::u16string& server, const std::u16string& file,
                                   Ref<IOptionsWriter>& writer) noexcept = 0;
  // A path with the special folders of this installation in it, and with their names instead.
  virtual Status GetExpandedEnvironmentPath(const std::u16string& path,
                                            std::u16string& expanded) noexcept = 0;
  virtual Status GetContractedEnvironmentPath(const std::u16string& path,
                                              std::u16string& contracted) noexcept = 0;

  // Empty when the file is not open.
  virtual Status GetDocumentByPath(const std::u16string& path, Ref<IServerDocument>& document) noexcept = 0;
  virtual Status GetDocumentKind(const std::u16string& path, std::u16string& kind) noexcept = 0;
  virtual Status OpenDocument(const std::u16string& kind, const std::u16string& path,
                              Ref<IServerDocument>& document) noexcept = 0;
  virtual Status ShowDocument(IServerDocument* document) noexcept = 0;
};

}  // namespace Ketril
