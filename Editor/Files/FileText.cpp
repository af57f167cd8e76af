#include "Editor/Files/FileText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "Editor/Files/SExpression.h"

namespace Ketril::Editor {

namespace {

[[noreturn]] void FailReading(const std::string& file, const std::string& reason) {
  throw FileError(file, 0, 0, "the file cannot be read: " + reason, "");
}

}  // namespace

std::string ReadFileText(const std::filesystem::path& path) {
  const std::string name = path.string();
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) FailReading(name, "it is a folder");
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rb"), &std::fclose);
  if (!file) FailReading(name, std::strerror(errno));
  std::string text;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (!error) text.reserve(size + 1);
  char block[1 << 16];
  while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) text.append(block, count);
  if (std::ferror(file.get())) FailReading(name, std::strerror(errno));
  return text;
}

}  // namespace Ketril::Editor
