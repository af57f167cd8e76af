// Making and freeing the records of the polygon clipper.
#pragma once

#include <memory>

#include "Interfaces/PolygonRecords.h"

namespace Ketril::Tools {

// Each of these raises Exception with the text of its call site when memory runs out:
// "memory allocation in GPC_MALLOC", "contour hole addition" and "contour addition" in AddContour; what the
// call was to change is then as it was. A count below 0 is taken as 0.
Pgpc_vertex_list NewVertexList(std::int32_t Count);             // zeroed, with `num_vertices` = Count
Pgpc_vertex_list CopyVertexList(const Tgpc_vertex_list* List);  // nil for an empty list and for nil
Pgpc_polygon NewPolygon();                                      // without contours
// Appends a copy of the contour.
void AddContour(Tgpc_polygon* Polygon, const Tgpc_vertex_list* Contour, bool Hole);
// New vertices, zeroed; nil for none.
Pgpc_vertex_array NewVertices(std::int32_t Count);

// Free the record and what it holds, and set the reference to nil; nil is allowed.
void FreeVertexList(Pgpc_vertex_list& List) noexcept;
void FreePolygon(Pgpc_polygon& Polygon) noexcept;

// Owners for a block.
struct TFreeVertexList {
  void operator()(Pgpc_vertex_list list) const noexcept { FreeVertexList(list); }
};
struct TFreePolygon {
  void operator()(Pgpc_polygon polygon) const noexcept { FreePolygon(polygon); }
};
using TVertexListOwner = std::unique_ptr<Tgpc_vertex_list, TFreeVertexList>;
using TPolygonOwner = std::unique_ptr<Tgpc_polygon, TFreePolygon>;

}  // namespace Ketril::Tools
