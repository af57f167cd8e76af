#include "Editor/Client/Parameters.h"

#include <algorithm>

#include "Platform/Text.h"

namespace Ketril::Editor {

Parameters::Pair* Parameters::Find(const std::u16string& name) {
  const std::u16string_view wanted = Platform::Trim(name);
  const auto found = std::ranges::find_if(
      pairs_, [&](const Pair& pair) { return Platform::EqualsIgnoringAsciiCase(pair.first, wanted); });
  return found == pairs_.end() ? nullptr : &*found;
}

void Parameters::SetFromWide(const char16_t* text) {
  pairs_.clear();
  const std::u16string_view all = text ? text : u"";
  for (std::size_t begin = 0; begin < all.size();) {
    const std::size_t end = std::min(all.find(u'|', begin), all.size());
    const std::u16string_view pair = all.substr(begin, end - begin);
    if (const std::size_t equals = pair.find(u'='); equals != pair.npos)
      AddParameter(std::u16string(pair.substr(0, equals)), std::u16string(pair.substr(equals + 1)));
    begin = end + 1;
  }
  modified_ = true;
}

void Parameters::SetFromAnsi(const char* text) {
  SetFromWide(Platform::ToUtf16(text ? text : "").c_str());
}

void Parameters::AddParameter(const std::u16string& name, const std::u16string& value) {
  if (Pair* pair = Find(name)) {
    pair->second = value;
  } else {
    pairs_.emplace_back(Platform::Trim(name), value);
  }
  modified_ = true;
}

void Parameters::RemoveParameter(const std::u16string& name) {
  if (const Pair* pair = Find(name)) pairs_.erase(pairs_.begin() + (pair - pairs_.data()));
  modified_ = true;
}

bool Parameters::GetParameter(const std::u16string& name, std::u16string& value) {
  const Pair* pair = Find(name);
  value = pair ? pair->second : u"";
  return pair != nullptr;
}

std::u16string Parameters::GetText() {
  std::u16string text;
  for (const Pair& pair : pairs_) text += (text.empty() ? u"" : u"|") + pair.first + u"=" + pair.second;
  return text;
}

std::string Parameters::GetAnsi() {
  return Platform::ToUtf8(GetText());
}

void Parameters::CopyToBuffer(char16_t* buffer, std::int32_t size) {
  const std::u16string text = GetText();
  const std::size_t count = size < 0 ? text.size() : std::min(text.size(), static_cast<std::size_t>(size));
  std::copy_n(text.data(), count, buffer);
  buffer[count] = 0;
}

void Parameters::LoadFromStream(IByteStream& stream, std::int32_t size) {
  if (size < 0 && stream.Read(&size, sizeof size) != sizeof size) size = 0;
  std::string text;
  for (char block[4096]; size > 0;) {
    const std::size_t count = stream.Read(block, std::min<std::size_t>(sizeof block, size));
    if (count == 0) break;
    text.append(block, count);
    size -= static_cast<std::int32_t>(count);
  }
  SetFromAnsi(text.c_str());
}

void Parameters::SaveToStream(IByteStream& stream, std::int32_t size) {
  const std::string text = GetAnsi();
  const auto length = static_cast<std::int32_t>(text.size() + 1);
  if (size < 0) stream.Write(&length, sizeof length);
  stream.Write(text.c_str(), text.size() + 1);
}

void Parameters::Clear() {
  pairs_.clear();
  modified_ = true;
}

}  // namespace Ketril::Editor
