// Documents and projects, as far as an editor without windows has them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Editor/HostObject.h"
#include "Editor/Model/HostProperty.h"
#include "Interfaces/Workspace.h"

namespace Ketril::Editor {

// An open document. It counts what it is told of the replacement of its file.
class ServerDocument final : public HostObject<IServerDocument> {
 public:
  ServerDocument(std::u16string file_name, std::u16string server, Ref<IServerDocumentView> view = nullptr)
      : file_name_(std::move(file_name)), server_(std::move(server)), view_(std::move(view)) {}
  KETRIL_HOST_READ(IServerDocument, std::u16string, FileName, file_name_)
  KETRIL_HOST_READ(IServerDocument, std::u16string, ServerName, server_)
  KETRIL_HOST_READ(IServerDocument, Ref<IServerDocumentView>, View, view_)
  KETRIL_HOST_METHOD(IServerDocument, BeforeFileReplaced, (), void(++before_))
  KETRIL_HOST_METHOD(IServerDocument, AfterFileReplaced, (), void(++after_))
  int Before() const { return before_; }
  int After() const { return after_; }

 private:
  const std::u16string file_name_;
  const std::u16string server_;
  const Ref<IServerDocumentView> view_;
  int before_ = 0;
  int after_ = 0;
};

// One project, its documents, and the files that were made from them. The documents name it only while it
// lives.
class Project final : public HostObject<IProject> {
 public:
  Project(std::u16string file, std::u16string output_folder)
      : file_(std::move(file)), output_folder_(std::move(output_folder)) {}
  // A document that names this project; with `listed` the project lists it, too.
  Ref<IDocument> AddDocument(const std::u16string& path, bool listed = true);
  const std::vector<std::u16string>& Generated() const { return generated_; }

  KETRIL_HOST_READ(IProject, std::u16string, FullPath, file_)
  KETRIL_HOST_READ(IProject, std::u16string, OutputFolder, output_folder_)
  KETRIL_HOST_READ(IProject, std::int32_t, DocumentCount, static_cast<std::int32_t>(documents_.size()))
  Status GetState_DocumentAt(std::int32_t index, Ref<IDocument>& document) noexcept override;
  KETRIL_HOST_METHOD(IProject, AddGeneratedDocument, (const std::u16string& path), generated_.push_back(path))

 private:
  ~Project() override;
  const std::u16string file_;
  const std::u16string output_folder_;
  std::vector<Ref<IDocument>> documents_;
  std::vector<IDocument*> naming_;  // alive, listed or not
  std::vector<std::u16string> generated_;
  friend class ProjectDocument;
};

// The workspace of the documents that it was given.
class Workspace final : public HostObject<IWorkspace> {
 public:
  explicit Workspace(std::vector<Ref<IDocument>> documents) : documents_(std::move(documents)) {}
  Status GetDocumentFromPath(const std::u16string& path, Ref<IDocument>& document) noexcept override;

 private:
  const std::vector<Ref<IDocument>> documents_;
};

}  // namespace Ketril::Editor
