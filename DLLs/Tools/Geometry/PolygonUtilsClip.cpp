// Polygons through the clipper.
#include <algorithm>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/PolygonUtils.h"
#include "DLLs/Tools/Geometry/PolygonUtilsInternal.h"
#include "DLLs/Tools/Geometry/RT_PolygonClipper.h"
#include "DLLs/Tools/Geometry/VertexList.h"

namespace Ketril::Tools {

namespace {

bool Combine(TClipOperation operation, const TAbstractPolygon& poly1, const TAbstractPolygon& poly2,
             TAbstractPolygon& result) {
  const TPolygonOwner subject(poly1.GetGPCPoly()), clip(poly2.GetGPCPoly()), outcome(NewPolygon());
  ClipPolygons(operation, subject.get(), clip.get(), outcome.get());
  result.AssignFromGPCPoly(*outcome);
  return result.PointCount() > 0;
}

LineType LineBetween(const Tgpc_vertex& from, const Tgpc_vertex& to) {
  return {from.x, from.y, to.x, to.y};
}

// Read from last to first, without a vertex equal to the one taken before it.
Pgpc_polygon ReversedPolygon(const TAbstractShape& shape) {
  const TVertexListOwner contour(NewVertexList(shape.GetNumVertices()));
  contour->num_vertices = 0;
  TCoordPoint taken, vertex;
  shape.GetVertex(0, taken);
  for (std::int32_t i = shape.GetNumVertices() - 1; i >= 0; --i) {
    if (!shape.GetVertex(i, vertex) || vertex == taken) continue;
    contour->vertex[contour->num_vertices++] = {double(vertex.x), double(vertex.y)};
    taken = vertex;
  }
  TPolygonOwner polygon(NewPolygon());
  AddContour(polygon.get(), contour.get(), false);
  return polygon.release();
}

}  // namespace

void TPolygonUtils::RemoveDuplicatePointsFromGPCContour(Tgpc_vertex_list& Contour) {
  Tgpc_vertex* const begin = Contour.vertex;
  Contour.num_vertices = static_cast<std::int32_t>(std::unique(begin, begin + Contour.num_vertices) - begin);
  if (Contour.num_vertices > 1 && begin[Contour.num_vertices - 1] == begin[0]) --Contour.num_vertices;
}

TAbstractPolygon* TPolygonUtils::GPCContourToAbstractPolygon(Tgpc_vertex_list& Contour) {
  RemoveDuplicatePointsFromGPCContour(Contour);
  auto* polygon = new TAbstractPolygon;
  const std::int32_t n = Contour.num_vertices;
  for (std::int32_t i = 0; i < n; ++i) {
    const Tgpc_vertex &p0 = Contour.vertex[i], &p1 = Contour.vertex[(i + 1) % n],
                      &p2 = Contour.vertex[(i + 2) % n];
    // The second edge's direction counts towards the corner, as the first one's does.
    for (const TCoordPoint point : WholeCorner({p1.x, p1.y}, LineBetween(p0, p1), LineBetween(p2, p1)))
      polygon->AddPoint(point);
  }
  CleanUpPolygon(*polygon);
  return polygon;
}

TAbstractPolygon* TPolygonUtils::UnionShapesToPolygon(const std::vector<TAbstractShape*>& Shapes) {
  TPolygonOwner united(NewPolygon());
  for (TAbstractShape* shape : Shapes) {
    TPolygonOwner next;
    if (auto* polygon = dynamic_cast<TAbstractPolygon*>(shape)) {
      polygon->Counterclockwise();
      next.reset(polygon->GetGPCPoly());
    } else {
      next.reset(ReversedPolygon(*shape));
    }
    TPolygonOwner outcome(NewPolygon());
    ClipPolygons(eClipUnion, next.get(), united.get(), outcome.get());
    united = std::move(outcome);
  }
  Tgpc_vertex_list* outline = nullptr;
  for (std::int32_t i = 0; i < united->num_contours; ++i) {
    if (united->hole[i] != 0) continue;
    if (outline) return new TAbstractPolygon;
    outline = &united->contour[i];
  }
  return outline ? GPCContourToAbstractPolygon(*outline) : new TAbstractPolygon;
}

bool TPolygonUtils::UnionPoly(const TAbstractPolygon& Poly1, const TAbstractPolygon& Poly2,
                              TAbstractPolygon& UnionPoly) {
  return Combine(eClipUnion, Poly1, Poly2, UnionPoly);
}

bool TPolygonUtils::IntersectPoly(const TAbstractPolygon& Poly1, const TAbstractPolygon& Poly2,
                                  TAbstractPolygon& IntersectPoly) {
  return Combine(eClipIntersection, Poly1, Poly2, IntersectPoly);
}

TAbstractPolygon* TPolygonUtils::ShapeToPolygon(const TAbstractShape& Shape) {
  auto* polygon = new TAbstractPolygon;
  TCoordPoint before, vertex;
  const std::int32_t n = Shape.GetNumVertices();
  Shape.GetVertex(n - 1, before);
  for (std::int32_t i = 0; i < n; ++i) {
    if (!Shape.GetVertex(i, vertex)) continue;
    if (vertex != before) polygon->AddPoint(vertex);
    before = vertex;
  }
  polygon->Counterclockwise();
  return polygon;
}

}  // namespace Ketril::Tools
