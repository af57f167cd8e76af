// Files that somebody has open in another session. Sessions tell each other by a text file beside the one
// that they hold: "~$", the file's name and "_loc", with a line each for the computer, the user and the
// process.
//
//   ComputerName=bench
//   UserName=eve
//   ProcessID=4711
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Ketril::Platform {

struct TFileLock {
  std::u16string Computer;
  std::u16string User;
  std::u16string Process;
};

// This computer, user and process.
TFileLock OwnLock();

std::filesystem::path LockFileOf(const std::filesystem::path& file);

// Who holds the file, when that is somebody else. A lock file that cannot be read, or that lacks one of the
// three, does not count; names compare without regard to case, for the ASCII letters.
std::optional<TFileLock> LockOfOthers(const std::filesystem::path& file);

}  // namespace Ketril::Platform
