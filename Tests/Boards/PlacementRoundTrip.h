// The pick-and-place file of a board, read back onto the board whose components were scattered:
// `Tools/PlacementRoundTrip/BOARD`.
#pragma once

#include <filesystem>

namespace Ketril::Tests {

void RegisterPlacementRoundTrip(const std::filesystem::path& board);

}  // namespace Ketril::Tests
