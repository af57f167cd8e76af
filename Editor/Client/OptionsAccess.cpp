#include "Editor/Client/OptionsAccess.h"

#include <charconv>
#include <stdexcept>

#include "Editor/HostCall.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

std::optional<bool> ToBoolean(std::u16string_view text) {
  const std::u16string_view word = Platform::Trim(text);
  if (Platform::EqualsIgnoringAsciiCase(word, u"True")) return true;
  if (Platform::EqualsIgnoringAsciiCase(word, u"False")) return false;
  const std::string digits = Platform::ToUtf8(word);
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number != 0;
}

}  // namespace

std::optional<bool> ReadBoolean(const OptionsStore& store, const std::u16string& section,
                                const std::u16string& key) {
  const std::optional<std::u16string> stored = store.Read(section, key);
  return stored ? ToBoolean(*stored) : std::nullopt;
}

Status OptionsReader::ReadBoolean(const std::u16string& section, const std::u16string& key, bool otherwise,
                                  bool& value) noexcept {
  return HostCall("IOptionsReader.ReadBoolean",
                  [&] { value = Editor::ReadBoolean(store_, section, key).value_or(otherwise); });
}

Status OptionsReader::ReadString(const std::u16string& section, const std::u16string& key,
                                 const std::u16string& otherwise, std::u16string& value) noexcept {
  return HostCall("IOptionsReader.ReadString",
                  [&] { value = store_.Read(section, key).value_or(otherwise); });
}

Status OptionsWriter::WriteBoolean(const std::u16string& section, const std::u16string& key,
                                   bool value) noexcept {
  return Write("IOptionsWriter.WriteBoolean", section, key, value ? u"True" : u"False");
}

Status OptionsWriter::WriteInteger(const std::u16string& section, const std::u16string& key,
                                   std::int32_t value) noexcept {
  return Write("IOptionsWriter.WriteInteger", section, key, Platform::ToUtf16(std::to_string(value)));
}

Status OptionsWriter::WriteString(const std::u16string& section, const std::u16string& key,
                                  const std::u16string& value) noexcept {
  return Write("IOptionsWriter.WriteString", section, key, value);
}

Status OptionsWriter::Write(const char* method, const std::u16string& section, const std::u16string& key,
                            const std::u16string& value) noexcept {
  return HostCall(method, [&] {
    try {
      store_.Write(section, key, value);
      return Status::Ok;
    } catch (const std::invalid_argument&) {
      return Status::InvalidArgument;
    }
  });
}

}  // namespace Ketril::Editor
