#include "Platform/TextFiles.h"

#include <cerrno>
#include <system_error>

#include "Platform/Text.h"

namespace Ketril::Platform {

TTextLines::TTextLines(const std::u16string& file_name)
    : name_(ToUtf8(file_name)), file_(name_, std::ios::binary) {
  if (!file_) Fail("cannot be opened");
}

void TTextLines::Fail(const char* what) const {
  throw std::system_error(errno ? errno : EIO, std::generic_category(), name_ + " " + what);
}

bool TTextLines::AtEnd() {
  const bool at_end = file_.peek() == std::ifstream::traits_type::eof();
  if (file_.bad()) Fail("cannot be read");  // as a folder, which opens
  return at_end;
}

bool TTextLines::Next(std::u16string& line) {
  if (AtEnd()) return false;
  std::string bytes;
  std::getline(file_, bytes);
  if (file_.bad()) Fail("cannot be read");
  const bool has_end = !file_.eof();
  if (has_end && bytes.ends_with('\r')) bytes.pop_back();
  line = ToUtf16(bytes);
  ++number_;
  return true;
}

}  // namespace Ketril::Platform
