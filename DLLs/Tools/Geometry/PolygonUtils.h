// Projections onto polygons, their cleaning up, and their union and intersection.
//
// The integer half, but for three operations on fractions that use the double half and say so. What decides
// is exact unless a tolerance is named, and what is rounded to a vertex goes half away from zero. Nothing
// raises but for memory; an empty polygon gives an empty one, an empty list, or false.
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
  // feet on edges, in edge order; distances are compared rounded to whole units, and beyond 999990000
  // nothing is near. A place at DiscardPoint does not count.
  static void ProjectPointOntoPoly(const TAbstractPolygon& Poly, TCoordPoint Point, TCoordPoint DiscardPoint,
                                   TEdgePointList& EdgePointList);
  // The foot on every edge that has one; without any, the nearest vertex, or {(-1, -1), -1} for no polygon.
  static void ProjectPointOntoMultiplePolyEdges(const TAbstractPolygon& Poly, TCoordPoint Point,
                                                TCoordPoint DiscardPoint, TEdgePointList& EdgePointList);
  static void FreeEdgePointList(TEdgePointList& EdgePointList);  // frees every block and clears the list
  // The double half, without tolerance: 0 within the contour, else to its nearest edge, rounded at the end.
  // The closing edge is not measured. 999990000 for a contour without edges.
  static TCoord PointToContourDistance(TCoordPoint Point, const Tgpc_vertex_list& Contour);
  // The first edge that the point is on, by half the square root of 2 (kRoundedPointFuzz, the end included);
  // at a vertex the edge that begins there. False and -1 for none.
  static bool DeterminePolygonEdgeIndex(const TAbstractPolygon& Polygon, TCoordPoint Point,
                                        std::int32_t& EdgeIndex, bool& IsOnVertex);

  // Vertices that equal a neighbour or lie within the factor, the end included, of the segment between
  // theirs. A ring that has nothing else loses them all.
  static void RemoveColinearAndCoincidentVertices(TAbstractPolygon& Poly, std::int32_t CollinearFuzzFactor);
  static void RemoveDoublebackSegments(TAbstractPolygon& Poly);  // where the path turns back on itself
  // Both, with a factor of 0, then the loops where edges cross, then both again. Turns the ring to another
  // vertex 0. Whether edges cross is decided exactly; where, by the double half (parallel from 1e-8 of slope
  // on, there by the integer half), with corners as in GPCContourToAbstractPolygon.
  static void CleanUpPolygon(TAbstractPolygon& Poly);

  static void RemoveDuplicatePointsFromGPCContour(Tgpc_vertex_list& Contour);  // exactly equal neighbours
  // A new polygon, cleaned up; the contour loses its duplicates. Fractions are rounded half away from zero,
  // but where an edge at 45 degrees, exactly, meets one at right angles to it, by 1e-12 of the double half's
  // `ArePerpendicular`: there two whole vertices stay on the edges.
  static TAbstractPolygon* GPCContourToAbstractPolygon(Tgpc_vertex_list& Contour);
  // The union in one new polygon, which is empty unless it has exactly one outline. Polygons among the shapes
  // are turned counter-clockwise.
  static TAbstractPolygon* UnionShapesToPolygon(const std::vector<TAbstractShape*>& Shapes);
  // Into the third polygon, rounded; false, and empty, unless the outcome has exactly one outline.
  static bool UnionPoly(const TAbstractPolygon& Poly1, const TAbstractPolygon& Poly2,
                        TAbstractPolygon& UnionPoly);
  static bool IntersectPoly(const TAbstractPolygon& Poly1, const TAbstractPolygon& Poly2,
                            TAbstractPolygon& IntersectPoly);
  // A new polygon of the shape's vertices without repeated ones, counter-clockwise; of one vertex, empty.
  static TAbstractPolygon* ShapeToPolygon(const TAbstractShape& Shape);
};

}  // namespace Ketril::Tools
