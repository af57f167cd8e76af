// The editor's options: values by section and name, kept in a file of the form
//
//   [TearDropOptions]
//   ViasOnly=1
//
// Sections and names compare without regard to case, for the ASCII letters. A value is the text from the
// first = to the end of the line, blanks included. Lines that are no options, comments among them, stay where
// they are. The file is UTF-8.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Ketril::Editor {

class OptionsStore {
 public:
  OptionsStore() = default;  // kept in memory only
  // Reads the file when there is one. Raises std::filesystem::filesystem_error when it is there and cannot be
  // read.
  explicit OptionsStore(std::filesystem::path file);

  std::optional<std::u16string> Read(const std::u16string& section, const std::u16string& name) const;
  // A value that is new is in the file when this returns: the file is replaced as a whole, its folder made
  // when missing. Raises std::invalid_argument for a text that the form has no place for (a line break; an
  // empty name or one with =), and std::filesystem::filesystem_error when the file cannot be written; the
  // store then keeps the old value.
  void Write(const std::u16string& section, const std::u16string& name, const std::u16string& value);

 private:
  struct Entry {
    std::u16string name;  // empty for a line that is no option
    std::u16string value;
    std::string line;  // as it is in the file
  };
  struct Section {
    std::u16string name;  // empty for the lines ahead of the first section
    std::vector<Entry> entries;
  };
  static std::vector<Section> Parse(std::string_view text);
  static void Set(std::vector<Section>& sections, const std::u16string& section, const std::u16string& name,
                  const std::u16string& value);
  void Save(const std::vector<Section>& sections) const;

  std::filesystem::path file_;  // empty: memory only
  std::vector<Section> sections_;
};

}  // namespace Ketril::Editor
