#include "DLLs/Tools/Geometry/ContourPoints.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Ketril::Tools {

namespace {

std::int64_t RoundToInt64(double value) {
  constexpr double kEnd = 9223372036854775808.0;
  const double whole = std::nearbyint(value);
  if (whole != whole) return 0;
  if (whole >= kEnd) return std::numeric_limits<std::int64_t>::max();
  if (whole <= -kEnd) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(whole);
}

// Whether the closed bounding box holds the point. Vertices are taken in strides, so that a point within is
// found out after few of them, wherever the contour begins.
bool IsInBounds(const Tgpc_vertex_list& contour, double x, double y) {
  constexpr std::int32_t kStride = 8;
  double left = std::numeric_limits<double>::max(), bottom = left, right = -left, top = -left;
  for (std::int32_t offset = 0; offset < kStride; ++offset) {
    for (std::int32_t i = offset; i < contour.num_vertices; i += kStride) {
      const Tgpc_vertex& vertex = contour.vertex[i];
      left = std::min(left, vertex.x);
      right = std::max(right, vertex.x);
      bottom = std::min(bottom, vertex.y);
      top = std::max(top, vertex.y);
    }
    if (left <= x && x <= right && bottom <= y && y <= top) return true;
  }
  return false;
}

int EdgeCrossing(const Tgpc_vertex& p1, const Tgpc_vertex& p2, double x, double y) {
  if (!(std::min(p1.y, p2.y) < y && y < std::max(p1.y, p2.y))) return 0;
  if (x > p1.x && x > p2.x) return 1;
  if (!(x > std::min(p1.x, p2.x))) return 0;
  // Right of the edge, looking upwards along it.
  const double cross = (p2.x - p1.x) * (y - p1.y) - (p2.y - p1.y) * (x - p1.x);
  return (p2.y > p1.y ? cross < 0 : cross > 0) ? 1 : 0;
}

int VertexCrossing(const Tgpc_vertex_list& contour, std::int32_t i, double x, double y) {
  const std::int32_t n = contour.num_vertices;
  const Tgpc_vertex& p1 = contour.vertex[i];
  if (y != p1.y || !(p1.x <= x)) return 0;
  const double next_y = contour.vertex[(i + 1) % n].y;
  if (next_y == y) return 0;  // a horizontal run counts at its last vertex
  std::int32_t before = i;
  do {
    before = (before + n - 1) % n;
  } while (before != i && contour.vertex[before].y == y);
  const double before_y = contour.vertex[before].y;
  if (next_y < y) return before_y < y ? 0 : 1;
  return before_y > y ? 0 : 1;
}

}  // namespace

std::int64_t ContourArea(const Tgpc_vertex_list& Contour) {
  if (Contour.num_vertices < 3) return 0;
  const Tgpc_vertex origin = Contour.vertex[0];
  double sum = 0;
  for (std::int32_t i = 1; i + 1 < Contour.num_vertices; ++i) {
    const Tgpc_vertex &a = Contour.vertex[i], &b = Contour.vertex[i + 1];
    sum += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
  }
  return RoundToInt64(sum / 2);
}

std::int64_t ContourAbsoluteArea(const Tgpc_vertex_list& Contour) {
  const std::int64_t area = ContourArea(Contour);
  return area < 0 ? -std::max(area, -std::numeric_limits<std::int64_t>::max()) : area;
}

bool ContourContainsPoint(const Tgpc_vertex_list& Contour, double x, double y, bool BoundsFirst) {
  if (BoundsFirst && !IsInBounds(Contour, x, y)) return false;
  int crossings = 0;
  for (std::int32_t i = 0; i < Contour.num_vertices; ++i) {
    const Tgpc_vertex& next = Contour.vertex[i + 1 == Contour.num_vertices ? 0 : i + 1];
    crossings += EdgeCrossing(Contour.vertex[i], next, x, y) + VertexCrossing(Contour, i, x, y);
  }
  return crossings % 2 != 0;
}

bool PolygonContainsPoint(const Tgpc_polygon& Polygon, double x, double y, bool BoundsFirst) {
  int count = 0;
  for (std::int32_t i = 0; i < Polygon.num_contours; ++i) {
    count += ContourContainsPoint(Polygon.contour[i], x, y, BoundsFirst) ? 1 : 0;
  }
  return count % 2 != 0;
}

}  // namespace Ketril::Tools
