#include "Platform/TempFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>

namespace Ketril::Platform {

namespace {

// Six letters in place of the Xs make the name; the file belongs to the user alone.
int CreateUnique(std::filesystem::path& path) {
  std::string name = path.string() + "XXXXXX";
  const int file = ::mkostemp(name.data(), O_CLOEXEC);
  if (file >= 0) path = name;
  return file;
}

}  // namespace

std::filesystem::path MakeTempFile(std::string_view prefix) {
  std::filesystem::path path = std::filesystem::temp_directory_path() / prefix;
  const int file = CreateUnique(path);
  if (file < 0) throw std::system_error(errno, std::generic_category(), path.string());
  ::close(file);
  return path;
}

TReplacementFile::TReplacementFile(const std::filesystem::path& target) : target_(target) {
  // A link is followed, also one to a file that is not there yet.
  for (int links = 0; std::filesystem::is_symlink(target_) && links < 40; ++links) {
    target_ = target_.parent_path() / std::filesystem::read_symlink(target_);
  }
  const bool exists = std::filesystem::exists(target_);
  if (exists && ::access(target_.c_str(), W_OK) != 0) Fail("cannot write");
  if (!exists || std::filesystem::is_regular_file(target_)) {
    CreateBesideTarget();
  } else {
    file_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
    if (file_ < 0) Fail("cannot write");
  }
}

TReplacementFile::~TReplacementFile() {
  if (file_ >= 0) ::close(file_);
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void TReplacementFile::CreateBesideTarget() {
  std::filesystem::path path = target_;
  path += ".";
  file_ = CreateUnique(path);
  if (file_ < 0) Fail("cannot create a temporary file beside");
  temporary_ = std::move(path);
  // As a new file of the user would have, or as the old one has. A failure costs the bits, not the text.
  struct ::stat old {};
  mode_t mode = 0666;
  if (::stat(target_.c_str(), &old) == 0) {
    mode = old.st_mode & 07777;
    if (::fchown(file_, old.st_uid, old.st_gid) != 0) mode &= 0777;
  } else {
    const mode_t mask = ::umask(0);  // it is read by setting it
    ::umask(mask);
    mode &= ~mask;
  }
  (void)::fchmod(file_, mode);
}

void TReplacementFile::Write(std::string_view bytes) {
  constexpr std::size_t kBlock = 1 << 18;
  if (waiting_.size() + bytes.size() > kBlock) Flush();
  if (bytes.size() < kBlock) {
    waiting_ += bytes;
  } else {
    WriteThrough(bytes);
  }
}

void TReplacementFile::Flush() {
  WriteThrough(waiting_);
  waiting_.clear();
}

void TReplacementFile::WriteThrough(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file_, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) Fail("cannot write");
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void TReplacementFile::Commit() {
  Flush();
  if (!temporary_.empty() && ::fsync(file_) != 0) Fail("cannot write");
  if (::close(std::exchange(file_, -1)) != 0) Fail("cannot write");
  if (temporary_.empty()) return;
  if (::rename(temporary_.c_str(), target_.c_str()) != 0) Fail("cannot replace");
  temporary_.clear();
  // The rename is on the disk once the folder is. Some file systems cannot do this; the file is complete
  // all the same.
  const std::filesystem::path folder = target_.has_parent_path() ? target_.parent_path() : ".";
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  (void)::fsync(descriptor);
  ::close(descriptor);
}

void TReplacementFile::Fail(const char* what) const {
  throw std::filesystem::filesystem_error(what, target_, std::error_code(errno, std::generic_category()));
}

}  // namespace Ketril::Platform
