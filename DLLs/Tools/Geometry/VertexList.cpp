#include "DLLs/Tools/Geometry/VertexList.h"

#include <algorithm>
#include <new>

#include "DLLs/Tools/Frame/Exceptions.h"

namespace Ketril::Tools {

namespace {

constexpr const char* kMalloc = "memory allocation in GPC_MALLOC";

// A new array of `count` in which the first `kept` of `old` stand; `text` when memory runs out.
template <class T>
std::unique_ptr<T[]> Grown(const T* old, std::int32_t kept, std::int32_t count, const char* text) {
  std::unique_ptr<T[]> grown(new (std::nothrow) T[static_cast<std::size_t>(count)]{});
  if (!grown) throw Exception(text);
  std::copy_n(old, kept, grown.get());
  return grown;
}

}  // namespace

Pgpc_vertex_array NewVertices(std::int32_t Count) {
  if (Count <= 0) return nullptr;
  Pgpc_vertex_array vertices = new (std::nothrow) Tgpc_vertex[static_cast<std::size_t>(Count)];
  if (!vertices) throw Exception(kMalloc);
  return vertices;
}

Pgpc_vertex_list NewVertexList(std::int32_t Count) {
  TVertexListOwner list(new (std::nothrow) Tgpc_vertex_list);
  if (!list) throw Exception(kMalloc);
  list->vertex = NewVertices(Count);
  list->num_vertices = std::max(Count, 0);
  return list.release();
}

Pgpc_vertex_list CopyVertexList(const Tgpc_vertex_list* List) {
  if (!List || List->num_vertices <= 0) return nullptr;
  Pgpc_vertex_list copy = NewVertexList(List->num_vertices);
  std::copy_n(List->vertex, List->num_vertices, copy->vertex);
  return copy;
}

Pgpc_polygon NewPolygon() {
  Pgpc_polygon polygon = new (std::nothrow) Tgpc_polygon;
  if (!polygon) throw Exception(kMalloc);
  return polygon;
}

void AddContour(Tgpc_polygon* Polygon, const Tgpc_vertex_list* Contour, bool Hole) {
  const std::int32_t count = Polygon->num_contours;
  auto holes = Grown(Polygon->hole, count, count + 1, "contour hole addition");
  auto contours = Grown(Polygon->contour, count, count + 1, "contour addition");
  contours[count].vertex = NewVertices(Contour->num_vertices);
  contours[count].num_vertices = std::max(Contour->num_vertices, 0);
  std::copy_n(Contour->vertex, contours[count].num_vertices, contours[count].vertex);
  holes[count] = Hole ? 1 : 0;
  delete[] Polygon->hole;
  delete[] Polygon->contour;
  Polygon->hole = holes.release();
  Polygon->contour = contours.release();
  ++Polygon->num_contours;
}

void FreeVertexList(Pgpc_vertex_list& List) noexcept {
  if (List) delete[] List->vertex;
  delete List;
  List = nullptr;
}

void FreePolygon(Pgpc_polygon& Polygon) noexcept {
  if (Polygon) {
    for (std::int32_t i = 0; i < Polygon->num_contours; ++i) delete[] Polygon->contour[i].vertex;
    delete[] Polygon->contour;
    delete[] Polygon->hole;
  }
  delete Polygon;
  Polygon = nullptr;
}

}  // namespace Ketril::Tools
