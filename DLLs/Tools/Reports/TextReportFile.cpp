#include "DLLs/Tools/Reports/TextReportFile.h"

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Frame/RT_ParameterList.h"
#include "DLLs/Tools/Reports/FilePlacement.h"
#include "DLLs/Tools/Reports/ReportClient.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

// Of a document of the text editor; false for any other.
bool MoveCursorToTop(const Ref<IClient2>& client, const Ref<IServerDocument>& document) {
  const std::u16string server_name = On(document).Read(&IServerDocument::GetState_ServerName);
  if (!Platform::EqualsIgnoringAsciiCase(server_name, u"TextEdit")) return false;
  const auto server = Probe<IServerModule>(On(client).Read(&IClient2::GetServerByName, server_name));
  const Ref<IServerDocumentView> view = On(document).Read(&IServerDocument::GetState_View);
  if (server && view)
    On(server).Call(&IServerModule::RunProcessOnView, u"TextEdit:MoveCursorToTopOfDocument", u"", view.Get());
  return true;
}

}  // namespace

void TTextReportFile::WriteLine(std::u16string_view line) {
  text_ += Platform::ToUtf8(line);
  text_ += "\r\n";
}

void TTextReportFile::PlaceAt(const std::u16string& target) const {
  if (const auto temporary = MakeReportTempFile(text_)) PlaceFile(*temporary, PathOf(target));
}

std::u16string LeftAligned(std::u16string_view text, std::size_t width) {
  std::u16string padded(text);
  if (padded.size() < width) padded.append(width - padded.size(), u' ');
  return padded;
}

std::u16string RightAligned(std::u16string_view text, std::size_t width) {
  return text.size() < width ? std::u16string(width - text.size(), u' ').append(text) : std::u16string(text);
}

void LoadReportIntoTextEditor(const std::u16string& file_name) {
  const Ref<IClient2> client = Client2();
  std::error_code ignored;
  if (!client || !std::filesystem::exists(PathOf(file_name), ignored)) return;
  if (const auto open = On(client).Read(&IClient2::GetDocumentByPath, file_name)) {
    On(client).Call(&IClient2::ShowDocument, open.Get());
    if (MoveCursorToTop(client, open)) return;
  }
  const std::u16string kind = On(client).Read(&IClient2::GetDocumentKind, file_name);
  const Ref<IServerDocument> document = On(client).Read(&IClient2::OpenDocument, kind, file_name);
  if (document) On(client).Call(&IClient2::ShowDocument, document.Get());
}

void DisplayReportFile(const std::u16string& file_name, bool as_spread) {
  const Ref<IParameterList> parameters = MakeCounted<TParameterList>();
  parameters->AddParameter(u"FileName", file_name);
  if (ToolAborted) return;
  if (!as_spread) return LoadReportIntoTextEditor(file_name);
  parameters->AddParameter(u"DocumentType", u"Spread");
  if (const Ref<IClient> client = Client())
    On(client).Call(&IClient::RunProcess, u"Client:OpenDocument", parameters->GetText());
}

}  // namespace Ketril::Tools
