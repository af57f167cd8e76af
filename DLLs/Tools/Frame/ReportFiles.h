// Files that a tool leaves beside the board: their names, how they come into place, and how the editor shows
// them.
#pragma once

#include <string>

namespace Ketril::Tools {

// The editor's services for file names; what has no client to ask is worked out here in the same manner.
//
// `file_name` with `extension` (without the dot) in place of its own.
std::u16string ForceFileNameExtension(const std::u16string& file_name, const std::u16string& extension);
// The name without its folders, extension included.
std::u16string ExtractWholeFileNameFromPath(const std::u16string& path);

// Writes the text, as UTF-8, to a temporary file and puts that in the place of `target`, so that nobody sees
// half of it. Raises std::system_error or std::filesystem::filesystem_error; the target is then as it was.
void ReplaceReportFile(const std::u16string& target, const std::u16string& text);

// Has the editor open a file as a document; without a client nothing. Raises EHostError.
void OpenDocument(const std::u16string& file_name);

}  // namespace Ketril::Tools
