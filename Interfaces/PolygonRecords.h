// The records of the polygon clipper: vertex lists in doubles and polygons of contours with hole flags, in
// the unit of a coordinate. A contour is closed by itself: no vertex repeats the first. Arrays and records
// are their maker's to free; a record may be empty (no array, count 0).
#pragma once

#include <cstddef>
#include <cstdint>

namespace Ketril {

struct Tgpc_vertex {
  double x = 0;
  double y = 0;
  friend constexpr bool operator==(const Tgpc_vertex&, const Tgpc_vertex&) = default;
};
static_assert(sizeof(Tgpc_vertex) == 16);
using Pgpc_vertex_array = Tgpc_vertex*;  // of new[]

struct Tgpc_vertex_list {
  std::int32_t num_vertices = 0;
  Pgpc_vertex_array vertex = nullptr;
};
static_assert(offsetof(Tgpc_vertex_list, vertex) == 8);
using Pgpc_vertex_list = Tgpc_vertex_list*;
using Pgpc_vertex_list_array = Tgpc_vertex_list*;  // of new[]

struct Tgpc_polygon {
  std::int32_t num_contours = 0;
  std::int32_t* hole = nullptr;              // of new[]: non-zero for a hole
  Pgpc_vertex_list_array contour = nullptr;  // of new[]
};
using Pgpc_polygon = Tgpc_polygon*;

}  // namespace Ketril
