// Places on polygons.
#include "DLLs/Tools/Geometry/PolygonUtils.h"

#include <algorithm>

#include "DLLs/Tools/Geometry/ContourPoints.h"
#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/RT_GeometryLines.h"
#include "DLLs/Tools/Geometry/RT_GeometryTolerances.h"

namespace Ketril::Tools {

namespace {

constexpr TCoord kFar = 999990000;

// The foot of the point on edge i, if it is none of the places that do not count.
bool FootOnEdge(const TAbstractPolygon& poly, std::int32_t i, TCoordPoint point, TCoordPoint discard,
                TCoordPoint& foot, TCoord& distance) {
  double exact = 0;
  const TCoordPoint b = poly.Ring(i + 1);
  if (!TGeomUtils::ProjectPointOntoSegment(poly.Ring(i), b, point, foot, exact)) return false;
  distance = TGeomUtils::Nearest(exact);
  return foot != b && foot != discard;
}

}  // namespace

void TPolygonUtils::FreeEdgePointList(TEdgePointList& EdgePointList) {
  for (const TPolyEdgePoint* entry : EdgePointList) delete entry;
  EdgePointList.clear();
}

void TPolygonUtils::ProjectPointOntoPoly(const TAbstractPolygon& Poly, TCoordPoint Point,
                                         TCoordPoint DiscardPoint, TEdgePointList& EdgePointList) {
  EdgePointList.clear();
  TCoord best = kFar;
  const auto take = [&](TCoord distance, TPolyEdgePoint place, bool joins) {
    if (distance > best || (distance == best && !joins)) return;
    if (distance < best) FreeEdgePointList(EdgePointList);
    best = distance;
    EdgePointList.push_back(new TPolyEdgePoint(place));
  };
  for (std::int32_t i = 0; i < Poly.PointCount(); ++i) {
    const TCoordPoint a = Poly.Ring(i);
    if (a != DiscardPoint) take(TGeomUtils::Distance(a, Point), {a, i, true}, true);
    TCoordPoint foot;
    TCoord distance = 0;
    if (FootOnEdge(Poly, i, Point, DiscardPoint, foot, distance)) take(distance, {foot, i, false}, foot != a);
  }
}

void TPolygonUtils::ProjectPointOntoMultiplePolyEdges(const TAbstractPolygon& Poly, TCoordPoint Point,
                                                      TCoordPoint DiscardPoint,
                                                      TEdgePointList& EdgePointList) {
  EdgePointList.clear();
  for (std::int32_t i = 0; i < Poly.PointCount(); ++i) {
    TCoordPoint foot;
    TCoord distance = 0;
    if (FootOnEdge(Poly, i, Point, DiscardPoint, foot, distance))
      EdgePointList.push_back(new TPolyEdgePoint{foot, i, false});
  }
  if (!EdgePointList.empty()) return;
  TPolyEdgePoint nearest = {{-1, -1}, -1, true};
  TCoord best = 0;
  for (std::int32_t i = 0; i < Poly.PointCount(); ++i) {
    const TCoord distance = TGeomUtils::Distance(Poly.Ring(i), Point);
    if (nearest.EdgeIndex >= 0 && distance >= best) continue;
    best = distance;
    nearest = {Poly.Ring(i), i, true};
  }
  EdgePointList.push_back(new TPolyEdgePoint(nearest));
}

TCoord TPolygonUtils::PointToContourDistance(TCoordPoint Point, const Tgpc_vertex_list& Contour) {
  if (ContourContainsPoint(Contour, Point.x, Point.y, true)) return 0;
  double best = 9.9999e8;
  for (std::int32_t i = 0; i + 1 < Contour.num_vertices && best > 0; ++i) {
    const Tgpc_vertex &a = Contour.vertex[i], &b = Contour.vertex[i + 1];
    best = std::min(best, PointToSegmentDistance(Point.x, Point.y, a.x, a.y, b.x, b.y));
  }
  return TGeomUtils::Nearest(best);
}

bool TPolygonUtils::DeterminePolygonEdgeIndex(const TAbstractPolygon& Polygon, TCoordPoint Point,
                                              std::int32_t& EdgeIndex, bool& IsOnVertex) {
  EdgeIndex = -1;
  IsOnVertex = false;
  const std::int32_t n = Polygon.PointCount();
  for (std::int32_t i = 0; i < n && EdgeIndex < 0; ++i) {
    const TCoordPoint a = Polygon.Ring(i), b = Polygon.Ring(i + 1);
    IsOnVertex = Point == a || Point == b;
    if (IsOnVertex) {
      EdgeIndex = Point == a ? i : (i + 1) % n;
    } else if (TGeomUtils::IsPointOnLine(a, b, Point, kRoundedPointFuzz)) {
      EdgeIndex = i;
    }
  }
  return EdgeIndex >= 0;
}

}  // namespace Ketril::Tools
