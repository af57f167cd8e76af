// Projections onto polygons, their cleaning up, and their union and intersection.
//
// The integer half. Tolerances and roundings are told at each operation; nothing raises but for memory.
#pragma once

#include <vector>

#include "DLLs/Tools/Geometry/AbstractPolygon.h"

namespace Ketril::Tools {

// Entries are heap blocks of the list's user.
using TEdgePointList = std::vector<TPolyEdgePoint*>;

class TPolygonUtils {
 public:
  TPolygonUtils() = delete;

  // Fills the list, whose old entries the caller keeps, with the places nearest to the point, vertices and
  // feet on edges, in edge order; distances are compared rounded to whole units. A place at DiscardPoint does
  // not count.
  static void ProjectPointOntoPoly(const TAbstractPolygon& Poly, TCoordPoint Point, TCoordPoint DiscardPoint,
                                   TEdgePointList& EdgePointList);
  // The foot on every edge that has one; without any, the nearest vertex, or {(-1, -1), -1} for no polygon.
  static void ProjectPointOntoMultiplePolyEdges(const TAbstractPolygon& Poly, TCoordPoint Point,
                                                TCoordPoint DiscardPoint, TEdgePointList& EdgePointList);
  static void FreeEdgePointList(TEdgePointList& EdgePointList);  // frees every block and clears the list
  // 0 within the contour, else to its nearest edge, half away from zero. The closing edge is not measured.
  static TCoord PointToContourDistance(TCoordPoint Point, const Tgpc_vertex_list& Contour);
  // The first edge that the point is on, by half the square root of 2; at a vertex the edge that begins
  // there.
  static bool DeterminePolygonEdgeIndex(const TAbstractPolygon& Polygon, TCoordPoint Point,
                                        std::int32_t& EdgeIndex, bool& IsOnVertex);

  // Vertices that equal a neighbour or lie within the factor of the segment between theirs.
  static void RemoveColinearAndCoincidentVertices(TAbstractPolygon& Poly, std::int32_t CollinearFuzzFactor);
  static void RemoveDoublebackSegments(TAbstractPolygon& Poly);  // where the path turns back on itself
  // Both, then the loops where edges cross, then both again. Turns the ring to another vertex 0.
  static void CleanUpPolygon(TAbstractPolygon& Poly);

  static void RemoveDuplicatePointsFromGPCContour(Tgpc_vertex_list& Contour);  // exactly equal neighbours
  // A new polygon, cleaned up. Fractions are rounded half away from zero, but where an edge at 45 degrees
  // meets one at right angles to it: there two whole vertices stay on the edges.
  static TAbstractPolygon* GPCContourToAbstractPolygon(Tgpc_vertex_list& Contour);
  // The union in one new polygon, which is empty unless it has exactly one outline. Polygons among the shapes
  // are turned counter-clockwise.
  static TAbstractPolygon* UnionShapesToPolygon(const std::vector<TAbstractShape*>& Shapes);
  // Into the third polygon, rounded; false, and empty, unless the outcome has exactly one outline.
  static bool UnionPoly(const TAbstractPolygon& Poly1, const TAbstractPolygon& Poly2,
                        TAbstractPolygon& UnionPoly);
  static bool IntersectPoly(const TAbstractPolygon& Poly1, const TAbstractPolygon& Poly2,
                            TAbstractPolygon& IntersectPoly);
  // A new polygon of the shape's vertices without repeated ones, counter-clockwise.
  static TAbstractPolygon* ShapeToPolygon(const TAbstractShape& Shape);
};

}  // namespace Ketril::Tools
