#include "DLLs/Tools/Reports/FilePlacement.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/MessageDialogs.h"
#include "DLLs/Tools/Reports/ReportClient.h"
#include "Platform/Dialogs.h"
#include "Platform/FileLocks.h"
#include "Platform/TempFiles.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

namespace fs = std::filesystem;

// The client's notification, else a message.
void TellLocked(const fs::path& target, const Platform::TFileLock& lock) {
  const std::u16string text = TextOf(target.filename()) + u" is used by " + lock.User + u" on " +
                              lock.Computer + u". You will not be able to save your changes.";
  const Ref<IClient2> client = Client2();
  const Ref<INotificationService> service =
      client ? On(client).Read(&IClient2::GetState_NotificationService) : nullptr;
  if (service) {
    On(service).Call(&INotificationService::Notify, u"[Locked File]", text, u"WorkspaceManager:OpenObject",
                     u"FileName=" + TextOf(target));
  } else {
    Platform::MessageDialog(text, Platform::TDialogKind::Information, Platform::TDialogButtons::Ok);
  }
}

Ref<IServerDocument> OpenDocumentOf(const fs::path& file) {
  const Ref<IClient2> client = Client2();
  return client ? On(client).Read(&IClient2::GetDocumentByPath, TextOf(file)) : nullptr;
}

// A copy that takes the target's place at once: the two may lie on different devices, and a temporary file
// is readable for its user alone.
bool Move(const fs::path& temporary, const fs::path& target) {
  try {
    std::ifstream file(temporary, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    if (!file.is_open() || file.bad()) return false;
    Platform::TReplacementFile replacement(target);
    replacement.Write(text);
    replacement.Commit();
    return true;
  } catch (const fs::filesystem_error&) {
    return false;
  }
}

void Remove(const fs::path& file) {
  std::error_code ignored;
  fs::remove(file, ignored);
}

bool SameName(const fs::path& a, const fs::path& b) {
  return Platform::EqualsIgnoringAsciiCase(TextOf(a), TextOf(b));
}

}  // namespace

std::optional<fs::path> MakeReportTempFile() {
  std::error_code error;
  if (fs::temp_directory_path(error).empty() || error) {
    ShowErrorDialog(u"GetTemporaryPath: " + Platform::ToUtf16(error.message()));
    return std::nullopt;
  }
  try {
    return Platform::MakeTempFile("ketril-report-");
  } catch (const std::system_error& failure) {
    ShowErrorDialog(u"GetTemporaryFileName: " + Platform::ToUtf16(failure.what()));
    return std::nullopt;
  }
}

std::optional<fs::path> MakeReportTempFile(std::string_view text) {
  const std::optional<fs::path> temporary = MakeReportTempFile();
  if (!temporary) return std::nullopt;
  std::ofstream file(*temporary, std::ios::binary);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  if (!file) {
    Remove(*temporary);
    throw Exception("The report could not be written to " + temporary->string());
  }
  return temporary;
}

TPlacement PlaceFile(const fs::path& temporary, const fs::path& target) {
  if (SameName(temporary, target)) return TPlacement::Placed;
  struct RemoveAtEnd {
    const fs::path& file;
    ~RemoveAtEnd() { Remove(file); }
  } const remove{temporary};
  if (const auto lock = Platform::LockOfOthers(target)) {
    TellLocked(target, *lock);
    return TPlacement::Locked;
  }
  const Ref<IServerDocument> document = OpenDocumentOf(target);
  if (document) On(document).Call(&IServerDocument::BeforeFileReplaced);
  std::error_code ignored;
  const bool placed = fs::exists(temporary, ignored) && Move(temporary, target);
  if (document) On(document).Call(&IServerDocument::AfterFileReplaced);
  return placed ? TPlacement::Placed : TPlacement::Failed;
}

void PlaceText(std::string_view text, const fs::path& target) {
  const std::optional<fs::path> temporary = MakeReportTempFile(text);
  if (temporary && PlaceFile(*temporary, target) == TPlacement::Failed) {
    ShowErrorDialog(u"The report could not be written to " + TextOf(target));
  }
}

}  // namespace Ketril::Tools
