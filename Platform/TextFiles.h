// Text files, line by line.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace Ketril::Platform {

// Reads text in the code page of the system, which is UTF-8 here: a byte that fits nowhere becomes U+FFFD,
// and a byte-order mark is a character like others. A line ends at LF or CR LF; the last one may end with the
// file.
//
// Opening and reading raise std::system_error with the name of the file.
class TTextLines {
 public:
  explicit TTextLines(const std::u16string& file_name);
  // The next line without its end; false, and no line, at the end of the file.
  bool Next(std::u16string& line);
  bool AtEnd();
  std::int32_t Number() const { return number_; }  // of the line that was read last, from 1

 private:
  [[noreturn]] void Fail(const char* what) const;

  std::string name_;
  std::ifstream file_;
  std::int32_t number_ = 0;
};

}  // namespace Ketril::Platform
