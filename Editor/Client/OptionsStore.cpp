#include "Editor/Client/OptionsStore.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "Platform/TempFiles.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

using Platform::EqualsIgnoringAsciiCase;

std::string ReadFile(const std::filesystem::path& path) {
  if (!std::filesystem::exists(path)) return {};
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path)) {
    throw std::filesystem::filesystem_error("cannot read", path, std::make_error_code(std::errc::io_error));
  }
  return {std::istreambuf_iterator<char>(file), {}};
}

bool Fits(const std::u16string& text, const char16_t* forbidden) {
  return text.find_first_of(forbidden) == std::u16string::npos;
}

template <class List>
auto* FindNamed(List& list, const std::u16string& name) {
  const auto it =
      std::ranges::find_if(list, [&](const auto& item) { return EqualsIgnoringAsciiCase(item.name, name); });
  return it == list.end() ? nullptr : &*it;
}

}  // namespace

OptionsStore::OptionsStore(std::filesystem::path file)
    : file_(std::move(file)), sections_(Parse(ReadFile(file_))) {}

std::vector<OptionsStore::Section> OptionsStore::Parse(std::string_view text) {
  std::vector<Section> sections(1);
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::u16string wide = Platform::ToUtf16(line);
    const std::u16string_view trimmed = Platform::Trim(wide);
    if (trimmed.starts_with(u'[') && trimmed.ends_with(u']')) {
      sections.push_back({std::u16string(trimmed.substr(1, trimmed.size() - 2)), {}});
      continue;
    }
    Entry entry{{}, {}, std::string(line)};
    const std::size_t sign = wide.find(u'=');
    if (sign != std::u16string::npos && !trimmed.starts_with(u';')) {
      entry.name = Platform::Trim(std::u16string_view(wide).substr(0, sign));
      entry.value = wide.substr(sign + 1);
    }
    sections.back().entries.push_back(std::move(entry));
  }
  return sections;
}

std::optional<std::u16string> OptionsStore::Read(const std::u16string& section,
                                                 const std::u16string& name) const {
  const Section* found = FindNamed(sections_, section);
  const Entry* entry = found && !name.empty() ? FindNamed(found->entries, name) : nullptr;
  return entry ? std::optional(entry->value) : std::nullopt;
}

void OptionsStore::Write(const std::u16string& section, const std::u16string& name,
                         const std::u16string& value) {
  if (Read(section, name) == value) return;
  if (name.empty() || !Fits(section, u"\r\n]") || !Fits(name, u"\r\n=[;") || !Fits(value, u"\r\n") ||
      Platform::Trim(name) != name || Platform::Trim(section) != section) {
    throw std::invalid_argument("an option with this text cannot be kept");
  }
  std::vector<Section> sections = sections_;
  Set(sections, section, name, value);
  if (!file_.empty()) Save(sections);
  sections_ = std::move(sections);
}

void OptionsStore::Set(std::vector<Section>& sections, const std::u16string& section,
                       const std::u16string& name, const std::u16string& value) {
  if (sections.empty()) sections.emplace_back();
  Section* found = FindNamed(sections, section);
  if (!found) found = &sections.emplace_back(Section{section, {}});
  Entry* entry = FindNamed(found->entries, name);
  if (!entry) {
    // Ahead of the empty lines that set the next section off.
    auto end = found->entries.end();
    while (end != found->entries.begin() && std::prev(end)->line.empty()) --end;
    entry = &*found->entries.insert(end, Entry{name, {}, {}});
  }
  entry->value = value;
  entry->line = Platform::ToUtf8(entry->name + u"=" + value);
}

void OptionsStore::Save(const std::vector<Section>& sections) const {
  std::string text;
  for (const Section& section : sections) {
    if (&section != &sections.front()) text.append("[").append(Platform::ToUtf8(section.name)).append("]\n");
    for (const Entry& entry : section.entries) text += entry.line + "\n";
  }
  if (file_.has_parent_path()) std::filesystem::create_directories(file_.parent_path());
  Platform::TReplacementFile file(file_);
  file.Write(text);
  file.Commit();
}

}  // namespace Ketril::Editor
