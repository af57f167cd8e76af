// The text of a file as a whole.
#pragma once

#include <filesystem>
#include <string>

namespace Ketril::Editor {

// Raises FileError: no file, a folder, no permission.
std::string ReadFileText(const std::filesystem::path& path);

}  // namespace Ketril::Editor
