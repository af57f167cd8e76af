// Text between the two worlds: UTF-16 in the library and at the boundary, UTF-8 in files and on the terminal.
#pragma once

#include <string>
#include <string_view>

namespace Ketril::Platform {

// Malformed input becomes U+FFFD, one for each byte or code unit that fits nowhere.
std::string ToUtf8(std::u16string_view text);
std::u16string ToUtf16(std::string_view utf8);

// Upper and lower case of the ASCII letters only; everything else stays.
std::u16string AsciiUpper(std::u16string_view text);
bool EqualsIgnoringAsciiCase(std::u16string_view a, std::u16string_view b);
// Without the characters up to the blank (code 32) at both ends.
std::u16string_view Trim(std::u16string_view text);

}  // namespace Ketril::Platform
