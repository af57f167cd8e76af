#include "DLLs/Tools/Frame/ReportFiles.h"

#include <filesystem>
#include <fstream>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Platform/Modules.h"
#include "Platform/TempFiles.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

std::u16string ForceFileNameExtension(const std::u16string& file_name, const std::u16string& extension) {
  if (const auto entry = Platform::FindModuleEntry<ClientAPI_ForceFileNameExtension>(
          kModule_Ketril, kEntry_ForceFileNameExtension))
    return entry(file_name, extension);
  return std::filesystem::path(file_name).replace_extension(extension).u16string();
}

std::u16string ExtractWholeFileNameFromPath(const std::u16string& path) {
  if (const auto entry = Platform::FindModuleEntry<ClientAPI_ExtractWholeFileNameFromPath>(
          kModule_Ketril, kEntry_ExtractWholeFileName))
    return entry(path);
  return std::filesystem::path(path).filename().u16string();
}

void ReplaceReportFile(const std::u16string& target, const std::u16string& text) {
  Platform::TReplacementFile file((std::filesystem::path(target)));
  file.Write(Platform::ToUtf8(text));
  file.Commit();
}

void OpenDocument(const std::u16string& file_name) {
  if (const Ref<IClient> client = Client())
    On(client).Call(&IClient::RunProcess, u"Client:OpenDocument", u"FileName=" + file_name);
}

}  // namespace Ketril::Tools
