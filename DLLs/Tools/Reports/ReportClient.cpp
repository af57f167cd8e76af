#include "DLLs/Tools/Reports/ReportClient.h"

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

Ref<IClient2> Client2() {
  return Probe<IClient2>(Client());
}

std::u16string TemplatesFolder() {
  const Ref<IClient2> client = Client2();
  const std::u16string folder = client ? On(client).Read(&IClient2::GetState_InstallationFolder) : u"";
  return TextOf(PathOf(folder) / "Templates" / "");
}

std::u16string DefaultStyleSheet() {
  return TemplatesFolder() + u"report_html_default.xsl";
}

bool HidesDocumentPath() {
  const Ref<IClient2> client = Client2();
  return client && On(client).Read(&IClient2::GetState_HideDocumentPath);
}

bool ReadView(IServerDocumentView* view, std::u16string& name, std::u16string& document_path) {
  name = On(Ref(view)).Read(&IServerDocumentView::GetState_ViewName);
  const Ref<IServerDocument> document = On(Ref(view)).Read(&IServerDocumentView::GetState_OwnerDocument);
  if (!document) return false;
  document_path = On(document).Read(&IServerDocument::GetState_FileName);
  return true;
}

std::filesystem::path PathOf(const std::u16string& name) {
  return Platform::ToUtf8(name);
}

std::u16string TextOf(const std::filesystem::path& path) {
  return Platform::ToUtf16(path.string());
}

std::u16string FileNameOf(const std::u16string& path) {
  return TextOf(PathOf(path).filename());
}

std::u16string TSpecialFoldersList::GetContractedEnvironmentPath(const std::u16string& path) {
  const Ref<IClient2> client = Client2();
  return client ? On(client).Read(&IClient2::GetContractedEnvironmentPath, path) : path;
}

std::u16string TSpecialFoldersList::GetExpandedEnvironmentPath(const std::u16string& path) {
  const Ref<IClient2> client = Client2();
  return client ? On(client).Read(&IClient2::GetExpandedEnvironmentPath, path) : path;
}

}  // namespace Ketril::Tools
