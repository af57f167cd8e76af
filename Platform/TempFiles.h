// Temporary files, and the replacement of a file by a finished one.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Ketril::Platform {

// Makes an empty file with a name of its own, starting with `prefix`, in the system's folder for temporary
// files (TMPDIR, else /tmp) and gives its path; the file is the caller's to remove. Raises std::system_error.
std::filesystem::path MakeTempFile(std::string_view prefix);

// Writes a file so that nobody ever sees half of it: the text goes to a temporary file beside the target, and
// Commit puts that in the target's place, after it has reached the disk. Whatever happens before that leaves
// the target as it was; an object that is destroyed without a Commit takes its temporary file away.
//
// A target that is a symbolic link stays one: the file that it names is replaced, and keeps its permissions.
// A target that exists but is no regular file, such as a device or a pipe, is written directly.
//
// Everything raises std::filesystem::filesystem_error with the target's path: a folder in the target's place,
// no permission (also that to write the target itself), a full disk.
class TReplacementFile {
 public:
  explicit TReplacementFile(const std::filesystem::path& target);
  ~TReplacementFile();
  TReplacementFile(const TReplacementFile&) = delete;
  TReplacementFile& operator=(const TReplacementFile&) = delete;

  // Many small pieces cost no more than one.
  void Write(std::string_view bytes);
  // Nothing may be written afterwards.
  void Commit();

 private:
  [[noreturn]] void Fail(const char* what) const;  // with the reason in errno
  void CreateBesideTarget();
  void Flush();
  void WriteThrough(std::string_view bytes);

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // empty when the target is written directly, or has been replaced
  std::string waiting_;
  int file_ = -1;
};

}  // namespace Ketril::Platform
