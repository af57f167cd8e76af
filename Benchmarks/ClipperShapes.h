// Shapes for the clipper's benchmarks, given to both clippers alike. Coordinates are whole numbers.
#pragma once

#include <cstdint>
#include <vector>

namespace Ketril::Benchmarks {

struct Vertex {
  std::int32_t x = 0;
  std::int32_t y = 0;
};
using Outline = std::vector<Vertex>;

struct ClipperInput {
  std::vector<Outline> subject;
  std::vector<Outline> clip;
};

// Two stars of `count` vertices each about nearly the same centre. `depth` is how far the inner vertices lie
// within the circle, as a part of its radius: spiky if near 1, nearly round if near 0.
ClipperInput TwoStars(std::int64_t count, double depth);

// Two combs of `count` vertices whose teeth cross, each tooth of the one all teeth of a block of the other.
ClipperInput TwoCombs(std::int64_t count);

// Round-ended tracks of 18 vertices in random places on a square that grows with their number, half of them
// in either polygon.
ClipperInput Tracks(std::int64_t count);

}  // namespace Ketril::Benchmarks
