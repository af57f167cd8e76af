#include "Platform/Text.h"

#include <gtest/gtest.h>

#include <random>

namespace Ketril::Platform {
namespace {

TEST(Text, ConvertsBetweenUtf8AndUtf16) {
  const struct {
    const char* Name;
    std::string Utf8;
    std::u16string Utf16;
  } rows[] = {
      {"empty", "", u""},
      {"zero inside", std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
      {"ends of one byte", "\x01\x7F", u"\u0001\u007F"},
      {"ends of two bytes", "\xC2\x80\xDF\xBF", u"\u0080\u07FF"},
      {"ends of three bytes", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF",
       u"\u0800\uD7FF\uE000\uFFFF"},
      {"ends of four bytes", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ToUtf16(row.Utf8), row.Utf16) << row.Name;
    EXPECT_EQ(ToUtf8(row.Utf16), row.Utf8) << row.Name;
  }
}

TEST(Text, ReplacesEachMalformedByte) {
  const struct {
    const char* Name;
    const char* Utf8;
    const char16_t* Utf16;
  } rows[] = {
      {"continuation alone", "a\x80z", u"a\uFFFDz"},
      {"overlong of two", "\xC0\xAF", u"\uFFFD\uFFFD"},
      {"overlong of three", "\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},
      {"overlong of four", "\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"surrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
      {"beyond the last code point", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"cut short by text", "\xE2\x82z", u"\uFFFD\uFFFDz"},
      {"cut short by the end", "z\xF0\x9F\x98", u"z\uFFFD\uFFFD\uFFFD"},
      {"no lead byte", "\xFF\xF8", u"\uFFFD\uFFFD"},
  };
  for (const auto& row : rows) EXPECT_EQ(ToUtf16(row.Utf8), row.Utf16) << row.Name;
}

TEST(Text, KeepsLengthsWhateverTheCodeUnits) {
  std::mt19937 random(20);
  for (int run = 0; run < 2000; ++run) {
    std::u16string text(random() % 12, u' ');
    // Half of the units are surrogates, so that pairs and lone ones are both common.
    for (char16_t& unit : text)
      unit = static_cast<char16_t>(random() % 2 ? 0xD800 + random() % 0x800 : random());
    const std::u16string once = ToUtf16(ToUtf8(text));
    ASSERT_EQ(once.size(), text.size());
    for (std::size_t i = 0; i < text.size(); ++i) ASSERT_TRUE(once[i] == text[i] || once[i] == 0xFFFD);
    ASSERT_EQ(ToUtf16(ToUtf8(once)), once);
  }
}

TEST(Text, FoldsAsciiLettersOnly) {
  EXPECT_EQ(AsciiUpper(u"az@[`{\u00E4\u0131"), u"AZ@[`{\u00E4\u0131");
  EXPECT_TRUE(EqualsIgnoringAsciiCase(u"Room_1", u"rOOM_1"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase(u"\u00E4", u"\u00C4"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase(u"@", u"`"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase(u"ab", u"abc"));
}

TEST(Text, TrimsUpToTheBlank) {
  EXPECT_EQ(Trim(u" \t\r\na b\u0001 "), u"a b");
  EXPECT_EQ(Trim(u"\u00A0a"), u"\u00A0a");
  EXPECT_EQ(Trim(u" \t "), u"");
}

}  // namespace
}  // namespace Ketril::Platform
