// How a finished file comes into the place of an older one.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Ketril::Tools {

// A new file in the system's folder for temporary files. When it cannot be made, the user is told, and the
// result is empty.
std::optional<std::filesystem::path> MakeReportTempFile();
// The same with a text in it. Raises Exception when it cannot be filled, as on a full disk; it is gone then.
std::optional<std::filesystem::path> MakeReportTempFile(std::string_view text);

enum class TPlacement { Placed, Locked, Failed };

// Moves the temporary file to the target's place; the temporary file is gone afterwards, whatever happened,
// but for a target that is the temporary file itself, where nothing happens. A target that somebody else has
// open in another session stays, and the user is told by the client's notification, or by a message where the
// client has none. A document that is open in the editor is told before and after. A move that fails leaves
// the target as it was. Raises EHostError when the client fails.
TPlacement PlaceFile(const std::filesystem::path& temporary, const std::filesystem::path& target);

// Writes the text to a temporary file and places that; a target that cannot be replaced is told in a message.
// Raises as MakeReportTempFile.
void PlaceText(std::string_view text, const std::filesystem::path& target);

}  // namespace Ketril::Tools
