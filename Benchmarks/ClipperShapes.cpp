#include "Benchmarks/ClipperShapes.h"

#include <cmath>
#include <numbers>
#include <random>

namespace Ketril::Benchmarks {
namespace {

Vertex At(double x, double y) {
  return {static_cast<std::int32_t>(std::lround(x)), static_cast<std::int32_t>(std::lround(y))};
}

Outline Star(std::int64_t count, double depth, double x, double y, double phase) {
  constexpr double kRadius = 10'000'000;
  Outline outline;
  for (std::int64_t i = 0; i < count; ++i) {
    const double angle = 2 * std::numbers::pi * (static_cast<double>(i) + phase) / static_cast<double>(count);
    const double radius = i % 2 ? kRadius * (1 - depth) : kRadius;
    outline.push_back(At(x + radius * std::cos(angle), y + radius * std::sin(angle)));
  }
  return outline;
}

// Teeth that point up, on a bar of the same height as the gaps are wide.
Outline Comb(std::int64_t count, double height) {
  constexpr double kPitch = 20'000;
  Outline outline{At(0, 0)};
  const std::int64_t teeth = (count - 2) / 4;
  for (std::int64_t i = 0; i < teeth; ++i) {
    const double x = kPitch * static_cast<double>(i);
    outline.push_back(At(x, height));
    outline.push_back(At(x + kPitch / 3, height));
    outline.push_back(At(x + kPitch / 2, kPitch));
    outline.push_back(At(x + kPitch, kPitch));
  }
  outline.push_back(At(kPitch * static_cast<double>(teeth), 0));
  return outline;
}

Outline Track(Vertex from, Vertex to, double half_width) {
  const double along = std::atan2(to.y - from.y, to.x - from.x);
  Outline outline;
  for (int end = 0; end < 2; ++end) {
    const Vertex& centre = end == 0 ? to : from;
    for (int i = 0; i <= 8; ++i) {
      const double angle = along + std::numbers::pi * (end - 0.5 + i / 8.0);
      outline.push_back(At(centre.x + half_width * std::cos(angle), centre.y + half_width * std::sin(angle)));
    }
  }
  return outline;
}

}  // namespace

ClipperInput TwoStars(std::int64_t count, double depth) {
  return {{Star(count, depth, 0, 0, 0)}, {Star(count, depth, 300'000, 200'000, 0.4)}};
}

ClipperInput TwoCombs(std::int64_t count) {
  // The second one lies on its side across the first.
  ClipperInput input{{Comb(count, 2'000'000)}, {Comb(count, 2'000'000)}};
  for (Vertex& vertex : input.clip[0]) vertex = {2'050'000 - vertex.y, vertex.x + 10'000};
  return input;
}

ClipperInput Tracks(std::int64_t count) {
  std::mt19937 random(7);
  const double side = 500'000 * std::sqrt(static_cast<double>(count));
  std::uniform_real_distribution place(0.0, side), length(-1'500'000.0, 1'500'000.0),
      width(25'000.0, 100'000.0);
  ClipperInput input;
  for (std::int64_t i = 0; i < count; ++i) {
    const Vertex from = At(place(random), place(random));
    const Vertex to = At(from.x + length(random), from.y + length(random));
    (i % 2 ? input.clip : input.subject).push_back(Track(from, to, width(random)));
  }
  return input;
}

}  // namespace Ketril::Benchmarks
