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

// A square grid of footprints of four pads, 2 mm wide, in a board with an edge around it. From one to the
// next it is `pitch` mm, and a millimetre more to every fourth, so that a crowded board has some room.
std::string BoardOfComponents(std::int64_t components, double pitch);

// A board of 200 by 200 mm, poured for N1 on both sides, with short tracks all over it: of five, two are of
// other nets, and the pour goes around neither.
std::string BoardOfPlanes(std::int64_t tracks);

}  // namespace Ketril::Benchmarks
