// Files by which sessions tell that they hold a file: whatever is in one, it is somebody's or nobody's, and
// what names somebody names all of him.
#include <cstdint>

#include "Fuzz/Support/Folder.h"
#include "Platform/FileLocks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Ketril;
  const std::filesystem::path file = Fuzz::Folder() / "board";
  const std::filesystem::path lock = Platform::LockFileOf(file);
  Fuzz::WriteFile(lock.filename().c_str(), std::string(reinterpret_cast<const char*>(data), size));
  if (const auto holder = Platform::LockOfOthers(file)) {
    const Platform::TFileLock own = Platform::OwnLock();
    Fuzz::Check(
        holder->Computer != own.Computer || holder->User != own.User || holder->Process != own.Process,
        "a lock of others is not our own");
  }
  return 0;
}
