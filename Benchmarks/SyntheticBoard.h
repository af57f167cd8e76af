// Boards of any size for measuring, as the text of a board file of version 20171130, on 200 nets. Always the
// same for the same numbers.
#pragma once

#include <cstdint>
#include <string>

namespace Ketril::Benchmarks {

// A grid of short tracks with a via at every fourth.
std::string SyntheticBoard(std::int64_t tracks);

enum class TrackEnd : std::uint8_t { Via, Pad };
// A grid of tracks that leave a via or a rectangular pad each, the pads in footprints of one.
std::string BoardOfTrackEnds(std::int64_t tracks, TrackEnd end);

}  // namespace Ketril::Benchmarks
