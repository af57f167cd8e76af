// What the reports ask the editor's client; without a client, or one that does not offer it, each of these
// has a plain answer. They raise EHostError when the client fails.
#pragma once

#include <filesystem>
#include <string>

#include "Interfaces/Workspace.h"

namespace Ketril::Tools {

Ref<IClient2> Client2();  // empty when there is none

// The folder of the style sheets, with a separator at its end.
std::u16string TemplatesFolder();
std::u16string DefaultStyleSheet();
bool HidesDocumentPath();

// The name of a view and the path of its document; false when it has no document.
bool ReadView(IServerDocumentView* view, std::u16string& name, std::u16string& document_path);

// Paths in the library are texts; these are the file system's, and back.
std::filesystem::path PathOf(const std::u16string& name);
std::u16string TextOf(const std::filesystem::path& path);
std::u16string FileNameOf(const std::u16string& path);  // without its folders

// Paths that stay valid across installations, with names in the place of the editor's special folders.
class TSpecialFoldersList {
 public:
  static std::u16string GetContractedEnvironmentPath(const std::u16string& path);
  static std::u16string GetExpandedEnvironmentPath(const std::u16string& path);
};

}  // namespace Ketril::Tools
