// Boards of any size for measuring: a grid of short tracks with a via at every fourth, on 200 nets.
#pragma once

#include <cstdint>
#include <string>

namespace Ketril::Benchmarks {

// The text of a board file of version 20171130 with so many tracks. Always the same for the same count.
std::string SyntheticBoard(std::int64_t tracks);

}  // namespace Ketril::Benchmarks
