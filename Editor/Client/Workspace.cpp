#include "Editor/Client/Workspace.h"

#include <algorithm>

namespace Ketril::Editor {

class ProjectDocument final : public HostObject<IDocument> {
 public:
  ProjectDocument(std::u16string path, Project* project) : path_(std::move(path)), project_(project) {
    project_->naming_.push_back(this);
  }
  void LoseProject() { project_ = nullptr; }
  KETRIL_HOST_READ(IDocument, std::u16string, FullPath, path_)
  KETRIL_HOST_READ(IDocument, Ref<IProject>, Project, project_)

 private:
  ~ProjectDocument() override {
    if (project_) std::erase(project_->naming_, this);
  }
  const std::u16string path_;
  Editor::Project* project_;
};

Project::~Project() {
  for (IDocument* document : naming_) static_cast<ProjectDocument*>(document)->LoseProject();
}

Ref<IDocument> Project::AddDocument(const std::u16string& path, bool listed) {
  const Ref<IDocument> document = MakeHost<ProjectDocument>(path, this);
  if (listed) documents_.push_back(document);
  return document;
}

Status Project::GetState_DocumentAt(std::int32_t index, Ref<IDocument>& document) noexcept {
  return HostCall("IProject.GetState_DocumentAt", [&] {
    const bool there = index >= 0 && static_cast<std::size_t>(index) < documents_.size();
    document = there ? documents_[static_cast<std::size_t>(index)] : nullptr;
  });
}

Status Workspace::GetDocumentFromPath(const std::u16string& path, Ref<IDocument>& document) noexcept {
  return HostCall("IWorkspace.GetDocumentFromPath", [&] {
    document = nullptr;
    for (const Ref<IDocument>& each : documents_) {
      std::u16string own;
      if (!Failed(each->GetState_FullPath(own)) && own == path) document = each;
    }
  });
}

}  // namespace Ketril::Editor
