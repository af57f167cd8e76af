#include "Platform/FileLocks.h"

#include <pwd.h>
#include <unistd.h>

#include <climits>
#include <fstream>

#include "Platform/Text.h"

namespace Ketril::Platform {

namespace {

std::string UserName() {
  char buffer[4096];
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(geteuid(), &entry, buffer, sizeof buffer, &found) == 0 && found) return found->pw_name;
  return std::to_string(geteuid());
}

}  // namespace

TFileLock OwnLock() {
  char host[HOST_NAME_MAX + 1] = {};
  gethostname(host, HOST_NAME_MAX);
  return {ToUtf16(host), ToUtf16(UserName()), ToUtf16(std::to_string(getpid()))};
}

std::filesystem::path LockFileOf(const std::filesystem::path& file) {
  std::filesystem::path lock = file;
  return lock.replace_filename("~$" + file.filename().string() + "_loc");
}

std::optional<TFileLock> LockOfOthers(const std::filesystem::path& file) {
  std::error_code ignored;
  const std::filesystem::path lock_file = LockFileOf(file);
  if (!std::filesystem::is_regular_file(lock_file, ignored)) return std::nullopt;
  std::ifstream stream(lock_file);
  TFileLock lock;
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    const auto take = [&](std::string_view word, std::u16string& value) {
      if (line.starts_with(word) && line.size() > word.size())
        value = ToUtf16(std::string_view(line).substr(word.size() + 1));
    };
    take("ComputerName", lock.Computer);
    take("UserName", lock.User);
    take("ProcessID", lock.Process);
  }
  if (lock.Computer.empty() || lock.User.empty() || lock.Process.empty()) return std::nullopt;
  const TFileLock own = OwnLock();
  const bool is_own = EqualsIgnoringAsciiCase(lock.Computer, own.Computer) &&
                      EqualsIgnoringAsciiCase(lock.User, own.User) &&
                      EqualsIgnoringAsciiCase(lock.Process, own.Process);
  return is_own ? std::nullopt : std::optional(lock);
}

}  // namespace Ketril::Platform
