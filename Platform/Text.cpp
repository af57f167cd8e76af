#include "Platform/Text.h"

#include <algorithm>
#include <cstdint>

namespace Ketril::Platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

constexpr char16_t Upper(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

void AppendUtf8(std::string& result, char32_t point) {
  const auto append = [&](char32_t byte) { result.push_back(static_cast<char>(byte)); };
  if (point < 0x80) {
    append(point);
  } else if (point < 0x800) {
    append(0xC0 | point >> 6);
    append(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    append(0xE0 | point >> 12);
    append(0x80 | (point >> 6 & 0x3F));
    append(0x80 | (point & 0x3F));
  } else {
    append(0xF0 | point >> 18);
    append(0x80 | (point >> 12 & 0x3F));
    append(0x80 | (point >> 6 & 0x3F));
    append(0x80 | (point & 0x3F));
  }
}

void AppendUtf16(std::u16string& result, char32_t point) {
  if (point < 0x10000) {
    result.push_back(static_cast<char16_t>(point));
  } else {
    result.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
    result.push_back(static_cast<char16_t>(0xDC00 | (point & 0x3FF)));
  }
}

struct CodePoint {
  char32_t Point = kReplacement;
  std::size_t Length = 1;  // in bytes
};

// The well-formed sequence at the start of `bytes`, which is not empty; else the replacement for one byte.
CodePoint FirstOf(std::string_view bytes) {
  const auto lead = static_cast<std::uint8_t>(bytes[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (length == 0 || bytes.size() < length) return {};
  char32_t point = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<std::uint8_t>(bytes[i]);
    if ((byte & 0xC0) != 0x80) return {};
    point = point << 6 | (byte & 0x3F);
  }
  const bool overlong = point < (length == 3 ? 0x800u : length == 4 ? 0x10000u : 0x80u);
  const bool surrogate = point >= 0xD800 && point < 0xE000;
  if (overlong || surrogate || point > 0x10FFFF) return {};
  return {point, length};
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      AppendUtf8(result, 0x10000 + ((unit & 0x3FFu) << 10 | (text[++i] & 0x3FFu)));
    } else {
      AppendUtf8(result, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kReplacement : unit);
    }
  }
  return result;
}

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string result;
  result.reserve(utf8.size());
  while (!utf8.empty()) {
    const CodePoint first = FirstOf(utf8);
    AppendUtf16(result, first.Point);
    utf8.remove_prefix(first.Length);
  }
  return result;
}

std::u16string AsciiUpper(std::u16string_view text) {
  std::u16string result(text);
  std::transform(result.begin(), result.end(), result.begin(), Upper);
  return result;
}

bool EqualsIgnoringAsciiCase(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return Upper(x) == Upper(y); });
}

std::u16string_view Trim(std::u16string_view text) {
  while (!text.empty() && text.front() <= u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() <= u' ') text.remove_suffix(1);
  return text;
}

}  // namespace Ketril::Platform
