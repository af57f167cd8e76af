// The tools on a board file: `Tools/RUN/BOARD` for each run of them.
#pragma once

#include <filesystem>

namespace Ketril::Tests {

void RegisterToolRuns(const std::filesystem::path& board);

}  // namespace Ketril::Tests
