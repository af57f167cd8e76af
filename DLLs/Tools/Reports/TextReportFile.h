// A report of plain text: lines that end with CR LF, gathered and put into place as a whole. No write is
// checked: what could be written takes the target's place, and the user is not told.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Ketril::Tools {

class TTextReportFile {
 public:
  void WriteLine(std::u16string_view line = {});
  // Writes a temporary file and moves it to the target's place, see PlaceFile. Raises EHostError when the
  // client fails.
  void PlaceAt(const std::u16string& target) const;

 private:
  std::string text_;
};

// `text` with blanks to `width` characters; a longer one stays whole.
std::u16string LeftAligned(std::u16string_view text, std::size_t width);
std::u16string RightAligned(std::u16string_view text, std::size_t width);

// Shows a written report to the user: as a spreadsheet, or in the text editor, at its top. Nothing happens
// while `ToolAborted` is set. Raises EHostError when the client fails.
void DisplayReportFile(const std::u16string& file_name, bool as_spread);
void LoadReportIntoTextEditor(const std::u16string& file_name);

}  // namespace Ketril::Tools
