#include "DLLs/Tools/Geometry/ClipperChains.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <span>

#include "DLLs/Tools/Frame/Exceptions.h"

namespace Ketril::Tools {
namespace {

// Crossings are rounded by half a step.
constexpr double kThin = 2;

double Cross(TClipPoint o, TClipPoint a, TClipPoint b) {
  return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

// Whether rounding has left nothing of a contour: it runs the wrong way round, or all its points lie on what
// is nearly one line. The area by the length tells nearly all that do not.
bool IsNothing(std::span<const TClipPoint> points, bool hole) {
  if (points.size() < 3) return true;
  const TClipPoint start = points[0];
  TClipPoint before = start, far = start;
  double doubled_area = 0, length = 0, farthest = 0;
  for (const TClipPoint& point : points) {
    doubled_area += Cross(start, before, point);
    length += std::fabs(point.x - before.x) + std::fabs(point.y - before.y);
    before = point;
    const double distance = std::fabs(point.x - start.x) + std::fabs(point.y - start.y);
    if (distance > farthest) {
      farthest = distance;
      far = point;
    }
  }
  if (hole ? doubled_area >= 0 : doubled_area <= 0) return true;
  if (std::fabs(doubled_area) > kThin * length) return false;
  return std::all_of(points.begin(), points.end(), [&](TClipPoint point) {
    return std::fabs(Cross(start, far, point)) <= kThin * farthest;
  });
}

}  // namespace

void TClipChains::Reserve(std::size_t vertices) {
  const bool grows = !vertices_.empty();
  try {
    if (vertices > std::numeric_limits<std::int32_t>::max()) throw std::bad_alloc();
    vertices_.reserve(vertices);
  } catch (const std::bad_alloc&) {
    throw Exception(grows ? "memory allocation in GPC_REALLOC" : "vertex creation");
  }
}

std::int32_t TClipChains::NewVertex(TClipPoint point, std::int32_t next) {
  if (vertices_.size() == vertices_.capacity()) Reserve(2 * vertices_.size() + 64);
  vertices_.push_back({point, next});
  return static_cast<std::int32_t>(vertices_.size() - 1);
}

TClipChains::TChain& TClipChains::Find(std::int32_t chain) {
  while (chains_[chain].joined_to != chain) {
    chains_[chain].joined_to = chains_[chains_[chain].joined_to].joined_to;
    chain = chains_[chain].joined_to;
  }
  return chains_[chain];
}

std::int32_t TClipChains::Begin(TClipPoint point, bool hole) {
  const std::int32_t vertex = NewVertex(point, -1);
  const auto chain = static_cast<std::int32_t>(chains_.size());
  chains_.push_back({vertex, vertex, chain, hole});
  return chain;
}

void TClipChains::Prepend(std::int32_t chain, TClipPoint point) {
  TChain& found = Find(chain);
  if (vertices_[found.head].point != point) found.head = NewVertex(point, found.head);
}

void TClipChains::Append(std::int32_t chain, TClipPoint point) {
  TChain& found = Find(chain);
  if (vertices_[found.tail].point == point) return;
  const std::int32_t vertex = NewVertex(point, -1);
  vertices_[found.tail].next = vertex;
  found.tail = vertex;
}

void TClipChains::Join(std::int32_t tail, std::int32_t head, TClipPoint point) {
  Append(tail, point);
  TChain& before = Find(tail);
  TChain& after = Find(head);
  if (&before == &after) {
    closed_.push_back(before.joined_to);
    return;
  }
  vertices_[before.tail].next = after.head;
  TChain& first = &before < &after ? before : after;
  TChain& second = &before < &after ? after : before;
  second.joined_to = first.joined_to;
  const std::int32_t last = after.tail;
  first.head = before.head;
  first.tail = last;
}

void TClipChains::Collect(std::size_t index, std::pmr::vector<TClipPoint>& points) const {
  points.clear();
  for (std::int32_t i = chains_[closed_[index]].head; i != -1; i = vertices_[i].next) {
    const TClipPoint point = vertices_[i].point;
    if (points.empty() || points.back() != point) points.push_back(point);
  }
  while (points.size() > 1 && points.back() == points.front()) points.pop_back();

  if (IsNothing(points, IsHole(index))) points.clear();
}

}  // namespace Ketril::Tools
